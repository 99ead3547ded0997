#include "core/person_name.hpp"

#include <algorithm>
#include <optional>

#include "core/text/lexicon.hpp"
#include "core/text/unicode.hpp"
#include "core/text/view_set.hpp"
#include "core/text/word_set.hpp"

namespace core::text::lexicon_data {
extern const std::string_view chinese_surnames;
}

namespace core {
namespace {

// Chinese titles stand before a name or behind it, honorifics behind it.
constexpr std::u32string_view CHINESE_TITLES[] = {
    // 学衔与职业
    U"博士", U"教授", U"副教授", U"律师", U"律師", U"法官", U"检察官", U"仲裁员", U"公证员",
    U"工程师", U"工程師", U"高级工程师", U"总工程师", U"会计师", U"建筑师", U"老师", U"医生",
    // 职务
    U"经理", U"經理", U"副经理", U"总经理", U"總經理", U"副总经理", U"总监", U"总裁", U"總裁",
    U"副总裁", U"董事", U"董事长", U"董事長", U"副董事长", U"监事", U"主席", U"副主席", U"主任",
    U"副主任", U"书记", U"秘书", U"校长", U"院长", U"所长", U"处长", U"科长", U"局长", U"厂长",
    U"部长"};
constexpr std::u32string_view CHINESE_HONORIFICS[] = {U"先生", U"女士", U"小姐", U"太太",
                                                      U"同志", U"阁下", U"总",   U"總"};

// More titles than this are not piled up on one name.
constexpr int MAX_CHINESE_TITLES = 3;

// 王小明, 欧阳小明: what begins with a surname and goes on longer is a foreign
// name in Chinese characters, of which no surname is known.
constexpr std::size_t MAX_CHINESE_GIVEN_NAME = 2;
constexpr std::size_t MAX_COMPOUND_SURNAME = 4;

constexpr auto MALE_TITLES = text::words({U"mr", U"sir", U"herr", U"monsieur", U"señor"});
constexpr auto FEMALE_TITLES =
    text::words({U"mrs", U"ms", U"miss", U"madam", U"madame", U"mme", U"mlle", U"frau", U"señora"});
constexpr auto OTHER_TITLES = text::words(
    {U"mx", U"dr", U"prof", U"professor", U"rev", U"reverend", U"honorable", U"honourable"});
constexpr auto TITLES_BEHIND = text::words(
    {U"esq", U"esquire", U"phd", U"md", U"jd", U"llb", U"llm", U"mba", U"cpa", U"cfa", U"qc"});
constexpr auto GENERATIONS =
    text::words({U"jr", U"sr", U"junior", U"senior", U"ii", U"iii", U"iv"});

constexpr std::u32string_view MIDDLE_DOTS = U"·•・‧∙⋅･·ㆍ";
constexpr std::u32string_view HYPHENS = U"‐‑‒–—―−﹣";
constexpr std::u32string_view APOSTROPHES = U"‘’ʼ′`´";

bool is_title_before(std::u32string_view word) {
  return MALE_TITLES.contains(word) || FEMALE_TITLES.contains(word) || OTHER_TITLES.contains(word);
}

// Hyphenation points, zero-width characters, marks of writing direction.
constexpr bool is_invisible(char32_t c) {
  return c == 0xAD || (c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) ||
         (c >= 0x2060 && c <= 0x2069) || c == 0xFEFF;
}

// Neither white space nor punctuation nor a symbol. Private-use characters stand
// for rare ideographs, all but the two that frame paragraph joiners.
constexpr bool is_name_character(char32_t c) {
  if (c < 0x80) return text::is_ascii_alnum(c);
  if (c < 0xC0) return c == U'ª' || c == U'º';
  if (c >= 0x2000 && c < 0x2C00) return false;
  if (c >= 0x3000 && c < 0x3040) return c >= 0x3005 && c <= 0x3007;  // 々 〆 〇
  if (c >= 0xFE10 && c < 0xFE70) return false;
  if (c >= 0xFF00 && c <= 0xFFFF) return c >= 0xFF66 && c <= 0xFFDC;
  return c != U'×' && c != U'÷' && c != 0xE000 && c != 0xE001;
}

// Characters of names that are written without blanks between the words.
constexpr bool is_cjk(char32_t c) {
  return (c >= 0x3005 && c <= 0x30FF) || (c >= 0x3400 && c < 0xA000) ||
         (c >= 0xAC00 && c < 0xD7B0) || (c >= 0xE000 && c < 0xFB00) ||
         (c >= 0xFF66 && c <= 0xFFDC) || (c >= 0x20000 && c < 0x40000);
}

bool has_cjk(std::u32string_view s) { return std::any_of(s.begin(), s.end(), is_cjk); }

// The one form of a character that has several; white space and what has no
// place in a name as a blank.
char32_t plain_form(char32_t c) {
  if (text::is_ideograph(c)) return c;
  if (c >= U'！' && c <= U'～') c = c - U'！' + U'!';
  if (c == U'.' || c == U',' || c == U'-' || c == U'\'') return c;
  if (MIDDLE_DOTS.find(c) != text::NPOS) return U'·';
  if (HYPHENS.find(c) != text::NPOS) return U'-';
  if (APOSTROPHES.find(c) != text::NPOS) return U'\'';
  return is_name_character(c) ? c : U' ';
}

std::u32string plain_form(std::u32string_view spelling) {
  std::u32string out;
  out.reserve(spelling.size());
  for (const char32_t c : spelling) {
    if (!is_invisible(c)) out += plain_form(c);
  }
  return out;
}

std::u32string_view trimmed(std::u32string_view s) {
  while (!s.empty() && !is_name_character(s.front())) s.remove_prefix(1);
  while (!s.empty() && !is_name_character(s.back())) s.remove_suffix(1);
  return s;
}

// ---- Names with Chinese, Japanese or Korean characters

bool is_chinese_surname(std::u32string_view s) {
  static const auto surnames = [] {
    const auto words = text::lexicon_words(text::lexicon_data::chinese_surnames);
    return text::ViewSet(words.begin(), words.end());
  }();
  return surnames.contains(s);
}

// Whether a (trimmed) name is known to hold a given name too: 张伟, 欧阳锋,
// 约翰·史密斯, but neither 张 nor 欧阳 nor 史密斯.
bool has_more_than_surname(std::u32string_view name) {
  std::u32string letters;
  for (const char32_t c : name) {
    if (is_name_character(c)) letters += c;
    if (letters.size() > MAX_COMPOUND_SURNAME + MAX_CHINESE_GIVEN_NAME) break;
  }
  if (letters.size() < 2 || is_chinese_surname(letters)) return false;
  if (!std::all_of(name.begin(), name.end(), is_name_character)) return true;
  for (std::size_t n = MAX_COMPOUND_SURNAME; n > 0; --n) {
    if (n >= letters.size() || !is_chinese_surname(letters.substr(0, n))) continue;
    return letters.size() - n <= MAX_CHINESE_GIVEN_NAME;
  }
  return false;
}

// How much of the end of `s` is `title`, separators inside included; 0 if it
// does not stand there.
std::size_t length_at_end(std::u32string_view s, std::u32string_view title) {
  std::size_t at = s.size();
  for (auto c = title.rbegin(); c != title.rend(); ++c) {
    while (at > 0 && !is_name_character(s[at - 1])) --at;
    if (at == 0 || s[--at] != *c) return 0;
  }
  return s.size() - at;
}

std::u32string_view without_title_behind(std::u32string_view s) {
  const auto last = std::find_if(s.rbegin(), s.rend(), is_name_character);
  if (last == s.rend()) return trimmed(s);
  std::size_t longest = 0;
  const auto try_title = [&](auto title) {
    if (title.back() == *last) longest = std::max(longest, length_at_end(s, title));
  };
  std::for_each(std::begin(CHINESE_TITLES), std::end(CHINESE_TITLES), try_title);
  std::for_each(std::begin(CHINESE_HONORIFICS), std::end(CHINESE_HONORIFICS), try_title);
  return trimmed(s.substr(0, s.size() - longest));
}

std::u32string_view without_title_before(std::u32string_view s) {
  std::size_t longest = 0;
  for (const auto title : CHINESE_TITLES) {
    if (s.starts_with(title)) longest = std::max(longest, title.size());
  }
  const auto word =
      s.substr(0, static_cast<std::size_t>(
                      std::find_if_not(s.begin(), s.end(), text::is_ascii_alpha) - s.begin()));
  if (!word.empty() && word.size() < s.size() && is_title_before(text::case_fold(word))) {
    longest = word.size();
  }
  return trimmed(s.substr(longest));
}

// Without titles, where more than a surname remains; empty if titles are all there is.
std::u32string_view without_chinese_titles(std::u32string_view s) {
  auto rest = s;
  for (const auto strip_one : {without_title_behind, without_title_before}) {
    for (int i = 0; i < MAX_CHINESE_TITLES; ++i) {
      const auto shorter = strip_one(rest);
      if (shorter.empty()) return shorter;
      if (shorter.size() == rest.size()) break;
      rest = shorter;
      // Of 张伟博士教授 the title in the middle must go before the rest is a name.
      if (has_more_than_surname(rest)) s = rest;
    }
  }
  return s;
}

std::u32string without_separators(std::u32string_view s) {
  std::u32string out;
  std::copy_if(s.begin(), s.end(), std::back_inserter(out), is_name_character);
  return out;
}

// ---- Names in other scripts

// A part of a name between commas.
struct Segment {
  std::vector<std::u32string> titles;
  std::vector<std::u32string> words;
  std::vector<std::u32string> generation;
};

// Calls visit(piece) for what stands between the separators.
template <class Visit, class IsSeparator>
void split(std::u32string_view s, IsSeparator is_separator, Visit visit) {
  std::size_t start = 0;
  for (std::size_t i = 0; i <= s.size(); ++i) {
    if (i < s.size() && !is_separator(s[i])) continue;
    visit(s.substr(start, i - start));
    start = i + 1;
  }
}

// "J.D.", which may be a degree or two initials.
bool may_be_initials(std::u32string_view token) {
  bool may_be = true;
  const auto try_piece = [&](std::u32string_view piece) { may_be = may_be && piece.size() < 2; };
  split(
      token, [](char32_t c) { return c == U'.'; }, try_piece);
  return may_be;
}

// "J.R." as j, r; a title behind a name as one word.
void add_words(std::vector<std::u32string>& words, std::u32string_view token, bool is_named) {
  auto dotless = text::case_fold(token);
  std::erase(dotless, U'.');
  if (TITLES_BEHIND.contains(dotless) && (is_named || !words.empty() || !may_be_initials(token))) {
    words.push_back(std::move(dotless));
    return;
  }
  split(
      token, [](char32_t c) { return c == U'.'; },
      [&](std::u32string_view piece) {
        auto word = text::case_fold(trimmed(piece));
        if (word.empty()) return;
        if (word == U"d" && !words.empty() && words.back() == U"ph") {
          words.back() = U"phd";
        } else {
          words.push_back(std::move(word));
        }
      });
}

// What stands before the first comma, or between two: `before` is the first
// part, nullptr for that part itself. Titles and the generation are taken off;
// behind a comma nothing else need be there ("John Smith, PhD").
Segment parse_segment(std::u32string_view s, const Segment* before) {
  Segment out;
  auto& words = out.words;
  const bool is_named = before != nullptr && before->words.size() > 1;
  split(
      s, [](char32_t c) { return c == U' ' || c == U'·'; },
      [&](std::u32string_view token) { add_words(words, token, is_named); });
  const auto named = std::find_if_not(words.begin(), words.end(), is_title_before);
  out.titles.assign(words.begin(), named);
  words.erase(words.begin(), named);
  const std::size_t fewest = before == nullptr ? 1 : 0;
  while (words.size() > fewest) {
    if (TITLES_BEHIND.contains(words.back())) {
      out.titles.push_back(words.back());
    } else if (GENERATIONS.contains(words.back())) {
      out.generation.push_back(words.back());
    } else {
      break;
    }
    words.pop_back();
  }
  return out;
}

template <class T>
void append(std::vector<T>& to, const std::vector<T>& from) {
  to.insert(to.end(), from.begin(), from.end());
}

// "SMITH, John A." with the surname last, as in "John A. Smith".
PersonName parse_words(std::u32string_view s) {
  PersonName out;
  std::optional<Segment> first;
  split(
      s, [](char32_t c) { return c == U','; },
      [&](std::u32string_view piece) {
        auto segment = parse_segment(piece, first ? &*first : nullptr);
        append(out.titles, segment.titles);
        append(out.generation, segment.generation);
        if (first) {
          append(out.names, segment.words);
        } else {
          first = std::move(segment);
        }
      });
  append(out.names, first->words);
  const bool has_given_name =
      !out.names.empty() && std::any_of(out.names.begin(), out.names.end() - 1,
                                        [](const auto& word) { return word.size() > 1; });
  if (has_given_name) out.titles.clear();
  return out;
}

}  // namespace

std::u32string PersonName::key() const {
  std::u32string out;
  if (names.empty()) return out;
  for (const auto* part : {&titles, &names, &generation}) {
    for (const auto& word : *part) {
      if (!out.empty()) out += U' ';
      out += word;
    }
  }
  return out;
}

PersonName parse_person_name(std::u32string_view spelling) {
  const std::u32string plain = plain_form(spelling);
  auto s = trimmed(plain);
  if (s.ends_with(U"'s") || s.ends_with(U"'S")) s = trimmed(s.substr(0, s.size() - 2));
  if (std::all_of(s.begin(), s.end(),
                  [](char32_t c) { return text::is_digit(c) || !is_name_character(c); })) {
    return {};
  }
  if (has_cjk(s)) s = without_chinese_titles(s);
  if (!has_cjk(s)) return parse_words(s);
  PersonName out;
  out.names.push_back(text::case_fold(without_separators(s)));
  return out;
}

ChineseName parse_chinese_name(std::u32string_view key) {
  ChineseName out;
  const auto name = without_chinese_title(key);
  out.title = key.substr(name.size());
  for (std::size_t n = std::min(MAX_COMPOUND_SURNAME, name.size()); n > 0; --n) {
    if (name.size() - n > MAX_CHINESE_GIVEN_NAME || !is_chinese_surname(name.substr(0, n))) {
      continue;
    }
    out.surname = name.substr(0, n);
    out.given = name.substr(n);
    break;
  }
  return out;
}

std::u32string_view without_chinese_title(std::u32string_view name) {
  for (int i = 0; i < MAX_CHINESE_TITLES; ++i) {
    const auto shorter = without_title_behind(name);
    if (shorter.empty() || shorter.size() == name.size()) break;
    name = shorter;
  }
  return name;
}

Gender gender_of(const PersonName& name) {
  for (const auto& title : name.titles) {
    if (const auto gender = gender_of_title(title); gender != Gender::UNKNOWN) return gender;
  }
  return Gender::UNKNOWN;
}

Gender gender_of_title(std::u32string_view word) {
  constexpr auto MALE = text::words({U"先生"});
  constexpr auto FEMALE = text::words({U"女士", U"小姐", U"太太"});
  auto title = text::case_fold(word);
  std::erase(title, U'.');
  if (MALE_TITLES.contains(title) || MALE.contains(title)) return Gender::MALE;
  if (FEMALE_TITLES.contains(title) || FEMALE.contains(title)) return Gender::FEMALE;
  return Gender::UNKNOWN;
}

}  // namespace core
