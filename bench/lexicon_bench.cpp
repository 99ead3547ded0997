// The large lists: cutting Chinese text into words, looking up words in Latin letters.
#include <benchmark/benchmark.h>

#include "bench/documents.hpp"
#include "core/nlp/chinese_lexicon.hpp"
#include "core/nlp/latin_lexicon.hpp"
#include "core/nlp/word_segmentation.hpp"

namespace {

void word_segmentation(benchmark::State& state) {
  const auto document =
      bench::make_contract({.characters = static_cast<std::size_t>(state.range(0))});
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(core::nlp::segment_words(document.text));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(document.text.size()));
  state.SetComplexityN(state.range(0));
}
BENCHMARK(word_segmentation)
    ->RangeMultiplier(10)
    ->Range(1'000, 1'000'000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMicrosecond);

// Everyday Chinese without punctuation, the most words to choose from.
void word_segmentation_of_dense_text(benchmark::State& state) {
  std::u32string text;
  while (text.size() < 1'000'000) {
    text +=
        U"双方应当按照本合同约定的付款方式支付全部货款逾期支付的应当承担违约责任并赔偿由此造成的损失";
  }
  while (state.KeepRunning()) benchmark::DoNotOptimize(core::nlp::segment_words(text));
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(word_segmentation_of_dense_text)->Unit(benchmark::kMillisecond);

void latin_word(benchmark::State& state) {
  constexpr std::u32string_view WORDS[] = {U"Agreement", U"Müller", U"notwithstanding",
                                           U"São Paulo", U"the",    U"Xyzzy"};
  while (state.KeepRunning()) {
    for (const auto word : WORDS) benchmark::DoNotOptimize(core::nlp::latin_word(word));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(std::size(WORDS)));
}
BENCHMARK(latin_word);

void chinese_word(benchmark::State& state) {
  constexpr std::u32string_view WORDS[] = {U"合同", U"有限责任公司", U"南山区", U"鑫璟宸"};
  while (state.KeepRunning()) {
    for (const auto word : WORDS) benchmark::DoNotOptimize(core::nlp::chinese_word(word));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(std::size(WORDS)));
}
BENCHMARK(chinese_word);

}  // namespace
