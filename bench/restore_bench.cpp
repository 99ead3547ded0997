// The way back: a mapping made, placeholders found in a text, originals put in place.
#include <benchmark/benchmark.h>

#include "bench/documents.hpp"
#include "core/anonymization_core.hpp"
#include "core/restore/mapping_file.hpp"
#include "core/restore/restore.hpp"

namespace {

namespace restore = core::restore;

struct MaskedContract {
  core::anonymization::AnonymizedDocument document;
  restore::Mapping mapping;
};

// With one placeholder for all names of a party, so that many have several surfaces.
MaskedContract masked_contract(std::size_t characters) {
  const auto contract = bench::make_contract({.characters = characters});
  MaskedContract out;
  out.document = core::anonymization::anonymize_document(contract.text, contract.analyzer, "zh",
                                                         "contract_default",
                                                         core::anonymization::Aliases::ONE);
  out.mapping = restore::make_mapping(out.document);
  return out;
}

void count_characters(benchmark::State& state, const MaskedContract& masked) {
  const auto characters = static_cast<std::int64_t>(masked.document.text.size());
  state.SetItemsProcessed(state.iterations() * characters);
  state.SetComplexityN(state.range(0));
}

void mapping_by_text(benchmark::State& state) {
  const auto masked = masked_contract(static_cast<std::size_t>(state.range(0)));
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(restore::write_mapping(restore::make_mapping(masked.document)));
  }
  count_characters(state, masked);
}
BENCHMARK(mapping_by_text)
    ->RangeMultiplier(10)
    ->Range(1'000, 1'000'000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

// `edited`: with a line of its own before each ninth, so that contexts have changed.
void restore_text(benchmark::State& state, bool edited) {
  const auto masked = masked_contract(static_cast<std::size_t>(state.range(0)));
  std::u32string text = masked.document.text;
  if (edited) {
    constexpr std::size_t STEP = 900;
    std::u32string changed;
    for (std::size_t at = 0; at < text.size(); at += STEP) {
      changed.append(U"\n【NAME １】\n").append(text, at, STEP);
    }
    text = std::move(changed);
  }
  while (state.KeepRunning()) {
    const auto findings = restore::find_restorable(text, masked.mapping);
    benchmark::DoNotOptimize(restore::restored_text(text, masked.mapping, findings));
  }
  count_characters(state, masked);
}
void restore_by_text(benchmark::State& state) { restore_text(state, false); }
void restore_edited_by_text(benchmark::State& state) { restore_text(state, true); }
BENCHMARK(restore_by_text)
    ->RangeMultiplier(10)
    ->Range(1'000, 1'000'000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(restore_edited_by_text)
    ->RangeMultiplier(10)
    ->Range(1'000, 1'000'000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

}  // namespace
