// The command `veildoc evaluate`.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "cli/documents.hpp"
#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "cli/json.hpp"
#include "cli/masking.hpp"
#include "cli/progress.hpp"
#include "cli/table.hpp"
#include "core/errors.hpp"
#include "core/evaluation/score.hpp"
#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace cli {
namespace {

namespace evaluation = core::evaluation;
namespace fs = std::filesystem;
using evaluation::Fault;
using evaluation::LabelledDocument;
using evaluation::Score;
using evaluation::Tally;

constexpr std::string_view EVALUATE_DETAILS =
    "DIR holds documents (*.txt, *.docx, *.pdf) in which what must not be read is marked:\n"
    "  <<TYPE#n:surface>>   must be masked; equal TYPE#n name one entity\n"
    "  <<?TYPE:surface>>    may be masked or left\n"
    "Each is masked without its marks, as anonymize does it, and compared with them:\n"
    "  LEAKED    marks of which a letter or number is still readable (of an amount, a\n"
    "            numeral)\n"
    "  BOUNDARY  marks that are masked in part, or together with more than the mark\n"
    "  OVERMASK  masked characters outside all marks, per 1,000 such characters\n"
    "  SPLIT     entities with more than one placeholder (not of amounts and dates)\n"
    "  MERGED    placeholders for more than one entity\n"
    "Groups are the files whose names begin with the same letters: zh01.txt, zh02.txt.\n"
    "\n"
    "--show-surfaces adds what was leaked and what was masked too much, one a line:\n"
    "file:line, kind, text.\n"
    "\n";

constexpr std::string_view EXIT_CODES =
    "\n"
    "Examples:\n"
    "  veildoc evaluate corpus\n"
    "  veildoc evaluate corpus --max-leak 1.5 --max-merged 0 > scores.txt\n"
    "\n"
    "Exit codes:\n"
    "  0  scored, and no limit is exceeded\n"
    "  1  a limit of --max-... is exceeded\n"
    "  2  the command line is wrong\n"
    "  3  DIR holds no document, or one could not be read or has a malformed mark\n"
    "  4  the analyzer failed\n";

constexpr double PERCENT = 100;

struct Document {
  std::string name;
  LabelledDocument labelled;
};

struct ScoreRow {
  std::string name;
  std::size_t files = 1;
  Score score = {};
};

// The letters that a name begins with; "-" if there is none.
std::string group_of(const std::string& name) {
  const auto end = std::find_if_not(name.begin(), name.end(),
                                    [](unsigned char c) { return std::isalpha(c) != 0; });
  return end == name.begin() ? "-" : std::string(name.begin(), end);
}

std::vector<fs::path> documents_in(const std::string& folder) {
  std::vector<fs::path> paths;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    const auto extension = entry->path().extension();
    if (extension == ".txt" || extension == ".docx" || extension == ".pdf") {
      paths.push_back(entry->path());
    }
  }
  if (error) throw Failure(EXIT_INPUT, with_errno("cannot read " + folder, error.value()));
  if (paths.empty())
    throw Failure(EXIT_INPUT, folder + ": no document (*.txt, *.docx, *.pdf) is in it");
  std::sort(paths.begin(), paths.end());
  return paths;
}

Document read_labelled(const fs::path& path, const Context& context) {
  const auto source = read_document(path.string(), true, context);
  try {
    return {path.filename().string(), evaluation::parse_labelled(source->text())};
  } catch (const core::ValueError& e) {
    throw Failure(EXIT_INPUT, path.string() + ": " + e.what());
  }
}

std::string percent(double share) { return fixed(PERCENT * share, 1) + "%"; }

// Numbers of lines, from 1.
class Lines {
 public:
  explicit Lines(std::u32string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == U'\n') ends_.push_back(static_cast<core::anonymization::Offset>(i));
    }
  }
  std::string at(core::anonymization::Offset offset) const {
    const auto end = std::lower_bound(ends_.begin(), ends_.end(), offset);
    return std::to_string(1 + (end - ends_.begin()));
  }

 private:
  std::vector<core::anonymization::Offset> ends_;
};

class Evaluate : public Command {
 public:
  std::string_view name() const override { return "evaluate"; }
  std::string_view about() const override {
    return "Measures how well labelled documents are masked.";
  }
  std::string_view details() const override { return details_; }
  void declare(Options& options) override;
  void check(const Options& options) override { masking_.check(options); }
  void execute(const Context& context) override;

 private:
  struct Scored {
    Document document;
    evaluation::DocumentScore score;
  };
  // All that is printed.
  struct Report {
    std::vector<Scored> files;
    std::map<std::string, ScoreRow> groups;
    ScoreRow all = {.name = "all", .files = 0};
  };

