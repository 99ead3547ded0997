#include "core/parties/person_parties.hpp"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "core/parties/adjacent_names.hpp"
#include "core/parties/pinyin.hpp"
#include "core/parties/script_names.hpp"
#include "core/text/unicode.hpp"
#include "core/text/view_map.hpp"

namespace core::parties {
namespace {

using anonymization::Offset;
using anonymization::RecognizerResult;

constexpr std::size_t NOBODY = static_cast<std::size_t>(-1);
constexpr std::size_t SEVERAL = NOBODY - 1;

constexpr std::u32string_view MIDDLE_DOTS = U"·•・‧∙⋅･·";
constexpr std::size_t MIN_PART = 2;       // 彼得 of 彼得·史密斯
constexpr std::size_t MIN_SURNAME = 3;    // letters: Roe, not Li
constexpr std::size_t MIN_FULL_NAME = 2;  // words, or ideographs

std::vector<RecognizerResult> outermost_persons(const std::vector<RecognizerResult>& hits) {
  std::vector<RecognizerResult> found;
  std::copy_if(hits.begin(), hits.end(), std::back_inserter(found), [](const auto& hit) {
    return hit.entity_type == anonymization::entity_type::PERSON;
  });
  const auto goes_first = [](const auto& a, const auto& b) {
    return a.start != b.start ? a.start < b.start : a.end > b.end;
  };
  if (!std::is_sorted(found.begin(), found.end(), goes_first)) {
    std::stable_sort(found.begin(), found.end(), goes_first);
  }
  std::vector<RecognizerResult> out;
  for (auto& hit : found) {
    if (out.empty() || hit.start >= out.back().end) out.push_back(std::move(hit));
  }
  return out;
}

// 周 of 周工, 老周, 周师傅; empty if the name is none of these forms.
std::u32string_view surname_of_form(std::u32string_view name) {
  constexpr std::u32string_view PREFIXES = U"老小";
  constexpr std::u32string_view FORMS[] = {U"工", U"哥", U"姐",   U"叔",   U"姨",  U"嫂",
                                           U"董", U"局", U"总工", U"师傅", U"师父"};
  const auto is_surname = [](std::u32string_view part) {
    return !part.empty() && part.size() <= 2 && parse_chinese_name(part).surname == part;
  };
  if (name.size() == 2 && PREFIXES.find(name.front()) != PREFIXES.npos) {
    return is_surname(name.substr(1)) ? name.substr(1) : std::u32string_view{};
  }
  for (const auto form : FORMS) {
    if (!name.ends_with(form)) continue;
    const auto rest = name.substr(0, name.size() - form.size());
    if (is_surname(rest)) return rest;
  }
  return {};
}

// Whether a title that tells a gender may begin with the character: no other ideograph
// begins one, and none of these marks stands in one.
bool may_begin_title(char32_t c) {
  constexpr std::u32string_view FIRST_OF_TITLES = U"先女小太";
  if (text::is_ideograph(c)) return FIRST_OF_TITLES.find(c) != FIRST_OF_TITLES.npos;
  constexpr std::u32string_view MARKS = U"，。、；：（）“”《》\n ,;:()\"";
  return MARKS.find(c) == MARKS.npos;
}

Gender gender_of_word(std::u32string_view word) {
  if (word.empty() || !may_begin_title(word.front())) return Gender::UNKNOWN;
  return gender_of_title(word);
}

// A spelling of a name.
struct Spelling {
  std::u32string surface;
  PersonName name;
  std::size_t cluster = NOBODY;  // spellings that are known to be one person
  std::set<Gender> genders;      // what titles say around its mentions
  // Of what is no full name: what is looked up, a surname or a part of a name.
  std::u32string part;
  std::u32string job;    // the title that is part of it, if that is no honorific
  bool is_form = false;  // 周工
  bool is_full = false;  // a surname and a given name, as far as one can tell

