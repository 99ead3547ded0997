#!/usr/bin/env bash
# Masks JSON Lines on several machines with GNU parallel.
#
#   parallel.sh archive.jsonl masked.jsonl [HOST...]
#
# HOST is what ssh takes; ":" is this machine, and the only one if none is named. veildoc
# has to be on the PATH of each. The input is cut into parts of whole lines (PARTS, by
# default 4 for each host), which are sent there and come back; the parts are put together
# in their order. Started again after an interrupt it leaves parts that are there.
# The "line" of an error counts within its part. Parts hold originals: they lie in
# masked.jsonl.parts, which only you can enter, until all is done.
set -euo pipefail

[ $# -ge 2 ] || { sed -n '2,/^set/s/^# \{0,1\}//p' "$0"; exit 2; }
input=$1
output=$2
shift 2
hosts=("${@:-:}")
parts_wanted=${PARTS:-$((4 * ${#hosts[@]}))}
folder=$output.parts
[ ! -e "$output" ] || { echo "$output is there already" >&2; exit 1; }

umask 077
if [ ! -e "$folder/cut" ]; then
  mkdir -p "$folder"
  split -n "l/$parts_wanted" -d -a 5 --additional-suffix=.jsonl "$input" "$folder/part."
  touch "$folder/cut"
fi

# Exit code 3 says that some lines were not masked; they tell so themselves.
export MASK='veildoc batch -j 1 {} -o {.}.masked --resume || [ $? -eq 3 ]'
parallel --sshlogin "$(IFS=,; echo "${hosts[*]}")" --transferfile {} --return {.}.masked \
  --cleanup --joblog "$folder/log" --resume-failed --halt soon,fail=3 --line-buffer \
  "$MASK" ::: "$folder"/part.*.jsonl

cat "$folder"/part.*.masked >"$output.partial"
mv "$output.partial" "$output"
rm -r "$folder"
