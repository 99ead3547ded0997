"""Identity keys: when two mentions are one."""
