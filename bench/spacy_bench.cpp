// A spaCy model over English prose. The model is the one that VEILDOC_SPACY_MODEL_EN
// names, the text that of the file that VEILDOC_SPACY_TEXT names; else a small model of
// the tests and what it was tested with.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include <benchmark/benchmark.h>

#include "core/nlp/spacy/mapped_file.hpp"
#include "core/nlp/spacy/spacy_pipeline.hpp"
#include "core/nlp/spacy/token_types.hpp"
#include "core/text/utf8.hpp"

namespace {

using core::nlp::spacy::SpacyPipeline;

std::string named_or(const char* variable, const char* otherwise) {
  const char* value = std::getenv(variable);
  return value == nullptr ? otherwise : value;
}

std::string model_folder() {
  return named_or("VEILDOC_SPACY_MODEL_EN", VEILDOC_TEST_MODELS "/en_small");
}

// The first code points of the file; all of it if it is shorter.
std::u32string text_of(benchmark::State& state) {
  std::ifstream file(
      named_or("VEILDOC_SPACY_TEXT", VEILDOC_TEST_MODELS "/en_small.expected.jsonl"));
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  auto text = core::text::decode_utf8(bytes);
  text.resize(std::min(text.size(), static_cast<std::size_t>(state.range(0))));
  return text;
}

void count(benchmark::State& state, std::size_t characters) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(characters));
}

void spacy_analyze(benchmark::State& state) {
  const SpacyPipeline pipeline(model_folder());
  const auto text = text_of(state);
  while (state.KeepRunning()) benchmark::DoNotOptimize(pipeline.analyze(text));
  count(state, text.size());
}
BENCHMARK(spacy_analyze)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void spacy_tokenize(benchmark::State& state) {
  const core::nlp::spacy::Tokenizer tokenizer(core::nlp::spacy::read_tokenizer_rules(
      core::nlp::spacy::MappedFile(model_folder() + "/tokenizer")));
  const auto text = text_of(state);
  while (state.KeepRunning()) benchmark::DoNotOptimize(tokenizer.tokenize(text));
  count(state, text.size());
}
BENCHMARK(spacy_tokenize)->Arg(100'000)->Unit(benchmark::kMillisecond);

void spacy_load(benchmark::State& state) {
  const auto folder = model_folder();
  while (state.KeepRunning()) benchmark::DoNotOptimize(SpacyPipeline(folder).description());
}
BENCHMARK(spacy_load)->Unit(benchmark::kMillisecond);

}  // namespace
