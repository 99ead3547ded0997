// Organization names that stand behind a party label: 甲方：…, Party A: …
//
// Offsets count code points.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/anonymization/result.hpp"

namespace core::anonymization {

// The names that the labels introduce, each as it is written in the text, in
// order of first appearance and without repeats.
std::vector<std::u32string> _collect_party_labeled_org_names(std::u32string_view text);

struct PartyMentions {
  std::vector<Replacement> replacements;
  std::int64_t org_counter = 0;
};

// What is known when the mentions are expanded.
struct PartyMentionRequest {
  std::u32string_view text;
  const std::vector<Replacement>& replacements;
  // Number of each organization, by identity key.
  const std::unordered_map<std::u32string, std::int64_t>& org_num_by_key;
  std::int64_t org_counter = 0;
  std::string_view placeholder_locale = "zh";
};

// Adds a replacement for every further mention of a labelled party that has a
// number already. A mention inside an address or a place name (华信路, 华信大厦),
// inside a longer Latin word, or over something that is already replaced is
// left alone; a name that no analyzer reported gets no number here. Linear in
// the text, whatever the number of names.
PartyMentions _expand_party_org_mentions(const PartyMentionRequest& request);

// What it adds, alone.
std::vector<Replacement> further_party_mentions(const PartyMentionRequest& request);

}  // namespace core::anonymization