  bool is_latin() const { return parties::is_latin(surface); }
};

class Persons {
 public:
  Persons(std::u32string_view text, const std::vector<RecognizerResult>& hits)
      : text_(text), mentions_(outermost_persons(hits)) {
    text::MetWords organizations;
    for (const auto& hit : hits) {
      if (hit.entity_type != anonymization::entity_type::ORGANIZATION) continue;
      const auto surface = text::slice(text, hit.start, hit.end);
      if (organizations.insert(surface)) read_words(surface);
    }
  }

  std::vector<KnownPerson> run() {
    read_mentions();
    unite_pairs();
    unite_romanized();
    unite_without_middle();
    unite_initials();
    index_parts();
    note_wrapped();
    note_rivals();
    std::vector<std::size_t> meant(spellings_.size(), NOBODY);
    for (std::size_t i = 0; i < spellings_.size(); ++i) meant[i] = whole_person(spellings_[i]);
    for (std::size_t i = 0; i < spellings_.size(); ++i) {
      if (meant[i] != NOBODY) unite(spellings_[i].cluster, meant[i]);
    }
    return known();
  }

 private:
  // Morandelli, who is a person and a company.
  void read_words(std::u32string_view organization) {
    std::u32string word;
    for (const char32_t c : text::case_fold(organization) + U" ") {
      if (text::is_space(c) || c == U',' || c == U'.') {
        if (is_latin(word)) company_words_.insert(std::move(word));
        word.clear();
      } else {
        word += c;
      }
    }
  }

  void read_mentions() {
    const auto numbers = person_span_to_placeholder_num(text_, mentions_);
    std::unordered_map<std::u32string, std::size_t> by_key;
    text::ViewMap<std::size_t> by_surface;
    spelling_of_.assign(mentions_.size(), NOBODY);
    for (std::size_t m = 0; m < mentions_.size(); ++m) {
      const auto& hit = mentions_[m];
      const auto number = numbers.find({hit.start, hit.end});
      if (number == numbers.end()) continue;
      const auto surface = text::strip(text::slice(text_, hit.start, hit.end));
      const auto [known, is_new] = by_surface.add(surface);
      if (is_new) {
        auto name = parse_person_name(surface);
        const auto [found, is_first] = by_key.try_emplace(name.key(), spellings_.size());
        if (is_first) add_spelling(surface, std::move(name), number->second);
        known.value = found->second;
        note_gender_of_name(spellings_[known.value]);
      }
      spelling_of_[m] = known.value;
      note_gender(spellings_[known.value], hit);
    }
    parent_.resize(numbers.size() + 1);
    for (std::size_t i = 0; i < parent_.size(); ++i) parent_[i] = i;
  }

  void add_spelling(std::u32string_view surface, PersonName name, std::int64_t number) {
    Spelling spelling;
    spelling.surface = surface;
    spelling.cluster = static_cast<std::size_t>(number);
    spelling.name = std::move(name);
    read_parts(spelling);
    spelling.is_full = is_full_name(spelling);
    spellings_.push_back(std::move(spelling));
  }

  // Whether the spelling is less than a name, and of what.
  static void read_parts(Spelling& spelling) {
    const auto& names = spelling.name.names;
    if (spelling.is_latin()) {
      const auto part = joined(names, 0, names.size());
      if (part.size() >= MIN_SURNAME || !spelling.name.titles.empty()) spelling.part = part;
      return;
    }
    const auto& whole = names.front();
    const auto plain = without_chinese_title(whole);
    if (plain.size() < whole.size() && parties::is_latin(plain)) {
      spelling.part = plain;  // Osterkamp先生
      return;
    }
    const auto form = surname_of_form(whole);
    if (!form.empty()) {
      spelling.is_form = true;
      spelling.part = form;
      return;
    }
    const auto chinese = parse_chinese_name(whole);
    const auto title = std::u32string_view(whole).substr(plain.size());
    if (!chinese.surname.empty() && chinese.given.empty()) {
      if (!title.empty()) spelling.part = chinese.surname;
      if (gender_of_title(title) == Gender::UNKNOWN) spelling.job = title;
    } else if (spelling.surface.find_first_of(MIDDLE_DOTS) == std::u32string::npos) {
      spelling.part = plain;
    }
  }

