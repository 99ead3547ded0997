// The names of an entity, compared across the documents of a matter.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/person_name.hpp"

namespace core::matter {

// One spelling. Equal keys of one tag are one name.
struct EntityName {
  std::u32string key;
  std::u32string surface;
  // Whether it tells by itself who or what is meant, in any document: the name of a
  // company with its legal form, the full name of a person, everything that is no
  // name. A short name, a surname, a title is read within its document.
  bool decisive = true;
  PersonName person = {};  // of the tag NAME
};

// The name that the surface of a placeholder is; without a key where it names
// nothing, so that each mention is an entity of its own.
EntityName entity_name(std::string_view tag, std::u32string_view surface);

// Whether two entities of one tag, which have a decisive name in common, can yet not
// be one: John Smith is both John A. Smith and John B. Smith.
bool contradict(const std::vector<EntityName>& a, const std::vector<EntityName>& b);

// Whether a name that is not decisive may be taken for the entity of a decisive one:
// 华信科技 for 北京华信科技有限公司, and neither 公司 nor 王经理 for anybody.
bool is_short_form(std::string_view tag, const EntityName& name, const EntityName& decisive);

}  // namespace core::matter
