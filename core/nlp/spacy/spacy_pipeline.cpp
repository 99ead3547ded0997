#include "core/nlp/spacy/spacy_pipeline.hpp"

#include <map>
#include <mutex>
#include <optional>
#include <system_error>
#include <utility>

#include "core/nlp/spacy/entity_finder.hpp"
#include "core/nlp/spacy/model_error.hpp"
#include "core/nlp/spacy/pipeline_plan.hpp"

namespace core::nlp::spacy {
namespace {

namespace fs = std::filesystem;

// Greedy search is what is supported.
void check_component(const fs::path& folder) {
  const auto file = folder / "cfg";
  std::error_code error;
  if (!fs::exists(file, error)) return;
  const auto cfg = nlohmann::json::parse(read_small_file(file), nullptr, false);
  if (!cfg.is_object()) throw ModelError(file.string(), "", "not a JSON object");
  const auto width = cfg.find("beam_width");
  if (width != cfg.end() && *width != 1) {
    throw ModelError(file.string(), "beam_width", "beam search is not supported");
  }
  const auto learn = cfg.find("learn_tokens");
  if (learn != cfg.end() && *learn == true) {
    throw ModelError(file.string(), "learn_tokens",
                     "parsers that change the tokens are not supported");
  }
}

NormTable read_norms(const fs::path& vocab) {
  std::error_code error;
  const auto file = vocab / "lookups.bin";
  return fs::exists(file, error) ? NormTable(MappedFile(file)) : NormTable();
}

// Network, file and what refers to it.
template <class Decider>
struct Component {
  explicit Component(const fs::path& folder)
      : file(folder / "model"), network(file), decider(make(folder)) {}

  Decider make(const fs::path& folder) const {
    check_component(folder);
    return Decider(network, MappedFile(folder / "moves"));
  }

  MappedFile file;
  NetworkFile network;
  Decider decider;
};

struct SharedNetwork {
  SharedNetwork(const fs::path& folder, std::shared_ptr<const StaticVectors> vectors)
      : file(folder / "model"), network(file), tok2vec(network, std::move(vectors)) {}

  MappedFile file;
  NetworkFile network;
  Tok2Vec tok2vec;
};

// Lets each of the readers see the vectors of the whole text.
void feed(const Tok2Vec& network, const TypedTokens& tokens,
          std::initializer_list<TransitionScores*> readers) {
  Tok2VecPass pass(network, tokens);
  TokenVectors vectors;
  while (pass.next(vectors)) {
    for (auto* reader : readers) {
      if (reader != nullptr) reader->add(vectors);
    }
  }
}

}  // namespace

struct SpacyPipeline::Parts {
  Parts(const fs::path& directory, const PipelinePlan& plan)
      : tokenizer(read_tokenizer_rules(MappedFile(directory / "tokenizer"))),
        norms(read_norms(directory / "vocab")),
        ner(directory / plan.ner) {
    const auto vectors =
        needs_vectors(directory, plan) ? open_static_vectors(directory / "vocab") : nullptr;
    if (plan.tok2vec) shared.emplace(directory / *plan.tok2vec, vectors);
    if (plan.parser) parser.emplace(directory / *plan.parser);
    if (!plan.ner_listens) ner_tok2vec.emplace(ner.network, vectors);
    if (parser && !plan.parser_listens) parser_tok2vec.emplace(parser->network, vectors);
    check_width(ner.network, ner.decider.model(), tok2vec_of_ner());
    if (parser) check_width(parser->network, parser->decider.model(), tok2vec_of_parser());
    vector_count = vectors == nullptr ? 0 : vectors->keys();
  }

  static bool needs_vectors(const fs::path& directory, const PipelinePlan& plan) {
    std::vector<std::string> names = {plan.ner};
    if (plan.parser) names.push_back(*plan.parser);
    if (plan.tok2vec) names.push_back(*plan.tok2vec);
    for (const auto& name : names) {
      const MappedFile file(directory / name / "model");
      if (NetworkFile(file).only("static_vectors") != nullptr) return true;
    }
    return false;
  }

  static void check_width(const NetworkFile& network, const TransitionModel& model,
                          const Tok2Vec& tok2vec) {
    if (model.inputs() == tok2vec.width()) return;
    network.root().fail("reads vectors of " + std::to_string(model.inputs()) +
                        " numbers, tok2vec has " + std::to_string(tok2vec.width()));
  }

  const Tok2Vec& tok2vec_of_ner() const { return ner_tok2vec ? *ner_tok2vec : shared->tok2vec; }
  const Tok2Vec& tok2vec_of_parser() const {
    return parser_tok2vec ? *parser_tok2vec : shared->tok2vec;
  }

  Tokenizer tokenizer;
  NormTable norms;
  std::optional<SharedNetwork> shared;
  std::optional<Component<DependencyParser>> parser;
  std::optional<Tok2Vec> parser_tok2vec;
  Component<EntityFinder> ner;
  std::optional<Tok2Vec> ner_tok2vec;
  std::size_t vector_count = 0;
};

SpacyPipeline::SpacyPipeline(const fs::path& directory) : description_(describe_model(directory)) {
  const ModelConfig config(directory / "config.cfg");
  parts_ = std::make_unique<Parts>(directory, plan_pipeline(config));
  description_.labels = parts_->ner.decider.labels();
  description_.vectors = parts_->vector_count;
}

SpacyPipeline::~SpacyPipeline() = default;

SpacyAnalysis SpacyPipeline::analyze(std::u32string_view text) const {
  const auto& parts = *parts_;
  SpacyAnalysis out;
  out.tokens = parts.tokenizer.tokenize(text);
  const auto count = out.tokens.size();
  if (count == 0) return out;
  const auto tokens = type_tokens(text, out.tokens, parts.tokenizer, parts.norms);
  const auto& ner = parts.ner.decider;
  std::optional<TransitionScores> ner_scores;
  const auto listens = [&](const Tok2Vec& network) { return &network == &parts.tok2vec_of_ner(); };
  if (parts.parser) {
    const auto& parser = parts.parser->decider;
    const auto& network = parts.tok2vec_of_parser();
    TransitionScores scores(parser.model(), count);
    if (listens(network)) ner_scores.emplace(ner.model(), count);
    feed(network, tokens, {&scores, ner_scores ? &*ner_scores : nullptr});
    out.trees = parser.parse(scores, tokens);
  }
  if (!ner_scores) {
    ner_scores.emplace(ner.model(), count);
    feed(parts.tok2vec_of_ner(), tokens, {&*ner_scores});
  }
  for (const auto& span : ner.find(*ner_scores, tokens, out.trees.sentence_starts)) {
    out.entities.push_back(
        {out.tokens[span.first].start, out.tokens[span.last].end, ner.labels()[span.label]});
  }
  return out;
}

std::shared_ptr<const SpacyPipeline> shared_spacy_pipeline(const fs::path& directory) {
  static std::mutex mutex;
  static std::map<fs::path, std::weak_ptr<const SpacyPipeline>> known;
  std::error_code error;
  auto path = fs::canonical(directory, error);
  if (error) path = directory;
  const std::lock_guard lock(mutex);
  auto& entry = known[path];
  if (auto pipeline = entry.lock()) return pipeline;
  auto pipeline = std::make_shared<const SpacyPipeline>(path);
  entry = pipeline;
  return pipeline;
}

}  // namespace core::nlp::spacy
