"""Engines that find names, and the analyzers made of them."""
