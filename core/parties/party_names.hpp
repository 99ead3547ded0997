// The names of organizations in a document, and which of them are put together.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/anonymization/avs_workgroup_party.hpp"
#include "core/anonymization/result.hpp"
#include "core/parties/organization_name.hpp"
#include "core/text/view_map.hpp"

namespace core::parties {

using anonymization::Offset;

struct Mention {
  Offset start = 0;
  Offset end = 0;
  std::size_t name = 0;  // number of its name
  Offset defined_at = anonymization::RecognizerResult::NOT_AN_ALIAS;

  bool is_alias() const { return defined_at != anonymization::RecognizerResult::NOT_AN_ALIAS; }
};

// Names with different identity keys, numbered in the order in which they come.
class PartyNames {
 public:
  // Surfaces outlive the names.
  std::size_t add(std::u32string_view surface, Offset start);

  std::size_t size() const { return names_.size(); }
  const OrganizationName& name(std::size_t i) const { return names_[i].parsed; }
  const std::u32string& surface(std::size_t i) const { return names_[i].surfaces.front(); }

  // The first name of the party that `i` is put to.
  std::size_t party(std::size_t i) const;
  // Whether the party has a name as in a register, in this script.
  bool has_full_name(std::size_t i, Script script) const;
  // Makes one party of two; false, and nothing changes, if their full names
  // contradict, or one is a branch and the other is not.
  bool unite(std::size_t a, std::size_t b);

  std::vector<anonymization::KnownParty> known_parties() const;

 private:
  static constexpr std::size_t NO_NAME = static_cast<std::size_t>(-1);
  struct Name {
    std::u32string key;
    std::vector<std::u32string> surfaces;
    OrganizationName parsed;
    Offset start = 0;
    mutable std::size_t parent = NO_NAME;
    // Of the first name of a party: its full names.
    std::size_t chinese = NO_NAME;
    std::size_t latin = NO_NAME;
  };

  bool agree(std::size_t a, std::size_t b) const;
  std::size_t read(std::u32string_view surface, Offset start);

  std::vector<Name> names_;
  text::ViewMap<std::optional<std::size_t>> number_by_surface_;  // of those that a name lists
  std::unordered_map<std::u32string, std::size_t> number_by_key_;
};

// Puts together what is one by definition and by standing beside each other.
// Returns for every name whether that settled what it stands for.
std::vector<bool> unite_by_text(std::u32string_view text, const std::vector<Mention>& mentions,
                                PartyNames& names);

// Puts a Chinese name and one in Latin letters together whose place and brand are the same in
// pinyin, if no other name in the document has them: 东莞市联鑫达五金塑胶制品有限公司 and Dongguan
// Lianxinda Hardware & Plastic Products Co., Ltd.
void unite_by_pinyin(PartyNames& names);

// Puts short forms to the one party that they fit, all but those that are settled.
void unite_short_forms(const std::vector<bool>& settled, PartyNames& names);

// Puts the names of one branch together: 湘沅银行岳麓支行 and 湘沅银行股份有限公司长沙岳麓支行.
void unite_branches(PartyNames& names);

}  // namespace core::parties
