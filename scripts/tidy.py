#!/usr/bin/env python3
"""tidy.py BUILD [FOLDER]: clang-tidy over every source file of ours, or those of
FOLDER, with the compile commands of the build folder BUILD, as many runs at a
time as there are cores.

Most of a run's time goes to the headers of the library, so the files of a
target are checked some at a time, one behind the other in a file below
BUILD/tidy. They are not merely included there: the analyzer follows paths only
through the file that it was given. What is reported is told of the file where it
stands.

python/ is left out unless it is named: pybind11 takes minutes. To check it:
  cmake --preset clang -DVEILDOC_BUILD_PYTHON=ON && scripts/tidy.py build/clang python
"""

import json
import os
import re
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from itertools import groupby
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
MOST_LINES = 4000
LEFT_OUT = ("python/", "tests/python/")
# The analyzer follows calls into our functions, not into the templates of others:
# half of its time went there.
ANALYZER = ["-Xclang", "-analyzer-config", "-Xclang", "c++-template-inlining=false"]


class Batch:
    """Files of one target, one behind the other."""

    def __init__(self, path, flags):
        self.path = path
        self.flags = flags
        self.starts = []  # (line before the first one of the file, file)
        self.lines = []

    def add(self, file, lines):
        self.starts.append((len(self.lines), file))
        self.lines += lines

    def write(self):
        self.path.write_text("\n".join(self.lines) + "\n", encoding="utf-8")

    def place(self, line):
        start, file = max((s, f) for s, f in self.starts if s < line)
        return f"{file}:{line - start}"


def commands(build, folder):
    """(flags, target, file) of each file to check."""
    for entry in json.loads((build / "compile_commands.json").read_text()):
        path = Path(entry["directory"], entry["file"]).resolve()
        if not path.is_relative_to(ROOT) or path.is_relative_to(build):
            continue
        file = str(path.relative_to(ROOT))
        if not (file.startswith(folder + "/") if folder else not file.startswith(LEFT_OUT)):
            continue
        words = shlex.split(entry["command"])
        output = words.index("-o")
        yield words[:output], words[output + 1].split(".dir/")[0], file


def batches(build, folder):
    target = build / "tidy"
    target.mkdir(exist_ok=True)
    done = []
    for (flags, _), group in groupby(sorted(commands(build, folder)), key=lambda c: c[:2]):
        batch = None
        for *_, file in group:
            lines = (ROOT / file).read_text(encoding="utf-8").splitlines()
            if not batch or len(batch.lines) + len(lines) > MOST_LINES:
                batch = Batch(target / f"{len(done)}_{Path(file).parent.name}.cpp", flags)
                done.append(batch)
            batch.add(file, lines)
    for batch in done:
        batch.write()
    (target / "compile_commands.json").write_text(
        json.dumps(
            [
                {
                    "directory": str(build),
                    "file": str(batch.path),
                    "arguments": batch.flags + ANALYZER + ["-c", str(batch.path)],
                }
                for batch in done
            ]
        )
    )
    return sorted(done, key=lambda b: -len(b.lines))


def check(batch):
    run = subprocess.run(
        ["clang-tidy", "--quiet", "-p", str(batch.path.parent), str(batch.path)],
        capture_output=True,
        text=True,
        check=False,
    )
    out = re.sub(
        re.escape(str(batch.path)) + r":(\d+)", lambda m: batch.place(int(m[1])), run.stdout
    )
    # A run that died says why only here.
    return run.returncode, out if run.returncode == 0 or out.strip() else out + run.stderr


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    build = Path(sys.argv[1]).resolve()
    folder = sys.argv[2].rstrip("/") if len(sys.argv) == 3 else ""
    failed = False
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        for code, out in pool.map(check, batches(build, folder)):
            failed |= code != 0
            sys.stdout.write(out)
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
