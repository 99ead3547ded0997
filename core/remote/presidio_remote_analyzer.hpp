// The analyzer service of Presidio, over HTTP.
//
//   PresidioRemoteAnalyzer analyzer("http://localhost:5002");
//   anonymize_with_numbered_placeholders(text, analyzer, "auto")
//
// Better inside a RemoteRecognizer (core/nlp/remote_recognizer.hpp): its hits are
// then repaired as those of the embedded analyzer are.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/anonymization/analyzer.hpp"
#include "core/remote/http_client.hpp"

namespace core::remote {

struct PresidioOptions {
  HttpOptions http = {};
  // Of one text, in code points. The service refuses more than 1,000,000, and its
  // models take about a gigabyte of memory for 100,000.
  std::size_t most_characters = 100'000;
  // Of one request.
  std::size_t most_characters_of_batch = 1'000'000;
  std::size_t most_texts_of_batch = 500;
  // Hits below are not asked for. The service by itself reports from 0.01 up, such
  // as any nine digits for an account.
  double score_threshold = 0.4;
};

class PresidioRemoteAnalyzer : public anonymization::Analyzer {
 public:
  static constexpr std::string_view NAME = "PresidioRemoteAnalyzer";

  // Asks nothing of the service yet. Throws ValueError for an address that cannot be
  // used, see HttpClient.
  explicit PresidioRemoteAnalyzer(std::string_view url, PresidioOptions options = {});

  // The hits, none of them outside the text, under our names of kinds; those of
  // different kinds may overlap. Throws ExternalError with address and reason, of
  // which ServiceUnavailable is one; never a part of the text.
  std::vector<anonymization::RecognizerResult> analyze(std::u32string_view text,
                                                       std::string_view language) const override;

  // The same for many texts with as few requests as possible, in their order.
  std::vector<std::vector<anonymization::RecognizerResult>> analyze_batch(
      std::span<const std::u32string_view> texts, std::string_view language) const;

  // The kinds that the service finds in texts of the language, sorted.
  std::vector<std::string> get_supported_entities(std::string_view language) const;

  const std::string& address() const { return client_.address(); }

 private:
  HttpClient client_;
  PresidioOptions options_;
};

// The kinds that a service finds as it comes, under our names.
std::vector<std::string> presidio_entities();

}  // namespace core::remote
