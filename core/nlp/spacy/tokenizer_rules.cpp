#include "core/nlp/spacy/tokenizer_rules.hpp"

#include <algorithm>
#include <utility>

#include "core/nlp/spacy/model_error.hpp"
#include "core/nlp/spacy/msgpack.hpp"
#include "core/nlp/spacy/python_pattern.hpp"
#include "core/text/utf8.hpp"

namespace core::nlp::spacy {
namespace {

// Attributes of a token of an exception.
constexpr std::uint64_t ORTH = 65;
constexpr std::uint64_t NORM = 67;
// Longer than any that the tokenizers of spaCy have; a bound on the time to compile one.
constexpr std::size_t LONGEST_PATTERN = 1 << 20;

std::u32string decoded(std::string_view bytes, const MsgpackReader& reader) {
  try {
    return text::decode_utf8(bytes);
  } catch (const text::DecodeError&) {
    reader.fail("not UTF-8");
  }
}

std::unique_ptr<const text::Regex> read_pattern(MsgpackReader& reader, const std::string& key) {
  if (reader.take_nil()) return nullptr;
  const auto bytes = reader.read_bytes();
  if (bytes.size() > LONGEST_PATTERN) reader.fail("pattern too long");
  try {
    return std::make_unique<text::Regex>("spaCy tokenizer " + key,
                                         from_python_pattern(decoded(bytes, reader)));
  } catch (const RegexError& e) {
    reader.fail(e.what());
  }
}

class ExceptionReader {
 public:
  ExceptionReader(MsgpackReader& reader, TokenizerRules& rules) : reader_(reader), rules_(rules) {}

  void read() {
    for (auto left = reader_.read_map(); left > 0; --left) {
      auto text = decoded(reader_.read_bytes(), reader_);
      std::u32string joined;
      std::vector<ExceptionToken> tokens;
      for (auto more = reader_.read_array(); more > 0; --more) tokens.push_back(read_token(joined));
      if (joined != text || tokens.empty()) reader_.fail("an exception is not its tokens joined");
      rules_.longest_exception = std::max(rules_.longest_exception, text.size());
      rules_.exceptions.insert_or_assign(std::move(text), std::move(tokens));
    }
  }

 private:
  ExceptionToken read_token(std::u32string& joined) {
    ExceptionToken token;
    for (auto left = reader_.read_map(); left > 0; --left) {
      const auto attribute = reader_.read_unsigned();
      if (attribute == ORTH) {
        const auto orth = decoded(reader_.read_bytes(), reader_);
        token.length = static_cast<std::uint32_t>(orth.size());
        joined += orth;
      } else if (attribute == NORM) {
        rules_.norms.push_back(decoded(reader_.read_bytes(), reader_));
        token.norm = static_cast<std::uint32_t>(rules_.norms.size());
      } else {
        reader_.fail("an exception sets an attribute other than ORTH and NORM");
      }
    }
    if (token.length == 0) reader_.fail("an exception has an empty token");
    return token;
  }

  MsgpackReader& reader_;
  TokenizerRules& rules_;
};

}  // namespace

TokenizerRules read_tokenizer_rules(const MappedFile& file) {
  TokenizerRules rules;
  const std::pair<std::string_view, std::unique_ptr<const text::Regex>*> patterns[] = {
      {"prefix_search", &rules.prefix_search},
      {"infix_finditer", &rules.infix_finditer},
      {"token_match", &rules.token_match},
      {"url_match", &rules.url_match}};
  MsgpackReader reader(file.bytes(), file.name());
  for (auto left = reader.read_map(); left > 0; --left) {
    const std::string key(reader.read_bytes());
    reader.set_place(key);
    const auto* pattern = std::find_if(std::begin(patterns), std::end(patterns),
                                       [&](const auto& p) { return p.first == key; });
    if (pattern != std::end(patterns)) {
      *pattern->second = read_pattern(reader, key);
    } else if (key == "suffix_search") {
      rules.suffix_search = SuffixSearch(read_pattern(reader, key));
    } else if (key == "exceptions") {
      ExceptionReader(reader, rules).read();
    } else if (key == "faster_heuristics") {
      rules.faster_heuristics = reader.read_bool();
    } else {
      reader.skip();
    }
  }
  reader.expect_end();
  return rules;
}

}  // namespace core::nlp::spacy
