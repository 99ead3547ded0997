// Each room of the core by itself, on growing contracts.
#include <benchmark/benchmark.h>

#include "bench/documents.hpp"
#include "core/anonymization/analyzer/language.hpp"
#include "core/anonymization/cleanup/filters.hpp"
#include "core/anonymization/cleanup/overlap.hpp"
#include "core/anonymization/doc_alias_scan.hpp"
#include "core/anonymization/identity/tag_and_key.hpp"
#include "core/anonymization/party_labeled_names.hpp"
#include "core/anonymization/propagation/canonical_placeholders.hpp"
#include "core/anonymization/propagation/surface_spread.hpp"
#include "core/anonymization/propagation/surface_sync_pairs.hpp"
#include "core/anonymization/replacements/numbered_builder.hpp"
#include "core/anonymization/replacements/span_postprocess.hpp"
#include "core/document_text.hpp"
#include "core/person_clustering.hpp"

namespace {

using namespace core::anonymization;  // NOLINT(google-build-using-namespace): one file of calls

// What the rooms hand to each other for one contract.
struct Stages {
  explicit Stages(const benchmark::State& state)
      : document(bench::make_contract({.characters = static_cast<std::size_t>(state.range(0))})),
        prepared(prepare_document_text_replacements(document.text, document.analyzer, "zh")),
        pairs(collect_document_entity_surface_sync_pairs(
            document.text, document.analyzer, "zh", &prepared.filtered, &prepared.org_by_okey)) {}
  bench::Document document;
  PreparedReplacements prepared;
  std::vector<SurfacePlaceholder> pairs;
};

template <class Room>
void measure(benchmark::State& state, Room room) {
  const Stages stages(state);
  while (state.KeepRunning()) benchmark::DoNotOptimize(room(stages));
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.SetComplexityN(state.range(0));
}

void growing(benchmark::internal::Benchmark* b) {
  b->RangeMultiplier(10)
      ->Range(1'000, 1'000'000)
      ->Complexity(benchmark::oNLogN)
      ->Unit(benchmark::kMicrosecond);
}

#define ROOM(name, ...)                                          \
  void name(benchmark::State& state) {                           \
    measure(state, [](const Stages& s) { return __VA_ARGS__; }); \
  }                                                              \
  BENCHMARK(name)->Apply(growing)

ROOM(language, infer_language_from_text(s.document.text));
ROOM(filters,
     _drop_generic_institution_noun_results(
         s.document.text,
         _drop_structural_sequence_results(s.document.text,
                                           _drop_blank_fill_results(s.document.text,
                                                                    s.document.analyzer.hits))));
ROOM(overlaps, _resolve_overlaps(s.document.analyzer.hits));
ROOM(aliases, scan_defined_alias_candidates(s.document.text));
ROOM(party_names, _collect_party_labeled_org_names(s.document.text));
ROOM(identity_keys, [&] {
  std::size_t length = 0;
  for (const auto& r : s.document.analyzer.hits) {
    length += _generic_entity_identity_key(r.entity_type, s.document.text, r.start, r.end).size();
  }
  return length;
}());
ROOM(numbered_builder, build_numbered_replacements(s.document.text, s.document.analyzer, "zh"));
ROOM(clip_at_joiners,
     _clip_replacements_at_embedded_docx_joiners(s.prepared.filtered, s.document.text));
ROOM(canonical_map,
     build_okey_to_canonical_org_placeholders(s.document.text, s.prepared.filtered, "zh"));
ROOM(apply, apply_document_text_replacements(s.document.text, s.prepared.filtered,
                                             s.prepared.org_by_okey, "zh"));
ROOM(sync_pairs,
     collect_document_entity_surface_sync_pairs(s.document.text, s.document.analyzer, "zh",
                                                &s.prepared.filtered, &s.prepared.org_by_okey));
ROOM(spread, [&] {
  MaskedText text(s.document.text);
  spread_surfaces(text, s.pairs);
  return text.text().size();
}());
ROOM(strip_joiners, _strip_docx_joiner_sequences(s.document.text));

}  // namespace
