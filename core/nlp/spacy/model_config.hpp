// The settings of a model: config.cfg.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

namespace core::nlp::spacy {

// Sections of keys and values; a value that is no JSON is a string, and one that
// refers to another (${nlp.lang}) has its value.
class ModelConfig {
 public:
  // Throws ModelError.
  explicit ModelConfig(const std::filesystem::path& file);

  // The value; null if there is none.
  nlohmann::json value(std::string_view section, std::string_view key) const;
  // A string; empty if it is null or missing. Throws ModelError for anything else.
  std::string text(std::string_view section, std::string_view key) const;
  // The same for a list of strings.
  std::vector<std::string> texts(std::string_view section, std::string_view key) const;
  // All sections whose names begin so.
  std::vector<std::string> sections(std::string_view prefix) const;

  const std::string& file() const { return file_; }
  // Throws ModelError, naming the place.
  [[noreturn]] void fail(std::string_view section, std::string_view key,
                         std::string_view reason) const;

 private:
  const std::string* raw(std::string_view section, std::string_view key) const;

  std::string file_;
  std::map<std::string, std::map<std::string, std::string, std::less<>>, std::less<>> sections_;
};

}  // namespace core::nlp::spacy
