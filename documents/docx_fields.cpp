#include "documents/docx_fields.hpp"

#include <algorithm>
#include <vector>

#include "core/text/word_set.hpp"
#include "documents/xml.hpp"

namespace documents {
namespace {

using core::text::type_names;

// Fields that compute from the document itself: numbers, dates, places.
constexpr auto HARMLESS_FIELDS =
    type_names({"PAGE",         "NUMPAGES",   "SECTION",    "SECTIONPAGES", "SEQ",
                "DATE",         "TIME",       "CREATEDATE", "SAVEDATE",     "PRINTDATE",
                "EDITTIME",     "NUMWORDS",   "NUMCHARS",   "REVNUM",       "LISTNUM",
                "AUTONUM",      "AUTONUMLGL", "AUTONUMOUT", "FORMTEXT",     "FORMCHECKBOX",
                "FORMDROPDOWN", "TOC",        "PAGEREF",    "REF",          "NOTEREF",
                "STYLEREF",     "TC"});
// Those that name a bookmark first.
constexpr auto REFERENCES = type_names({"PAGEREF", "REF", "NOTEREF"});
// Switches whose argument is a format or a range, or the name of a bookmark.
constexpr std::string_view FORMAT_SWITCHES = "*@#o";
constexpr std::string_view BOOKMARK_SWITCHES = "lb";

// Words and quoted strings with their quotes.
std::vector<std::string> words_of(std::string_view text) {
  std::vector<std::string> out;
  for (std::size_t at = 0; at < text.size();) {
    at = text.find_first_not_of(" \t\r\n", at);
    if (at == std::string_view::npos) break;
    const bool quoted = text[at] == '"';
    auto end = quoted ? text.find('"', at + 1) : text.find_first_of(" \t\r\n", at);
    if (end == std::string_view::npos) end = text.size();
    if (quoted && end < text.size()) ++end;
    out.emplace_back(text.substr(at, end - at));
    at = end;
  }
  return out;
}

std::string unquoted(std::string_view word) {
  if (word.starts_with('"')) word.remove_prefix(1);
  if (word.ends_with('"')) word.remove_suffix(1);
  return std::string(word);
}

bool is_switch(const std::string& word) { return word.size() == 2 && word.front() == '\\'; }

std::string upper(std::string word) {
  for (char& c : word) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return word;
}

// Arguments of switches that hold no text of the document.
std::string kept_argument(char name, const std::string& argument, const std::string& field,
                          const Renaming& rename) {
  if (FORMAT_SWITCHES.find(name) != std::string_view::npos && field != "HYPERLINK") return argument;
  const bool is_bookmark = BOOKMARK_SWITCHES.find(name) != std::string_view::npos &&
                           (field == "HYPERLINK" || field == "TOC");
  return is_bookmark && argument.starts_with('"') ? '"' + rename(unquoted(argument)) + '"'
                                                  : std::string();
}

// One field of a part, from its begin mark to its separator or end.
struct OpenField {
  std::vector<pugi::xml_node> instruction;
  bool in_result = false;
};

void neutralize_runs(const std::vector<pugi::xml_node>& nodes, const Renaming& rename) {
  if (nodes.empty()) return;
  std::string text;
  for (const auto& node : nodes) text += own_text(node);
  auto neutral = neutral_instruction(text, rename);
  if (neutral == text) return;
  for (const auto& node : nodes) {
    set_own_text(node, neutral);
    neutral.clear();
  }
}

void field_mark(const pugi::xml_node& node, std::vector<OpenField>& open, const Renaming& rename) {
  const std::string_view type = node.attribute("w:fldCharType").value();
  if (type == "begin") return open.emplace_back(), void();
  if (open.empty()) return;
  if (!open.back().in_result) neutralize_runs(open.back().instruction, rename);
  open.back().in_result = true;
  if (type == "end") open.pop_back();
}

}  // namespace

std::string neutral_instruction(std::string_view instruction, const Renaming& rename) {
  const auto words = words_of(instruction);
  if (words.empty()) return std::string(instruction);
  const auto field = upper(words.front());
  const bool harmless = HARMLESS_FIELDS.contains(std::string_view(field));
  std::string out = " " + std::string(field);
  std::size_t at = 1;
  const bool has_argument = at < words.size() && !is_switch(words[at]);
  if (has_argument && REFERENCES.contains(std::string_view(field))) {
    out += " " + rename(unquoted(words[at]));
  } else if (has_argument && field == "HYPERLINK") {
    out += " \"about:blank\"";
  } else if (has_argument && (field == "SEQ" || field == "STYLEREF")) {
    out += " " + words[at];
  }
  for (; at < words.size(); ++at) {
    if (!is_switch(words[at]) || (!harmless && field != "HYPERLINK")) continue;
    out += " " + words[at];
    if (at + 1 == words.size() || is_switch(words[at + 1])) continue;
    const auto argument = kept_argument(words[at][1], words[at + 1], field, rename);
    if (!argument.empty()) out += " " + argument;
    ++at;
  }
  out += " ";
  return out;
}

void neutralize_fields(const pugi::xml_node& root, const Renaming& rename) {
  std::vector<OpenField> open;
  std::vector<pugi::xml_node> loose;
  for_each_element(root, [&](pugi::xml_node node) {
    if (is(node, "w:fldChar")) {
      field_mark(node, open, rename);
    } else if (is(node, "w:fldSimple")) {
      auto attribute = node.attribute("w:instr");
      attribute.set_value(neutral_instruction(attribute.value(), rename).c_str());
    } else if (is(node, "w:instrText") || is(node, "w:delInstrText")) {
      (open.empty() || open.back().in_result ? loose : open.back().instruction).push_back(node);
    }
    return true;
  });
  for (const auto& field : open) neutralize_runs(field.instruction, rename);
  for (const auto& node : loose) neutralize_runs({node}, rename);
}

}  // namespace documents
