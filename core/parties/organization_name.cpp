#include "core/parties/organization_name.hpp"

#include <algorithm>

#include "core/parties/script_names.hpp"
#include "core/text/lexicon.hpp"
#include "core/text/unicode.hpp"

namespace core::parties {

Words words_of(std::string_view list) {
  auto words = text::lexicon_words(list);
  for (auto& word : words) word = text::case_fold(word);
  return {words.begin(), words.end()};
}

bool OrganizationName::is_full() const { return !form.empty() && form != COMPANY; }

OrganizationName parse_organization_name(std::u32string_view surface) {
  constexpr std::size_t LONGEST_NAME = 200;
  surface = text::strip(surface);
  if (surface.empty() || surface.size() > LONGEST_NAME) return {};
  if (text::contains_ideograph(surface)) return parse_chinese(surface);
  const bool latin = std::any_of(surface.begin(), surface.end(), text::is_ascii_alpha);
  return latin ? parse_latin(surface) : OrganizationName{};
}

Likeness likeness(const OrganizationName& name, const OrganizationName& longer) {
  if (name.script != longer.script || name.is_branch || longer.is_branch) return Likeness::NONE;
  switch (name.script) {
    case Script::CHINESE:
      return chinese_likeness(name, longer);
    case Script::LATIN:
      return latin_likeness(name, longer);
    default:
      return Likeness::NONE;
  }
}

bool is_same_name(const OrganizationName& a, const OrganizationName& b) {
  if (a.script != b.script) return false;
  if (a.script == Script::LATIN) return a.words == b.words && a.form == b.form;
  return a.script == Script::CHINESE && bare_place(a.place) == bare_place(b.place) &&
         a.core == b.core && a.form == b.form && a.qualifier == b.qualifier &&
         a.is_group == b.is_group;
}

bool abbreviates(std::u32string_view alias, std::u32string_view name) {
  const bool chinese = text::contains_ideograph(alias);
  if (chinese != text::contains_ideograph(name)) return false;
  if (chinese) {
    constexpr std::size_t MIN_IDEOGRAPHS = 2;
    return alias.size() >= MIN_IDEOGRAPHS &&
           is_subsequence(text::remove_space(text::fold_parentheses(alias)),
                          text::remove_space(text::fold_parentheses(name)));
  }
  return is_acronym(alias, name) || has_words_of(alias, name);
}

}  // namespace core::parties
