#!/bin/sh
# The recipe for GNU parallel, on this machine. 77: there is no GNU parallel.
set -u
veildoc=$1
recipe=$2
command -v parallel >/dev/null && parallel --version 2>/dev/null | grep -q GNU || exit 77
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1
PATH=$(dirname "$veildoc"):$PATH
export PATH HOME="$folder"

i=0
while [ $i -lt 40 ]; do
  i=$((i + 1))
  echo "{\"id\":$i,\"text\":\"甲方：北京华信科技有限公司，编号$i\"}"
  [ $i -ne 20 ] || echo '{"id":"bad"}'
done >in.jsonl
PARTS=3 bash "$recipe" in.jsonl out.jsonl 2>err || { cat err; exit 1; }
veildoc batch in.jsonl 2>/dev/null | sed 's/"line":[0-9]*,//' >expected
sed 's/"line":[0-9]*,//' out.jsonl | cmp - expected || exit 1
[ ! -e out.jsonl.parts ] || { echo "parts are left over"; exit 1; }