  Report evaluate(const Context& context) const;
  std::string tables(const Report& report) const;
  std::string json(const Report& report) const;
  ordered_json faults_json(const Scored& file, const std::vector<Fault>& faults) const;
  void check_limits(const ScoreRow& all) const;

  const std::string details_ = std::string(EVALUATE_DETAILS)
                                   .append(PROFILES_HELP)
                                   .append("\n")
                                   .append(SERVICES_HELP)
                                   .append(EXIT_CODES);
  MaskingOptions masking_;
  std::string folder_;
  std::optional<double> max_leak_;
  std::optional<double> max_overmask_;
  std::optional<double> max_split_;
  std::optional<double> max_merged_;
  bool show_surfaces_ = false;
  bool json_ = false;
};

void Evaluate::declare(Options& options) {
  options.argument("DIR", folder_, "The folder of the documents", true);
  masking_.declare_language(options);
  masking_.declare_profile(options);
  masking_.declare_aliases(options);
  masking_.declare_recognizers(options);
  masking_.declare_services(options);
  options.number("--max-leak", max_leak_, PERCENT, "PERCENT", "Fail if more marks are leaked");
  options.number("--max-overmask", max_overmask_, 1000, "N",
                 "Fail if more characters of 1,000 are masked too much");
  options.number("--max-split", max_split_, PERCENT, "PERCENT", "Fail if more entities are split");
  options.number("--max-merged", max_merged_, 1e9, "N", "Fail if more placeholders are merged");
  options.flag("--show-surfaces", show_surfaces_,
               "Show the text of what was leaked or masked too much");
  options.flag("--json", json_, "Write one JSON object instead of tables");
}

Evaluate::Report Evaluate::evaluate(const Context& context) const {
  std::vector<Document> documents;
  for (const auto& path : documents_in(folder_)) documents.push_back(read_labelled(path, context));
  const GuardedAnalyzer analyzer(context, masking_);
  Progress progress(context.err, documents.size());
  Report report;
  for (auto& document : documents) {
    const auto& text = document.labelled.text;
    const auto stretches =
        core::anonymization::masked_stretches(text, mask(text, masking_, analyzer));
    auto score = evaluation::score(document.labelled, stretches);
    const auto name = group_of(document.name);
    auto& group = report.groups.try_emplace(name, ScoreRow{name, 0}).first->second;
    for (auto* row : {&group, &report.all}) {
      ++row->files;
      row->score += score.score;
    }
    report.files.push_back({std::move(document), std::move(score)});
    progress.step();
  }
  return report;
}

void Evaluate::execute(const Context& context) {
  const auto report = evaluate(context);
  if (report.all.score.total().mentions == 0) {
    throw Failure(EXIT_INPUT, folder_ + ": no document holds a mark that must be masked");
  }
  write_all(context.out, json_ ? json(report) : tables(report));
  check_limits(report.all);
}

void Evaluate::check_limits(const ScoreRow& all) const {
  const auto total = all.score.total();
  std::string exceeded;
  const auto check = [&](const char* option, double value, const std::optional<double>& most) {
    if (!most || value <= *most) return;
    exceeded += std::string(exceeded.empty() ? "" : "; ") + fixed(value, 2) + " is above " +
                option + " " + fixed(*most, 2);
  };
  check("--max-leak", PERCENT * total.leak_rate(), max_leak_);
  check("--max-overmask", all.score.overmask_per_1000(), max_overmask_);
  check("--max-split", PERCENT * total.split_rate(), max_split_);
  check("--max-merged", static_cast<double>(all.score.merged), max_merged_);
  if (!exceeded.empty()) throw Failure(EXIT_FAILED, exceeded);
}

std::string by_type(const Score& score) {
  Table table({{"TYPE"},
               {"MARKS", Align::RIGHT},
               {"LEAKED", Align::RIGHT},
               {"LEAK RATE", Align::RIGHT},
               {"BOUNDARY", Align::RIGHT},
               {"ENTITIES", Align::RIGHT},
               {"SPLIT", Align::RIGHT}});
  std::vector<std::pair<std::string, Tally>> types(score.by_type.begin(), score.by_type.end());
  std::stable_sort(types.begin(), types.end(), [](const auto& a, const auto& b) {
    return a.second.mentions > b.second.mentions;
  });
  for (const auto& [type, tally] : types) {
    table.add({type, std::to_string(tally.mentions), std::to_string(tally.leaked),
               percent(tally.leak_rate()), std::to_string(tally.boundary_errors()),
               std::to_string(tally.entities), std::to_string(tally.split)});
  }
  return table.text();
}

