// The command `veildoc analyze`.
#include <algorithm>
#include <numeric>
#include <optional>
#include <ostream>
#include <string>
#include <tuple>
#include <utility>

#include "cli/documents.hpp"
#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "cli/json.hpp"
#include "cli/masking.hpp"
#include "cli/table.hpp"
#include "core/hit_fates.hpp"
#include "core/masked_stretches.hpp"
#include "core/recognition/analyzer_engine.hpp"
#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace cli {
namespace {

namespace anonymization = core::anonymization;
namespace recognition = core::recognition;
using anonymization::Offset;
using anonymization::RecognizerResult;
using core::text::encode_utf8;

constexpr std::string_view ANALYZE_DETAILS =
    "Reads FILE, text, .docx or PDF, and writes one line for each hit, in the order of the\n"
    "text. START is the first code point of the hit, END the one behind it, counted from 0;\n"
    "a byte order mark is not counted. Of a .docx and a PDF they count in the text that is\n"
    "taken out of it, the paragraphs pasted together, not in the file.\n"
    "No text of the document is written unless --show-surfaces asks for it.\n"
    "\n"
    "--explain lists every hit that any recognizer made, and adds\n"
    "  PATTERN   the pattern of the recognizer, or the finder of a name\n"
    "  CONTEXT   the word of the recognizer near the hit that raised its score\n"
    "  CHECK     passed, where a checksum is right\n"
    "  REFINED   the last step that changed the hit's bounds\n"
    "  OUTCOME   masked; or the step that dropped or changed the hit: a refinement, or\n"
    "            threshold, duplicates, allow list, blanks and punctuation, ordinals and\n"
    "            section numbers, generic nouns, profile NAME, overlaps, weak\n"
    "            organizations, keep/mask decision, ...\n"
    "  WRITTEN   what stands there in the masked text, as anonymize writes it by default:\n"
    "            the placeholder (of this or of another hit), or readable\n"
    "\n";

constexpr std::string_view ANALYZE_EXAMPLES =
    "\n"
    "Examples:\n"
    "  veildoc analyze contract.txt\n"
    "  veildoc analyze --explain --show-surfaces --entities PERSON contract.txt\n"
    "  veildoc analyze --json contract.txt | jq -r '.hits[].type' | sort | uniq -c\n"
    "\n"
    "Exit codes: see veildoc --help.\n";

constexpr int SCORE_DECIMALS = 2;

// A hit, and all that is known of it.
struct HitRow {
  RecognizerResult hit;
  recognition::AnalysisExplanation explanation = {};
  // What --explain adds.
  anonymization::HitFate fate = {};
  std::u32string_view placeholder = {};  // over all of it; empty: something is readable
};

// Finds the placeholder over a span; spans come sorted by start.
class Written {
 public:
  Written(std::u32string_view text, const std::vector<anonymization::MaskedStretch>& stretches)
      : text_(text), stretches_(stretches), next_(stretches.begin()) {}

  // The first placeholder over the span if no letter or number of it can be read,
  // or `in_part`: the words around the figure of an amount stay.
  std::u32string_view over(Offset start, Offset end, bool in_part) {
    while (next_ != stretches_.end() && next_->end <= start) ++next_;
    if (in_part && next_ != stretches_.end() && next_->start < end) return next_->placeholder;
    auto stretch = next_;
    std::u32string_view first;
    for (Offset at = start; at < end;) {
      if (stretch != stretches_.end() && stretch->start <= at) {
        if (first.empty()) first = stretch->placeholder;
        at = stretch->end;
        ++stretch;
        continue;
      }
      if (core::text::is_letter_or_number(text_[static_cast<std::size_t>(at)])) return {};
      ++at;
    }
    return first;
  }

 private:
  std::u32string_view text_;
  const std::vector<anonymization::MaskedStretch>& stretches_;
  std::vector<anonymization::MaskedStretch>::const_iterator next_;
};

class Analyze : public Command {
 public:
  std::string_view name() const override { return "analyze"; }
  std::string_view about() const override {
    return "Lists what is found in one document, and why.";
  }
  std::string_view details() const override { return details_; }
  void declare(Options& options) override;
  void check(const Options& options) override;
  void execute(const Context& context) override;

 private:
  void check_kinds(const std::vector<std::string>& known, const std::string& language) const;
  recognition::AnalysisResult analyze(std::u32string_view text, const std::string& language,
                                      const GuardedAnalyzer& analyzer) const;
  std::vector<HitRow> rows_of(recognition::AnalysisResult analysis) const;
  void explain(std::u32string_view text, const std::string& language,
               const std::vector<anonymization::MaskedStretch>& stretches,
               std::vector<HitRow>& rows) const;
  bool asked_for(const RecognizerResult& hit) const;
  std::string placeholder_text(std::u32string_view placeholder) const;
  std::string table(std::u32string_view text, const std::vector<HitRow>& rows) const;
  void add_explanation(const HitRow& row, ordered_json& hit) const;
  std::string json(std::u32string_view text, const std::string& language,
                   const std::vector<HitRow>& rows) const;

