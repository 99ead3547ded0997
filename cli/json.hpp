// JSON as the commands write it.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace cli {

using nlohmann::ordered_json;

// With a line end; on one line unless `indent` is 0 or more.
inline std::string dump_json(const ordered_json& json, int indent = -1) {
  return json.dump(indent, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace cli
