#include "core/remote/presidio_remote_analyzer.hpp"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include <nlohmann/json.hpp>

#include "core/remote/json_answer.hpp"
#include "core/remote/text_pieces.hpp"
#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace core::remote {
namespace {

using anonymization::Offset;
using anonymization::RecognizerResult;
using nlohmann::json;
using Hits = std::vector<RecognizerResult>;

constexpr auto ANALYZE = "/analyze";
constexpr std::string_view NO_RECOGNIZERS =
    "No matching recognizers were found to serve the request.";
// How the answer to a failure of the service itself begins.
constexpr std::string_view INTERNAL_ERROR = "The server encountered an internal error";

// Names that services give to kinds, depending on their models, and ours.
struct Kind {
  std::string_view theirs;
  std::string_view ours;
};
constexpr std::array KINDS = {
    Kind{"DATE", "DATE_TIME"},     Kind{"EMAIL", "EMAIL_ADDRESS"},
    Kind{"FAC", "LOCATION"},       Kind{"FACILITY", "LOCATION"},
    Kind{"GPE", "LOCATION"},       Kind{"IP", "IP_ADDRESS"},
    Kind{"LOC", "LOCATION"},       Kind{"NORP", "NRP"},
    Kind{"ORG", "ORGANIZATION"},   Kind{"PER", "PERSON"},
    Kind{"PHONE", "PHONE_NUMBER"}, Kind{"TIME", "DATE_TIME"},
};

std::string our_kind(const std::string& theirs) {
  const auto* found = std::find_if(KINDS.begin(), KINDS.end(),
                                   [&](const Kind& kind) { return kind.theirs == theirs; });
  return found == KINDS.end() ? theirs : std::string(found->ours);
}

// The message of {"error": "..."}; empty if the body is something else.
std::string error_of(const HttpResponse& response) {
  const auto body = parse_answer(response.body);
  if (!body.is_object() || !body.contains("error") || !body["error"].is_string()) return {};
  return body["error"].get<std::string>();
}

// The service reports the faults of a request with the status 500, too.
bool is_client_fault(const HttpResponse& response) {
  const auto error = error_of(response);
  return response.status == STATUS_SERVER_ERROR && !error.empty() &&
         !error.starts_with(INTERNAL_ERROR);
}

// What is wrong with the request. Of the service's messages only those that are
// known are passed on: others may quote the text.
std::string fault_of(const HttpResponse& response, std::string_view language) {
  const auto error = error_of(response);
  if (error == NO_RECOGNIZERS) {
    return "the service has no recognizers for the language \"" + std::string(language) + "\"";
  }
  for (const auto* known : {"No text provided", "No language provided"}) {
    if (error == known) return "the service refuses the request: " + error;
  }
  return "the service refuses the request (status 500; its message may quote the document and is "
         "not shown)";
}

// A Chinese text goes on without a blank, and the service's patterns for addresses
// run into it: 邮箱zhang.wei@example.com, https://example.com。
bool is_chinese(char32_t c) {
  return text::is_ideograph(c) || (c >= 0x3000 && c <= 0x303F) || (c >= 0xFF00 && c <= 0xFF65);
}

void leave_chinese(std::u32string_view text, RecognizerResult& hit) {
  const auto surface = text::slice(text, hit.start, hit.end);
  if (hit.entity_type == anonymization::entity_type::EMAIL_ADDRESS) {
    const auto at = std::min(surface.find(U'@'), surface.size());
    for (std::size_t i = at; i > 0; --i) {
      if (!is_chinese(surface[i - 1])) continue;
      if (i < at) hit.start += static_cast<Offset>(i);
      break;
    }
  } else if (hit.entity_type == anonymization::entity_type::URL) {
    const auto last = std::find_if_not(surface.rbegin(), surface.rend(), [](char32_t c) {
      return is_chinese(c) && !text::is_ideograph(c);
    });
    hit.end -= last - surface.rbegin();
  }
}

// Adds the hits of one piece to those of its text; false if they are malformed.
bool add_hits(const json& list, const TextPiece& piece, Hits& hits) {
  if (!list.is_array()) return false;
  const auto length = piece.text.size();
  for (const auto& hit : list) {
    if (!hit.is_object()) return false;
    const auto kind = string_member(hit, "entity_type");
    const auto start = index_member(hit, "start");
    const auto end = index_member(hit, "end");
    const auto score = number_member(hit, "score");
    if (!kind || kind->empty() || !start || !end || !score) return false;
    if (*start > *end || *end > length) return false;
    if (*start == *end) continue;
    RecognizerResult result{our_kind(*kind), static_cast<Offset>(*start), static_cast<Offset>(*end),
                            *score};
    leave_chinese(piece.text, result);
    result.start += static_cast<Offset>(piece.start);
    result.end += static_cast<Offset>(piece.start);
    hits.push_back(std::move(result));
  }
  return true;
}

struct Part {
  std::size_t of;  // index of its text
  TextPiece piece;
};

// Requests for parts of texts, and what comes back.
class Exchange {
 public:
  Exchange(const HttpClient& client, const PresidioOptions& options, std::string_view language,
           std::vector<Hits>& hits)
      : client_(client), options_(options), language_(language), hits_(hits) {}

