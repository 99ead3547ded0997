#!/usr/bin/env bash
# tidy.sh BUILD: clang-tidy over every source file of ours, with the compile
# commands of the build folder BUILD, as many files at a time as there are cores.
set -uo pipefail
build=$(cd "$1" && pwd)
cd "$(dirname "$0")/.."
. scripts/files.sh
list_files '*.cpp' | grep -v '^tests/consumer/' |
  xargs -P "$(nproc)" -n 1 clang-tidy --quiet -p "$build" 2>&1 |
  { grep -v ' warnings\? generated\.$' || true; }
