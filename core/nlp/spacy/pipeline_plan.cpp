#include "core/nlp/spacy/pipeline_plan.hpp"

#include <algorithm>
#include <string_view>

namespace core::nlp::spacy {
namespace {

// Kinds of components that change neither tokens nor sentence starts nor entities.
constexpr std::string_view WITHOUT_INFLUENCE[] = {
    "attribute_ruler", "entity_linker",       "lemmatizer", "morphologizer", "span_finder",
    "spancat",         "spancat_singlelabel", "tagger",     "textcat",       "textcat_multilabel",
    "tok2vec",         "trainable_lemmatizer"};

struct Refused {
  std::string_view factory;
  std::string_view reason;
};
constexpr Refused REFUSED[] = {
    {"transformer", "transformers are not supported"},
    {"curated_transformer", "transformers are not supported"},
    {"entity_ruler", "it sets entities by rules, which is not supported"},
    {"span_ruler", "it may set entities by rules, which is not supported"},
    {"senter", "it sets sentence starts, which only a parser may"},
    {"sentencizer", "it sets sentence starts, which only a parser may"},
    {"beam_ner", "beam search is not supported"},
    {"beam_parser", "beam search is not supported"},
    {"merge_entities", "it changes the tokens"},
    {"merge_noun_chunks", "it changes the tokens"},
    {"merge_subtokens", "it changes the tokens"},
    {"token_splitter", "it changes the tokens"}};

class PipelinePlanner {
 public:
  explicit PipelinePlanner(const ModelConfig& config) : config_(config) {}

  PipelinePlan plan() {
    check_settings();
    const auto disabled = config_.texts("nlp", "disabled");
    for (const auto& name : config_.texts("nlp", "pipeline")) {
      if (std::find(disabled.begin(), disabled.end(), name) != disabled.end()) continue;
      plan_.pipeline.push_back(name);
      check_name(name);
      add(name, config_.text(section(name), "factory"));
    }
    if (plan_.ner.empty()) config_.fail("nlp", "pipeline", "there is no component ner");
    if (!plan_.ner_listens && !plan_.parser_listens) plan_.tok2vec.reset();
    return std::move(plan_);
  }

 private:
  static std::string section(const std::string& name) { return "components." + name; }

  void check_settings() const {
    for (const auto* key : {"before_creation", "after_creation", "after_pipeline_creation"}) {
      if (!config_.value("nlp", key).is_null()) {
        config_.fail("nlp", key, "code that changes the model is not supported");
      }
    }
    check_registered("tokenizer", "@tokenizers", "spacy.Tokenizer.v1");
    check_registered("vectors", "@vectors", "spacy.Vectors.v1");
  }

  // nlp.tokenizer = {"@tokenizers": ...}, or a section [nlp.tokenizer] of its own.
  void check_registered(const std::string& key, const std::string& kind,
                        std::string_view supported) const {
    const auto inline_value = config_.value("nlp", key);
    auto name = inline_value.is_object() && inline_value.contains(kind)
                    ? inline_value.at(kind)
                    : config_.value("nlp." + key, kind);
    if (name.is_null() || name == supported) return;
    config_.fail("nlp", key, "only " + std::string(supported) + " is supported");
  }

  // The name is that of a folder.
  void check_name(const std::string& name) const {
    if (name.empty() || name.front() == '.' || name.find('/') != name.npos ||
        name.find('\0') != name.npos) {
      config_.fail("nlp", "pipeline", "a component with a name that is no folder's");
    }
  }

  void add(const std::string& name, const std::string& factory) {
    if (factory.empty()) config_.fail(section(name), "factory", "the component is not described");
    for (const auto& refused : REFUSED) {
      if (refused.factory == factory) config_.fail(section(name), factory, refused.reason);
    }
    if (factory == "ner") {
      add_ner(name);
    } else if (factory == "parser") {
      if (plan_.ner.empty()) add_parser(name);
    } else if (factory == "tok2vec") {
      if (plan_.tok2vec) config_.fail(section(name), factory, "only one tok2vec is supported");
      check_tok2vec(section(name) + ".model");
      plan_.tok2vec = name;
    } else if (std::find(std::begin(WITHOUT_INFLUENCE), std::end(WITHOUT_INFLUENCE), factory) ==
               std::end(WITHOUT_INFLUENCE)) {
      config_.fail(section(name), factory, "a component that is not known");
    }
  }

  void add_ner(const std::string& name) {
    if (!plan_.ner.empty()) config_.fail(section(name), "ner", "only one ner is supported");
    plan_.ner = name;
    plan_.ner_listens = check_transition_model(name);
  }

  void add_parser(const std::string& name) {
    if (plan_.parser) config_.fail(section(name), "parser", "only one parser is supported");
    plan_.parser = name;
    plan_.parser_listens = check_transition_model(name);
  }

  // Whether it listens to the shared tok2vec.
  bool check_transition_model(const std::string& name) {
    const auto model = section(name) + ".model";
    check_architecture(model, {"spacy.TransitionBasedParser.v2"});
    const auto tok2vec = model + ".tok2vec";
    if (config_.text(tok2vec, "@architectures") != "spacy.Tok2VecListener.v1") {
      check_tok2vec(tok2vec);
      return false;
    }
    const auto upstream = config_.text(tok2vec, "upstream");
    if (!plan_.tok2vec || (!upstream.empty() && upstream != "*" && upstream != *plan_.tok2vec)) {
      config_.fail(tok2vec, "upstream", "listens to a component that does not run before it");
    }
    return true;
  }

  void check_tok2vec(const std::string& name) const {
    if (check_architecture(name, {"spacy.Tok2Vec.v2", "spacy.HashEmbedCNN.v2"}) != 0) return;
    check_architecture(name + ".embed", {"spacy.MultiHashEmbed.v2"});
    check_architecture(name + ".encode", {"spacy.MaxoutWindowEncoder.v2"});
  }

  // Which of the supported ones it is.
  std::size_t check_architecture(const std::string& name,
                                 const std::vector<std::string_view>& supported) const {
    const auto actual = config_.text(name, "@architectures");
    const auto found = std::find(supported.begin(), supported.end(), actual);
    if (found == supported.end()) {
      config_.fail(name, "@architectures",
                   actual.empty() ? "is missing" : actual + " is not supported");
    }
    return static_cast<std::size_t>(found - supported.begin());
  }

  const ModelConfig& config_;
  PipelinePlan plan_;
};

}  // namespace

PipelinePlan plan_pipeline(const ModelConfig& config) { return PipelinePlanner(config).plan(); }

}  // namespace core::nlp::spacy
