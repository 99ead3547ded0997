#include "cli/masking.hpp"

#include <algorithm>
#include <exception>
#include <iostream>
#include <utility>

#include <unistd.h>

#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "core/anonymization/analyzer/language.hpp"
#include "core/anonymization/cleanup/filters.hpp"
#include "core/anonymization/strategy.hpp"
#include "core/errors.hpp"
#include "core/recognition/recognizer_file.hpp"
#include "core/text/utf8.hpp"

namespace cli {
namespace {

namespace anonymization = core::anonymization;
using core::recognition::SurfaceList;

constexpr std::size_t MOST_LINES_TOLD = 20;

core::recognition::RecognizerList recognizers_of(const std::string& file) {
  if (file.empty()) return {};
  try {
    return core::recognition::load_recognizers(file);
  } catch (const core::Error& e) {
    throw Failure(EXIT_INPUT, e.what());
  }
}

std::optional<SurfaceList> list_of(const std::string& file) {
  if (file.empty()) return {};
  const auto list = decode(read_all(file, std::cin), file);
  try {
    return SurfaceList(list.text, file);
  } catch (const core::RegexError& e) {
    throw Failure(EXIT_INPUT, e.what());
  }
}

void warn_of_unused_lines(const std::vector<std::size_t>& lines, const char* option,
                          std::ostream& err) {
  if (lines.empty()) return;
  err << "veildoc: warning: nothing in the document is meant by " << lines.size()
      << (lines.size() == 1 ? " line" : " lines") << " of " << option << ": ";
  for (std::size_t i = 0; i < std::min(lines.size(), MOST_LINES_TOLD); ++i) {
    err << (i == 0 ? "" : ", ") << lines[i];
  }
  err << (lines.size() > MOST_LINES_TOLD ? ", ...\n" : "\n");
}

// Where the surfaces of a list stand in a text.
anonymization::Stretches stretches_of(std::u32string_view text,
                                      const std::optional<SurfaceList>& list, const char* option,
                                      std::ostream* err) {
  if (!list) return {};
  try {
    auto found = list->find(text);
    if (err != nullptr) warn_of_unused_lines(found.unused_lines, option, *err);
    return std::move(found.stretches);
  } catch (const core::RegexError& e) {
    throw Failure(EXIT_INPUT, e.what());
  }
}

}  // namespace

const std::string_view PROFILES_HELP =
    "Profiles:\n"
    "  contract_default  everything that is recognized\n"
    "  strict            that, and percentages and quantities\n"
    "  identity          parties, persons, places, contacts and identifying numbers;\n"
    "                    dates, amounts, percentages and quantities stay readable\n";

void MaskingOptions::declare_language(Options& options) {
  options.choice("-l,--language", language, {"auto", "zh", "en"}, "Language of the document");
}

void MaskingOptions::declare_profile(Options& options) {
  options.text("--profile", profile, "NAME",
               "What is masked, see Profiles (default: " + profile + ")");
}

void MaskingOptions::declare_labels(Options& options) {
  options.choice("--labels", labels, {"auto", "zh", "en", "core"},
                 "How organizations and addresses read:\nzh [机构1], en [ORG1], auto as the "
                 "language of the document,\ncore as the library writes them");
}

void MaskingOptions::declare_aliases(Options& options) {
  options.choice("--aliases", aliases, {"one", "separate"},
                 "Names by which one party or person goes (北京华信科技有限公司\nand 华信科技): "
                 "one placeholder, or separate ones");
}

void MaskingOptions::declare_recognizers(Options& options) {
  options.file("--recognizers", recognizers,
               "Find what this file describes as well (JSON or YAML,\nsee docs/recognizers.md)");
}

void MaskingOptions::declare_overrides(Options& options) {
  options.file("--keep", keep,
               "Leave what this file lists readable: a surface or a /pattern/\na line");
  options.file("--mask", mask,
               "Mask what this file lists as well: a surface or a /pattern/\na line");
}

void MaskingOptions::check(const Options& options) {
  try {
    anonymization::_resolve_semantic_strategy_steps(profile, "en");
  } catch (const core::ValueError& e) {
    throw Failure(EXIT_USAGE, std::string("--profile: ") + e.what());
  }
  services.check(options, !recognizers.empty());
}

AnalysisInput analysis_input(std::u32string_view text, const MaskingOptions& options) {
  return {anonymization::_normalize_fill_underscores_for_analysis(text),
          anonymization::resolve_analyze_language(options.language, text)};
}

Input decode(std::string_view bytes, const std::string& name) {
  const auto refuse = [&](const std::string& why, std::size_t at) {
    throw Failure(EXIT_INPUT, name + ": " + why + " at byte " + std::to_string(at));
  };
  Input input;
  input.marked = bytes.starts_with(Input::BYTE_ORDER_MARK);
  const std::size_t skipped = input.marked ? Input::BYTE_ORDER_MARK.size() : 0;
  const std::size_t nul = bytes.find('\0');
  try {
    input.text = core::text::decode_utf8(bytes.substr(skipped));
  } catch (const core::text::DecodeError& e) {
    const std::size_t bad = skipped + e.byte_offset();
    if (bad < nul) refuse("not valid UTF-8", bad);
  }
  if (nul != std::string_view::npos) refuse("not a text: NUL", nul);
  return input;
}

std::string input_name(const std::string& path) { return path == "-" ? "standard input" : path; }

std::string read_bytes(const std::string& path, bool input_named, const Context& context) {
  if (!input_named && &context.in == &std::cin && ::isatty(STDIN_FILENO) != 0) {
    context.err << "veildoc: reading standard input; Ctrl-D ends it\n" << std::flush;
  }
  return read_all(path, context.in);
}

Input read_input(const std::string& path, bool input_named, const Context& context) {
  return decode(read_bytes(path, input_named, context), input_name(path));
}

GuardedAnalyzer::GuardedAnalyzer(const Context& context, const MaskingOptions& options) {
  AnalyzerOptions wanted{options.profile, recognizers_of(options.recognizers)};
  options.services.add_to(wanted, context.err);
  guard([&] { analyzer_ = context.make_analyzer(wanted); });
}

std::vector<anonymization::RecognizerResult> GuardedAnalyzer::analyze(
    std::u32string_view text, std::string_view language) const {
  std::vector<anonymization::RecognizerResult> results;
  guard([&] { results = analyzer_->analyze(text, language); });
  return results;
}

// Only our own errors promise not to quote the document.
void GuardedAnalyzer::rethrow() {
  try {
    throw;
  } catch (const core::ExternalError& e) {
    throw ServiceFailure(std::string("the analyzer failed: ") + e.what());
  } catch (const core::Error& e) {
    throw Failure(EXIT_ANALYZER, std::string("the analyzer failed: ") + e.what());
  } catch (const std::exception&) {
    throw Failure(EXIT_ANALYZER, "the analyzer failed");
  }
}

OverrideLists::OverrideLists(const MaskingOptions& options)
    : keep_(list_of(options.keep)), mask_(list_of(options.mask)) {}

anonymization::Overrides OverrideLists::find(std::u32string_view text, std::ostream* err) const {
  return {stretches_of(text, keep_, "--keep", err), stretches_of(text, mask_, "--mask", err)};
}

anonymization::AnonymizedDocument mask(std::u32string_view text, const MaskingOptions& options,
                                       const anonymization::Analyzer& analyzer,
                                       const anonymization::Overrides& overrides) {
  return labelled(mask_unlabelled(text, options, analyzer, overrides), options);
}

anonymization::AnonymizedDocument mask_unlabelled(std::u32string_view text,
                                                  const MaskingOptions& options,
                                                  const anonymization::Analyzer& analyzer,
                                                  const anonymization::Overrides& overrides) {
  const auto aliases =
      options.aliases == "one" ? anonymization::Aliases::ONE : anonymization::Aliases::SEPARATE;
  return anonymization::anonymize_document(text, analyzer, options.language, options.profile,
                                           aliases, overrides);
}

anonymization::AnonymizedDocument labelled(anonymization::AnonymizedDocument document,
                                           const MaskingOptions& options) {
  if (options.labels == "core") return document;
  const auto locale = options.labels == "auto" ? document.language : options.labels;
  return anonymization::with_labels(std::move(document), locale);
}

}  // namespace cli
