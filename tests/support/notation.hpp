// Test notation for a text with results over it.
//
//   "甲方：{ORGANIZATION|某某公司}"  <->  text "甲方：某某公司", one result 3..7
//
// Marks do not nest; build overlapping results by hand. All strings of the
// notation are UTF-8, so that GoogleTest prints them as text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/anonymization/analyzer.hpp"
#include "core/anonymization/result.hpp"

namespace test {

struct Marked {
  std::u32string text;
  std::vector<core::anonymization::RecognizerResult> results;
};

// Every result gets `score`.
Marked parse(std::string_view marked, double score = 0.85);
std::string render(const Marked& marked);

// The same for replacements: "甲方：{[机构1]|某某公司}".
struct MarkedReplacements {
  std::u32string text;
  std::vector<core::anonymization::Replacement> replacements;
};
MarkedReplacements parse_replacements(std::string_view marked);
std::string render(const MarkedReplacements& marked);

// UTF-8 to UTF-32 and back.
std::u32string u32(std::string_view utf8);
std::string u8(std::u32string_view text);

// An analyzer that reports what it was given, whatever it is asked, and notes
// the last text and language that it was asked about.
class ScriptedAnalyzer : public core::anonymization::Analyzer {
 public:
  explicit ScriptedAnalyzer(std::vector<core::anonymization::RecognizerResult> results)
      : results_(std::move(results)) {}

  std::vector<core::anonymization::RecognizerResult> analyze(
      std::u32string_view text, std::string_view language) const override;

  mutable std::u32string last_text;
  mutable std::string last_language;

 private:
  std::vector<core::anonymization::RecognizerResult> results_;
};

}  // namespace test
