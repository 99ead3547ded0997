// The services that a command may ask for names: their options, and the analyzer
// that is made of them.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include "cli/options.hpp"
#include "cli/run.hpp"

namespace cli {

class ServiceOptions {
 public:
  void declare(Options& options);
  // Reads the key. Throws Failure(EXIT_USAGE) for addresses that cannot be used and
  // options that do not go together, Failure(EXIT_INPUT) for a key.
  // `has_recognizers`: the user brings some of his own.
  void check(const Options& options, bool has_recognizers);
  // Adds what was asked for; warnings go to `err`, which outlives the analyzer.
  void add_to(AnalyzerOptions& wanted, std::ostream& err) const;

 private:
  void check_analyzer(bool has_recognizers);
  void check_hanlp(const Options& options);

  std::string analyzer_ = "embedded";
  std::string hanlp_url_;
  std::string hanlp_key_file_;
  std::string spacy_model_;
  bool hanlp_fallback_ = false;
  bool embedded_ = true;
  std::shared_ptr<const core::anonymization::Analyzer> presidio_;
  std::shared_ptr<const core::nlp::HanlpClient> hanlp_;
};

// The spaCy model in a folder or one level below it. Throws Failure(EXIT_INPUT).
std::string find_spacy_model(const std::string& folder);

// Lines on the services for a page of help.
extern const std::string_view SERVICES_HELP;

// The analyzer that a command has by itself.
std::unique_ptr<core::anonymization::Analyzer> make_default_analyzer(
    const AnalyzerOptions& options);

}  // namespace cli
