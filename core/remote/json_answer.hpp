// The answer of a service, read with suspicion.
#pragma once

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace core::remote {

// The value; one that is_discarded() for what is no JSON (as NaN is none), and for
// objects and lists that are nested deeper than any answer is.
inline nlohmann::json parse_answer(std::string_view body) {
  constexpr int DEEPEST = 8;
  bool too_deep = false;
  const auto shallow = [&](int depth, nlohmann::json::parse_event_t, const nlohmann::json&) {
    too_deep = too_deep || depth > DEEPEST;
    return !too_deep;
  };
  auto value = nlohmann::json::parse(body, shallow, false);
  if (too_deep) return nlohmann::json(nlohmann::json::value_t::discarded);
  return value;
}

// Members of an object; nothing where they lack or are of another kind.
inline std::optional<std::string> string_member(const nlohmann::json& object, const char* name) {
  const auto found = object.find(name);
  if (found == object.end() || !found->is_string()) return {};
  return found->get<std::string>();
}

inline std::optional<std::size_t> index_of(const nlohmann::json& value) {
  if (!value.is_number_unsigned()) return {};
  return value.get<std::size_t>();
}

inline std::optional<std::size_t> index_member(const nlohmann::json& object, const char* name) {
  const auto found = object.find(name);
  return found == object.end() ? std::nullopt : index_of(*found);
}

inline std::optional<double> number_member(const nlohmann::json& object, const char* name) {
  const auto found = object.find(name);
  if (found == object.end() || !found->is_number()) return {};
  const auto value = found->get<double>();
  return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

}  // namespace core::remote