std::string by_row(const std::string& head, const std::vector<ScoreRow>& rows) {
  Table table({{head},
               {"FILES", Align::RIGHT},
               {"MARKS", Align::RIGHT},
               {"LEAKED", Align::RIGHT},
               {"LEAK RATE", Align::RIGHT},
               {"BOUNDARY", Align::RIGHT},
               {"OVERMASK", Align::RIGHT},
               {"ENTITIES", Align::RIGHT},
               {"SPLIT", Align::RIGHT},
               {"MERGED", Align::RIGHT}});
  for (const auto& row : rows) {
    const auto tally = row.score.total();
    table.add({row.name, std::to_string(row.files), std::to_string(tally.mentions),
               std::to_string(tally.leaked), percent(tally.leak_rate()),
               std::to_string(tally.boundary_errors()), fixed(row.score.overmask_per_1000(), 2),
               std::to_string(tally.entities), std::to_string(tally.split),
               std::to_string(row.score.merged)});
  }
  return table.text();
}

std::string Evaluate::tables(const Report& report) const {
  std::string out;
  std::vector<ScoreRow> files;
  for (const auto& file : report.files) {
    files.push_back({file.document.name, 1, file.score.score});
  }
  if (show_surfaces_) {
    Table table({{"WHERE"}, {"FAULT"}, {"SURFACE"}});
    for (const auto& [document, score] : report.files) {
      const auto& text = document.labelled.text;
      const Lines lines(text);
      const auto add = [&, &name = document.name](const Fault& fault, const std::string& what) {
        const auto surface = core::text::slice(text, fault.start, fault.end);
        table.add({name + ":" + lines.at(fault.start), what, core::text::encode_utf8(surface)});
      };
      for (const auto& leak : score.leaks) add(leak, "leaked " + leak.type);
      for (const auto& overmask : score.overmasks) add(overmask, "overmasked");
    }
    out += table.text() + "\n";
  }
  std::vector<ScoreRow> groups;
  for (const auto& [name, row] : report.groups) groups.push_back(row);
  groups.push_back(report.all);
  out += by_row("FILE", files) + "\n" + by_type(report.all.score) + "\n" + by_row("GROUP", groups);
  return out;
}

ordered_json tally_json(const Tally& tally) {
  return {{"marks", tally.mentions},
          {"leaked", tally.leaked},
          {"leak_rate", tally.leak_rate()},
          {"cut_short", tally.cut_short},
          {"reaching", tally.reaching},
          {"entities", tally.entities},
          {"split", tally.split}};
}

ordered_json score_json(const Score& score) {
  auto out = tally_json(score.total());
  out["merged"] = score.merged;
  out["unmarked_characters"] = score.unmarked;
  out["overmasked_characters"] = score.overmasked;
  out["overmask_per_1000"] = score.overmask_per_1000();
  return out;
}

ordered_json Evaluate::faults_json(const Scored& file, const std::vector<Fault>& faults) const {
  const auto& document = file.document.labelled;
  auto out = ordered_json::array();
  for (const auto& fault : faults) {
    ordered_json entry;
    if (!fault.type.empty()) entry["type"] = fault.type;
    entry["start"] = fault.start;
    entry["end"] = fault.end;
    if (show_surfaces_) {
      entry["surface"] =
          core::text::encode_utf8(core::text::slice(document.text, fault.start, fault.end));
    }
    out.push_back(std::move(entry));
  }
  return out;
}

std::string Evaluate::json(const Report& report) const {
  auto files = ordered_json::array();
  for (const auto& file : report.files) {
    auto entry = score_json(file.score.score);
    entry["name"] = file.document.name;
    entry["leaks"] = faults_json(file, file.score.leaks);
    entry["overmasks"] = faults_json(file, file.score.overmasks);
    files.push_back(std::move(entry));
  }
  auto groups = ordered_json::object();
  for (const auto& [name, row] : report.groups) {
    groups[name] = score_json(row.score);
    groups[name]["files"] = row.files;
  }
  auto types = ordered_json::object();
  for (const auto& [type, tally] : report.all.score.by_type) types[type] = tally_json(tally);
  return dump_json({{"all", score_json(report.all.score)},
                    {"groups", std::move(groups)},
                    {"types", std::move(types)},
                    {"files", std::move(files)}});
}

}  // namespace

std::unique_ptr<Command> make_evaluate_command() { return std::make_unique<Evaluate>(); }

}  // namespace cli
