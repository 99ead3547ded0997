#include "cli/restore_report.hpp"

#include <algorithm>
#include <ostream>

#include "cli/table.hpp"
#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace cli {
namespace {

namespace restore = core::restore;
using restore::Outcome;

constexpr std::size_t MOST_PLACES = 20;  // in one warning

struct Wording {
  Outcome outcome;
  std::string_view label;  // in the table
  std::string_view one;    // in a warning
  std::string_view several;
};
constexpr Wording WORDINGS[] = {
    {Outcome::RESTORED, "restored", "", ""},
    {Outcome::BY_ORDER, "restored by order",
     "placeholder with several surfaces was restored by its order",
     "placeholders with several surfaces were restored by their order"},
    {Outcome::FIRST_SURFACE, "first surface taken",
     "placeholder with several surfaces was restored by the first of them",
     "placeholders with several surfaces were restored by the first of them"},
    {Outcome::UNKNOWN, "not in the mapping", "placeholder is not in the mapping and was left",
     "placeholders are not in the mapping and were left"},
    {Outcome::AMBIGUOUS, "ambiguous", "placeholder is ambiguous and was left",
     "placeholders are ambiguous and were left"},
    {Outcome::NO_BRACKETS, "without brackets",
     "name of a placeholder stands without brackets and was left",
     "names of placeholders stand without brackets and were left"},
};

const Wording& wording_of(Outcome outcome) {
  return *std::find_if(std::begin(WORDINGS), std::end(WORDINGS),
                       [outcome](const Wording& w) { return w.outcome == outcome; });
}

// Where something stands: the line of a text, the story of another document. Asked
// for in ascending order of offsets.
class Places {
 public:
  explicit Places(const documents::MaskedFile& file) : file_(file) {}

  std::string at(std::size_t offset) {
    if (!file_.is_text()) return file_.story_at(offset);
    for (; at_ < offset; ++at_) line_ += file_.text()[at_] == U'\n' ? 1 : 0;
    return std::to_string(line_);
  }
  // For a sentence.
  std::string in(std::size_t offset) {
    return (file_.is_text() ? " in line " : " in ") + at(offset);
  }

 private:
  const documents::MaskedFile& file_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
};

// Without the digits of a card.
std::string hidden_digits(std::u32string placeholder) {
  const auto stars = placeholder.find(U"****");
  if (stars != std::u32string::npos) placeholder = placeholder.substr(0, stars + 4) + U"]";
  return core::text::encode_utf8(placeholder);
}

// How a placeholder is named: as the mapping writes it; one that is not in it, by
// its tag and number, which is not what the text says.
std::string name_of(const RestoreReport& report, const restore::Finding& finding) {
  std::u32string name;
  if (finding.entry < report.mapping.entries.size()) {
    name = report.mapping.entries[finding.entry].placeholder;
  } else {
    const auto spelled =
        std::u32string_view(report.file.text()).substr(finding.start, finding.end - finding.start);
    for (const char32_t c : restore::placeholder_key(spelled)) {
      if (c != U'#') name += c >= U'a' && c <= U'z' ? c - U'a' + U'A' : c;
    }
    name = spelled.find(U'*') == core::text::NPOS ? U"[" + name + U"]" : U"[CARD_****]";
  }
  return report.show_surfaces ? core::text::encode_utf8(name) : hidden_digits(name);
}

std::string surface_of(const RestoreReport& report, const restore::Finding& finding) {
  if (!restore::is_restored(finding.outcome)) return {};
  return core::text::encode_utf8(report.mapping.entries[finding.entry].surfaces[finding.surface]);
}

std::size_t count_of(const RestoreReport& report, Outcome outcome) {
  const auto count = std::count_if(report.findings.begin(), report.findings.end(),
                                   [outcome](const auto& f) { return f.outcome == outcome; });
  return static_cast<std::size_t>(count);
}

// Entries of which nothing is left in the text.
std::size_t missing_entries(const RestoreReport& report) {
  std::vector<bool> seen(report.mapping.entries.size(), false);
  for (const auto& finding : report.findings) {
    if (finding.entry < seen.size()) seen[finding.entry] = true;
  }
  return static_cast<std::size_t>(std::count(seen.begin(), seen.end(), false));
}

void warn_of(const RestoreReport& report, const Wording& wording, std::ostream& err) {
  const auto count = count_of(report, wording.outcome);
  if (count == 0) return;
  err << "veildoc: warning: " << count << ' ' << (count == 1 ? wording.one : wording.several)
      << ": ";
  Places places(report.file);
  std::size_t told = 0;
  for (const auto& finding : report.findings) {
    if (finding.outcome != wording.outcome) continue;
    if (told == MOST_PLACES) {
      err << ", ...";
      break;
    }
    err << (told++ == 0 ? "" : ", ") << name_of(report, finding) << places.in(finding.start);
    if (!report.show_surfaces) continue;
    const auto surface = surface_of(report, finding);
    if (!surface.empty()) err << " (" << surface << ')';
  }
  err << '\n';
}

}  // namespace

bool RestoreReport::is_in_doubt() const {
  return std::any_of(findings.begin(), findings.end(), [](const auto& f) {
    return f.outcome != Outcome::RESTORED && f.outcome != Outcome::BY_ORDER;
  });
}

void RestoreReport::warn(std::ostream& err) const {
  for (const auto& warning : file.warnings()) err << "veildoc: warning: " << warning << '\n';
  for (const auto& wording : WORDINGS) {
    if (wording.outcome != Outcome::RESTORED) warn_of(*this, wording, err);
  }
  err << std::flush;
}

std::string RestoreReport::check() const {
  Table counts({{"RESULT"}, {"PLACEHOLDERS", Align::RIGHT}});
  for (const auto& wording : WORDINGS) {
    counts.add({std::string(wording.label), std::to_string(count_of(*this, wording.outcome))});
  }
  const std::string what = file.is_text() ? "text" : "document";
  counts.add({"no longer in the " + what, std::to_string(missing_entries(*this))});
  std::string out = unchanged ? "The " + what + " is as it was when it was masked.\n\n"
                              : "The " + what + " was edited since it was masked.\n\n";
  out += counts.text();

  const auto place = file.is_text() ? Table::Column{"LINE", Align::RIGHT} : Table::Column{"STORY"};
  std::vector<Table::Column> columns = {place, {"PLACEHOLDER"}, {"RESULT"}};
  if (show_surfaces) columns.push_back({"SURFACE"});
  Table table(columns);
  Places places(file);
  bool any = false;
  for (const auto& finding : findings) {
    if (finding.outcome == Outcome::RESTORED) continue;
    any = true;
    std::vector<std::string> row = {places.at(finding.start), name_of(*this, finding),
                                    std::string(wording_of(finding.outcome).label)};
    if (show_surfaces) row.push_back(surface_of(*this, finding));
    table.add(row);
  }
  return any ? out + "\n" + table.text() : out;
}

}  // namespace cli
