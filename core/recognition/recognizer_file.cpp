#include "core/recognition/recognizer_file.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>
#include <yaml-cpp/yaml.h>

#include "core/errors.hpp"
#include "core/recognition/pattern_recognizer.hpp"
#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace core::recognition {
namespace {

using nlohmann::json;

[[noreturn]] void fail(const std::string& where, const std::string& message) {
  throw ValueError(where + ": " + message);
}

// A value of the file and where it stands: "file.json: recognizers[0].patterns".
struct Field {
  json value;
  std::string where;
};

// --- The formats, read into the same kind of value ---

json parse_json(std::string_view text, const std::string& source) {
  try {
    return json::parse(text);
  } catch (const json::parse_error& e) {
    fail(source, "not valid JSON at byte " + std::to_string(e.byte));
  }
}

// Scalars stay texts: what they mean is known where they are used.
json to_json(const YAML::Node& node, const std::string& source, int levels_left) {
  if (levels_left == 0) fail(source, "nested too deeply");
  if (node.IsScalar()) return node.Scalar();
  if (node.IsSequence()) {
    json list = json::array();
    for (const auto& item : node) list.push_back(to_json(item, source, levels_left - 1));
    return list;
  }
  if (!node.IsMap()) return nullptr;
  json object = json::object();
  for (const auto& member : node) {
    if (!member.first.IsScalar()) fail(source, "a name of a field is no text");
    const auto& name = member.first.Scalar();
    if (object.contains(name)) fail(source, "field \"" + name + "\" stands twice");
    object[name] = to_json(member.second, source, levels_left - 1);
  }
  return object;
}

json parse_yaml(std::string_view text, const std::string& source) {
  constexpr int MAX_LEVELS = 6;  // object, list, recognizer, list, pattern, value
  try {
    const auto documents = YAML::LoadAll(std::string(text));
    if (documents.size() != 1) fail(source, "exactly one YAML document is expected");
    return to_json(documents.front(), source, MAX_LEVELS);
  } catch (const YAML::Exception& e) {
    fail(source, "not valid YAML in line " + std::to_string(e.mark.line + 1) + ": " + e.msg);
  }
}

// --- Fields ---

std::string text_of(const Field& field) {
  if (!field.value.is_string()) fail(field.where, "must be a text");
  auto text = field.value.get<std::string>();
  if (text.empty()) fail(field.where, "must not be empty");
  return text;
}

std::u32string u32_of(const Field& field) { return text::decode_utf8(text_of(field)); }

double score_of(const Field& field) {
  double score = NAN;
  if (field.value.is_number()) {
    score = field.value.get<double>();
  } else if (field.value.is_string()) {  // of YAML
    const auto& digits = field.value.get_ref<const std::string&>();
    double parsed = NAN;
    const auto end = digits.data() + digits.size();
    if (std::from_chars(digits.data(), end, parsed).ptr == end) score = parsed;
  }
  if (!(score >= 0 && score <= 1)) fail(field.where, "must be a number from 0 to 1");
  return score;
}

std::vector<Field> items_of(const Field& field) {
  if (!field.value.is_array()) fail(field.where, "must be a list");
  std::vector<Field> items;
  for (std::size_t i = 0; i < field.value.size(); ++i) {
    items.push_back({field.value[i], field.where + "[" + std::to_string(i) + "]"});
  }
  return items;
}

std::vector<std::u32string> texts_of(const Field& field) {
  std::vector<std::u32string> out;
  for (const auto& item : items_of(field)) out.push_back(u32_of(item));
  return out;
}

std::optional<Field> find(const Field& object, const char* name) {
  const auto found = object.value.find(name);
  if (found == object.value.end()) return std::nullopt;
  return Field{*found, object.where + "." + name};
}

Field need(const Field& object, const char* name) {
  auto field = find(object, name);
  if (!field) fail(object.where, std::string("field \"") + name + "\" is missing");
  return *std::move(field);
}

void check_names(const Field& object, std::initializer_list<std::string_view> known) {
  if (!object.value.is_object()) fail(object.where, "must be an object");
  for (const auto& [name, value] : object.value.items()) {
    if (std::find(known.begin(), known.end(), name) == known.end()) {
      fail(object.where, "unknown field \"" + name + "\"");
    }
  }
}

// --- Recognizers ---

std::string entity_of(const Field& field) {
  auto entity = text_of(field);
  const auto fits = [](char c) {
    return c == '_' || text::is_ascii_alnum(static_cast<unsigned char>(c));
  };
  if (!std::all_of(entity.begin(), entity.end(), fits)) {
    fail(field.where, "must consist of ASCII letters, digits and _");
  }
  return entity;
}

std::string language_of(const Field& field) {
  auto language = text_of(field);
  if (language != "en" && language != "zh") fail(field.where, "must be en or zh");
  return language;
}

UserPattern pattern_of(const Field& field, const std::string& recognizer) {
  check_names(field, {"name", "regex", "score"});
  const auto regex = need(field, "regex");
  UserPattern pattern{text_of(need(field, "name")), u32_of(regex), score_of(need(field, "score"))};
  try {
    const CompiledUserPattern compiled(recognizer, pattern);
  } catch (const RegexError& e) {
    throw RegexError(regex.where + ": " + e.what());
  }
  return pattern;
}

std::shared_ptr<const EntityRecognizer> recognizer_of(const Field& field) {
  check_names(field, {"name", "supported_entity", "supported_language", "patterns", "deny_list",
                      "deny_list_score", "context"});
  PatternRecognizerConfig config{.name = text_of(need(field, "name")),
                                 .entity = entity_of(need(field, "supported_entity")),
                                 .context_after = USER_CONTEXT_WINDOW};
  if (const auto language = find(field, "supported_language")) {
    config.language = language_of(*language);
  }
  if (const auto patterns = find(field, "patterns")) {
    for (const auto& item : items_of(*patterns)) {
      config.user_patterns.push_back(pattern_of(item, config.name));
    }
  }
  if (const auto words = find(field, "deny_list")) config.deny_list = texts_of(*words);
  if (const auto score = find(field, "deny_list_score")) config.deny_list_score = score_of(*score);
  if (const auto words = find(field, "context")) config.context = texts_of(*words);
  if (config.user_patterns.empty() && config.deny_list.empty()) {
    fail(field.where, "neither patterns nor a deny_list");
  }
  return std::make_shared<PatternRecognizer>(std::move(config));
}

void check_encoding(std::string_view text, const std::string& source) {
  try {
    text::decode_utf8(text);
  } catch (const text::DecodeError& e) {
    fail(source, "not valid UTF-8 at byte " + std::to_string(e.byte_offset()));
  }
}

RecognizerFormat format_of(const std::filesystem::path& file) {
  const auto extension = file.extension();
  if (extension == ".json") return RecognizerFormat::JSON;
  if (extension == ".yaml" || extension == ".yml") return RecognizerFormat::YAML;
  fail(file.string(), "the name must end in .json, .yaml or .yml");
}

}  // namespace

RecognizerList load_recognizers(std::string_view text, RecognizerFormat format,
                                std::string_view source) {
  constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
  if (text.starts_with(BYTE_ORDER_MARK)) text.remove_prefix(BYTE_ORDER_MARK.size());
  const std::string name(source);
  check_encoding(text, name);
  Field list{format == RecognizerFormat::JSON ? parse_json(text, name) : parse_yaml(text, name),
             name + ": recognizers"};
  if (list.value.is_object()) {
    const Field object{list.value, name};
    check_names(object, {"recognizers"});
    if (!object.value.contains("recognizers")) fail(name, "field \"recognizers\" is missing");
    list.value = json(object.value["recognizers"]);
  }
  RecognizerList recognizers;
  for (const auto& item : items_of(list)) recognizers.push_back(recognizer_of(item));
  return recognizers;
}

RecognizerList load_recognizers(const std::filesystem::path& file) {
  const auto format = format_of(file);
  std::ifstream in(file, std::ios::binary);
  const std::string text((std::istreambuf_iterator<char>(in)), {});
  if (!in.is_open() || in.bad()) throw ExternalError(file.string() + ": cannot be read");
  return load_recognizers(text, format, file.string());
}

}  // namespace core::recognition
