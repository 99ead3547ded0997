// What the commands that mask or analyse have in common: their options, their
// input, and an analyzer whose failures are told apart.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/command.hpp"
#include "cli/options.hpp"
#include "cli/services.hpp"
#include "core/anonymization_core.hpp"
#include "core/recognition/surface_list.hpp"

namespace cli {

struct MaskingOptions {
  std::string language = "auto";
  std::string profile = "contract_default";
  std::string labels = "auto";
  std::string aliases = "one";
  std::string recognizers;  // a file; empty: none
  std::string keep;         // files of surfaces, the same
  std::string mask;
  ServiceOptions services;

  void declare_language(Options& options);
  void declare_profile(Options& options);
  void declare_labels(Options& options);
  void declare_aliases(Options& options);
  void declare_recognizers(Options& options);
  void declare_overrides(Options& options);
  void declare_services(Options& options) { services.declare(options); }
  // Throws Failure(EXIT_USAGE) for a profile that is not known, and what
  // ServiceOptions throws.
  void check(const Options& options);
};

// Lines on the profiles for a page of help.
extern const std::string_view PROFILES_HELP;

// The text of a document.
struct Input {
  static constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

  bool marked = false;  // begins with a byte order mark, which `text` does not hold
  std::u32string text;
};

// The text as the analyzer reads it, with blanks for fill-in lines, of the same
// length; and its language.
struct AnalysisInput {
  std::u32string text;
  std::string language;
};
AnalysisInput analysis_input(std::u32string_view text, const MaskingOptions& options);

// Decodes the bytes of the document `name`. Throws Failure(EXIT_INPUT) for what
// is no UTF-8 text.
Input decode(std::string_view bytes, const std::string& name);

// How a message calls the input.
std::string input_name(const std::string& path);

// Reads a file, or standard input for "-". Says on a terminal that it waits, unless
// `input_named`.
std::string read_bytes(const std::string& path, bool input_named, const Context& context);

// Reads and decodes a file, or standard input for "-". Says on a terminal that it
// waits, unless `input_named`.
Input read_input(const std::string& path, bool input_named, const Context& context);

// Tells the failures of the analyzer from all others: they leave as
// Failure(EXIT_ANALYZER).
class GuardedAnalyzer : public core::anonymization::Analyzer {
 public:
  GuardedAnalyzer(const Context& context, const MaskingOptions& options);

  std::vector<core::anonymization::RecognizerResult> analyze(
      std::u32string_view text, std::string_view language) const override;

  const core::anonymization::Analyzer& get() const { return *analyzer_; }

  // Calls `action`, which works with the analyzer.
  template <typename Action>
  static void guard(const Action& action) {
    try {
      action();
    } catch (...) {
      rethrow();
    }
  }

 private:
  [[noreturn]] static void rethrow();

  std::unique_ptr<core::anonymization::Analyzer> analyzer_;
};

// The hits of one text that were found before.
class KnownHits : public core::anonymization::Analyzer {
 public:
  // `hits` outlive it.
  explicit KnownHits(const std::vector<core::anonymization::RecognizerResult>& hits)
      : hits_(hits) {}
  std::vector<core::anonymization::RecognizerResult> analyze(std::u32string_view,
                                                             std::string_view) const override {
    return hits_;
  }

 private:
  const std::vector<core::anonymization::RecognizerResult>& hits_;
};

// The files of --keep and --mask.
class OverrideLists {
 public:
  // Reads them. Throws Failure(EXIT_INPUT).
  explicit OverrideLists(const MaskingOptions& options);

  // What they say of a text. Lines that say nothing of it are counted on `err`; nullptr:
  // they need not. Throws Failure(EXIT_INPUT).
  core::anonymization::Overrides find(std::u32string_view text, std::ostream* err) const;

 private:
  std::optional<core::recognition::SurfaceList> keep_;
  std::optional<core::recognition::SurfaceList> mask_;
};

core::anonymization::AnonymizedDocument mask(std::u32string_view text,
                                             const MaskingOptions& options,
                                             const core::anonymization::Analyzer& analyzer,
                                             const core::anonymization::Overrides& overrides = {});

// Its two halves: placeholders as the core writes them, and as --labels says.
core::anonymization::AnonymizedDocument mask_unlabelled(
    std::u32string_view text, const MaskingOptions& options,
    const core::anonymization::Analyzer& analyzer, const core::anonymization::Overrides& overrides);
core::anonymization::AnonymizedDocument labelled(core::anonymization::AnonymizedDocument document,
                                                 const MaskingOptions& options);

}  // namespace cli
