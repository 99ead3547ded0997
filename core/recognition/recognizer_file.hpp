// Recognizers that users describe in a file, JSON or YAML.
//
//   - name: Contract numbers            # required
//     supported_entity: CONTRACT_NO     # required: ASCII letters, digits, _
//     supported_language: zh            # en or zh; without it every text is read
//     patterns:                         # these or a deny list
//       - name: HT and a number         # all three required
//         regex: HT-\d{6}
//         score: 0.6
//     deny_list: [蓝鲸计划, Orca]
//     deny_list_score: 0.9              # 1 if it is missing
//     context: [合同编号, contract no]
//
// The file holds a list of such recognizers, or an object whose only member
// `recognizers` is the list. A field that is not known is an error.
#pragma once

#include <filesystem>
#include <string_view>

#include "core/recognition/recognizer_registry.hpp"

namespace core::recognition {

enum class RecognizerFormat { JSON, YAML };

// How far from a hit context words count on either side, in code points.
inline constexpr std::size_t USER_CONTEXT_WINDOW = 24;

// Reads a file .json, .yaml or .yml. Throws ExternalError if it cannot be read,
// otherwise as below.
RecognizerList load_recognizers(const std::filesystem::path& file);

// Throws ValueError, or RegexError for a pattern that does not compile. The
// message names `source`, the index of the recognizer and the field.
RecognizerList load_recognizers(std::string_view text, RecognizerFormat format,
                                std::string_view source);

}  // namespace core::recognition
