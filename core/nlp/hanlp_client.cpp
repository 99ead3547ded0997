#include "core/nlp/hanlp_client.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include <nlohmann/json.hpp>

#include "core/recognition/word_edges.hpp"
#include "core/remote/json_answer.hpp"
#include "core/remote/text_pieces.hpp"
#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace core::nlp {
namespace {

using anonymization::Offset;
using anonymization::RecognizerResult;
using nlohmann::json;

constexpr auto PARSE = "/parse";
constexpr auto TOKENS = "tok/fine";

struct Label {
  std::string_view label;
  std::string_view kind;
};
// Sorted. Names of the three sets that mean the same have the same kind.
constexpr std::array LABELS = {
    Label{"ACCELERATION", "QUANTITY"},
    Label{"ANGLE", "QUANTITY"},
    Label{"AREA", "QUANTITY"},
    Label{"CAPACITY", "QUANTITY"},
    Label{"DATE", "DATE_TIME"},
    Label{"EMAIL", "EMAIL_ADDRESS"},
    Label{"FAC", "LOCATION"},
    Label{"FAX", "PHONE_NUMBER"},
    Label{"GPE", "LOCATION"},
    Label{"LENGTH", "QUANTITY"},
    Label{"LOC", "LOCATION"},
    Label{"LOCATION", "LOCATION"},
    Label{"MEASURE", "QUANTITY"},
    Label{"MONEY", "MONEY"},
    Label{"NORP", "NRP"},
    Label{"ORG", "ORGANIZATION"},
    Label{"ORGANIZATION", "ORGANIZATION"},
    Label{"PERCENT", "PERCENT"},
    Label{"PERSON", "PERSON"},
    Label{"PHONE", "PHONE_NUMBER"},
    Label{"POSTALCODE", "LOCATION"},
    Label{"QUANTITY", "QUANTITY"},
    Label{"SPEED", "QUANTITY"},
    Label{"TELEX", "PHONE_NUMBER"},
    Label{"TEMPERATURE", "QUANTITY"},
    Label{"TIME", "DATE_TIME"},
    Label{"WEIGHT", "QUANTITY"},
    Label{"WWW", "URL"},
    Label{"nr", "PERSON"},
    Label{"ns", "LOCATION"},
    Label{"nt", "ORGANIZATION"},
};

// Steps through a text, token by token.
class Walk {
 public:
  explicit Walk(std::u32string_view text) : text_(text) {}

  std::optional<TokenSpan> place(std::u32string_view token) {
    token = text::strip(token);
    if (token.empty()) return TokenSpan{at_, at_};
    for (;;) {
      skip_space(at_);
      if (at_ >= text_.size() || effort_ > most_effort()) return {};
      if (const auto end = match(token)) {
        const TokenSpan span{at_, *end};
        at_ = *end;
        return span;
      }
      // What a tokenizer may drop; never a part of a name.
      if (text::is_letter_or_number(text_[at_])) return {};
      ++at_;
    }
  }

 private:
  // Keeps the walk linear, whatever the tokens are.
  std::size_t most_effort() const { return 16 * text_.size() + 1024; }

  void skip_space(std::size_t& at) const {
    while (at < text_.size() && is_gap(text_[at])) ++at;
  }
  static bool is_gap(char32_t c) { return text::is_space(c) || text::is_control(c); }

  std::optional<std::size_t> match(std::u32string_view token) {
    std::size_t at = at_;
    for (const char32_t c : token) {
      ++effort_;
      if (is_gap(c)) continue;
      skip_space(at);
      if (at >= text_.size()) return {};
      if (text_[at] != c && recognition::fold_letter(text_[at]) != recognition::fold_letter(c)) {
        return {};
      }
      ++at;
    }
    return at;
  }

