#include "cli/document_json.hpp"

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "cli/json.hpp"
#include "core/anonymization/placeholders.hpp"
#include "core/masked_stretches.hpp"
#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace cli {
namespace {

namespace anonymization = core::anonymization;
using core::text::encode_utf8;

constexpr int MAPPING_VERSION = 1;
constexpr int MAPPING_INDENT = 2;

using anonymization::BarePlaceholder;
using anonymization::without_wording;

std::u32string_view narrow(std::u32string_view surface, const BarePlaceholder& bare) {
  return surface.substr(bare.before, surface.size() - bare.before - bare.behind);
}

std::string tag_of(std::u32string_view placeholder) {
  const auto parsed = anonymization::parse_numbered_placeholder(placeholder);
  return parsed ? parsed->tag : std::string(anonymization::entity_type::CARD_LAST4);
}

// Surfaces by placeholder, both in the order in which they came.
class SurfaceList {
 public:
  void add(std::u32string_view written, std::u32string_view surface) {
    const auto bare = without_wording(written, surface);
    const auto [at, is_new] = index_.try_emplace(encode_utf8(bare.placeholder), entries_.size());
    if (is_new) entries_.push_back({at->first, {}, {}});
    auto& entry = entries_[at->second];
    auto bytes = encode_utf8(narrow(surface, bare));
    if (entry.seen.insert(bytes).second) entry.surfaces.push_back(std::move(bytes));
  }

  ordered_json json() const {
    auto list = ordered_json::array();
    for (const auto& entry : entries_) {
      list.push_back({{"placeholder", entry.placeholder}, {"surfaces", entry.surfaces}});
    }
    return list;
  }

 private:
  struct Entry {
    std::string placeholder;
    std::vector<std::string> surfaces;
    std::unordered_set<std::string> seen;
  };
  std::vector<Entry> entries_;
  std::unordered_map<std::string, std::size_t> index_;
};

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

std::string mapping_json(const anonymization::AnonymizedDocument& document) {
  SurfaceList surfaces;
  for (const auto& entry : document.mapping) surfaces.add(entry.placeholder, entry.surface);
  for (const auto& placement : document.placements) {
    surfaces.add(core::text::slice(document.text, placement.start, placement.end),
                 placement.surface);
  }
  const ordered_json object = {{"format", "veildoc-mapping"},
                               {"version", MAPPING_VERSION},
                               {"language", document.language},
                               {"entries", surfaces.json()}};
  return dump_json(object, MAPPING_INDENT);
}

}  // namespace cli
