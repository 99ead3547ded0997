// What a picture says beside what it shows: where and by whom it was taken, with
// which program, comments.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace documents {

// A JPEG or PNG without it, the image data as they are. Nothing for a picture that
// holds none, is of another format, or is not put together as the format says.
std::optional<std::string> without_metadata(std::string_view picture);

}  // namespace documents
