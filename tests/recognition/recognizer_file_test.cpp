#include "core/recognition/recognizer_file.hpp"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "core/errors.hpp"
#include "core/nlp/vocabulary.hpp"
#include "core/recognition/analyzer_engine.hpp"
#include "tests/support/notation.hpp"

namespace core::recognition {
namespace {

constexpr auto JSON = R"([{"name": "Numbers", "supported_entity": "NO", "supported_language": "zh",
  "patterns": [{"name": "HT", "regex": "HT-\\d{4}", "score": 0.2},
               {"name": "XY", "regex": "XY\\d+", "score": 0.9}],
  "deny_list": ["蓝鲸", "1234567"], "deny_list_score": 0.5, "context": ["编号"]}])";

constexpr auto YAML = R"(
recognizers:
  - name: Numbers
    supported_entity: NO
    supported_language: zh
    patterns:
      - {name: HT, regex: 'HT-\d{4}', score: 0.2}
      - name: XY
        regex: XY\d+
        score: .9
    deny_list: [蓝鲸, 1234567]
    deny_list_score: 0.5
    context:
      - 编号
)";

TEST(RecognizerFile, BothFormatsDescribeTheSame) {
  constexpr auto ZH =
      "{NO|蓝鲸}：HT-1111和{NO|xy12}，{NO|1234567}，一二三四五六七八九十，本合同的编号为{NO|HT-2222}（终）";
  for (const auto& [text, format] :
       {std::pair(JSON, RecognizerFormat::JSON), std::pair(YAML, RecognizerFormat::YAML)}) {
    RecognizerRegistry registry;
    registry.recognizers() = load_recognizers(text, format, "f");
    const AnalyzerEngine engine(nlp::make_embedded_nlp_engine(), registry);
    auto doc = test::parse(ZH);
    doc.results = engine.analyze(doc.text, "zh");
    EXPECT_EQ(test::render(doc), ZH);
    EXPECT_TRUE(engine.analyze(doc.text, "en").empty());
  }
}

TEST(RecognizerFile, ErrorsNameIndexAndField) {
  struct Row {
    const char* text;
    const char* message;
  };
  const Row rows[] = {
      {"[", "f: not valid JSON at byte 2"},
      {"\xFF", "f: not valid UTF-8 at byte 0"},
      {"7", "f: recognizers: must be a list"},
      {R"({"recognizer": []})", "f: unknown field \"recognizer\""},
      {"{}", "f: field \"recognizers\" is missing"},
      {R"([{"name": "a", "supported_entity": "A", "deny_list": ["x"]}, 7])",
       "f: recognizers[1]: must be an object"},
      {R"([{"name": "a", "entity": "A"}])", "f: recognizers[0]: unknown field \"entity\""},
      {R"([{"name": "a"}])", "f: recognizers[0]: field \"supported_entity\" is missing"},
      {R"([{"name": "", "supported_entity": "A"}])", "f: recognizers[0].name: must not be empty"},
      {R"([{"name": "a", "supported_entity": "甲"}])",
       "f: recognizers[0].supported_entity: must consist of ASCII letters, digits and _"},
      {R"([{"name": "a", "supported_entity": "A", "supported_language": "fr"}])",
       "f: recognizers[0].supported_language: must be en or zh"},
      {R"([{"name": "a", "supported_entity": "A", "deny_list": []}])",
       "f: recognizers[0]: neither patterns nor a deny_list"},
      {R"([{"name": "a", "supported_entity": "A", "deny_list": ["x", 1]}])",
       "f: recognizers[0].deny_list[1]: must be a text"},
      {R"([{"name": "a", "supported_entity": "A", "patterns": [
           {"name": "p", "regex": "x", "score": 2}]}])",
       "f: recognizers[0].patterns[0].score: must be a number from 0 to 1"},
      {R"([{"name": "a", "supported_entity": "A", "patterns": [
           {"name": "p", "regex": "x(", "score": 1}]}])",
       "f: recognizers[0].patterns[0].regex: regular expression \"p\" of recognizer \"a\": "
       "missing closing parenthesis at offset 2"},
  };
  for (const auto& row : rows) {
    try {
      load_recognizers(row.text, RecognizerFormat::JSON, "f");
      ADD_FAILURE() << row.message;
    } catch (const Error& e) {
      EXPECT_EQ(std::string(e.what()), row.message);
    }
  }
}

TEST(RecognizerFile, YamlHasErrorsOfItsOwn) {
  constexpr const char* ROWS[] = {
      "- name: [",
      "- {name: a, name: b}",
      "- [[[[[[[deep]]]]]]]",
      "a: 1\n---\nb: 2",
      "- {name: a, supported_entity: A, deny_list: [x], deny_list_score: high}",
      "- {name: a, supported_entity: A, deny_list: [x], deny_list_score: nan}",
      "",
  };
  for (const char* row : ROWS) {
    EXPECT_THROW(load_recognizers(row, RecognizerFormat::YAML, "f"), ValueError) << row;
  }
}

TEST(RecognizerFile, FormatIsThatOfTheName) {
  const auto folder = std::filesystem::path(testing::TempDir());
  const auto write = [&](const char* name, const char* text) {
    std::ofstream(folder / name) << text;
    return folder / name;
  };
  EXPECT_EQ(load_recognizers(write("r.json", JSON)).size(), 1U);
  EXPECT_EQ(load_recognizers(write("r.yml", YAML)).size(), 1U);
  EXPECT_EQ(load_recognizers(write("r.yaml", "\xEF\xBB\xBF[]")).size(), 0U);
  EXPECT_THROW(load_recognizers(write("r.txt", YAML)), ValueError);
  EXPECT_THROW(load_recognizers(folder / "none.json"), ExternalError);
}

}  // namespace
}  // namespace core::recognition
