// Names of parts, and paths between them.
#pragma once

#include <string>
#include <string_view>

namespace documents {

inline std::string ascii_lower(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return out;
}

// "word" of "word/document.xml"; "" at the top.
inline std::string_view folder_of(std::string_view name) {
  const auto slash = name.rfind('/');
  return slash == std::string_view::npos ? std::string_view() : name.substr(0, slash);
}

// The part that `target` names, seen from `folder`: "../media/a.png" from "word/x".
inline std::string resolved_name(std::string_view folder, std::string_view target) {
  std::string out;
  if (target.starts_with('/')) {
    target.remove_prefix(1);
  } else {
    out = folder;
  }
  while (!target.empty()) {
    const auto slash = target.find('/');
    const auto step = target.substr(0, slash);
    target = slash == std::string_view::npos ? std::string_view() : target.substr(slash + 1);
    if (step == "..") {
      out = std::string(folder_of(out));
    } else if (!step.empty() && step != ".") {
      out.append(out.empty() ? "" : "/").append(step);
    }
  }
  return out;
}

}  // namespace documents
