#include "core/nlp/vocabulary.hpp"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/nlp/characters.hpp"
#include "core/nlp/table_labels.hpp"
#include "core/nlp/word_segmentation.hpp"
#include "core/text/lexicon.hpp"
#include "core/text/multi_pattern.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"
#include "core/text/view_set.hpp"

namespace core::text::lexicon_data {
extern const std::string_view chinese_surnames;
extern const std::string_view clause_words;
extern const std::string_view currencies;
extern const std::string_view field_labels;
extern const std::string_view legal_forms_en;
extern const std::string_view organization_suffixes;
extern const std::string_view person_titles;
extern const std::string_view person_words_en;
extern const std::string_view places_en;
extern const std::string_view places_zh;
extern const std::string_view public_names;
extern const std::string_view shield_words;
extern const std::string_view street_words_en;
extern const std::string_view trade_words;
}  // namespace core::text::lexicon_data

namespace core::nlp {
namespace {

using recognition::LABEL_CLASSES;
using recognition::NlpArtifacts;
using recognition::WordClass;
namespace data = text::lexicon_data;

struct ClassName {
  std::u32string_view name;
  WordClass word_class;
};

// The names of classes in the second column of a list.
constexpr ClassName CLASS_NAMES[] = {
    {U"PERSON_LABEL", WordClass::PERSON_LABEL},
    {U"ORGANIZATION_LABEL", WordClass::ORGANIZATION_LABEL},
    {U"ADDRESS_LABEL", WordClass::ADDRESS_LABEL},
    {U"PHONE_LABEL", WordClass::PHONE_LABEL},
    {U"ACCOUNT_LABEL", WordClass::ACCOUNT_LABEL},
    {U"CARD_LABEL", WordClass::CARD_LABEL},
    {U"LAST4_LABEL", WordClass::LAST4_LABEL},
    {U"SWIFT_LABEL", WordClass::SWIFT_LABEL},
    {U"IBAN_LABEL", WordClass::IBAN_LABEL},
    {U"USCC_LABEL", WordClass::USCC_LABEL},
    {U"ID_CARD_LABEL", WordClass::ID_CARD_LABEL},
    {U"PASSPORT_LABEL", WordClass::PASSPORT_LABEL},
    {U"PLATE_LABEL", WordClass::PLATE_LABEL},
    {U"QUAL_LABEL", WordClass::QUAL_LABEL},
    {U"SOCIAL_LABEL", WordClass::SOCIAL_LABEL},
    {U"TICKER_LABEL", WordClass::TICKER_LABEL},
    {U"SSN_LABEL", WordClass::SSN_LABEL},
    {U"ITIN_LABEL", WordClass::ITIN_LABEL},
    {U"US_BANK_LABEL", WordClass::US_BANK_LABEL},
    {U"DRIVER_LICENSE_LABEL", WordClass::DRIVER_LICENSE_LABEL},
    {U"COMPANY_FORM", WordClass::COMPANY_FORM},
    {U"PLAIN_COMPANY", WordClass::PLAIN_COMPANY},
    {U"BRANCH", WordClass::BRANCH},
    {U"BANK", WordClass::BANK},
    {U"INSTITUTION", WordClass::INSTITUTION},
    {U"PUBLIC_BODY", WordClass::PUBLIC_BODY},
    {U"EN_LEGAL_FORM", WordClass::EN_LEGAL_FORM},
    {U"EN_ORGANIZATION_HEAD", WordClass::EN_ORGANIZATION_HEAD},
    {U"EN_TITLE", WordClass::EN_TITLE},
    {U"EN_GIVEN_NAME", WordClass::EN_GIVEN_NAME},
    {U"EN_ROLE", WordClass::EN_ROLE},
};

WordClass class_named(std::u32string_view name) {
  for (const auto& entry : CLASS_NAMES) {
    if (entry.name == name) return entry.word_class;
  }
  return WordClass::COUNT;
}

// How a word must be written in the text to count.
enum class Case : std::uint8_t {
  ANY,
  CAPITAL,  // its first letter is a capital; a word of two letters is all capitals
  EXACT     // as in the list, or all in capitals if it is longer than an abbreviation
};

Case case_of(WordClass c) {
  switch (c) {
    case WordClass::EN_LEGAL_FORM:
    case WordClass::EN_ORGANIZATION_HEAD:
    case WordClass::EN_TITLE:
    case WordClass::EN_GIVEN_NAME:
      return Case::CAPITAL;
    case WordClass::EN_PLACE:
    case WordClass::EN_REGION:
    case WordClass::PUBLIC_NAME:
      return Case::EXACT;
    default:
      return Case::ANY;
  }
}

class Vocabulary {
 public:
  static const Vocabulary& instance() {
    static const Vocabulary vocabulary;
    return vocabulary;
  }

