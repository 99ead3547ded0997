#include "core/anonymization/analyzer/model_path.hpp"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <system_error>

#include "core/app_paths.hpp"
#include "core/text/unicode.hpp"

namespace core::anonymization {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view OVERRIDE_PREFIX = "VEILDOC_SPACY_MODEL_";

fs::path resolved(const fs::path& path) {
  std::error_code error;
  auto out = fs::weakly_canonical(fs::absolute(path, error), error);
  return error ? path : out;
}

std::string_view stripped(std::string_view value) {
  const auto is_blank = [](char c) {
    return text::is_space(static_cast<unsigned char>(c)) && c > 0;
  };
  while (!value.empty() && is_blank(value.front())) value.remove_prefix(1);
  while (!value.empty() && is_blank(value.back())) value.remove_suffix(1);
  return value;
}

// The value of the override variable; empty if there is none.
std::string override_of(std::string_view lang_code) {
  std::string name(OVERRIDE_PREFIX);
  std::transform(lang_code.begin(), lang_code.end(), std::back_inserter(name), [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  const char* value = std::getenv(name.c_str());
  return std::string(stripped(value != nullptr ? value : ""));
}

}  // namespace

std::optional<fs::path> _frozen_app_dir() {
  const auto executable = packaged_executable();
  if (!executable) return std::nullopt;
  return resolved(*executable).parent_path();
}

bool _is_spacy_model_dir(const fs::path& path) {
  std::error_code error;
  return fs::is_directory(path, error) && fs::is_regular_file(path / "meta.json", error) &&
         fs::is_regular_file(path / "config.cfg", error);
}

std::optional<fs::path> _resolve_nested_spacy_model_dir(const fs::path& path) {
  if (_is_spacy_model_dir(path)) return path;
  std::error_code error;
  for (fs::directory_iterator entry(path, error), end; !error && entry != end;
       entry.increment(error)) {
    if (_is_spacy_model_dir(entry->path())) return entry->path();
  }
  return std::nullopt;
}

std::string resolve_spacy_model_path(std::string_view lang_code,
                                     std::string_view default_package_name) {
  if (const auto value = override_of(lang_code); !value.empty()) {
    if (const auto model = _resolve_nested_spacy_model_dir(value)) return resolved(*model).string();
  }
  const auto exe_dir = _frozen_app_dir();
  if (!exe_dir) return std::string(default_package_name);
  std::set<fs::path> seen;
  for (const auto& candidate :
       {resolve_adv_util_dir(*exe_dir) / lang_code, resolve_app_root() / "adv_util" / lang_code}) {
    std::error_code error;
    if (!seen.insert(fs::exists(candidate, error) ? resolved(candidate) : candidate).second)
      continue;
    if (const auto model = _resolve_nested_spacy_model_dir(candidate)) {
      return resolved(*model).string();
    }
  }
  return std::string(default_package_name);
}

}  // namespace core::anonymization