  void note_gender(Spelling& spelling, const RecognizerResult& hit) const {
    constexpr Offset TITLE = 6;
    auto before =
        text::strip(text::slice(text_, std::max<Offset>(0, hit.start - TITLE), hit.start));
    const auto blank = before.find_last_of(U" \n\t(（,，;；");
    if (blank != before.npos) before.remove_prefix(blank + 1);
    std::size_t letters = before.size();
    while (letters > 0 &&
           (text::is_ascii_alpha(before[letters - 1]) || before[letters - 1] == U'.')) {
      --letters;
    }
    const auto behind = text::slice(text_, hit.end, hit.end + 2);
    note(spelling, gender_of_word(before.substr(letters)));
    note(spelling, gender_of_word(behind));
  }

  static void note(Spelling& spelling, Gender gender) {
    if (gender != Gender::UNKNOWN) spelling.genders.insert(gender);
  }

  static void note_gender_of_name(Spelling& spelling) {
    const std::u32string_view last = spelling.name.names.back();
    note(spelling, gender_of(spelling.name));
    note(spelling, gender_of_title(last.substr(without_chinese_title(last).size())));
  }

  // ---- Persons by union

  std::size_t person(std::size_t cluster) {
    while (parent_[cluster] != cluster) {
      parent_[cluster] = parent_[parent_[cluster]];
      cluster = parent_[cluster];
    }
    return cluster;
  }

  void unite(std::size_t a, std::size_t b) {
    a = person(a);
    b = person(b);
    if (a != b) parent_[std::max(a, b)] = std::min(a, b);
  }

  // A name in two languages; not where it has two names of one language beside it.
  void unite_pairs() {
    std::map<std::size_t, std::set<std::size_t>> partners;
    for (std::size_t m = 0; m + 1 < mentions_.size(); ++m) {
      const auto a = spelling_of_[m];
      const auto b = spelling_of_[m + 1];
      if (a == NOBODY || b == NOBODY || !spellings_[a].is_full || !spellings_[b].is_full ||
          (spellings_[a].is_latin() == spellings_[b].is_latin() && !is_other_name(m))) {
        continue;
      }
      const auto next =
          m + 2 < mentions_.size() ? mentions_[m + 2].start : static_cast<Offset>(text_.size());
      const auto& x = mentions_[m];
      const auto& y = mentions_[m + 1];
      if (adjacency(text_, {x.start, x.end, y.start, y.end, next}) == Adjacency::NONE) continue;
      partners[spellings_[a].cluster].insert(spellings_[b].cluster);
      partners[spellings_[b].cluster].insert(spellings_[a].cluster);
    }
    for (const auto& [cluster, others] : partners) {
      if (others.size() != 1 || partners[*others.begin()].size() != 1) continue;
      unite(cluster, *others.begin());
      paired_.insert(cluster);
    }
  }

  // Yip Ka Man (Carmen Yip): in a bracket of its own, with a word of the name
  bool is_other_name(std::size_t m) const {
    const auto& x = mentions_[m];
    const auto& y = mentions_[m + 1];
    if (text::slice(text_, x.end, y.start) != U" (" ||
        text::slice(text_, y.end, y.end + 1) != U")") {
      return false;
    }
    const auto& first = spellings_[spelling_of_[m]].name.names;
    const auto& second = spellings_[spelling_of_[m + 1]].name.names;
    return std::find_first_of(first.begin(), first.end(), second.begin(), second.end(),
                              [](const auto& a, const auto& b) {
                                return a.size() >= MIN_SURNAME && a == b;
                              }) != first.end();
  }

  // 欧阳静 and Ouyang Jing, where no other name is spelled alike.
  // The persons with a Chinese name by its spellings in pinyin.
  std::unordered_map<std::u32string, std::size_t> persons_by_pinyin() {
    std::unordered_map<std::u32string, std::size_t> by_letters;
    for (const auto& spelling : spellings_) {
      if (spelling.is_latin() || !spelling.is_full) continue;
      const auto name = parse_chinese_name(spelling.name.names.front());
      if (name.surname.empty() || name.given.empty() || !name.title.empty()) continue;
      const auto whose = person(spelling.cluster);
      for (auto& letters : pinyin_spellings(name.surname + name.given, name.surname.size())) {
        const auto [found, is_new] = by_letters.try_emplace(std::move(letters), whose);
        if (!is_new && found->second != whose) found->second = SEVERAL;
      }
    }
    return by_letters;
  }

