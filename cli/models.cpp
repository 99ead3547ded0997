// The command `veildoc models`.
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/command.hpp"
#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "cli/json.hpp"
#include "cli/options.hpp"
#include "cli/services.hpp"
#include "cli/table.hpp"
#include "core/anonymization/analyzer/model_path.hpp"
#include "core/errors.hpp"
#include "core/nlp/hybrid_routing_nlp_engine.hpp"
#include "core/nlp/spacy/spacy_pipeline.hpp"
#include "core/recognition/spacy_recognizer.hpp"

namespace cli {
namespace {

namespace spacy = core::nlp::spacy;

constexpr std::string_view MODELS_DETAILS =
    "Names are found by what is built in, for Chinese and English, and in English\n"
    "documents also by a spaCy model if there is one. It is looked for in this order:\n"
    "  the folder of --spacy-model\n"
    "  the folder that the environment variable VEILDOC_SPACY_MODEL_EN names\n"
    "  adv_util/en beside an installed veildoc, or beside its bin/\n"
    "The model lies there or one level below. It is loaded, so that the answer says\n"
    "whether it can be run; if not, the exit code is 4.\n"
    "\n"
    "See docs/spacy.md for how to get a model.\n";

constexpr auto MODEL_VARIABLE = "VEILDOC_SPACY_MODEL_EN";

struct FoundModel {
  std::string from;
  spacy::ModelDescription description;
  std::string error;  // why it cannot be run; empty: it can
};

bool is_known_version(const std::string& range) {
  constexpr std::string_view KNOWN_SINCE = ">=3.";
  constexpr char LAST_MINOR = '8';
  if (range.size() <= KNOWN_SINCE.size() || !range.starts_with(KNOWN_SINCE)) return range.empty();
  const auto behind = range.substr(KNOWN_SINCE.size() + 1, 1);
  const char minor = range[KNOWN_SINCE.size()];
  return minor >= '0' && minor <= LAST_MINOR &&
         (behind.empty() || behind[0] < '0' || behind[0] > '9');
}

std::string list_of(const std::vector<std::string>& parts) {
  std::string out;
  for (const auto& part : parts) out += (out.empty() ? "" : ", ") + part;
  return out;
}

// "ORG as ORGANIZATION, PERSON; not reported: CARDINAL"
std::string labels_line(const std::vector<std::string>& labels) {
  std::vector<std::string> reported;
  std::vector<std::string> ignored;
  for (const auto& label : labels) {
    const auto kind = core::recognition::spacy_entity_type(label);
    if (!kind) {
      ignored.push_back(label);
    } else {
      reported.push_back(*kind == label ? label : label + " as " + std::string(*kind));
    }
  }
  auto out = list_of(reported);
  if (!ignored.empty()) out += (out.empty() ? "" : "; ") + ("not reported: " + list_of(ignored));
  return out;
}

std::string size_line(const spacy::ModelDescription& model) {
  constexpr double MEGABYTE = 1e6;
  auto out = fixed(static_cast<double>(model.bytes) / MEGABYTE, 1) + " MB";
  if (model.vectors > 0) out += ", vectors of " + std::to_string(model.vectors) + " words";
  return out;
}

class Models : public Command {
 public:
  std::string_view name() const override { return "models"; }
  std::string_view about() const override {
    return "Shows which models find names, and where they are.";
  }
  std::string_view details() const override { return MODELS_DETAILS; }
  void declare(Options& options) override {
    options.text("--spacy-model", folder_, "DIR", "The spaCy model in this folder");
    options.flag("--json", json_, "Write one JSON object");
  }
  void check(const Options& options) override {
    if (options.given("--spacy-model")) folder_ = find_spacy_model(folder_);
  }
  void execute(const Context& context) override;

 private:
  std::optional<FoundModel> find() const;
  static std::string page(const std::optional<FoundModel>& model);
  static std::string json(const std::optional<FoundModel>& model);

