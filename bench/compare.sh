#!/usr/bin/env bash
# Measures the release build and writes the tables of bench/compare.md.
set -euo pipefail
export LC_ALL=C.UTF-8
cd "$(dirname "$0")/.."

usage() {
  cat <<'EOF'
bench/compare.sh [--quick] [OUTPUT]    OUTPUT: default bench/compare.md

Builds the preset release and measures it: the ways through a text side by side, whole
processes from 10 thousand to 30 million characters, and several documents on one and
two threads. Takes about five minutes; --quick stops at one million characters.
Needs GNU time (Debian package "time"). Nothing else should run on the machine.
EOF
}

largest=30000000
output=bench/compare.md
for argument in "$@"; do
  case $argument in
    -h | --help) usage && exit ;;
    --quick) largest=1000000 ;;
    -*) usage >&2 && exit 2 ;;
    *) output=$argument ;;
  esac
done
[ -x /usr/bin/time ] || { echo "GNU time is missing: apt-get install time" >&2 && exit 1; }

cmake --preset release >/dev/null
cmake --build --preset release --target veildoc veildoc_compare >&2
veildoc=build/release/cli/veildoc
compare=build/release/bench/veildoc_compare
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
sources=(evaluation/ordinary evaluation/third)

# whole FILE [OPTION...]: "user seconds, wall seconds, peak kB" of the best of three runs.
whole() {
  local file=$1
  shift
  for _ in 1 2 3; do
    /usr/bin/time -f '%U %e %M' -o "$work/time" "$veildoc" anonymize "$@" "$file" >/dev/null 2>&1
    tail -n 1 "$work/time"
  done | sort -n | head -n 1
}

# row LABEL FILE CHARACTERS: one row of the table of whole processes.
row() {
  local user wall peak
  read -r user wall peak <<<"$(whole "$2")"
  awk -v label="$1" -v user="$user" -v wall="$wall" -v peak="$peak" -v n="$3" \
    -v base_user="$base_user" -v base_peak="$base_peak" -v before="$before" 'BEGIN {
      own = user - base_user; if (own < 0.005) own = 0.005
      ratio = before > 0 ? sprintf("%.1f", own / before) : ""
      printf "| %s | %.2f | %.2f | %.2f | %s | %.0f | %.0f |\n", label, user, wall, n / user / 1e6,
        ratio, peak / 1024, (peak - base_peak) * 1024 / n
      print own > "/dev/stderr"
    }' 2>"$work/own"
  before=$(cat "$work/own")
}

heading() {
  printf '\n| text | user s | wall s | million characters/s | times the row above | peak MB | bytes/character |\n'
  printf '|---|---:|---:|---:|---:|---:|---:|\n'
}

{
  cat <<'EOF'
# Side by side with the limits

Written by `bench/compare.sh`; the texts are the labelled documents of
`evaluation/ordinary` and `evaluation/third` without their marks, repeated.

## Ways through one million characters, in one process

Processor time, the least of five runs. "One by one" is each of the patterns that whole
documents are searched for, with the engine's own search and machine code, which is what
they would cost without any index. The copy is of the text as UTF-32.
EOF
  for language in zh en; do
    "$compare" text $language 1000000 "${sources[@]}" >"$work/$language.txt"
    printf '\n### %s\n\n' "$([ $language = zh ] && echo Chinese || echo English)"
    "$compare" measure "$work/$language.txt" $language
  done

  cat <<'EOF'

## Whole processes, by the length of the text

`veildoc anonymize`, GNU time, best of three. Bytes are those above a text of one line;
the ratio is of user time without start-up.
EOF
  echo . >"$work/line.txt"
  read -r base_user _ base_peak <<<"$(whole "$work/line.txt")"
  printf '\nStart-up: %s s user, %s MB.\n' "$base_user" $((base_peak / 1024))
  for language in zh en; do
    heading
    before=0
    for n in 10000 100000 1000000 10000000 30000000; do
      [ $n -le $largest ] || continue
      "$compare" text $language $n "${sources[@]}" >"$work/text.txt"
      row "$language, $n" "$work/text.txt" $n
    done
  done

  cat <<'EOF'

## The same with many entities, paragraphs and parties

Each with a tenth of it in the row above. Entities are generated and all differ;
paragraphs are the sentences of the documents.
EOF
  for shape in "100000 different entities:100000" "5000 different entities:5000"; do
    entities=${shape##*:}
    heading
    before=0
    for part in 10 1; do
      n=$((4000000 / part))
      "$compare" entities $((entities / part)) $n >"$work/text.txt"
      row "$((entities / part)) different entities in $n" "$work/text.txt" $n
    done
  done
  heading
  before=0
  for part in 10 1; do
    n=$((4000000 / part))
    "$compare" text zh $n "${sources[@]}" | tr -d '\n' | sed 's/。/。\n/g' |
      awk -v last=$((50000 / part)) 'NR <= last' >"$work/text.txt"
    n=$(wc -m <"$work/text.txt")
    row "$(wc -l <"$work/text.txt") paragraphs" "$work/text.txt" "$n"
  done

  printf '\n## Several documents on one and two threads\n\n'
  printf '`veildoc batch`, 400 documents of 5,000 characters each.\n\n'
  printf '| threads | user s | wall s | million characters/s |\n|---|---:|---:|---:|\n'
  "$compare" documents "$work/zh.txt" 400 5000 >"$work/documents.jsonl"
  for threads in 1 2; do
    for _ in 1 2 3; do
      rm -f "$work/masked.jsonl"
      /usr/bin/time -f '%e %U' -o "$work/time" \
        "$veildoc" batch -j $threads "$work/documents.jsonl" -o "$work/masked.jsonl" 2>/dev/null
      tail -n 1 "$work/time"
    done | sort -n | head -n 1 | awk -v j=$threads \
      '{ printf "| %d | %.2f | %.2f | %.2f |\n", j, $2, $1, 2 / $1 }'
  done
} >"$work/compare.md"
mv "$work/compare.md" "$output"
echo "$output" >&2