  void unite_romanized() {
    const auto by_letters = persons_by_pinyin();
    if (by_letters.empty()) return;
    const auto listed = listed_pairs();
    for (const auto& spelling : spellings_) {
      if (!spelling.is_latin() || !spelling.is_full || paired_.contains(spelling.cluster)) continue;
      const auto found = by_letters.find(pinyin_letters(spelling.surface));
      if (found == by_letters.end() || found->second == SEVERAL) continue;
      if (listed.contains({person(spelling.cluster), found->second})) continue;
      unite(spelling.cluster, found->second);
      paired_.insert(spelling.cluster);
    }
  }

  // Persons who stand beside each other in a list: 应雪瑶、Ying Xueyao
  std::set<std::pair<std::size_t, std::size_t>> listed_pairs() {
    std::set<std::pair<std::size_t, std::size_t>> out;
    for (std::size_t m = 0; m + 1 < mentions_.size(); ++m) {
      const auto a = spelling_of_[m];
      const auto b = spelling_of_[m + 1];
      if (a == NOBODY || b == NOBODY) continue;
      const auto gap = text::strip(text::slice(text_, mentions_[m].end, mentions_[m + 1].start));
      if (gap != U"、" && gap != U"," && gap != U"，" && gap != U"和" && gap != U"与" &&
          gap != U"and") {
        continue;
      }
      const auto x = person(spellings_[a].cluster);
      const auto y = person(spellings_[b].cluster);
      out.insert({x, y});
      out.insert({y, x});
    }
    return out;
  }

  // Graham Ellerby for Graham Tobias Ellerby, where one person fits.
  void unite_without_middle() {
    std::unordered_map<std::u32string, std::size_t> by_ends;
    for (const auto& spelling : spellings_) {
      const auto& words = spelling.name.names;
      if (!spelling.is_latin() || words.size() < 3 || words.front().size() < 2) continue;
      const auto whose = person(spelling.cluster);
      const auto [found, is_new] = by_ends.try_emplace(words.front() + U' ' + words.back(), whose);
      if (!is_new && found->second != whose) found->second = SEVERAL;
    }
    for (const auto& spelling : spellings_) {
      const auto& words = spelling.name.names;
      if (!spelling.is_latin() || words.size() != 2 || !spelling.name.generation.empty()) continue;
      const auto found = by_ends.find(words.front() + U' ' + words.back());
      if (found == by_ends.end() || found->second == SEVERAL) continue;
      unite(spelling.cluster, found->second);
    }
  }

  // J.P. van der Westhuizen for Johannes Petrus van der Westhuizen, Qian W.J. for Qian
  // Weijun, where one person fits.
  void unite_initials() {
    std::unordered_map<std::u32string, std::size_t> by_initials;
    const auto add = [&](std::u32string key, std::size_t cluster) {
      const auto whose = person(cluster);
      const auto [found, is_new] = by_initials.try_emplace(std::move(key), whose);
      if (!is_new && found->second != whose) found->second = SEVERAL;
    };
    constexpr std::size_t MOST_WORDS = 8;
    for (const auto& spelling : spellings_) {
      const auto& words = spelling.name.names;
      if (!spelling.is_latin() || words.size() < 2 || words.size() > MOST_WORDS ||
          words.front().size() < 2) {
        continue;
      }
      std::u32string letters;
      for (std::size_t i = 1; i < words.size(); ++i) {
        letters += words[i - 1].front();
        add(letters + U'|' + joined(words, i, words.size()), spelling.cluster);
      }
      add(letters + words.back().front() + U'|', spelling.cluster);  // T.J.
      letters.clear();
      for (std::size_t i = 1; i < words.size(); ++i) letters += words[i].front();
      if (words.back().size() > 1) add(letters + U'|' + words.front(), spelling.cluster);
    }
    for (const auto& spelling : spellings_) {
      if (!spelling.is_latin()) continue;
      const auto found = by_initials.find(initials_key(spelling.name.names));
      if (found == by_initials.end() || found->second == SEVERAL) continue;
      unite(spelling.cluster, found->second);
    }
  }

