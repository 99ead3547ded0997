// Models that are damaged, and models that ask for what is not supported.
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "core/errors.hpp"
#include "core/nlp/spacy/model_error.hpp"
#include "tests/spacy/model_copy.hpp"

namespace {

using core::nlp::spacy::ModelError;
using core::nlp::spacy::SpacyPipeline;

// What loading says; empty if the model can be run.
std::string error_of(const std::filesystem::path& model) {
  try {
    const SpacyPipeline pipeline(model);
    return "";
  } catch (const ModelError& e) {
    return e.what();
  }
}

struct Edit {
  const char* why;
  const char* file;
  std::string from;
  std::string to;
  const char* message;  // part of it
};

void check_edits(const std::string& model, const std::vector<Edit>& edits) {
  for (const auto& e : edits) {
    SCOPED_TRACE(e.why);
    const test::ModelCopy copy(model);
    ASSERT_TRUE(copy.edit(e.file, e.from, e.to));
    EXPECT_NE(error_of(copy.path()).find(e.message), std::string::npos) << error_of(copy.path());
  }
}

std::string floats(std::initializer_list<float> values) {
  std::string out;
  for (const float value : values) {
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    out.append(bytes, sizeof value);
  }
  return out;
}

TEST(SpacyModel, RefusesWhatWouldChangeTheEntities) {
  const char* config = "config.cfg";
  check_edits(
      "en_small_vec",
      {{"another component", config, "factory = \"senter\"", "factory = \"senter2\"", ""},
       {"transformer", config, "factory = \"tok2vec\"", "factory = \"transformer\"",
        "[components.tok2vec] transformer: transformers are not supported"},
       {"rules that set entities", config, "factory = \"attribute_ruler\"",
        "factory = \"entity_ruler\"",
        "[components.attribute_ruler] entity_ruler: it sets entities"},
       {"of one's own", config, "factory = \"tagger\"", "factory = \"my_parts\"",
        "[components.tagger] my_parts: a component that is not known"},
       {"senter is no longer disabled", config, "disabled = [\"senter\"]", "disabled = []",
        "[components.senter] senter: it sets sentence starts"},
       {"another tokenizer", config, "spacy.Tokenizer.v1", "spacy.zh.ChineseTokenizer",
        "[nlp] tokenizer: only spacy.Tokenizer.v1"},
       {"characters embedded", config, "spacy.MultiHashEmbed.v2", "spacy.CharacterEmbed.v2",
        "spacy.CharacterEmbed.v2 is not supported"},
       {"code that changes the model", config, "after_creation = null",
        "after_creation = {\"@callbacks\":\"mine\"}", "[nlp] after_creation"},
       {"no ner", config, ",\"ner\"]", "]", "[nlp] pipeline: there is no component ner"},
       {"beam search", "ner/cfg", "\"beam_width\":1", "\"beam_width\":4",
        "ner/cfg: beam_width: beam search is not supported"},
       {"floret", "vocab/vectors.cfg", "default", "floret", "vectors.cfg: mode: only"},
       {"a layer of another kind", "ner/model", "\xA9layernorm", "\xA9layerform", "layerform"},
       {"an attribute that is not embedded", "ner/model", "\xA5SHAPE", "\xA5LOWER",
        "the attribute LOWER is not supported"}});
}

TEST(SpacyModel, NamesFileAndPlaceOfADamage) {
  check_edits(
      "en_small",
      {{"no settings", "config.cfg", "[paths]", "paths", "config.cfg: line 1"},
       {"a value that refers to itself", "config.cfg", "lang = \"en\"\npipeline = ",
        "lang = \"en\"\npipeline = ${nlp.pipeline}\nx = ", "[nlp] pipeline: refers to nothing"},
       {"a folder outside", "config.cfg", "[\"tok2vec\",", "[\"../tok2vec\",", "no folder's"},
       {"meta", "meta.json", "{", "[", "meta.json: not a JSON object"},
       {"a pattern", "tokenizer", "^\\(|", "^((|", "tokenizer: prefix_search: "},
       {"an exception that does not add up", "tokenizer",
        "\xA5"
        "Corp.\x91\x82\x41\xA5"
        "Corp.",
        "\xA5"
        "Corp.\x91\x82\x41\xA5"
        "Cord.",
        "tokenizer: exceptions: an exception is not"},
       {"moves", "ner/moves", "\"ORG\"", "\"GPE\"", "moves has"},
       {"a shape", "ner/model", "\xC4\x04type\xA3<f4", "\xC4\x04type\xA3<f8",
        "an array is not of 32-bit floats"}});
  const test::ModelCopy copy("en_small");
  for (const auto* file :
       {"tokenizer", "ner/model", "ner/moves", "tok2vec/model", "parser/model"}) {
    const test::ModelCopy without("en_small");
    std::filesystem::remove(without.path() / file);
    EXPECT_NE(error_of(without.path()).find(std::string(file) + ": No such file"),
              std::string::npos);
    std::filesystem::create_directory(without.path() / file);
    EXPECT_NE(error_of(without.path()).find(std::string(file) + ": not a file"), std::string::npos);
  }
  EXPECT_NE(error_of(copy.path() / "vocab").find("meta.json: No such file"), std::string::npos);
}

// Each of them would otherwise spread silently.
TEST(SpacyModel, RefusesWeightsThatAreNoNumbers) {
  const auto nan = floats({std::numeric_limits<float>::quiet_NaN()});
  for (const auto* file : {"tok2vec/model", "parser/model", "ner/model"}) {
    const test::ModelCopy copy("en_small");
    auto bytes = copy.read(file);
    const std::string data = "data\xC4";  // with a length of one byte behind it
    bytes.replace(bytes.rfind(data) + data.size() + 1, nan.size(), nan);
    copy.write(file, bytes);
    EXPECT_NE(error_of(copy.path()).find("holds a value that is no number"), std::string::npos)
        << error_of(copy.path());
  }
}

// A model that can be loaded can be run; nothing else than our own errors is thrown.
void load_and_run(const std::filesystem::path& model) {
  try {
    const SpacyPipeline pipeline(model);
    pipeline.analyze(U"Cendrix Corp. paid US$ 3.5 million to Orrinde Ashgrovel on 8 May 2024.");
  } catch (const core::Error&) {
  }
}

constexpr const char* FILES[] = {"config.cfg",    "meta.json",         "tokenizer",
                                 "ner/model",     "ner/moves",         "ner/cfg",
                                 "parser/model",  "parser/moves",      "vocab/vectors",
                                 "vocab/key2row", "vocab/lookups.bin", "tok2vec/model"};

TEST(SpacyModel, SurvivesTruncation) {
  const test::ModelCopy copy("en_small_vec");
  for (const auto* file : FILES) {
    const auto whole = copy.read(file);
    for (std::size_t part = 0; part < 12; ++part) {
      copy.write(file, whole.substr(0, whole.size() * part / 12));
      load_and_run(copy.path());
    }
    copy.write(file, whole.substr(0, whole.size() - 1));
    load_and_run(copy.path());
    copy.write(file, whole);
  }
  EXPECT_EQ(error_of(copy.path()), "");
}

TEST(SpacyModel, SurvivesChangedBytes) {
  constexpr int CHANGES = 40;         // of a file
  constexpr std::size_t HEAD = 6000;  // where sizes and names are
  const test::ModelCopy copy("en_small_vec");
  std::uint64_t random = 20240508;
  const auto next = [&] {
    random = random * 6364136223846793005U + 1442695040888963407U;
    return static_cast<std::size_t>(random >> 33);
  };
  for (const auto* file : FILES) {
    const auto whole = copy.read(file);
    for (int i = 0; i < CHANGES && !whole.empty(); ++i) {
      auto bytes = whole;
      const auto most = i % 2 == 0 ? whole.size() : std::min(whole.size(), HEAD);
      for (std::size_t n = 1 + next() % 3; n > 0; --n) {
        constexpr unsigned char TELLING[] = {0xFF, 0x00, 0x7F, 0x80, 0xC0, 0xCF, 0xDF, 0xC6};
        const auto value = i % 3 == 0 ? TELLING[next() % std::size(TELLING)] : next() & 0xFF;
        bytes[next() % most] = static_cast<char>(value);
      }
      copy.write(file, bytes);
      load_and_run(copy.path());
    }
    copy.write(file, whole);
  }
}

}  // namespace
