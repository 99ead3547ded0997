#!/usr/bin/env bash
# An #include of ours may only point down: each folder names what it may use.
# Where several lines fit a file, the first one counts; files of one line may
# always use each other.
set -uo pipefail
cd "$(dirname "$0")/.."
. scripts/files.sh

layers='
tests/support                      core
tests                              tests/support cli documents core bench tools
tools                              core/text core/nlp/characters core/nlp/vocabulary_data core/recognition/nlp_artifacts
bench                              tests/support core
cli                                documents core
documents                          core
python                             core
core/text                          core/errors.hpp
core/errors.hpp
core/anonymization/result
core/anonymization/analyzer.hpp    core/anonymization/result
core/anonymization/hit_changes     core/anonymization/result
core/app_paths
core/anonymization/analyzer/language  core/text core/errors.hpp core/anonymization/constants
core/anonymization/analyzer        core/text core/errors.hpp core/app_paths core/anonymization/analyzer.hpp core/anonymization/recognizers core/recognition core/nlp core/remote
core/anonymization/recognizers     core/text core/errors.hpp SIBLINGS core/recognition
core/anonymization/identity        core/text core/errors.hpp SIBLINGS core/anonymization/rules core/person_clustering
core/anonymization/cleanup         core/text core/errors.hpp SIBLINGS core/anonymization/rules
core/anonymization/rules           core/text core/errors.hpp SIBLINGS
core/anonymization/replacements    core/text core/errors.hpp SIBLINGS core/anonymization/rules core/anonymization/identity core/anonymization/cleanup core/anonymization/analyzer/language core/person_clustering
core/anonymization/propagation     core/text core/errors.hpp SIBLINGS core/anonymization/rules core/anonymization/identity core/anonymization/cleanup core/anonymization/analyzer/language core/anonymization/replacements
core/anonymization/party_labeled_names  core/text core/errors.hpp SIBLINGS core/anonymization/rules core/anonymization/identity
core/anonymization                 core/text core/errors.hpp core/anonymization/result core/anonymization/analyzer.hpp core/anonymization/rules
core/recognition                   core/text core/errors.hpp core/anonymization/result core/anonymization/analyzer.hpp core/anonymization/hit_changes core/anonymization/span_index
core/remote                        core/text core/errors.hpp core/anonymization/result core/anonymization/analyzer.hpp
core/nlp                           core/text core/errors.hpp core/anonymization/result core/anonymization/analyzer.hpp core/recognition core/remote
core/evaluation                    core/text core/errors.hpp core/anonymization/result core/masked_stretches
core/restore                       core/text core/errors.hpp core/anonymization core/anonymization_core core/masked_stretches
core/matter                        core/text core/errors.hpp core/anonymization core/anonymization_core core/masked_stretches core/restore core/parties core/person_name
core/parties                       core/text core/errors.hpp core/anonymization core/person_clustering core/person_name
core/person_clustering             core/text core/errors.hpp core/anonymization/result core/person_name
core/person_name                   core/text core/errors.hpp
core                               core/text core/errors.hpp core/anonymization core/parties core/person_clustering core/person_name
'

list_files '*.cpp' '*.hpp' | while IFS= read -r file; do
  { grep -o '^#include "[^"]*"' "$file" || true; } | sed "s|^#include \"\(.*\)\"|$file \1|"
done | awk -v layers="$layers" '
  # Whether `path` is `prefix` or lies in it. SIBLINGS are the headers that
  # stand in core/anonymization itself.
  function within(path, prefix) {
    if (prefix == "SIBLINGS") return path ~ /^core\/anonymization\/[^\/]+$/
    if (index(path, prefix) != 1) return 0
    return substr(path, length(prefix) + 1) ~ /^($|[\/.])/
  }
  function layer_of(path,    f) {
    for (f = 1; f <= folders; f++) if (within(path, folder[f])) return f
    return 0
  }
  BEGIN {
    lines = split(layers, line, "\n")
    for (i = 1; i <= lines; i++) {
      n = split(line[i], word, " ")
      if (n == 0) continue
      folder[++folders] = word[1]
      for (j = 2; j <= n; j++) uses[folders] = uses[folders] " " word[j]
    }
  }
  {
    f = layer_of($1)
    if (!f) { print $1 ": no layer is known for it"; bad = 1; next }
    if (layer_of($2) == f) next
    n = split(uses[f], allowed, " ")
    for (j = 1; j <= n; j++) if (within($2, allowed[j])) next
    print $1 ": may not include " $2
    bad = 1
  }
  END { exit bad }
'
checked=$?

# The map names every header.
while IFS= read -r file; do
  case $file in core/*) ;; *) continue ;; esac
  name=${file#core/}
  if ! grep -qF "\`${name%.hpp}\`" core/README.md; then
    printf 'core/README.md: %s is missing\n' "$name"
    checked=1
  fi
done < <(list_files '*.hpp')
exit $checked