  // "jp|van der westhuizen" of J.P. van der Westhuizen; empty if a name is spelled out.
  static std::u32string initials_key(const std::vector<std::u32string>& words) {
    std::size_t first = 0;
    std::size_t last = words.size();
    std::u32string letters;
    while (first < last && words[first].size() == 1) letters += words[first++];
    if (letters.empty()) {
      while (last > first && words[last - 1].size() == 1) letters.insert(0, words[--last]);
    }
    constexpr std::size_t FEWEST = 2;
    if (letters.empty() || (first == last && letters.size() < FEWEST)) return {};
    return letters + U'|' + joined(words, first, last);
  }

  // "Cornelius" at the end of a line and "O'Sullivan" on the next are a person, so that
  // O'Sullivan alone may be this one.
  void note_wrapped() {
    std::unordered_set<std::u32string> known;
    for (const auto& s : spellings_) known.insert(joined(s.name.names, 0, s.name.names.size()));
    for (std::size_t m = 0; m + 1 < mentions_.size(); ++m) {
      const auto a = spelling_of_[m];
      const auto b = spelling_of_[m + 1];
      if (a == NOBODY || b == NOBODY || !spellings_[a].is_latin() || !spellings_[b].is_latin()) {
        continue;
      }
      const auto gap = text::slice(text_, mentions_[m].end, mentions_[m + 1].start);
      const auto behind = text::slice(text_, mentions_[m + 1].end, mentions_[m + 1].end + 1);
      if (gap != U"\n" || behind.empty() || behind == U"\n") continue;
      const auto& first = spellings_[a].name.names;
      const auto& last = spellings_[b].name.names;
      const auto surname = joined(last, 0, last.size());
      if (first.size() == 1 && !known.contains(first.front() + U' ' + surname)) {
        person_by_part_[surname] = SEVERAL;
      }
    }
  }

  static bool is_full_name(const Spelling& spelling) {
    if (spelling.is_latin()) return spelling.name.names.size() >= MIN_FULL_NAME;
    if (spelling.is_form) return false;
    const auto& whole = spelling.name.names.front();
    const auto chinese = parse_chinese_name(whole);
    return whole.size() >= MIN_FULL_NAME && (chinese.surname.empty() || !chinese.given.empty()) &&
           parties::is_chinese(spelling.surface);
  }

  // ---- Parts of names

  void add_part(std::u32string part, std::size_t cluster) {
    const auto whose = person(cluster);
    const auto [found, is_new] = person_by_part_.try_emplace(std::move(part), whose);
    if (!is_new && found->second != whose) found->second = SEVERAL;
  }

  void index_parts() {
    for (const auto& spelling : spellings_) {
      if (!spelling.is_full) continue;
      spelling.is_latin() ? index_latin(spelling) : index_chinese(spelling);
    }
  }

  void index_latin(const Spelling& spelling) {
    constexpr std::size_t MOST_WORDS = 8;
    const auto& words = spelling.name.names;
    if (words.size() > MOST_WORDS) return;
    for (std::size_t i = 1; i < words.size(); ++i) {
      add_part(joined(words, i, words.size()), spelling.cluster);
    }
    // Cheung of Alvin Cheung Ho Yin
    for (std::size_t i = 1; i + 1 < words.size(); ++i) {
      if (words[i].size() > MIN_SURNAME) add_part(words[i], spelling.cluster);
    }
    // Siti Norhafizah binti Rahman; Katarzyna.
    for (std::size_t n = 1; n < words.size(); ++n) {
      add_part(joined(words, 0, n), spelling.cluster);
    }
  }

