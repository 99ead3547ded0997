// What the files of a model say of it, without running it.
#include <algorithm>
#include <system_error>

#include <nlohmann/json.hpp>

#include "core/nlp/spacy/mapped_file.hpp"
#include "core/nlp/spacy/model_config.hpp"
#include "core/nlp/spacy/model_error.hpp"
#include "core/nlp/spacy/spacy_pipeline.hpp"

namespace core::nlp::spacy {
namespace {

namespace fs = std::filesystem;

std::string text_of(const nlohmann::json& meta, const char* key) {
  const auto found = meta.find(key);
  return found != meta.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::vector<std::string> labels_in(const nlohmann::json& meta) {
  std::vector<std::string> out;
  const auto labels = meta.find("labels");
  if (labels == meta.end() || !labels->is_object()) return out;
  const auto ner = labels->find("ner");
  if (ner == labels->end() || !ner->is_array()) return out;
  for (const auto& label : *ner) {
    if (label.is_string()) out.push_back(label.get<std::string>());
  }
  std::sort(out.begin(), out.end());
  return out;
}

std::uintmax_t size_on_disk(const fs::path& directory) {
  std::uintmax_t bytes = 0;
  std::error_code error;
  for (fs::recursive_directory_iterator entry(directory, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code ignored;
    const auto size = entry->is_regular_file(ignored) ? entry->file_size(ignored) : 0;
    if (!ignored) bytes += size;
  }
  return bytes;
}

}  // namespace

ModelDescription describe_model(const fs::path& directory) {
  std::error_code error;
  if (!fs::is_directory(directory, error)) {
    throw ModelError(directory.string(), "", "not a folder");
  }
  const auto file = directory / "meta.json";
  const auto meta = nlohmann::json::parse(read_small_file(file), nullptr, false);
  if (!meta.is_object()) throw ModelError(file.string(), "", "not a JSON object");
  const ModelConfig config(directory / "config.cfg");
  ModelDescription out;
  out.directory = directory;
  out.language = text_of(meta, "lang");
  out.name = text_of(meta, "name");
  out.version = text_of(meta, "version");
  out.spacy_version = text_of(meta, "spacy_version");
  const auto disabled = config.texts("nlp", "disabled");
  for (auto& name : config.texts("nlp", "pipeline")) {
    if (std::find(disabled.begin(), disabled.end(), name) == disabled.end()) {
      out.pipeline.push_back(std::move(name));
    }
  }
  out.labels = labels_in(meta);
  out.bytes = size_on_disk(directory);
  return out;
}

}  // namespace core::nlp::spacy
