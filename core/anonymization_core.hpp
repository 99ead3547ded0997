// Anonymizes one text: every sensitive span becomes a numbered placeholder.
//
//   auto analyzer = ...;
//   anonymize_with_numbered_placeholders(
//       "甲方：北京华信科技有限公司", *analyzer, "auto")  ->  "甲方：[机构1]"
//
// `language` is "en", "zh" or "auto"; other requests are settled from the text.
// `strategy_profile` is one of anonymization/strategy.hpp. Offsets count code points.
//
// Each text may be UTF-32 or UTF-8. Bytes that are not UTF-8 are no text: they
// are refused with TypeError("Expected str for anonymization text, got bytes").
// What the analyzer throws comes through. May be called from any thread, with
// one analyzer for all.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/anonymization/analyzer.hpp"
#include "core/anonymization/masked_text.hpp"
#include "core/anonymization/overrides.hpp"
#include "core/anonymization/result.hpp"

namespace core::anonymization {

// All that one call learns about a text.
struct AnonymizedDocument {
  std::string language;                   // "en" or "zh"
  std::u32string text;                    // the masked text
  std::vector<Replacement> replacements;  // over the original text, as they were written
  std::vector<MappingEntry> mapping;      // one a replacement, in text order
  std::vector<Placement> placements;      // over the masked text, spread mentions included
};

// What becomes of the names by which one party or person goes: 北京华信科技有限公司
// and 华信科技, Katarzyna M. Wolanski and Ms. Wolanski.
enum class Aliases {
  SEPARATE,  // each has its placeholder, unless its spelling alone shows who it is
  ONE,       // all share one, where the document leaves no doubt (core/parties)
};

AnonymizedDocument anonymize_document(std::u32string_view text, const Analyzer& analyzer,
                                      std::string_view language = "en",
                                      std::string_view strategy_profile = "contract_default",
                                      Aliases aliases = Aliases::SEPARATE,
                                      const Overrides& overrides = {});

// The masked text alone.
std::u32string anonymize_with_numbered_placeholders(
    std::u32string_view text, const Analyzer& analyzer, std::string_view language = "en",
    std::string_view strategy_profile = "contract_default");
std::string anonymize_with_numbered_placeholders(
    std::string_view text, const Analyzer& analyzer, std::string_view language = "en",
    std::string_view strategy_profile = "contract_default");

// The masked text and, for every replaced span in text order, its placeholder
// and surface. Mentions that were only found by spreading a surface are in
// the text but not in the list.
std::pair<std::u32string, std::vector<MappingEntry>>
anonymize_with_numbered_placeholders_and_mapping(
    std::u32string_view text, const Analyzer& analyzer, std::string_view language = "en",
    std::string_view strategy_profile = "contract_default");
std::pair<std::string, std::vector<std::pair<std::string, std::string>>>
anonymize_with_numbered_placeholders_and_mapping(
    std::string_view text, const Analyzer& analyzer, std::string_view language = "en",
    std::string_view strategy_profile = "contract_default");

// The document with ORG and ADDRESS placeholders written as `locale` ("zh" or
// "en") reads them, in the text and in all lists. Text of the document that
// looks like a placeholder is not touched.
AnonymizedDocument with_labels(AnonymizedDocument document, std::string_view locale);

}  // namespace core::anonymization
