#include "core/anonymization_core.hpp"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/anonymization/analyzer/language.hpp"
#include "core/anonymization/avs_workgroup_party.hpp"
#include "core/anonymization/cleanup/filters.hpp"
#include "core/anonymization/propagation/canonical_placeholders.hpp"
#include "core/anonymization/replacements/span_postprocess.hpp"
#include "core/anonymization/text_findings.hpp"
#include "core/document_text.hpp"
#include "core/entity_sync.hpp"
#include "core/errors.hpp"
#include "core/mapping_entries.hpp"
#include "core/parties/organization_parties.hpp"
#include "core/parties/person_parties.hpp"
#include "core/person_clustering.hpp"
#include "core/text/utf8.hpp"

namespace core::anonymization {
namespace {

std::u32string text_of(std::string_view bytes) {
  try {
    return text::decode_utf8(bytes);
  } catch (const text::DecodeError&) {
    throw TypeError("Expected str for anonymization text, got bytes");
  }
}

// The hits of one text that were found before; any other text is analysed. They are
// handed out once, as the steps change what they are given: whoever asks again has the
// text analysed again.
class AnalyzedText : public Analyzer {
 public:
  AnalyzedText(const Analyzer& analyzer, std::u32string text, std::string language)
      : analyzer_(analyzer),
        text_(std::move(text)),
        language_(std::move(language)),
        hits_(analyzer_.analyze(text_, language_)) {}

  const std::vector<RecognizerResult>& hits() const { return *hits_; }

  std::vector<RecognizerResult> analyze(std::u32string_view text,
                                        std::string_view language) const override {
    const bool same = hits_ && language == language_ && text.size() == text_.size() &&
                      std::equal(text.begin(), text.end(), text_.begin());
    if (!same) return analyzer_.analyze(text, language);
    text_ = {};
    return *std::exchange(hits_, std::nullopt);
  }

 private:
  const Analyzer& analyzer_;
  mutable std::u32string text_;
  std::string language_;
  mutable std::optional<std::vector<RecognizerResult>> hits_;
};

// Names are spread without regard to what is to be kept.
void take_back_kept(MaskedText& masked, const Overrides& overrides) {
  std::vector<std::size_t> kept;
  Offset longer = 0;  // by what the text has grown up to here
  const auto& placements = masked.placements();
  for (std::size_t i = 0; i < placements.size(); ++i) {
    const auto& p = placements[i];
    const auto size = static_cast<Offset>(p.surface.size());
    const Offset start = p.start - longer;
    if (is_kept(overrides, start, start + size)) kept.push_back(i);
    longer += p.end - p.start - size;
  }
  masked.take_back(kept);
}

AnonymizedDocument anonymize(std::u32string_view text, const Analyzer& analyzer,
                             std::string language, std::string_view strategy_profile) {
  AnonymizedDocument out;
  out.language = std::move(language);
  const auto [filtered, org_by_okey] =
      prepare_document_text_replacements(text, analyzer, out.language, strategy_profile);
  const auto loc_by_okey =
      build_okey_to_canonical_location_placeholders(text, filtered, out.language);
  out.replacements = canonical_replacements(text, filtered, org_by_okey, loc_by_okey);
  out.mapping = mapping_entries_from_replacements(text, out.replacements);
  MaskedText masked(text);
  masked.splice_right_to_left(edits_of(out.replacements));
  apply_entity_surface_sync(masked, text, analyzer, out.language, filtered, org_by_okey,
                            &loc_by_okey);
  if (const auto* overrides = OverridesScope::of(text)) take_back_kept(masked, *overrides);
  strip_docx_joiner_sequences(masked);
  out.placements = masked.take_placements();
  out.text = masked.take_text();
  return out;
}

}  // namespace

AnonymizedDocument anonymize_document(std::u32string_view text, const Analyzer& analyzer,
                                      std::string_view language, std::string_view strategy_profile,
                                      Aliases aliases, const Overrides& overrides) {
  std::optional<OverridesScope> scope;
  if (!overrides.empty()) scope.emplace(text, overrides);
  const TextFindingsScope findings(text);
  auto resolved = resolve_analyze_language(language, text);
  if (aliases == Aliases::SEPARATE) {
    return anonymize(text, analyzer, std::move(resolved), strategy_profile);
  }
  const AnalyzedText analyzed(analyzer, _normalize_fill_underscores_for_analysis(text), resolved);
  const KnownPartiesScope parties(parties::collect_organizations(text, analyzed.hits()));
  const KnownPersonsScope persons(parties::collect_persons(text, analyzed.hits()));
  return anonymize(text, analyzed, std::move(resolved), strategy_profile);
}

std::u32string anonymize_with_numbered_placeholders(std::u32string_view text,
                                                    const Analyzer& analyzer,
                                                    std::string_view language,
                                                    std::string_view strategy_profile) {
  return anonymize_document(text, analyzer, language, strategy_profile).text;
}

std::string anonymize_with_numbered_placeholders(std::string_view text, const Analyzer& analyzer,
                                                 std::string_view language,
                                                 std::string_view strategy_profile) {
  return text::encode_utf8(
      anonymize_with_numbered_placeholders(text_of(text), analyzer, language, strategy_profile));
}

std::pair<std::u32string, std::vector<MappingEntry>>
anonymize_with_numbered_placeholders_and_mapping(std::u32string_view text, const Analyzer& analyzer,
                                                 std::string_view language,
                                                 std::string_view strategy_profile) {
  auto document = anonymize_document(text, analyzer, language, strategy_profile);
  return {std::move(document.text), std::move(document.mapping)};
}

std::pair<std::string, std::vector<std::pair<std::string, std::string>>>
anonymize_with_numbered_placeholders_and_mapping(std::string_view text, const Analyzer& analyzer,
                                                 std::string_view language,
                                                 std::string_view strategy_profile) {
  const auto [masked, mapping] = anonymize_with_numbered_placeholders_and_mapping(
      text_of(text), analyzer, language, strategy_profile);
  std::vector<std::pair<std::string, std::string>> entries;
  entries.reserve(mapping.size());
  for (const auto& entry : mapping) {
    entries.emplace_back(text::encode_utf8(entry.placeholder), text::encode_utf8(entry.surface));
  }
  return {text::encode_utf8(masked), std::move(entries)};
}

}  // namespace core::anonymization
