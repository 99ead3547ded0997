#!/usr/bin/env bash
# tidy.sh BUILD [FOLDER]: clang-tidy over every source file of ours, or those of
# FOLDER, with the compile commands of the build folder BUILD, as many files at a
# time as there are cores.
#
# python/ is left out unless it is named: pybind11 takes minutes. To check it:
#   cmake --preset clang -DVEILDOC_BUILD_PYTHON=ON && scripts/tidy.sh build/clang python
set -uo pipefail
build=$(cd "$1" && pwd)
folder=${2-}
cd "$(dirname "$0")/.."
. scripts/files.sh
# The analyzer follows calls into our functions, not into the templates of others:
# half of its time went there.
analyzer=()
for word in -Xclang -analyzer-config -Xclang c++-template-inlining=false; do
  analyzer+=("--extra-arg=$word")
done
if [ -n "$folder" ]; then
  list_files "$folder/*.cpp"
else
  list_files '*.cpp' | grep -v -e '^tests/consumer/' -e '^python/' -e '^tests/python/'
fi |
  xargs -P "$(nproc)" -n 1 clang-tidy --quiet -p "$build" "${analyzer[@]}" 2>&1 |
  { grep -v ' warnings\? generated\.$' || true; }
