#!/usr/bin/env bash
# Text files are UTF-8 without byte order mark, carriage return or invisible
# characters, and end in a line break; lexicons are sorted and unique.
set -uo pipefail
cd "$(dirname "$0")/.."
. scripts/files.sh
failed=0

complain() {
  printf '%s: %s\n' "$1" "$2"
  failed=1
}

# U+200B..U+200F, U+202A..U+202E, U+2060..U+2064, U+FEFF, as bytes.
invisible='\xE2\x80[\x8B-\x8F\xAA-\xAE]|\xE2\x81[\xA0-\xA4]|\xEF\xBB\xBF'

while IFS= read -r file; do
  [ -s "$file" ] || continue
  iconv -f utf-8 -t utf-8 "$file" >/dev/null 2>&1 || complain "$file" 'not UTF-8'
  LC_ALL=C grep -qP "$invisible" "$file" && complain "$file" 'invisible character; write it as \u'
  LC_ALL=C grep -q $'\r' "$file" && complain "$file" 'carriage return'
  [ -z "$(tail -c 1 "$file")" ] || complain "$file" 'no line break at the end'
done < <(list_files '*.cpp' '*.hpp' '*.txt' '*.md' '*.cmake' '*.sh' '*.json' '*.in')

while IFS= read -r file; do
  case $file in data/*.txt) ;; *) continue ;; esac
  grep -v -e '^#' -e '^$' "$file" | LC_ALL=C sort -c -u 2>/dev/null ||
    complain "$file" 'entries are not sorted (by bytes) and unique'
done < <(list_files '*.txt')

exit $failed