  void analyze(std::span<const Part> parts) {
    while (!parts.empty()) {
      const auto count = batches_work_ ? size_of_batch(parts) : 1;
      if (count == 1) {
        single(parts.front());
      } else if (!batch(parts.first(count))) {
        batches_work_ = false;  // as with versions up to 2.2.362
        continue;
      }
      parts = parts.subspan(count);
    }
  }

 private:
  std::size_t size_of_batch(std::span<const Part> parts) const {
    const auto most =
        std::min(parts.size(), std::max<std::size_t>(options_.most_texts_of_batch, 1));
    std::size_t count = 0;
    std::size_t characters = 0;
    while (count < most) {
      characters += parts[count].piece.text.size();
      if (count > 0 && characters > options_.most_characters_of_batch) break;
      ++count;
    }
    return count;
  }

  HttpResponse ask(json text) const {
    const json request = {{"text", std::move(text)},
                          {"language", language_},
                          {"score_threshold", options_.score_threshold}};
    return client_.post_json(ANALYZE, request.dump(), is_client_fault);
  }

  void single(const Part& part) {
    const auto response = ask(text::encode_utf8(part.piece.text));
    if (response.status != STATUS_OK) client_.fail(ANALYZE, fault_of(response, language_));
    add(parse_answer(response.body), part);
  }

  // False if the service does not take several texts at once.
  bool batch(std::span<const Part> parts) {
    auto texts = json::array();
    for (const auto& part : parts) texts.push_back(text::encode_utf8(part.piece.text));
    const auto response = ask(std::move(texts));
    if (response.status != STATUS_OK) {
      if (error_of(response) != NO_RECOGNIZERS) return false;
      client_.fail(ANALYZE, fault_of(response, language_));
    }
    const auto lists = parse_answer(response.body);
    if (!lists.is_array() || lists.size() != parts.size()) malformed();
    for (std::size_t i = 0; i < parts.size(); ++i) add(lists[i], parts[i]);
    return true;
  }

  void add(const json& list, const Part& part) {
    if (!add_hits(list, part.piece, hits_[part.of])) malformed();
  }

  [[noreturn]] void malformed() const {
    client_.fail(ANALYZE, "the answer is not that of a Presidio analyzer");
  }

  const HttpClient& client_;
  const PresidioOptions& options_;
  std::string language_;
  std::vector<Hits>& hits_;
  bool batches_work_ = true;
};

}  // namespace

PresidioRemoteAnalyzer::PresidioRemoteAnalyzer(std::string_view url, PresidioOptions options)
    : client_(url, options.http), options_(std::move(options)) {}

std::vector<RecognizerResult> PresidioRemoteAnalyzer::analyze(std::u32string_view text,
                                                              std::string_view language) const {
  return std::move(analyze_batch(std::span(&text, 1), language).front());
}

std::vector<std::vector<RecognizerResult>> PresidioRemoteAnalyzer::analyze_batch(
    std::span<const std::u32string_view> texts, std::string_view language) const {
  std::vector<std::u32string> read;
  read.reserve(texts.size());
  std::vector<Part> parts;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    read.push_back(with_line_ends(texts[i]));
    for (const auto& piece : text_pieces(read.back(), options_.most_characters)) {
      parts.push_back({i, piece});
    }
  }
  std::vector<Hits> hits(texts.size());
  Exchange(client_, options_, language, hits).analyze(parts);
  return hits;
}

std::vector<std::string> PresidioRemoteAnalyzer::get_supported_entities(
    std::string_view language) const {
  const bool is_code =
      !language.empty() && std::all_of(language.begin(), language.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-' || c == '_';
      });
  if (!is_code) throw ValueError("not the code of a language");
  const auto path = "/supportedentities?language=" + std::string(language);
  const auto response = client_.get(path, is_client_fault);
  if (response.status != STATUS_OK) client_.fail(path, fault_of(response, language));
  const auto list = parse_answer(response.body);
  std::set<std::string> kinds;
  for (const auto& kind : list.is_array() ? list : json::array({nullptr})) {
    if (!kind.is_string()) client_.fail(path, "the answer is not that of a Presidio analyzer");
    kinds.insert(our_kind(kind.get<std::string>()));
  }
  return {kinds.begin(), kinds.end()};
}

std::vector<std::string> presidio_entities() {
  return {"CREDIT_CARD",       "CRYPTO",     "DATE_TIME",    "EMAIL_ADDRESS",
          "IBAN_CODE",         "IP_ADDRESS", "LOCATION",     "MAC_ADDRESS",
          "MEDICAL_LICENSE",   "NRP",        "ORGANIZATION", "PERSON",
          "PHONE_NUMBER",      "UK_NHS",     "URL",          "US_BANK_NUMBER",
          "US_DRIVER_LICENSE", "US_ITIN",    "US_PASSPORT",  "US_SSN"};
}

}  // namespace core::remote
