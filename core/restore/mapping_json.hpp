// JSON of mapping files, plain and sealed: what both have in common.
#pragma once

#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "core/restore/mapping_file.hpp"

namespace core::restore {

using nlohmann::ordered_json;

[[noreturn]] inline void damaged(const std::string& what) {
  throw MappingError("damaged: " + what);
}

// The value of a member; nullptr if there is none.
const ordered_json* find_member(const ordered_json& object, const char* name);

// A string of an object. `what` names the object: "entry 3".
std::string string_member(const ordered_json& object, const char* name, const std::string& what);
// A whole number of 0..most.
std::size_t number_member(const ordered_json& object, const char* name, std::size_t most,
                          const std::string& what);

// The object of a mapping file whose version can be read.
ordered_json parse_mapping_object(std::string_view bytes);

// The "entries" of a mapping file.
ordered_json entries_json(const std::vector<Entry>& entries);

// With a line end.
std::string dump_mapping_object(const ordered_json& object);

}  // namespace core::restore