  const std::string details_ = std::string(ANALYZE_DETAILS)
                                   .append(PROFILES_HELP)
                                   .append("\n")
                                   .append(SERVICES_HELP)
                                   .append(ANALYZE_EXAMPLES);
  MaskingOptions masking_;
  std::string input_ = "-";
  bool input_named_ = false;
  std::vector<std::string> entities_;
  std::optional<double> threshold_;
  bool explain_ = false;
  bool show_surfaces_ = false;
  bool json_ = false;
};

void Analyze::declare(Options& options) {
  options.argument("FILE", input_, "The document; - or nothing is standard input");
  masking_.declare_language(options);
  masking_.declare_profile(options);
  masking_.declare_recognizers(options);
  masking_.declare_services(options);
  options.list("--entities", entities_, "KIND,...", "List hits of these kinds only");
  options.number("--threshold", threshold_, 1, "SCORE",
                 "List hits of at least this score, 0 to 1 (default: the\nanalyzer's, 0.4)");
  options.flag("--explain", explain_, "Tell how each hit came about and what became of it");
  options.flag("--show-surfaces", show_surfaces_,
               "Show the text of the hits, which is what must not be seen");
  options.flag("--json", json_, "Write one JSON object instead of a table");
}

void Analyze::check(const Options& options) {
  masking_.check(options);
  input_named_ = options.given("FILE");
  if (options.given("--entities") && std::count(entities_.begin(), entities_.end(), "") > 0) {
    throw Failure(EXIT_USAGE, "--entities: a kind needs a name");
  }
}

bool Analyze::asked_for(const RecognizerResult& hit) const {
  return entities_.empty() ||
         std::find(entities_.begin(), entities_.end(), hit.entity_type) != entities_.end();
}

// `known` is sorted.
void Analyze::check_kinds(const std::vector<std::string>& known,
                          const std::string& language) const {
  for (const auto& kind : entities_) {
    if (std::binary_search(known.begin(), known.end(), kind)) continue;
    std::string message = "--entities: no recognizer of documents in \"";
    message.append(language).append("\" finds ").append(kind);
    throw Failure(EXIT_USAGE, message.append("; veildoc recognizers lists the kinds"));
  }
}

// Only our own engine explains; of another analyzer the hits are known.
recognition::AnalysisResult Analyze::analyze(std::u32string_view text, const std::string& language,
                                             const GuardedAnalyzer& analyzer) const {
  const auto* engine = dynamic_cast<const recognition::AnalyzerEngine*>(&analyzer.get());
  if (engine == nullptr) {
    recognition::AnalysisResult out{analyzer.analyze(text, language)};
    std::erase_if(out.results, [&](const auto& r) { return r.score < threshold_.value_or(0); });
    out.explanations.resize(out.results.size());
    return out;
  }
  check_kinds(engine->registry().get_supported_entities(language), language);
  recognition::AnalysisRequest request{.text = text, .language = language};
  request.score_threshold = threshold_;
  request.return_decision_process = true;
  // What becomes of a hit depends on those of other kinds, too.
  if (!explain_) request.entities = entities_;
  recognition::AnalysisResult out;
  GuardedAnalyzer::guard([&] { out = engine->analyze(request); });
  return out;
}

std::vector<HitRow> Analyze::rows_of(recognition::AnalysisResult analysis) const {
  std::vector<HitRow> rows;
  for (std::size_t i = 0; i < analysis.results.size(); ++i) {
    rows.push_back({std::move(analysis.results[i]), std::move(analysis.explanations[i])});
  }
  if (!explain_) return rows;
  for (auto& lost : analysis.lost) {
    HitRow row{std::move(lost.result), std::move(lost.explanation)};
    row.fate.step = std::move(lost.step);
    if (lost.became) row.fate.became = {lost.became->start, lost.became->end};
    rows.push_back(std::move(row));
  }
  return rows;
}

void Analyze::explain(std::u32string_view text, const std::string& language,
                      const std::vector<anonymization::MaskedStretch>& stretches,
                      std::vector<HitRow>& rows) const {
  std::vector<RecognizerResult> hits;
  for (const auto& row : rows) {
    if (row.fate.step.empty()) hits.push_back(row.hit);
  }
  auto fates = anonymization::hit_fates(text, hits, language, masking_.profile);
  auto fate = fates.begin();
  for (auto& row : rows) {
    if (row.fate.step.empty()) row.fate = std::move(*fate++);
  }
  Written written(text, stretches);
  for (auto& row : rows) {
    const bool is_amount = row.hit.entity_type == anonymization::entity_type::MONEY;
    row.placeholder = written.over(row.hit.start, row.hit.end, is_amount || row.fate.step.empty());
  }
}

void Analyze::execute(const Context& context) {
  const auto source = read_document(input_, input_named_, context);
  const auto& text = source->text();
  const auto [analysis_text, language] = analysis_input(text, masking_);
  const GuardedAnalyzer analyzer(context, masking_);
  auto analysis = analyze(analysis_text, language, analyzer);
  std::vector<anonymization::MaskedStretch> stretches;
  if (explain_) {
    const auto document = mask(text, masking_, KnownHits(analysis.results));
    stretches = anonymization::masked_stretches(text, document);
  }
  auto rows = rows_of(std::move(analysis));
  std::stable_sort(rows.begin(), rows.end(), [](const HitRow& a, const HitRow& b) {
    return std::tuple(a.hit.start, -a.hit.end) < std::tuple(b.hit.start, -b.hit.end);
  });
  if (explain_) explain(text, language, stretches, rows);
  std::erase_if(rows, [&](const HitRow& row) { return !asked_for(row.hit); });
  write_all(context.out, json_ ? json(text, language, rows) : table(text, rows));
}

// The placeholder of a card's last digits shows them.
std::string Analyze::placeholder_text(std::u32string_view placeholder) const {
  auto text = encode_utf8(placeholder);
  if (show_surfaces_) return text;
  constexpr std::string_view STARS = "****";
  if (const auto stars = text.find(STARS); stars != std::string::npos) {
    text = text.substr(0, stars) + std::string(STARS) + "]";
  }
  return text;
}

std::string outcome_of(const anonymization::HitFate& fate) {
  if (fate.step.empty()) return "masked";
  if (!fate.became) return "dropped: " + fate.step;
  return "changed to " + std::to_string(fate.became->first) + ".." +
         std::to_string(fate.became->second) + ": " + fate.step;
}

std::string Analyze::table(std::u32string_view text, const std::vector<HitRow>& rows) const {
  std::vector<Table::Column> columns = {{"TYPE"},
                                        {"START", Align::RIGHT},
                                        {"END", Align::RIGHT},
                                        {"SCORE", Align::RIGHT},
                                        {"RECOGNIZER"}};
  if (explain_) {
    for (const auto* head : {"PATTERN", "CONTEXT", "CHECK", "REFINED", "OUTCOME", "WRITTEN"}) {
      columns.push_back({head});
    }
  }
  if (show_surfaces_) columns.push_back({"SURFACE"});
  Table out(std::move(columns));
  for (const auto& row : rows) {
    std::vector<std::string> cells = {
        row.hit.entity_type, std::to_string(row.hit.start), std::to_string(row.hit.end),
        fixed(row.hit.score, SCORE_DECIMALS), row.explanation.recognizer};
    if (explain_) {
      const auto& e = row.explanation;
      const auto* check = e.validation_result == true ? "passed" : "";
      for (const auto& cell : {e.pattern_name, e.supportive_context_word, std::string(check),
                               e.refinement, outcome_of(row.fate)}) {
        cells.push_back(cell);
      }
      cells.push_back(row.placeholder.empty() ? "readable" : placeholder_text(row.placeholder));
    }
    if (show_surfaces_) {
      cells.push_back(encode_utf8(core::text::slice(text, row.hit.start, row.hit.end)));
    }
    out.add(cells);
  }
  return out.text();
}

void Analyze::add_explanation(const HitRow& row, ordered_json& hit) const {
  const auto& e = row.explanation;
  const auto& fate = row.fate;
  hit["pattern"] = e.pattern_name;
  hit["original_score"] = e.original_score;
  hit["context"] = e.supportive_context_word;
  hit["check"] = e.validation_result ? ordered_json(*e.validation_result) : ordered_json();
  hit["refined_by"] = e.refinement;
  const auto* lost = fate.became ? "changed" : "dropped";
  hit["outcome"] = fate.step.empty() ? "masked" : lost;
  hit["step"] = fate.step;
  if (fate.became) hit["became"] = {{"start", fate.became->first}, {"end", fate.became->second}};
  hit["placeholder"] =
      row.placeholder.empty() ? ordered_json() : ordered_json(placeholder_text(row.placeholder));
}

std::string Analyze::json(std::u32string_view text, const std::string& language,
                          const std::vector<HitRow>& rows) const {
  auto hits = ordered_json::array();
  for (const auto& row : rows) {
    ordered_json hit = {{"type", row.hit.entity_type},
                        {"start", row.hit.start},
                        {"end", row.hit.end},
                        {"score", row.hit.score},
                        {"recognizer", row.explanation.recognizer}};
    if (show_surfaces_) {
      hit["surface"] = encode_utf8(core::text::slice(text, row.hit.start, row.hit.end));
    }
    if (explain_) add_explanation(row, hit);
    hits.push_back(std::move(hit));
  }
  return dump_json({{"language", language}, {"hits", std::move(hits)}});
}

}  // namespace

std::unique_ptr<Command> make_analyze_command() { return std::make_unique<Analyze>(); }

}  // namespace cli
