// Files of a model as somebody may have tampered with them. The first byte of an input
// says which file the rest is; seeds.sh makes inputs of the small models.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "core/errors.hpp"
#include "core/nlp/spacy/dependency_parser.hpp"
#include "core/nlp/spacy/entity_finder.hpp"
#include "core/nlp/spacy/mapped_file.hpp"
#include "core/nlp/spacy/network_file.hpp"
#include "core/nlp/spacy/static_vectors.hpp"
#include "core/nlp/spacy/tok2vec.hpp"
#include "core/nlp/spacy/token_types.hpp"
#include "core/nlp/spacy/tokenizer.hpp"

namespace {

using namespace core::nlp::spacy;  // NOLINT(google-build-using-namespace): all of it is meant

constexpr auto TEXT = U"Cendrix Corp. paid US$ 3.5 million, inter alia, to O. Ashgrovel.";

// A network alone, and with a text going through what can be made of it.
void run_network(const MappedFile& file, bool is_decider) {
  const NetworkFile network(file);
  const Tok2Vec tok2vec(network, nullptr);
  const Tokenizer tokenizer{TokenizerRules()};
  const auto tokens = type_tokens(TEXT, tokenizer.tokenize(TEXT), tokenizer, {});
  Tok2VecPass pass(tok2vec, tokens);
  TokenVectors vectors;
  while (pass.next(vectors)) {
  }
  if (!is_decider) return;
  constexpr std::string_view MOVES =
      "\x81\xA5moves\xD9\x60"
      R"({"1":{"A":5,"B":4},"2":{"A":5,"B":4},"3":{"A":5,"B":4},"4":{"A":5,"B":4,"":1},"5":{"":1}}       )";
  const EntityFinder finder(network, MappedFile("moves", MOVES));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  const MappedFile file("input", bytes);
  try {
    switch (data[0]) {
      case 't':
        Tokenizer(read_tokenizer_rules(file)).tokenize(TEXT);
        break;
      case 'n':
        run_network(file, false);
        break;
      case 'd':
        run_network(file, true);
        break;
      case 'm':
        read_moves(file, false);
        break;
      case 'l':
        NormTable{file};
        break;
      case 'v':
        StaticVectors(std::make_unique<MappedFile>("input", bytes), MappedFile("keys", "\x80"));
        break;
      default:
        break;
    }
  } catch (const core::Error&) {  // what a damaged file is told by
  }
  return 0;
}
