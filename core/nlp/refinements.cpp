#include "core/nlp/refinements.hpp"

#include "core/nlp/other_scripts.hpp"
#include "core/recognition/number_conflicts.hpp"

namespace core::nlp {

std::vector<recognition::Refinement> refinements() {
  return {{"usable hits", make_usable},
          {"shields", apply_shields, shield_kinds()},
          {"numbers in conflict", recognition::settle_number_conflicts},
          {"trimmed names", trim_names},
          {"joined addresses", join_addresses},
          {"neighbouring persons", add_neighbouring_persons},
          {"roles and titles", drop_roles_and_titles},
          {"kinds of names", agree_on_kinds},
          {"misplaced names", drop_misplaced},
          {"split amounts", split_amounts},
          {"names in other scripts", add_names_in_other_scripts},
          {"further mentions", add_further_mentions},
          {"misplaced names", drop_misplaced}};
}

}  // namespace core::nlp
