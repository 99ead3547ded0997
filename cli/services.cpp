#include "cli/services.hpp"

#include <cstdlib>
#include <iostream>
#include <memory>
#include <mutex>
#include <utility>

#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "core/anonymization/analyzer/embedded_analyzer.hpp"
#include "core/anonymization/analyzer/model_path.hpp"
#include "core/errors.hpp"
#include "core/nlp/hanlp_client.hpp"
#include "core/nlp/remote_recognizer.hpp"
#include "core/remote/presidio_remote_analyzer.hpp"

namespace cli {
namespace {

namespace remote = core::remote;

constexpr auto EMBEDDED = "embedded";
constexpr std::string_view PRESIDIO = "presidio=";
constexpr std::string_view AND_EMBEDDED = "+embedded";
constexpr auto KEY_VARIABLE = "VEILDOC_HANLP_KEY";
constexpr std::size_t LONGEST_KEY = 4096;

// The key of the file, or else of the environment; empty if there is none.
std::string read_key(const std::string& file) {
  if (file.empty()) {
    const char* value = std::getenv(KEY_VARIABLE);
    return value == nullptr ? std::string() : std::string(value);
  }
  auto key = read_all(file, std::cin);
  constexpr auto BLANKS = " \t\r\n";
  key.erase(key.find_last_not_of(BLANKS) + 1);
  key.erase(0, key.find_first_not_of(BLANKS));
  if (key.empty()) throw Failure(EXIT_INPUT, file + ": no key is in it");
  if (key.size() > LONGEST_KEY) throw Failure(EXIT_INPUT, file + ": too long for a key");
  return key;
}

}  // namespace

const std::string_view SERVICES_HELP =
    "Services:\n"
    "  --analyzer presidio=http://host:5002 asks an analyzer service of Presidio instead\n"
    "  of the embedded recognizers, presidio=URL+embedded asks both. --hanlp URL asks a\n"
    "  service of HanLP for the names in Chinese documents; its key, if it needs one, is\n"
    "  in the file of --hanlp-key-file or in VEILDOC_HANLP_KEY. The text of the document\n"
    "  is sent to them, and to nobody else; use https unless the network is yours.\n";

void ServiceOptions::declare(Options& options) {
  options.text("--analyzer", analyzer_, "WHICH",
               "What finds the entities: embedded, presidio=URL or\npresidio=URL+embedded, see "
               "Services (default: embedded)");
  options.text("--hanlp", hanlp_url_, "URL", "Ask this HanLP service for Chinese names");
  options.file("--hanlp-key-file", hanlp_key_file_,
               "The key of the service is in this file (default:\nVEILDOC_HANLP_KEY)");
  options.flag("--hanlp-fallback", hanlp_fallback_,
               "Find the names without the service if it does not answer");
  options.text("--spacy-model", spacy_model_, "DIR",
               "Run the spaCy model in this folder on English documents,\nsee docs/spacy.md "
               "(default: VEILDOC_SPACY_MODEL_EN)");
}

void ServiceOptions::check(const Options& options, bool has_recognizers) {
  check_analyzer(has_recognizers);
  check_hanlp(options);
  if (!options.given("--spacy-model")) return;
  if (!embedded_) {
    throw Failure(EXIT_USAGE, "--spacy-model needs --analyzer embedded or presidio=URL+embedded");
  }
  spacy_model_ = find_spacy_model(spacy_model_);
}

void ServiceOptions::check_analyzer(bool has_recognizers) {
  if (analyzer_ == EMBEDDED) return;
  std::string_view url = analyzer_;
  if (!url.starts_with(PRESIDIO)) {
    throw Failure(EXIT_USAGE, "--analyzer: embedded, presidio=URL or presidio=URL+embedded");
  }
  url.remove_prefix(PRESIDIO.size());
  embedded_ = url.ends_with(AND_EMBEDDED);
  if (embedded_) url.remove_suffix(AND_EMBEDDED.size());
  if (!embedded_ && has_recognizers) {
    throw Failure(EXIT_USAGE, "--recognizers needs --analyzer embedded or presidio=URL+embedded");
  }
  try {
    presidio_ = std::make_shared<remote::PresidioRemoteAnalyzer>(url);
  } catch (const core::ValueError& e) {
    throw Failure(EXIT_USAGE, std::string("--analyzer: ") + e.what());
  }
}

std::string find_spacy_model(const std::string& folder) {
  const auto found = core::anonymization::_resolve_nested_spacy_model_dir(folder);
  if (found) return found->string();
  throw Failure(EXIT_INPUT, "--spacy-model: no spaCy model in " + folder +
                                ": neither there nor one level below are both meta.json and "
                                "config.cfg");
}

void ServiceOptions::check_hanlp(const Options& options) {
  if (!options.given("--hanlp")) {
    for (const auto* name : {"--hanlp-key-file", "--hanlp-fallback"}) {
      if (options.given(name)) throw Failure(EXIT_USAGE, std::string(name) + " needs --hanlp");
    }
    return;
  }
  if (!embedded_) {
    throw Failure(EXIT_USAGE, "--hanlp needs --analyzer embedded or presidio=URL+embedded");
  }
  try {
    remote::HttpClient{hanlp_url_};
  } catch (const core::ValueError& e) {
    throw Failure(EXIT_USAGE, std::string("--hanlp: ") + e.what());
  }
  core::nlp::HanlpOptions wanted;
  wanted.key = read_key(hanlp_key_file_);
  try {
    hanlp_ = std::make_shared<core::nlp::HanlpClient>(hanlp_url_, std::move(wanted));
  } catch (const core::ValueError& e) {
    const auto from = hanlp_key_file_.empty() ? std::string(KEY_VARIABLE) : hanlp_key_file_;
    throw Failure(EXIT_INPUT, from + ": " + e.what());
  }
}

void ServiceOptions::add_to(AnalyzerOptions& wanted, std::ostream& err) const {
  wanted.embedded = embedded_;
  wanted.presidio = presidio_;
  wanted.hanlp = hanlp_;
  wanted.spacy_model = spacy_model_;
  if (!hanlp_fallback_) return;
  wanted.hanlp_fallback = [&err, mutex = std::make_shared<std::mutex>()](const auto& reason) {
    const std::lock_guard lock(*mutex);
    err << "veildoc: warning: " << reason << "; Chinese names are found without the service\n"
        << std::flush;
  };
}

std::unique_ptr<core::anonymization::Analyzer> make_default_analyzer(
    const AnalyzerOptions& options) {
  auto recognizers = options.recognizers;
  if (options.presidio != nullptr) {
    for (auto& recognizer : core::nlp::remote_recognizers(
             options.presidio, remote::PresidioRemoteAnalyzer::NAME, remote::presidio_entities())) {
      recognizers.push_back(std::move(recognizer));
    }
  }
  if (!options.embedded) return core::nlp::make_refining_engine(std::move(recognizers));
  return core::anonymization::make_embedded_analyzer(
      {.percentages_and_quantities = options.profile == "strict",
       .recognizers = std::move(recognizers),
       .hanlp = options.hanlp,
       .hanlp_fallback = options.hanlp_fallback,
       .spacy_model = options.spacy_model});
}

}  // namespace cli
