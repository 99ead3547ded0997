#include <algorithm>
#include <array>

#include "core/parties/script_names.hpp"
#include "core/text/lexicon.hpp"
#include "core/text/unicode.hpp"
#include "core/text/word_set.hpp"

namespace core::text::lexicon_data {
extern const std::string_view common_name_words_en;
extern const std::string_view legal_forms_en;
extern const std::string_view places_en;
}  // namespace core::text::lexicon_data

namespace core::parties {
namespace {

namespace data = text::lexicon_data;

// A Latin name is not cut down to less than this, nor to one of these words.
constexpr std::size_t MIN_LATIN_BRAND = 4;
constexpr std::size_t MIN_LATIN_NAME = 3;
constexpr auto BRANCH_WORDS =
    text::words({U"agency", U"branch", U"branches", U"department", U"division", U"office",
                 U"subbranch", U"sub-branch", U"subsidiary"});
constexpr auto SMALL_WORDS =
    text::words({U"and", U"de", U"des", U"du", U"for", U"in", U"of", U"on", U"the", U"to"});

const Words& common_words() {
  static const Words words = words_of(data::common_name_words_en);
  return words;
}

bool is_separator(char32_t c) { return text::is_space(c) || c == U',' || c == U'，'; }

// "Co.,Ltd." as co, ltd; "(Hong Kong)" as (hong, kong); "&" as and.
std::vector<std::u32string> latin_words(std::u32string_view surface) {
  std::vector<std::u32string> out;
  std::u32string word;
  const auto finish = [&] {
    if (word == U"&" || word == U"＆") word = U"and";
    if (!word.empty()) out.push_back(std::move(word));
    word.clear();
  };
  for (const char32_t c : text::case_fold(text::fold_parentheses(surface))) {
    if (is_separator(c)) {
      finish();
    } else if (c != U'.' && c != U'"') {
      word += c == U'’' ? U'\'' : c;
    }
  }
  finish();
  return out;
}

const Words& latin_forms() {
  static const Words forms = [] {
    Words out;
    for (const auto& row : text::lexicon_rows(data::legal_forms_en)) {
      // "Holdings" is part of the name: Acme Holdings is not Acme Ltd.
      if (row.size() < 2 || row[1] != U"EN_LEGAL_FORM" || row[0] == U"holdings") continue;
      const auto words = latin_words(row[0]);
      out.insert(joined(words, 0, words.size()));
    }
    return out;
  }();
  return forms;
}

const Words& latin_places() {
  static const Words words = words_of(data::places_en);
  return words;
}

// One spelling for the forms that have several.
std::u32string plain_form(const std::u32string& word) {
  constexpr std::array<std::pair<std::u32string_view, std::u32string_view>, 5> SPELLINGS = {
      {{U"limited", U"ltd"},
       {U"corporation", U"corp"},
       {U"incorporated", U"inc"},
       {U"company", U"co"},
       {U"private", U"pte"}}};
  for (const auto& [from, to] : SPELLINGS) {
    if (word == from) return std::u32string(to);
  }
  return word;
}

// The number of words at the end that are a legal form.
std::size_t form_words(const std::vector<std::u32string>& words) {
  constexpr std::size_t LONGEST_FORM = 5;
  std::size_t end = words.size();
  for (std::size_t n = std::min(LONGEST_FORM, end - 1); n > 0;) {
    if (latin_forms().contains(joined(words, end - n, end))) {
      end -= n;
      n = std::min(LONGEST_FORM, end - 1);
    } else {
      --n;
    }
  }
  return words.size() - end;
}

bool stands_at(const std::vector<std::u32string>& words, const std::vector<std::u32string>& longer,
               std::size_t at) {
  return at + words.size() <= longer.size() &&
         std::equal(words.begin(), words.end(), longer.begin() + static_cast<std::ptrdiff_t>(at));
}

// The same words, perhaps without the legal form.
Likeness whole_likeness(const OrganizationName& name, const OrganizationName& longer) {
  if (!name.form.empty()) return name.form == longer.form ? Likeness::SHORT : Likeness::NONE;
  const auto& first = name.words.front();
  const bool known = first.size() >= MIN_LATIN_NAME && !common_words().contains(first);
  return name.words.size() > 1 || known ? Likeness::SHORT : Likeness::POSSIBLE;
}

// The first words, with `next` behind them in the longer name.
Likeness head_likeness(const OrganizationName& name, const std::u32string& next) {
  if (!name.form.empty()) return Likeness::NONE;
  const auto& first = name.words.front();
  const bool known = first.size() >= MIN_LATIN_BRAND && !common_words().contains(first) &&
                     !latin_places().contains(first);
  // Behind a short name a place marks another company of the same house.
  const bool is_house = next.front() == U'(' || latin_places().contains(next);
  return known && !is_house ? Likeness::SHORT : Likeness::POSSIBLE;
}

// Mulin Advisory of Shenzhen Qianhai Mulin Advisory
bool is_tail(const OrganizationName& name, const OrganizationName& longer) {
  constexpr std::size_t MIN_TAIL = 2;
  return name.form.empty() && name.words.size() >= MIN_TAIL && longer.place_words > 0 &&
         longer.words.size() > name.words.size() &&
         stands_at(name.words, longer.words, longer.words.size() - name.words.size()) &&
         !common_words().contains(name.words.front());
}

}  // namespace

std::u32string joined(const std::vector<std::u32string>& words, std::size_t from, std::size_t to) {
  std::u32string out;
  for (std::size_t i = from; i < to; ++i) {
    if (i > from) out += U' ';
    out += words[i];
  }
  return out;
}

OrganizationName parse_latin(std::u32string_view surface) {
  OrganizationName out;
  out.script = Script::LATIN;
  out.words = latin_words(surface);
  if (out.words.empty()) return {};
  if (out.words.size() > 1 && out.words.front() == U"the") out.words.erase(out.words.begin());
  out.is_branch = std::any_of(out.words.begin() + 1, out.words.end(),
                              [](const auto& word) { return BRANCH_WORDS.contains(word); });
  const auto form = form_words(out.words);
  for (auto i = out.words.size() - form; i < out.words.size(); ++i) {
    out.form += (out.form.empty() ? U"" : U" ") + plain_form(out.words[i]);
  }
  out.words.resize(out.words.size() - form);
  while (out.place_words + 1 < out.words.size() &&
         latin_places().contains(out.words[out.place_words])) {
    ++out.place_words;
  }
  return out;
}

Likeness latin_likeness(const OrganizationName& name, const OrganizationName& longer) {
  if (name.words.empty()) return Likeness::NONE;
  for (const std::size_t at : {std::size_t{0}, longer.place_words}) {
    if (!stands_at(name.words, longer.words, at)) continue;
    const auto end = at + name.words.size();
    return end == longer.words.size() ? whole_likeness(name, longer)
                                      : head_likeness(name, longer.words[end]);
  }
  return is_tail(name, longer) ? Likeness::SHORT : Likeness::NONE;
}

bool is_acronym(std::u32string_view alias, std::u32string_view name) {
  std::u32string all;
  std::u32string important;
  for (const auto& word : latin_words(name)) {
    const char32_t letter = word.front() == U'(' && word.size() > 1 ? word[1] : word.front();
    all += letter;
    if (!SMALL_WORDS.contains(word)) important += letter;
  }
  // CWC of Castellanos-Whitfield Composites
  std::u32string parts;
  for (const auto& word : latin_words(name)) {
    for (std::size_t i = 0; i < word.size(); ++i) {
      const bool opens = i == 0 || word[i - 1] == U'-';
      if (opens && text::is_ascii_alpha(word[i])) parts += word[i];
    }
  }
  std::u32string letters;
  for (const char32_t c : text::case_fold(alias)) {
    if (text::is_ascii_alpha(c)) letters += c;
  }
  constexpr std::size_t MIN_LETTERS = 2;
  // FDA of U.S. Food and Drug Administration
  const bool behind_country =
      letters.size() > MIN_LETTERS && all.starts_with(U'u') && important.substr(1) == letters;
  return letters.size() >= MIN_LETTERS &&
         (all.starts_with(letters) || important.starts_with(letters) ||
          parts.starts_with(letters) || behind_country);
}

bool has_words_of(std::u32string_view alias, std::u32string_view name) {
  const auto words = latin_words(alias);
  const auto whole = latin_words(name);
  for (std::size_t at = 0; !words.empty() && at < whole.size(); ++at) {
    if (stands_at(words, whole, at)) return true;
  }
  return false;
}

}  // namespace core::parties
