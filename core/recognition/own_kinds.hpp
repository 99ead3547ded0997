// Kinds of entities that only a user's recognizers find.
#pragma once

#include <string>
#include <vector>

#include "core/recognition/analyzer_engine.hpp"

namespace core::recognition {

// The kinds of `recognizers` that none of the registry finds, in their order.
std::vector<std::string> own_kinds(const RecognizerRegistry& registry,
                                   const RecognizerList& recognizers);

// Drops what was found of other kinds within a hit of these: who describes a kind
// of their own knows what its values are.
Refinement prefer_kinds(std::vector<std::string> kinds);

}  // namespace core::recognition
