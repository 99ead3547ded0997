#!/usr/bin/env python3
"""Writes the large word lists of data/ from open sources; see README.md beside it.

The same sources give the same files. Needs Python 3.9 and, for two sources that
are JavaScript packages, node.
"""

import argparse
import pathlib

import chinese
import latin

def write(folder, name, header, rows):
    """One list: the header as comments, then the rows, sorted by bytes."""
    lines = ["\t".join(row).rstrip("\t") for row in rows]
    lines.sort(key=lambda line: line.encode())
    keys = [line.split("\t")[0] for line in lines]
    assert len(keys) == len(set(keys)), name
    text = "".join(f"# {line}\n" for line in header) + "\n" + "\n".join(lines) + "\n"
    (folder / f"{name}.txt").write_text(text, encoding="utf-8")
    print(f"{name}: {len(lines)} entries")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--jieba", required=True, help="folder of the Python package jieba")
    parser.add_argument("--node-modules", required=True, help="folder with the node packages of README.md")
    parser.add_argument("--scowl", required=True, help="folder of the SCOWL word lists")
    parser.add_argument("--faker", required=True, help="folder of the Python package faker")
    parser.add_argument("--data", required=True, help="folder data/ of this repository; is written to")
    parser.add_argument("--only", choices=["chinese", "latin"])
    sources = parser.parse_args()
    for key in ("jieba", "node_modules", "scowl", "faker", "data"):
        setattr(sources, key, pathlib.Path(getattr(sources, key)))
    for module in (chinese, latin):
        if sources.only in (None, module.__name__):
            for name, header, rows in module.lists(sources):
                write(sources.data, name, header, rows)


if __name__ == "__main__":
    main()
