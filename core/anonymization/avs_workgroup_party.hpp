// Parties that the application knows by name: every variant of a name leads to
// one canonical key, and so to one placeholder. Empty until somebody loads it.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace core::anonymization {

struct KnownParty {
  std::u32string canonical_key;          // used as the identity key, as it stands
  std::vector<std::u32string> variants;  // spellings of the name
};

// Replaces the list. Variants are compared without white space, in folded case
// and with ASCII parentheses; of a variant that stands twice the first party
// wins, and empty variants and parties without a key are ignored. May be called
// from any thread; calls that are under way keep the list they began to read.
void set_known_parties(const std::vector<KnownParty>& parties);

// The canonical key of the party that `span` names; empty if it names none. May
// be called from any thread.
std::u32string avs_workgroup_party_canonical_org_key_from_span_text(std::u32string_view span);

}  // namespace core::anonymization
