#!/bin/sh
# closed_pipe_test.sh VEILDOC: a reader that goes away early ends the command
# quietly and with success.
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
yes '甲方：北京华信科技有限公司，电子邮箱：lin@example.com。' | head -n 2000 >"$work/in"
for command in anonymize 'analyze --explain'; do
  (
    # shellcheck disable=SC2086  # a command and its option
    "$1" $command - <"$work/in" 2>"$work/err" || echo "exit code $?" >>"$work/err"
  ) | head -c 1 >"$work/out"
  test -s "$work/out"
  if test -s "$work/err"; then
    cat "$work/err"
    exit 1
  fi
done
