// The command `veildoc recognizers`.
#include <set>
#include <string>

#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "cli/json.hpp"
#include "cli/masking.hpp"
#include "cli/table.hpp"
#include "core/nlp/hybrid_routing_nlp_engine.hpp"
#include "core/recognition/analyzer_engine.hpp"
#include "core/recognition/spacy_recognizer.hpp"

namespace cli {
namespace {

namespace recognition = core::recognition;

constexpr std::string_view RECOGNIZERS_DETAILS =
    "One line for each recognizer, in the order in which they run:\n"
    "  RECOGNIZER  its name, as analyze shows it\n"
    "  TYPES       the kinds of hits that it makes\n"
    "  LANGUAGE    of the documents that it reads; all, if it reads every one\n"
    "  PATTERNS    how many patterns it has, with its list of words if it has one; of\n"
    "              those that report names, how many finders find them\n"
    "  ON          default; strict: only with --profile strict; file: from the file of\n"
    "              --recognizers\n"
    "--patterns shows their names; --json always does.\n"
    "\n"
    "Exit codes: see veildoc --help.\n";

constexpr auto DEFAULT_PROFILE = "contract_default";
constexpr auto STRICT_PROFILE = "strict";

// Which recognizers are there with a profile alone, by name and kinds.
using Identity = std::pair<std::string, std::vector<std::string>>;

Identity identity_of(const recognition::EntityRecognizer& recognizer) {
  return {recognizer.name(), recognizer.supported_entities()};
}

const recognition::AnalyzerEngine& engine_of(const GuardedAnalyzer& analyzer) {
  const auto* engine = dynamic_cast<const recognition::AnalyzerEngine*>(&analyzer.get());
  if (engine == nullptr) throw Failure(EXIT_ANALYZER, "the analyzer has no list of recognizers");
  return *engine;
}

const recognition::RecognizerList& recognizers_of(const GuardedAnalyzer& analyzer) {
  return engine_of(analyzer).registry().recognizers();
}

// What analyze shows as the pattern of a hit: of names, their finder.
std::vector<std::string> patterns_of(const recognition::EntityRecognizer& recognizer,
                                     const recognition::AnalyzerEngine& engine) {
  const auto* names = dynamic_cast<const recognition::NlpEntityRecognizer*>(&recognizer);
  const auto* finders =
      dynamic_cast<const core::nlp::HybridRoutingNlpEngine*>(&engine.nlp_engine());
  if (names == nullptr || finders == nullptr) return recognizer.pattern_names();
  return finders->finder_names();
}

std::set<Identity> with_profile(const Context& context, const std::string& profile) {
  MaskingOptions options;
  options.profile = profile;
  const GuardedAnalyzer analyzer(context, options);
  std::set<Identity> out;
  for (const auto& recognizer : recognizers_of(analyzer)) out.insert(identity_of(*recognizer));
  return out;
}

std::string joined(const std::vector<std::string>& parts) {
  std::string out;
  for (const auto& part : parts) out += (out.empty() ? "" : ", ") + part;
  return out;
}

struct RecognizerRow {
  const recognition::EntityRecognizer& recognizer;
  std::string on;
  std::vector<std::string> patterns;

  std::string language() const {
    const auto& language = recognizer.supported_language();
    return language.empty() ? "all" : language;
  }
};

class Recognizers : public Command {
 public:
  std::string_view name() const override { return "recognizers"; }
  std::string_view about() const override {
    return "Lists the recognizers: what they find, and when they are on.";
  }
  std::string_view details() const override { return RECOGNIZERS_DETAILS; }
  void declare(Options& options) override;
  void check(const Options&) override {}
  void execute(const Context& context) override;

 private:
  std::string table(const std::vector<RecognizerRow>& rows) const;
  static std::string json(const std::vector<RecognizerRow>& rows);

  MaskingOptions masking_;
  bool patterns_ = false;
  bool json_ = false;
};

void Recognizers::declare(Options& options) {
  masking_.language = "all";
  options.choice("-l,--language", masking_.language, {"all", "zh", "en"},
                 "Only those that read documents of this language");
  masking_.declare_recognizers(options);
  options.flag("--patterns", patterns_, "Show the names of the patterns");
  options.flag("--json", json_, "Write one JSON object instead of a table");
}

void Recognizers::execute(const Context& context) {
  const auto by_default = with_profile(context, DEFAULT_PROFILE);
  const auto by_strict = with_profile(context, STRICT_PROFILE);
  auto everything = masking_;
  everything.profile = STRICT_PROFILE;
  const GuardedAnalyzer analyzer(context, everything);
  std::vector<RecognizerRow> rows;
  const auto& all = recognizers_of(analyzer);
  for (std::size_t i = 0; i < all.size(); ++i) {
    const auto identity = identity_of(*all[i]);
    const bool of_user = !by_strict.contains(identity);
    const RecognizerRow row{*all[i],
                            of_user                         ? "file"
                            : by_default.contains(identity) ? "default"
                                                            : "strict",
                            patterns_of(*all[i], engine_of(analyzer))};
    const auto& wanted = masking_.language;
    if (wanted == "all" || row.language() == "all" || row.language() == wanted) rows.push_back(row);
  }
  write_all(context.out, json_ ? json(rows) : table(rows));
}

std::string Recognizers::table(const std::vector<RecognizerRow>& rows) const {
  std::vector<Table::Column> columns = {
      {"RECOGNIZER"}, {"TYPES"}, {"LANGUAGE"}, {"PATTERNS", Align::RIGHT}, {"ON"}};
  if (patterns_) columns.push_back({"NAMES"});
  Table out(std::move(columns));
  for (const auto& row : rows) {
    const auto& patterns = row.patterns;
    std::vector<std::string> cells = {
        row.recognizer.name(), joined(row.recognizer.supported_entities()), row.language(),
        patterns.empty() ? "-" : std::to_string(patterns.size()), row.on};
    if (patterns_) cells.push_back(joined(patterns));
    out.add(cells);
  }
  return out.text();
}

std::string Recognizers::json(const std::vector<RecognizerRow>& rows) {
  auto list = ordered_json::array();
  for (const auto& row : rows) {
    const auto& language = row.recognizer.supported_language();
    list.push_back({{"name", row.recognizer.name()},
                    {"types", row.recognizer.supported_entities()},
                    {"language", language.empty() ? ordered_json() : ordered_json(language)},
                    {"patterns", row.patterns},
                    {"on", row.on}});
  }
  return dump_json({{"recognizers", std::move(list)}});
}

}  // namespace

std::unique_ptr<Command> make_recognizers_command() { return std::make_unique<Recognizers>(); }

}  // namespace cli
