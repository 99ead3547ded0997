#include "core/nlp/spacy/model_config.hpp"

#include <sstream>

#include "core/nlp/spacy/mapped_file.hpp"
#include "core/nlp/spacy/model_error.hpp"

namespace core::nlp::spacy {
namespace {

std::string_view trimmed(std::string_view line) {
  constexpr std::string_view BLANKS = " \t\r";
  const auto first = line.find_first_not_of(BLANKS);
  if (first == line.npos) return {};
  return line.substr(first, line.find_last_not_of(BLANKS) - first + 1);
}

}  // namespace

ModelConfig::ModelConfig(const std::filesystem::path& file) : file_(file.string()) {
  std::istringstream lines(read_small_file(file));
  std::string line;
  std::map<std::string, std::string, std::less<>>* section = nullptr;
  std::string* value = nullptr;
  for (std::size_t number = 1; std::getline(lines, line); ++number) {
    const auto content = trimmed(line);
    if (content.empty() || content.front() == '#' || content.front() == ';') continue;
    if (value != nullptr && (line.front() == ' ' || line.front() == '\t')) {
      *value += '\n';
      *value += content;
      continue;
    }
    value = nullptr;
    if (content.front() == '[' && content.back() == ']') {
      section = &sections_[std::string(content.substr(1, content.size() - 2))];
      continue;
    }
    const auto equals = content.find('=');
    if (section == nullptr || equals == content.npos) {
      throw ModelError(file_, "line " + std::to_string(number),
                       "neither [section] nor key = value");
    }
    value = &(*section)[std::string(trimmed(content.substr(0, equals)))];
    *value = trimmed(content.substr(equals + 1));
  }
}

const std::string* ModelConfig::raw(std::string_view section, std::string_view key) const {
  const auto found = sections_.find(section);
  if (found == sections_.end()) return nullptr;
  const auto entry = found->second.find(key);
  return entry == found->second.end() ? nullptr : &entry->second;
}

nlohmann::json ModelConfig::value(std::string_view section, std::string_view key) const {
  constexpr int LONGEST_CHAIN = 16;
  const auto* text = raw(section, key);
  for (int i = 0; text != nullptr && text->starts_with("${") && text->ends_with("}"); ++i) {
    const auto name = std::string_view(*text).substr(2, text->size() - 3);
    const auto last = name.find_last_of(".:");
    if (i == LONGEST_CHAIN || last == name.npos) fail(section, key, "refers to nothing");
    text = raw(name.substr(0, last), name.substr(last + 1));
  }
  if (text == nullptr) return {};
  auto json = nlohmann::json::parse(*text, nullptr, false);
  return json.is_discarded() ? nlohmann::json(*text) : json;
}

std::string ModelConfig::text(std::string_view section, std::string_view key) const {
  const auto found = value(section, key);
  if (found.is_null()) return {};
  if (!found.is_string()) fail(section, key, "not a string");
  return found.get<std::string>();
}

std::vector<std::string> ModelConfig::texts(std::string_view section, std::string_view key) const {
  std::vector<std::string> out;
  const auto found = value(section, key);
  if (found.is_null()) return out;
  if (!found.is_array()) fail(section, key, "not a list");
  for (const auto& one : found) {
    if (!one.is_string()) fail(section, key, "not a list of strings");
    out.push_back(one.get<std::string>());
  }
  return out;
}

std::vector<std::string> ModelConfig::sections(std::string_view prefix) const {
  std::vector<std::string> out;
  for (auto at = sections_.lower_bound(prefix); at != sections_.end(); ++at) {
    if (!at->first.starts_with(prefix)) break;
    out.push_back(at->first);
  }
  return out;
}

void ModelConfig::fail(std::string_view section, std::string_view key,
                       std::string_view reason) const {
  throw ModelError(file_, "[" + std::string(section) + "] " + std::string(key), reason);
}

}  // namespace core::nlp::spacy
