#include "tools/lexicons/vocabulary_words.hpp"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>

#include "core/text/lexicon.hpp"
#include "core/text/unicode.hpp"

namespace tools {
namespace {

using core::recognition::WordClass;
using Row = std::vector<std::u32string>;
using Words = std::vector<VocabularyWord>;

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

WordClass class_of(const Row& row) {
  for (const auto& entry : CLASS_NAMES) {
    if (row.size() > 1 && entry.name == row[1]) return entry.word_class;
  }
  throw std::runtime_error("a word without a class that is known");
}

void add_classed(const Row& row, Words& out) { out.push_back({class_of(row), row.at(0)}); }

// Labels of two or three ideographs are often set wide: 电　话, 开 户 行.
void add_spaced_label(const Row& row, Words& out) {
  constexpr std::size_t WIDEST = 4;
  const auto& word = row.at(0);
  const bool ideographs = std::all_of(word.begin(), word.end(), core::text::is_ideograph);
  if (!ideographs || word.size() < 2 || word.size() > 6) return;
  for (std::size_t blanks = 1; blanks <= (word.size() > 4 ? 1 : WIDEST); ++blanks) {
    std::u32string spaced(1, word[0]);
    for (const char32_t c : word.substr(1)) spaced.append(blanks, U' ').push_back(c);
    out.push_back({class_of(row), spaced});
  }
}

void add_label(const Row& row, Words& out) {
  add_classed(row, out);
  add_spaced_label(row, out);
}

void add_english_place(const Row& row, Words& out) {
  out.push_back({WordClass::EN_PLACE, row.at(0)});
  if (row.size() > 1) out.push_back({WordClass::EN_REGION, row.at(0)});
}

void add_compound_surname(const Row& row, Words& out) {
  if (row.at(0).size() > 1) out.push_back({WordClass::SURNAME, row.at(0)});
}

template <WordClass C>
void add_as(const Row& row, Words& out) {
  out.push_back({C, row.at(0)});
}

struct List {
  std::string_view name;
  void (*add)(const Row&, Words&);
};

constexpr List LISTS[] = {{"clause_words", add_as<WordClass::CLAUSE_WORD>},
                          {"currencies", add_as<WordClass::CURRENCY>},
                          {"field_labels", add_label},
                          {"legal_forms_en", add_classed},
                          {"organization_suffixes", add_classed},
                          {"person_titles", add_as<WordClass::PERSON_TITLE>},
                          {"person_words_en", add_classed},
                          {"places_en", add_english_place},
                          {"places_zh", add_as<WordClass::PLACE>},
                          {"public_names", add_as<WordClass::PUBLIC_NAME>},
                          {"shield_words", add_as<WordClass::SHIELD>},
                          {"trade_words", add_as<WordClass::TRADE_WORD>},
                          {"street_words_en", add_as<WordClass::EN_STREET_WORD>},
                          {"chinese_surnames", add_compound_surname}};

std::string content_of(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string content((std::istreambuf_iterator<char>(file)), {});
  if (!file) throw std::runtime_error(path + " cannot be read");
  return content;
}

}  // namespace

std::vector<VocabularyWord> vocabulary_words(const std::string& folder) {
  Words words;
  for (const List& list : LISTS) {
    const std::string path = folder + "/" + std::string(list.name) + ".txt";
    const std::string content = content_of(path);
    try {
      for (const auto& row : core::text::lexicon_rows(content)) list.add(row, words);
    } catch (const std::exception& error) {
      throw std::runtime_error(path + ": " + error.what());
    }
  }
  return words;
}

}  // namespace tools
