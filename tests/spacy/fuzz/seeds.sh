#!/usr/bin/env bash
# seeds.sh FOLDER: writes an input for the fuzz target there for each file of the small models.
set -euo pipefail
models=$(cd "$(dirname "$0")/../models" && pwd)
mkdir -p "$1"
for model in en_small en_small_vec; do
  while read -r kind file; do
    { printf '%s' "$kind"; cat "$models/$model/$file"; } >"$1/$model-${file//\//-}"
  done <<'FILES'
t tokenizer
n tok2vec/model
d ner/model
m ner/moves
m parser/moves
l vocab/lookups.bin
v vocab/vectors
FILES
done
