// The core without its analyzer, from text and hits to masked text and mapping.
#include <benchmark/benchmark.h>

#include "bench/documents.hpp"
#include "core/anonymization/analyzer/embedded_analyzer.hpp"
#include "core/anonymization_core.hpp"

namespace {

using core::anonymization::anonymize_document;

void run(benchmark::State& state, const bench::Document& document,
         const core::anonymization::Analyzer& analyzer) {
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(anonymize_document(document.text, analyzer, "zh"));
  }
  const auto characters = static_cast<std::int64_t>(document.text.size());
  state.SetItemsProcessed(state.iterations() * characters);
  state.SetComplexityN(state.range(0));
}

// Growing texts: one entity in 40 characters, half of the mentions repeats.
void core_by_text(benchmark::State& state) {
  const auto document =
      bench::make_contract({.characters = static_cast<std::size_t>(state.range(0))});
  run(state, document, document.analyzer);
}
BENCHMARK(core_by_text)
    ->RangeMultiplier(10)
    ->Range(1'000, 1'000'000)
    ->Complexity(benchmark::oNLogN)
    ->Unit(benchmark::kMillisecond);

// A text of 400,000 characters with a growing number of entities, all different.
void core_by_entities(benchmark::State& state) {
  const std::size_t characters = 400'000;
  const auto document = bench::make_contract(
      {.characters = characters,
       .characters_per_entity = characters / static_cast<std::size_t>(state.range(0)),
       .share_of_repeats = 0});
  run(state, document, document.analyzer);
}
BENCHMARK(core_by_entities)
    ->RangeMultiplier(4)
    ->Range(64, 16'384)
    ->Complexity()
    ->Unit(benchmark::kMillisecond);

// A text of 400,000 characters with a growing number of paragraphs.
void core_by_paragraphs(benchmark::State& state) {
  const std::size_t characters = 400'000;
  const auto document = bench::make_contract(
      {.characters = characters,
       .characters_per_paragraph = characters / static_cast<std::size_t>(state.range(0))});
  run(state, document, document.analyzer);
}
BENCHMARK(core_by_paragraphs)
    ->RangeMultiplier(4)
    ->Range(64, 16'384)
    ->Complexity()
    ->Unit(benchmark::kMillisecond);

// The whole path with the embedded analyzer.
void whole_by_text(benchmark::State& state) {
  const auto document =
      bench::make_contract({.characters = static_cast<std::size_t>(state.range(0))});
  const auto analyzer = core::anonymization::make_embedded_analyzer();
  run(state, document, *analyzer);
}
BENCHMARK(whole_by_text)
    ->RangeMultiplier(10)
    ->Range(1'000, 1'000'000)
    ->Complexity(benchmark::oNLogN)
    ->Unit(benchmark::kMillisecond);

}  // namespace
