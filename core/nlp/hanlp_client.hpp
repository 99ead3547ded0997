// The service of HanLP that finds names in Chinese texts, over HTTP.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/anonymization/result.hpp"
#include "core/remote/http_client.hpp"

namespace core::nlp {

struct HanlpOptions {
  remote::HttpOptions http = {};
  // Sent as "Authorization: Basic KEY"; empty: none.
  std::string key = {};
  // What the service is asked for: ner/msra, ner/pku or ner/ontonotes.
  std::string task = "ner/msra";
  std::string language = "zh";
  // Of one request, in code points.
  std::size_t most_characters = 10'000;
};

class HanlpClient {
 public:
  // The score of its hits: the service gives none.
  static constexpr double SCORE = 0.85;

  // Asks nothing of the service yet. Throws ValueError for an address or a key that
  // cannot be used, see HttpClient.
  explicit HanlpClient(std::string_view url, HanlpOptions options = {});

  // The names, dates, amounts and so on of the text, as the service names them and
  // under our kinds. Long texts are cut at the ends of paragraphs and sentences.
  // Throws ServiceUnavailable if there is no answer, ExternalError for a wrong one.
  std::vector<anonymization::RecognizerResult> find(std::u32string_view text) const;

  const std::string& address() const { return client_.address(); }

 private:
  HanlpOptions options_;
  remote::HttpClient client_;
};

// Our kind for a label of MSRA, PKU or OntoNotes; empty for those that nothing of a
// contract is masked for (ordinals, durations, laws, works of art).
std::string_view kind_of_hanlp_label(std::string_view label);

// Where each token stands in the text, as [start, end). The tokens come one after
// another; white space between and within them, and what is no letter, digit or
// ideograph, may lack in them; letters may differ in case and width. False, and
// nothing useful in `spans`, if they are not those of the text.
struct TokenSpan {
  std::size_t start = 0;
  std::size_t end = 0;
};
bool place_tokens(std::u32string_view text, const std::vector<std::u32string>& tokens,
                  std::vector<TokenSpan>& spans);

}  // namespace core::nlp
