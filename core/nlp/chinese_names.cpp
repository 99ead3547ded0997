#include "core/nlp/chinese_names.hpp"

#include <string>

#include "core/nlp/characters.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/name_evidence.hpp"
#include "core/nlp/vocabulary.hpp"
#include "core/nlp/word_segmentation.hpp"
#include "core/text/lexicon.hpp"
#include "core/text/view_set.hpp"

namespace core::text::lexicon_data {
extern const std::string_view not_names;
extern const std::string_view words_as_names_zh;
}  // namespace core::text::lexicon_data

namespace core::nlp {
namespace {

using recognition::NlpArtifacts;
using recognition::WordClass;

// Seldom the second character of a given name, often the first of what follows a name.
constexpr std::u32string_view NEVER_IN_GIVEN_NAME =
    U"的自与和就在于为曾应须将以等及或向对签任作负担代是到从按由已可提先女称即均不未会该此其各但并且因则被把给让使说经至所有并需拟"
    U"同系处号曾仅诉辩述拟须副";

// Surnames that are everyday words too: without a label they are none.
constexpr std::u32string_view WEAK_SURNAMES =
    U"应于和时向任经能有后从成相关同方全都平常单计支包权那明安高通满步强终易万元公由须";

constexpr std::size_t LONGEST_PART = 8;

// The evidence that a name must have: as a run of its own, and in a sentence.
constexpr Evidence LEAST_OF_RUN = -25;
constexpr Evidence LEAST_IN_SENTENCE = -3;
// Of a name before a title or a mark.
constexpr Evidence LEAST_BEFORE_TITLE = -12;

std::size_t han_run_end(std::u32string_view t, std::size_t at, std::size_t longest) {
  std::size_t end = at;
  while (end < t.size() && end - at < longest && is_han(t[end])) ++end;
  return end;
}

bool never_in_given_name(char32_t c) {
  return NEVER_IN_GIVEN_NAME.find(c) != NEVER_IN_GIVEN_NAME.npos;
}

bool holds_word(const NlpArtifacts& a, std::size_t start, std::size_t end) {
  for (const auto c :
       {WordClass::CLAUSE_WORD, WordClass::COMPANY_FORM, WordClass::BANK, WordClass::BRANCH,
        WordClass::PHONE_LABEL, WordClass::ADDRESS_LABEL, WordClass::ORGANIZATION_LABEL,
        WordClass::ID_CARD_LABEL, WordClass::QUAL_LABEL}) {
    for (auto it = first_from(a.of(c), start); it != a.of(c).end() && it->start < end; ++it) {
      if (!it->from_table && it->end - it->start > 1) return true;
    }
  }
  return false;
}

// 穆萨·麦苏木, 阿不都热合曼·吐尔逊
std::size_t dotted_name_end(std::u32string_view t, std::size_t at) {
  std::size_t end = han_run_end(t, at, LONGEST_PART);
  if (end + 1 < t.size() && t[end] == U'-') end = han_run_end(t, end + 1, LONGEST_PART);
  std::size_t last = at;
  constexpr std::size_t LONGEST_NAME = 40;
  while (end > at && end - at < LONGEST_NAME && end < t.size() && is_dot(t[end])) {
    std::size_t part = han_run_end(t, end + 1, LONGEST_PART);
    // A whole run is a name; of a sentence that goes on the beginning is.
    if (part - end > 5) {
      part = end + 1;
      while (is_han(t[part]) && !never_in_given_name(t[part]) && part - end <= 6) ++part;
    }
    if (part == end + 1) break;
    last = end = part;
  }
  return last;
}

// 端木　澄: one to four blanks between surname and given name.
std::size_t spaced_name_end(std::u32string_view t, std::size_t at) {
  const std::size_t surname = surname_length(t, at);
  std::size_t i = at + surname;
  while (surname > 0 && i < t.size() && i < at + surname + 2 && t[i] == U' ') ++i;
  if (i == at + surname) return at;
  std::size_t end = han_run_end(t, i, 3);
  if (end == i || end - i > 2) return at;
  // 苗 根 生
  if (end - i == 1 && end + 1 < t.size() && t[end] == U' ' && is_han(t[end + 1]) &&
      (end + 2 >= t.size() || !is_han(t[end + 2]))) {
    const std::size_t last = end + 2;
    const bool ends = last >= t.size() || t[last] != U' ' || last + 1 >= t.size() ||
                      !is_han(t[last + 1]) || t[last + 1] == t[last];
    if (ends || surname == 1) end = last;
  }
  return end;
}

// Whether start..end is a known word of two characters or more, or ends like one for
// persons of an office.
bool is_known_word(const NlpArtifacts& a, std::size_t start, std::size_t end) {
  constexpr std::u32string_view OFFICES = U"工员师长手";
  if (OFFICES.find(a.folded[end - 1]) != OFFICES.npos) return true;
  const auto* word = word_at(a.chinese_words, start);
  return are_ordinary_words(a.chinese_words, start, end) ||
         (word != nullptr && word->start == start && word->end == end && word->known() &&
          word->length() > 1 && word->word_class != recognition::ChineseWordClass::PERSON);
}

// A run of ideographs behind a label that is a name as a whole.
bool is_whole_name(const NlpArtifacts& a, std::size_t at, std::size_t run, std::size_t surname) {
  constexpr std::u32string_view NEVER_FIRST = U"其本该各每上下以另此由";
  constexpr std::size_t LONGEST_RUN = 6;
  if (run < 2 || run > LONGEST_RUN || holds_word(a, at, at + run)) return false;
  if (surname == 0 && NEVER_FIRST.find(a.folded[at]) != NEVER_FIRST.npos) return false;
  if (surname == 0 && is_touched(a.of(WordClass::PUBLIC_BODY), at, at + run)) return false;
  const bool title_inside =
      run > surname + 1 && is_touched(a.of(WordClass::PERSON_TITLE), at + surname + 1, at + run);
  if (title_inside) return false;
  return run <= (surname > 0 ? surname + 2 : 3) || !is_name_with_words(a, at, at + run);
}

std::size_t plain_name_end(const NlpArtifacts& a, std::size_t at, NameContext context) {
  const std::u32string_view t = a.folded;
  const std::size_t run = han_run_end(t, at, LONGEST_PART) - at;
  const std::size_t surname = surname_length(t, at);
  if (context == NameContext::LABEL && is_whole_name(a, at, run, surname)) return at + run;
  if (surname == 0 || run <= surname) return at;
  const bool weak = surname == 1 && WEAK_SURNAMES.find(t[at]) != WEAK_SURNAMES.npos;
  // The run is as long as a name; what follows it is no part of a sentence.
  const bool neat = run == surname + 1 || run == surname + 2;
  if (neat && !weak && !never_in_given_name(t[at + run - 1]) &&
      !is_touched(a.of(WordClass::PERSON_TITLE), at + surname, at + run) &&
      name_evidence(a, at, at + run, surname) >=
          (context == NameContext::LABEL ? LEAST_OF_RUN : LEAST_IN_SENTENCE)) {
    return at + run;
  }
  if (context == NameContext::PROSE && weak) return at;
  const std::size_t end = likeliest_name_end(a, at, surname);
  if (end == at || never_in_given_name(t[at + surname])) return at;
  return name_evidence(a, at, end, surname) >= LEAST_IN_SENTENCE ? end : at;
}

// 安内格雷特·韦尔弗勒|博士
std::size_t without_title(const NlpArtifacts& a, std::size_t end) {
  const auto& titles = a.of(WordClass::PERSON_TITLE);
  const auto it = first_from(titles, end);
  return it != titles.begin() && std::prev(it)->end == end ? std::prev(it)->start : end;
}

// Whether nothing that belongs to the name stands behind it: the end of a cell, two blanks,
// another label.
bool ends_field(const NlpArtifacts& a, std::size_t end) {
  const std::u32string_view t = a.folded;
  if (end >= t.size() || is_cell_end(t[end])) return true;
  constexpr std::u32string_view MARKS = U" ，,(;；";
  if (MARKS.find(t[end]) == MARKS.npos) return false;
  if (t.substr(end, 2) == U"  ") return true;
  std::size_t label = end + 1;
  while (label < t.size() && t[label] == U' ') ++label;
  for (const auto c : {WordClass::PHONE_LABEL, WordClass::ID_CARD_LABEL, WordClass::USCC_LABEL,
                       WordClass::ADDRESS_LABEL, WordClass::PERSON_LABEL}) {
    if (end_of_word_at(a.of(c), label) > label) return true;
  }
  return false;
}

}  // namespace

bool is_word_as_name(std::u32string_view word) {
  static const auto words = [] {
    auto list = text::lexicon_words(text::lexicon_data::words_as_names_zh);
    return std::unordered_set<std::u32string>(list.begin(), list.end());
  }();
  return words.contains(std::u32string(word));
}

bool is_name_with_words(const NlpArtifacts& a, std::size_t start, std::size_t end) {
  const auto is_name = [&](std::size_t from, std::size_t to) {
    const std::size_t surname = surname_length(a.folded, from);
    return surname > 0 && surname < to - from && name_evidence(a, from, to, surname) > 0;
  };
  for (std::size_t length = 2; length + 2 <= end - start; ++length) {
    if (is_known_word(a, start, end - length) && is_name(end - length, end)) return true;
    if (is_known_word(a, start + length, end) && is_name(start, start + length)) return true;
  }
  return false;
}

bool is_everyday_word(std::u32string_view word) {
  static const auto words = [] {
    auto list = text::lexicon_words(text::lexicon_data::not_names);
    return text::ViewSet(list.begin(), list.end());
  }();
  return words.contains(word);
}

std::size_t chinese_name_end(const NlpArtifacts& a, std::size_t at, NameContext context) {
  const std::u32string_view t = a.folded;
  if (at >= t.size() || !is_han(t[at])) return at;
  if (const std::size_t end = dotted_name_end(t, at); end > at) return without_title(a, end);
  if (context == NameContext::LABEL) {
    if (const std::size_t end = spaced_name_end(t, at); end > at) return end;
  }
  const std::size_t end = plain_name_end(a, at, context);
  if (end == at || holds_word(a, at, end)) return at;
  // 法定代表人：幸福来: where nothing but a name stands, all of it must be a word.
  const bool alone = context == NameContext::LABEL && ends_field(a, end);
  if (alone && is_word_as_name(t.substr(at, end - at))) return end;
  for (std::size_t length = alone ? end - at : 2; length <= end - at; ++length) {
    if (is_everyday_word(t.substr(at, length))) return at;
  }
  const bool place = end_of_word_at(a.of(WordClass::PLACE), at) >= end;
  return place && surname_length(t, at) < 2 ? at : end;
}

std::size_t chinese_name_start(const NlpArtifacts& a, std::size_t end) {
  const std::u32string_view t = a.folded;
  std::size_t run = end;
  while (run > 0 && end - run < LONGEST_PART && is_han(t[run - 1])) --run;
  const auto evidence = [&](std::size_t length, std::size_t surname) {
    if (end - run < length) return NO_NAME;
    const std::size_t at = end - length;
    const auto name = t.substr(at, length);
    // 由张三, not the surname 由
    const bool weak = surname == 1 && length == 3 &&
                      WEAK_SURNAMES.find(t[at]) != WEAK_SURNAMES.npos &&
                      surname_length(t, at + 1) > 0;
    const bool fits = !weak && surname_length(t, at) == surname && !is_everyday_word(name) &&
                      !is_everyday_word(name.substr(0, 2)) && !holds_word(a, at, end) &&
                      !is_touched(a.of(WordClass::PERSON_LABEL), at, end);
    return fits ? name_evidence(a, at, end, surname) : NO_NAME;
  };
  // 叶陈淑芬: the husband's surname before one's own
  if (evidence(4, 1) > NO_NAME && surname_length(t, end - 3) == 1 &&
      (end == 4 || !is_han(t[end - 5])) && WEAK_SURNAMES.find(t[end - 4]) == WEAK_SURNAMES.npos) {
    return end - 4;
  }
  struct Shape {
    std::size_t length;
    std::size_t surname;
  };
  std::size_t best = end;
  Evidence most = LEAST_BEFORE_TITLE;
  for (const Shape shape : {Shape{4, 2}, Shape{3, 2}, Shape{3, 1}, Shape{2, 1}}) {
    const Evidence weight = evidence(shape.length, shape.surname);
    if (weight <= most) continue;
    most = weight;
    best = end - shape.length;
  }
  return best;
}

}  // namespace core::nlp
