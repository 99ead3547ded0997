// Which model analyses a language: one named by the environment, one unpacked
// beside a packaged application, or an installed package by its name.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace core::anonymization {

// The name or the absolute directory of the model for a language code ("en").
//
// In this order: the directory that the environment variable
// VEILDOC_SPACY_MODEL_ + upper-case code names (or one directly below it); for a
// packaged application, a model below adv_util/<code>, beside the executable or
// at the application's root; else `default_package_name`. An override without a
// model in it is passed over.
std::string resolve_spacy_model_path(std::string_view lang_code,
                                     std::string_view default_package_name);

// The folder of the packaged application's executable; nullopt if it is not packaged.
std::optional<std::filesystem::path> _frozen_app_dir();

// Whether `path` is a folder with a file meta.json and a file config.cfg.
bool _is_spacy_model_dir(const std::filesystem::path& path);

// `path` itself or the first folder directly below it that is a model.
std::optional<std::filesystem::path> _resolve_nested_spacy_model_dir(
    const std::filesystem::path& path);

}  // namespace core::anonymization
