#!/bin/sh
# veildoc batch between other programs: a pipe that is answered line by line, a reader
# that goes away, signals, two runs on one output.
set -u
veildoc=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1
failed=0
fail() { echo "FAILED: $*"; failed=1; }

# A question, its answer, and only then the next question.
mkfifo questions answers
"$veildoc" batch - <questions >answers &
exec 3>questions 4<answers
for name in 北京华信科技有限公司 上海蓝鲸软件有限公司; do
  printf '{"id":1,"text":"甲方：%s"}\n' "$name" >&3
  read -r answer <&4
  case $answer in *'甲方：[机构1]'*) ;; *) fail "no answer: $answer" ;; esac
done
exec 3>&-
wait $! || fail "exit code $? of a pipe"
exec 4<&-

i=0
while [ $i -lt 1000 ]; do
  i=$((i + 1))
  echo "{\"id\":$i,\"text\":\"甲方：北京华信科技有限公司，编号$i，联系人：王建国\"}"
done >in.jsonl

# head goes away early: no message, no hanging.
"$veildoc" batch in.jsonl 2>err | head -n 1 >first
[ -s first ] && [ ! -s err ] || fail "a reader that goes away: $(cat err)"

# SIGTERM: whole lines, exit code 130, and the rest later.
"$veildoc" batch in.jsonl -o out.jsonl 2>err &
pid=$!
tries=0
while [ ! -e out.jsonl.partial ] && [ $tries -lt 100 ]; do
  sleep 0.05
  tries=$((tries + 1))
done
sleep 0.3
# While it runs nobody else may write there.
"$veildoc" batch in.jsonl -o out.jsonl --resume 2>second
second=$?
kill -TERM $pid 2>/dev/null
wait $pid
code=$?
if [ -e out.jsonl ]; then
  [ $code -eq 0 ] || fail "exit code $code of a run that was finished"
else
  [ $second -eq 1 ] || fail "exit code $second of a second run: $(cat second)"
  [ $code -eq 130 ] || fail "exit code $code of an interrupted run: $(cat err)"
  "$veildoc" batch in.jsonl -o out.jsonl --resume || fail "resume: exit code $?"
fi
"$veildoc" batch in.jsonl >whole.jsonl
cmp out.jsonl whole.jsonl || fail "the resumed output differs"
[ "$(wc -l <out.jsonl)" -eq 1000 ] || fail "lines are missing"

# A pipe that never says anything can be interrupted, too.
mkfifo silent
sleep 100 >silent &
sleeper=$!
"$veildoc" batch - <silent 2>err &
pid=$!
sleep 0.5
kill -TERM $pid
wait $pid
[ $? -eq 130 ] || fail "a silent pipe"
kill $sleeper

exit $failed
