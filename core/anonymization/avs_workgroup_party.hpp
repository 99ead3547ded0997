// Parties that the application knows by name: every variant of a name leads to
// one canonical key, and so to one placeholder. Empty until somebody loads it.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
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

// Parties that are known on top of the list, on this thread, as long as the scope
// lives. Of scopes within scopes the inner one is asked first, the list last.
//
//   const std::vector<KnownParty> parties = {{U"北京华信科技有限公司", {U"华信科技"}}};
//   const KnownPartiesScope scope(parties);
class KnownPartiesScope {
 public:
  explicit KnownPartiesScope(const std::vector<KnownParty>& parties);
  ~KnownPartiesScope();
  KnownPartiesScope(const KnownPartiesScope&) = delete;
  KnownPartiesScope& operator=(const KnownPartiesScope&) = delete;

  // The innermost scope of this thread; nullptr if there is none.
  static const KnownPartiesScope* innermost();
  const KnownPartiesScope* outer() const { return outer_; }
  // The key of a name in the form in which variants are compared; nullptr if unknown.
  const std::u32string* find(const std::u32string& normalized_name) const;

 private:
  std::unordered_map<std::u32string, std::u32string> key_by_variant_;
  const KnownPartiesScope* outer_;
};

// The canonical key of the party that `span` names; empty if it names none. May
// be called from any thread.
std::u32string avs_workgroup_party_canonical_org_key_from_span_text(std::u32string_view span);

}  // namespace core::anonymization
