#!/usr/bin/env bash
# Masks JSON Lines as a job array of Slurm, one part of the input a task.
#
#   sbatch --array=0-63 --cpus-per-task=4 slurm_array.sh archive.jsonl masked
#   cat masked.* > masked.jsonl        # when all tasks are done, in their order
#
# The files lie where all nodes see them. A task that is requeued goes on behind its last
# line; Slurm's SIGTERM (end of time, preemption) lets it write what is finished. The
# "line" of an error counts within its part.
#SBATCH --requeue
#SBATCH --open-mode=append
set -euo pipefail

[ $# -eq 2 ] || { sed -n '2,/^#SBATCH/s/^# \{0,1\}//p' "$0"; exit 2; }
input=$1
part=$(printf '%s.%05d' "$2" "$SLURM_ARRAY_TASK_ID")
number=$((SLURM_ARRAY_TASK_ID - SLURM_ARRAY_TASK_MIN + 1))

# The part is cut out as it is read, so that no other copy of it lies about. The signal
# goes to this script: it waits and passes it on.
exec 3< <(split -n "l/$number/$SLURM_ARRAY_TASK_COUNT" "$input")
veildoc batch -j "${SLURM_CPUS_PER_TASK:-1}" - -o "$part" --resume <&3 &
trap 'kill -TERM $!' TERM
code=0
wait $! || code=$?
trap - TERM
wait $! 2>/dev/null || code=$?
# 3 says that some lines were not masked; they tell so themselves.
[ "$code" -eq 3 ] || exit "$code"