  void scan(NlpArtifacts& out) const {
    words_.scan(
        out.folded,
        [&](const text::MultiPattern::Hit& hit) {
          for (const Use& use : uses_[hit.pattern]) {
            if (fits(out.folded, hit, use)) out.of(use.word_class).push_back({hit.start, hit.end});
          }
        },
        lower);
    for (auto& list : out.words) drop_contained(list);
    drop_labels_in_labels(out);
  }

  bool is_surname(std::u32string_view name) const { return surnames_.contains(name); }

 private:
  struct Use {
    WordClass word_class;
    std::u32string spelling;
  };

  Vocabulary();
  void add(WordClass word_class, std::u32string_view word);
  void add_list(std::string_view list, WordClass word_class);
  void add_classed_list(std::string_view list);
  void add_spaced_labels();
  static bool fits(std::u32string_view folded, const text::MultiPattern::Hit& hit, const Use& use);
  static void drop_contained(std::vector<recognition::WordHit>& list);
  static void drop_labels_in_labels(NlpArtifacts& artifacts);

  std::vector<std::u32string> keys_;
  std::vector<std::vector<Use>> uses_;
  std::unordered_map<std::u32string, std::size_t> index_;
  text::ViewSet surnames_;
  text::MultiPattern words_{};
};

std::vector<std::u32string_view> views(const std::vector<std::u32string>& words) {
  return {words.begin(), words.end()};
}

Vocabulary::Vocabulary() {
  add_list(data::clause_words, WordClass::CLAUSE_WORD);
  add_list(data::currencies, WordClass::CURRENCY);
  add_classed_list(data::field_labels);
  add_spaced_labels();
  add_classed_list(data::legal_forms_en);
  add_classed_list(data::organization_suffixes);
  add_list(data::person_titles, WordClass::PERSON_TITLE);
  add_classed_list(data::person_words_en);
  for (const auto& row : text::lexicon_rows(data::places_en)) {
    add(WordClass::EN_PLACE, row.at(0));
    if (row.size() > 1) add(WordClass::EN_REGION, row.at(0));
  }
  add_list(data::places_zh, WordClass::PLACE);
  add_list(data::public_names, WordClass::PUBLIC_NAME);
  add_list(data::shield_words, WordClass::SHIELD);
  add_list(data::trade_words, WordClass::TRADE_WORD);
  add_list(data::street_words_en, WordClass::EN_STREET_WORD);
  for (auto& name : text::lexicon_words(data::chinese_surnames)) {
    if (name.size() > 1) add(WordClass::SURNAME, name);
    surnames_.insert(std::move(name));
  }
  words_ = text::MultiPattern(views(keys_));
  index_.clear();
}

void Vocabulary::add(WordClass word_class, std::u32string_view word) {
  std::u32string key(word);
  for (char32_t& c : key) c = lower(c);
  const auto [found, is_new] = index_.try_emplace(key, keys_.size());
  if (is_new) {
    keys_.push_back(key);
    uses_.emplace_back();
  }
  uses_[found->second].push_back({word_class, std::u32string(word)});
}

void Vocabulary::add_list(std::string_view list, WordClass word_class) {
  for (const auto& word : text::lexicon_words(list)) add(word_class, word);
}

void Vocabulary::add_classed_list(std::string_view list) {
  for (const auto& row : text::lexicon_rows(list)) add(class_named(row.at(1)), row.at(0));
}

// Labels of two or three ideographs are often set wide: 电　话, 开 户 行.
void Vocabulary::add_spaced_labels() {
  constexpr std::size_t WIDEST = 4;
  for (const auto& row : text::lexicon_rows(data::field_labels)) {
    const auto& word = row.at(0);
    const bool ideographs = std::all_of(word.begin(), word.end(), text::is_ideograph);
    if (!ideographs || word.size() < 2 || word.size() > 6) continue;
    for (std::size_t blanks = 1; blanks <= (word.size() > 4 ? 1 : WIDEST); ++blanks) {
      std::u32string spaced(1, word[0]);
      for (const char32_t c : word.substr(1)) spaced.append(blanks, U' ').push_back(c);
      add(class_named(row.at(1)), spaced);
    }
  }
}

bool Vocabulary::fits(std::u32string_view folded, const text::MultiPattern::Hit& hit,
                      const Use& use) {
  const auto surface = folded.substr(hit.start, hit.end - hit.start);
  const bool glued_before =
      hit.start > 0 && is_latin_letter(surface.front()) && is_latin_letter(folded[hit.start - 1]);
  const bool glued_behind =
      hit.end < folded.size() && is_latin_letter(surface.back()) &&
      (is_latin_letter(folded[hit.end]) ||
       (use.word_class == WordClass::EN_LEGAL_FORM && text::is_ascii_digit(folded[hit.end])));
  if (glued_before || glued_behind) return false;
  switch (case_of(use.word_class)) {
    case Case::ANY:
      return true;
    case Case::CAPITAL:
      // plc, s.r.o., e.V.: the dots tell a form from a word
      if (use.word_class == WordClass::EN_LEGAL_FORM &&
          (surface == U"plc" || (surface.find(U'.') != surface.npos && surface.size() > 3))) {
        return true;
      }
      return is_upper(surface.front()) &&
             (surface.size() > 2 || is_upper(surface.back()) || surface == U"Oy" ||
              surface == U"Mr" || surface == U"Ms" || surface == U"Dr");
    case Case::EXACT:
      constexpr std::size_t ABBREVIATION = 4;
      return surface == use.spelling || (surface.size() > ABBREVIATION &&
                                         std::none_of(surface.begin(), surface.end(), is_lower));
  }
  return false;
}

void Vocabulary::drop_contained(std::vector<recognition::WordHit>& list) {
  std::sort(list.begin(), list.end(), [](const auto& a, const auto& b) {
    return a.start != b.start ? a.start < b.start : a.end > b.end;
  });
  std::size_t covered = 0;
  std::erase_if(list, [&](const auto& hit) {
    if (hit.end <= covered) return true;
    covered = hit.end;
    return false;
  });
}

// 身份证号 labels an identity number; the 证号 in it no certificate.
void Vocabulary::drop_labels_in_labels(NlpArtifacts& artifacts) {
  std::vector<recognition::WordHit> all;
  for (std::size_t c = 0; c < LABEL_CLASSES; ++c) {
    all.insert(all.end(), artifacts.words[c].begin(), artifacts.words[c].end());
  }
  drop_contained(all);
  const auto is_part = [&](const recognition::WordHit& hit) {
    auto it = std::upper_bound(all.begin(), all.end(), hit.start,
                               [](std::size_t at, const auto& h) { return at < h.start; });
    if (it == all.begin()) return false;
    --it;
    return it->end >= hit.end && it->end - it->start > hit.end - hit.start;
  };
  for (std::size_t c = 0; c < LABEL_CLASSES; ++c) std::erase_if(artifacts.words[c], is_part);
}

void find_numbers(NlpArtifacts& out) {
  const auto& t = out.folded;
  for (std::size_t i = 0; i < t.size();) {
    if (t[i] == U'@') out.at_signs.push_back(i);
    if (!text::is_ascii_alnum(t[i])) {
      ++i;
      continue;
    }
    const std::size_t start = i;
    bool digit = false;
    for (; i < t.size() && text::is_ascii_alnum(t[i]); ++i) digit |= text::is_ascii_digit(t[i]);
    if (digit) out.numbers.push_back({start, i});
  }
}

class EmbeddedNlpEngine : public recognition::NlpEngine {
 public:
  EmbeddedNlpEngine() { Vocabulary::instance(); }

  NlpArtifacts process_text(std::u32string_view text, std::string_view) const override {
    NlpArtifacts out;
    out.text = text;
    out.folded = fold_width(text);
    out.index = text::SearchIndex(out.folded);
    text::scan_patterns(out.folded, out.index);
    Vocabulary::instance().scan(out);
    find_numbers(out);
    out.chinese_words = segment_words(out.folded);
    add_table_labels(out);
    return out;
  }
};

}  // namespace

std::unique_ptr<const recognition::NlpEngine> make_embedded_nlp_engine() {
  return std::make_unique<EmbeddedNlpEngine>();
}

bool is_chinese_surname(std::u32string_view name) {
  return Vocabulary::instance().is_surname(name);
}

}  // namespace core::nlp