  void index_chinese(const Spelling& spelling) {
    const std::u32string_view surface = spelling.surface;
    const auto dot = surface.find_first_of(MIDDLE_DOTS);
    if (dot != surface.npos) {
      const auto first = text::strip(surface.substr(0, dot));
      const auto last =
          without_chinese_title(text::strip(surface.substr(surface.find_last_of(MIDDLE_DOTS) + 1)));
      if (first.size() >= MIN_PART) add_part(std::u32string(first), spelling.cluster);
      if (last.size() >= MIN_PART) add_part(std::u32string(last), spelling.cluster);
      return;
    }
    const auto chinese = parse_chinese_name(spelling.name.names.front());
    if (!chinese.given.empty()) add_part(chinese.surname, spelling.cluster);
    // 佐藤 of 佐藤健一
    const auto& whole = spelling.name.names.front();
    if (chinese.surname.size() < MIN_PART && whole.size() > MIN_PART + 1) {
      add_part(whole.substr(0, MIN_PART), spelling.cluster);
    }
  }

  // Two titles behind one surname may be two persons.
  void note_rivals() {
    for (const auto& spelling : spellings_) {
      if (spelling.part.empty()) continue;
      genders_[spelling.part].insert(spelling.genders.begin(), spelling.genders.end());
      if (!spelling.job.empty()) jobs_[spelling.part].insert(spelling.job);
    }
    for (const auto& spelling : spellings_) {
      if (spelling.genders.empty() || !spelling.is_full) continue;
      auto& known = genders_of_person_[person(spelling.cluster)];
      known.insert(spelling.genders.begin(), spelling.genders.end());
    }
  }

  // The cluster of the one person that the spelling can stand for.
  std::size_t whole_person(const Spelling& spelling) {
    if (spelling.part.empty() || company_words_.contains(spelling.part)) return NOBODY;
    const auto found = person_by_part_.find(spelling.part);
    if (found == person_by_part_.end() || found->second == SEVERAL) return NOBODY;
    if (!spelling.job.empty() && jobs_[spelling.part].size() > 1) return NOBODY;
    auto genders = genders_[spelling.part];
    const auto known = genders_of_person_.find(found->second);
    if (known != genders_of_person_.end()) {
      genders.insert(known->second.begin(), known->second.end());
    }
    return genders.size() < 2 ? found->second : NOBODY;
  }

  std::vector<KnownPerson> known() {
    std::map<std::size_t, std::vector<const Spelling*>> members;
    for (const auto& spelling : spellings_) members[person(spelling.cluster)].push_back(&spelling);
    std::vector<KnownPerson> out;
    for (const auto& [whose, group] : members) {
      const auto rank = [](const Spelling* s) {
        return std::pair(s->is_full && s->is_latin(), s->surface.size());
      };
      const auto* chosen =
          *std::max_element(group.begin(), group.end(),
                            [&rank](const auto* a, const auto* b) { return rank(a) < rank(b); });
      KnownPerson person_out{chosen->surface, {}};
      for (const auto* spelling : group) {
        // Spellings of one cluster find together by themselves.
        if (spelling->cluster != chosen->cluster) person_out.variants.push_back(spelling->surface);
      }
      if (!person_out.variants.empty()) out.push_back(std::move(person_out));
    }
    return out;
  }

  std::u32string_view text_;
  std::vector<RecognizerResult> mentions_;
  std::unordered_set<std::u32string> company_words_;
  std::vector<std::size_t> spelling_of_;
  std::vector<Spelling> spellings_;
  std::vector<std::size_t> parent_;
  std::set<std::size_t> paired_;
  std::unordered_map<std::u32string, std::size_t> person_by_part_;
  std::unordered_map<std::u32string, std::set<Gender>> genders_;
  std::unordered_map<std::u32string, std::set<std::u32string>> jobs_;
  std::unordered_map<std::size_t, std::set<Gender>> genders_of_person_;
};

}  // namespace

std::vector<KnownPerson> collect_persons(std::u32string_view text,
                                         const std::vector<RecognizerResult>& hits) {
  return Persons(text, hits).run();
}

}  // namespace core::parties
