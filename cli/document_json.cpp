#include "cli/document_json.hpp"

#include "cli/json.hpp"
#include "core/anonymization/placeholders.hpp"
#include "core/masked_stretches.hpp"
#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace cli {
namespace {

namespace anonymization = core::anonymization;
using core::text::encode_utf8;

using anonymization::BarePlaceholder;
using anonymization::without_wording;

std::u32string_view narrow(std::u32string_view surface, const BarePlaceholder& bare) {
  return surface.substr(bare.before, surface.size() - bare.before - bare.behind);
}

std::string tag_of(std::u32string_view placeholder) {
  const auto parsed = anonymization::parse_numbered_placeholder(placeholder);
  return parsed ? parsed->tag : std::string(anonymization::entity_type::CARD_LAST4);
}

}  // namespace

std::string document_json(const anonymization::AnonymizedDocument& document,
                          std::u32string_view original) {
  auto mapping = ordered_json::array();
  for (const auto& entry : document.mapping) {
    const auto bare = without_wording(entry.placeholder, entry.surface);
    mapping.push_back({{"placeholder", encode_utf8(bare.placeholder)},
                       {"surface", encode_utf8(narrow(entry.surface, bare))}});
  }
  auto replacements = ordered_json::array();
  for (const auto& replacement : document.replacements) {
    const auto surface = core::text::slice(original, replacement.start, replacement.end);
    const auto bare = without_wording(replacement.placeholder, surface);
    replacements.push_back(
        {{"start", replacement.start + static_cast<anonymization::Offset>(bare.before)},
         {"end", replacement.end - static_cast<anonymization::Offset>(bare.behind)},
         {"tag", tag_of(bare.placeholder)},
         {"placeholder", encode_utf8(bare.placeholder)}});
  }
  const ordered_json object = {{"language", document.language},
                               {"text", encode_utf8(document.text)},
                               {"mapping", std::move(mapping)},
                               {"replacements", std::move(replacements)}};
  return dump_json(object);
}

}  // namespace cli