  std::u32string_view text_;
  std::size_t at_ = 0;
  std::size_t effort_ = 0;
};

struct Answer {
  std::vector<std::u32string> tokens = {};  // of all sentences
  struct Entity {
    std::string label;
    std::size_t begin;  // tokens, of all sentences
    std::size_t end;
  };
  std::vector<Entity> entities = {};
};

bool read_entity(const json& entity, std::size_t first, std::size_t count, Answer& answer) {
  constexpr std::size_t MEMBERS = 4;  // surface, label, first token, token behind the last
  if (!entity.is_array() || entity.size() < MEMBERS || !entity[1].is_string()) return false;
  const auto begin = remote::index_of(entity[2]);
  const auto end = remote::index_of(entity[3]);
  if (!begin || !end || *begin >= *end || *end > count) return false;
  answer.entities.push_back({entity[1].get<std::string>(), first + *begin, first + *end});
  return true;
}

bool read_sentence(const json& tokens, const json& entities, Answer& answer) {
  if (!tokens.is_array() || !entities.is_array()) return false;
  const std::size_t first = answer.tokens.size();
  for (const auto& token : tokens) {
    if (!token.is_string()) return false;
    answer.tokens.push_back(text::decode_utf8(token.get_ref<const std::string&>()));
  }
  return std::all_of(entities.begin(), entities.end(), [&](const auto& entity) {
    return read_entity(entity, first, tokens.size(), answer);
  });
}

std::optional<Answer> read_answer(const std::string& body, const std::string& task) {
  const auto value = remote::parse_answer(body);
  if (!value.is_object() || !value.contains(TOKENS) || !value.contains(task)) return {};
  const auto& tokens = value[TOKENS];
  const auto& entities = value[task];
  if (!tokens.is_array() || !entities.is_array() || tokens.size() != entities.size()) return {};
  Answer answer;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    if (!read_sentence(tokens[i], entities[i], answer)) return {};
  }
  return answer;
}

remote::HttpOptions with_key(const HanlpOptions& options) {
  auto http = options.http;
  if (!options.key.empty()) http.authorization = "Basic " + options.key;
  return http;
}

}  // namespace

std::string_view kind_of_hanlp_label(std::string_view label) {
  const auto* found = std::lower_bound(LABELS.begin(), LABELS.end(), label,
                                       [](const Label& l, auto name) { return l.label < name; });
  return found != LABELS.end() && found->label == label ? found->kind : std::string_view();
}

bool place_tokens(std::u32string_view text, const std::vector<std::u32string>& tokens,
                  std::vector<TokenSpan>& spans) {
  Walk walk(text);
  spans.clear();
  for (const auto& token : tokens) {
    const auto span = walk.place(token);
    if (!span) return false;
    spans.push_back(*span);
  }
  return true;
}

HanlpClient::HanlpClient(std::string_view url, HanlpOptions options)
    : options_(std::move(options)), client_(url, with_key(options_)) {}

std::vector<RecognizerResult> HanlpClient::find(std::u32string_view text) const {
  const auto read = remote::with_line_ends(text);
  std::vector<RecognizerResult> results;
  std::vector<TokenSpan> spans;
  for (const auto& piece : remote::text_pieces(read, options_.most_characters)) {
    const json request = {{"text", text::encode_utf8(piece.text)},
                          {"tasks", {options_.task}},
                          {"language", options_.language}};
    const auto response = client_.post_json(PARSE, request.dump());
    const auto answer = read_answer(response.body, options_.task);
    if (!answer) client_.fail(PARSE, "the answer is not that of a HanLP service");
    if (!place_tokens(piece.text, answer->tokens, spans)) {
      client_.fail(PARSE, "the tokens of the answer are not those of the document");
    }
    for (const auto& entity : answer->entities) {
      const auto kind = kind_of_hanlp_label(entity.label);
      const auto start = piece.start + spans[entity.begin].start;
      const auto end = piece.start + spans[entity.end - 1].end;
      if (kind.empty() || start >= end) continue;
      results.push_back(
          {std::string(kind), static_cast<Offset>(start), static_cast<Offset>(end), SCORE});
    }
  }
  return results;
}

}  // namespace core::nlp
