// What is known of a text before any recognizer reads it, found in one pass and
// shared by all of them.
//
// Offsets count code points.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/anonymization/result.hpp"
#include "core/text/search_index.hpp"

namespace core::recognition {

// What a word of the vocabulary says about its surroundings.
enum class WordClass : std::uint8_t {
  // Labels: the value stands behind them, or below them in a table.
  PERSON_LABEL,
  ORGANIZATION_LABEL,
  ADDRESS_LABEL,
  PHONE_LABEL,
  ACCOUNT_LABEL,
  CARD_LABEL,
  LAST4_LABEL,
  SWIFT_LABEL,
  IBAN_LABEL,
  USCC_LABEL,
  ID_CARD_LABEL,
  PASSPORT_LABEL,
  PLATE_LABEL,
  QUAL_LABEL,
  SOCIAL_LABEL,
  TICKER_LABEL,
  SSN_LABEL,
  ITIN_LABEL,
  US_BANK_LABEL,
  DRIVER_LICENSE_LABEL,
  // Money
  CURRENCY,
  // Chinese names
  SURNAME,
  PERSON_TITLE,   // 先生, 律师: stands behind a name
  CLAUSE_WORD,    // 委托, 签订: never inside a name
  COMPANY_FORM,   // 有限公司: ends a company's name
  PLAIN_COMPANY,  // 公司, 厂: ends a name that begins with a place
  BRANCH,         // 分公司, 支行
  BANK,           // 银行
  INSTITUTION,    // 大学, 律师事务所: ends a name that may begin with anything
  PUBLIC_BODY,    // 人民法院, 管理局: ends a name that begins with a place
  PLACE,          // 北京, 江苏省, 德国
  PUBLIC_NAME,    // 中国证监会, SIAC: an organization by itself
  TRADE_WORD,     // 科技, 物流: stands behind the brand in the name of a company
  SHIELD,         // 大理石, 北京时间: no name inside
  // English names
  EN_LEGAL_FORM,
  EN_ORGANIZATION_HEAD,  // Bank, Court, University
  EN_TITLE,              // Mr, Dr: stands before a name
  EN_GIVEN_NAME,
  EN_ROLE,  // Managing Director: stands behind a name and a comma
  EN_PLACE,
  EN_REGION,  // a place that is a state or a country
  EN_STREET_WORD,
  COUNT
};

// The labels are the first classes.
inline constexpr std::size_t LABEL_CLASSES =
    static_cast<std::size_t>(WordClass::DRIVER_LICENSE_LABEL) + 1;

struct WordHit {
  std::size_t start = 0;
  std::size_t end = 0;
  bool from_table = false;  // a label that stands at the head of the column, not here
};

// A run of ASCII letters and digits with at least one digit.
struct NumberRun {
  std::size_t start = 0;
  std::size_t end = 0;
};

// What the dictionary says of a Chinese word.
enum class ChineseWordClass : std::uint8_t {
  UNKNOWN,      // a single character that no list has
  CHARACTER,    // a single character that is seldom a word by itself: 鑫, 伟
  ORDINARY,     // an everyday word, of one character too: 的, 与, 合同
  PERSON,       // a personal name
  PLACE,        // 苏州, 南山区
  ORGANIZATION  // 商务部, 清华
};

// Level of an administrative division of China.
enum class Division : std::uint8_t { NONE, PROVINCE, PREFECTURE, COUNTY, TOWN };

// A word of the segmented text.
struct ChineseWord {
  std::uint32_t start = 0;
  std::uint32_t end = 0;
  ChineseWordClass word_class = ChineseWordClass::UNKNOWN;
  // Half steps of the binary logarithm of how often it stands in a large corpus:
  // 1 (rare) to 40 (的); 0 if unknown.
  std::uint8_t frequency = 0;
  Division division = Division::NONE;   // that has the name
  bool bare_division : 1 = false;       // 南山 for 南山区
  bool ambiguous_division : 1 = false;  // also an everyday word: 和平, 城关

  std::size_t length() const { return end - start; }
  bool known() const { return word_class > ChineseWordClass::CHARACTER; }
};

// The words of a text in their order. They do not overlap.
class ChineseWords {
 public:
  ChineseWords() = default;
  explicit ChineseWords(std::vector<ChineseWord> words);

  std::size_t size() const { return words_.size(); }
  const ChineseWord& operator[](std::size_t i) const { return words_[i]; }
  const ChineseWord* data() const { return words_.data(); }
  auto begin() const { return words_.begin(); }
  auto end() const { return words_.end(); }

  // The number of the word that holds `position`, or else of the next one; size()
  // behind the last. A few steps, whatever the length of the text.
  std::size_t index_at(std::size_t position) const {
    const std::size_t block = position / BLOCK;
    if (block >= first_of_block_.size()) return words_.size();
    std::size_t i = first_of_block_[block];
    while (i < words_.size() && words_[i].end <= position) ++i;
    return i;
  }

 private:
  static constexpr std::size_t BLOCK = 16;  // characters

  std::vector<ChineseWord> words_;
  // Of each block up to the end of the last word the first word that ends behind its start.
  std::vector<std::uint32_t> first_of_block_;
};

// A name that the engine itself found.
struct NlpEntity {
  anonymization::RecognizerResult result;
  std::string_view finder;  // its name; lives as long as the engine
};

struct NlpArtifacts {
  std::u32string_view text;  // as it was given; outlives the artifacts
  // The text with full-width letters, digits and signs as ASCII ones, every kind
  // of dash as "-", every blank as " " and traditional characters as simplified
  // ones; position by position the same length.
  // Chinese commas, full stops and semicolons stay.
  std::u32string folded;
  text::SearchIndex index;  // of `folded`; empty where the engine makes none
  // By class, sorted by start; none lies within another of its class.
  std::array<std::vector<WordHit>, static_cast<std::size_t>(WordClass::COUNT)> words;
  // Every run of ideographs of `folded` cut into its likeliest words, in their order.
  ChineseWords chinese_words;
  std::vector<NumberRun> numbers;
  std::vector<std::size_t> at_signs;
  std::vector<NlpEntity> entities;
  // Words that the caller says belong to the text's surroundings; see ContextWords.
  std::vector<std::u32string> context;

  const std::vector<WordHit>& of(WordClass word_class) const {
    return words[static_cast<std::size_t>(word_class)];
  }
  std::vector<WordHit>& of(WordClass word_class) {
    return words[static_cast<std::size_t>(word_class)];
  }
};

// Makes the artifacts. One engine serves many texts, also from several threads.
class NlpEngine {
 public:
  virtual ~NlpEngine() = default;
  virtual NlpArtifacts process_text(std::u32string_view text, std::string_view language) const = 0;
  // The kinds of the entities that it finds in texts of the language; sorted.
  virtual std::vector<std::string> get_supported_entities(std::string_view /*language*/) const {
    return {};
  }
};

}  // namespace core::recognition