  std::string folder_;
  bool json_ = false;
};

std::optional<FoundModel> Models::find() const {
  constexpr auto NOTHING = core::nlp::HybridRoutingNlpEngine::EMBEDDED_MODEL;
  FoundModel out{"--spacy-model", {}, {}};
  auto directory = folder_;
  if (directory.empty()) {
    directory = core::anonymization::resolve_spacy_model_path("en", NOTHING);
    if (directory == NOTHING) return std::nullopt;
    const char* named = std::getenv(MODEL_VARIABLE);
    const bool by_name = named != nullptr && *named != '\0' &&
                         core::anonymization::_resolve_nested_spacy_model_dir(named).has_value();
    out.from = by_name ? MODEL_VARIABLE : "adv_util";
  }
  out.description.directory = directory;
  try {
    out.description = spacy::describe_model(directory);
    out.description = spacy::shared_spacy_pipeline(directory)->description();
  } catch (const core::Error& e) {
    out.error = e.what();
  }
  return out;
}

void Models::execute(const Context& context) {
  const auto model = find();
  if (const char* named = std::getenv(MODEL_VARIABLE); named != nullptr && *named != '\0' &&
                                                       folder_.empty() &&
                                                       (!model || model->from != MODEL_VARIABLE)) {
    context.err << "veildoc: warning: no spaCy model is in the folder that " << MODEL_VARIABLE
                << " names; it is passed over\n"
                << std::flush;
  }
  write_all(context.out, json_ ? json(model) : page(model));
  if (model && !model->error.empty()) {
    throw Failure(EXIT_ANALYZER, "the model cannot be run: " + model->error);
  }
}

std::string Models::page(const std::optional<FoundModel>& model) {
  Table out({{"MODEL"}, {""}, {""}});
  out.add({"built in", "languages", "zh, en"});
  out.add({"", "finds", "LOCATION, ORGANIZATION, PERSON"});
  if (!model) {
    out.add({"spaCy", "", "none; see veildoc models --help"});
    return out.text();
  }
  const auto& d = model->description;
  auto add = [&, first = true](const char* key, const std::string& value) mutable {
    if (!value.empty()) out.add({std::exchange(first, false) ? d.full_name() : "", key, value});
  };
  add("folder", d.directory.string());
  add("named by", model->from);
  add("version", d.version);
  add("made for", d.spacy_version.empty()
                      ? ""
                      : "spaCy " + d.spacy_version +
                            (is_known_version(d.spacy_version)
                                 ? ""
                                 : " (veildoc knows models of spaCy 3.0 to 3.8)"));
  add("pipeline", list_of(d.pipeline));
  add("labels", labels_line(d.labels));
  add("size", size_line(d));
  add("runs", model->error.empty() ? "yes" : "no");
  return out.text();
}

std::string Models::json(const std::optional<FoundModel>& model) {
  auto list = ordered_json::array();
  list.push_back({{"name", "built in"},
                  {"languages", {"zh", "en"}},
                  {"types", {"LOCATION", "ORGANIZATION", "PERSON"}}});
  if (model) {
    const auto& d = model->description;
    const auto error = model->error.empty() ? ordered_json() : ordered_json(model->error);
    auto labels = ordered_json::object();
    for (const auto& label : d.labels) {
      const auto kind = core::recognition::spacy_entity_type(label);
      labels[label] = kind ? ordered_json(std::string(*kind)) : ordered_json();
    }
    list.push_back({{"name", d.full_name()},
                    {"languages", {"en"}},
                    {"folder", d.directory.string()},
                    {"named_by", model->from},
                    {"version", d.version},
                    {"spacy_version", d.spacy_version},
                    {"pipeline", d.pipeline},
                    {"labels", std::move(labels)},
                    {"bytes", d.bytes},
                    {"vectors", d.vectors},
                    {"runs", model->error.empty()},
                    {"error", error}});
  }
  return dump_json({{"models", std::move(list)}});
}

}  // namespace

std::unique_ptr<Command> make_models_command() { return std::make_unique<Models>(); }

}  // namespace cli
