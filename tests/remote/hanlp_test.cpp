// The client of a HanLP service, against a service that speaks its protocol.

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "core/anonymization/analyzer/embedded_analyzer.hpp"
#include "core/nlp/hanlp_client.hpp"
#include "core/text/unicode.hpp"
#include "tests/remote/loopback_service.hpp"

namespace {

using core::anonymization::RecognizerResult;
using core::nlp::HanlpClient;
using core::nlp::HanlpOptions;
using nlohmann::json;
using test::answer;
using test::LoopbackService;
using test::Request;

HanlpOptions quick_hanlp() {
  HanlpOptions options;
  options.http.back_off = std::chrono::milliseconds(1);
  options.key = "abc";
  return options;
}

TEST(Hanlp, PlacesTokensInTheText) {
  struct Case {
    const char32_t* text;
    std::vector<std::u32string> tokens;
    std::vector<std::pair<std::size_t, std::size_t>> spans;  // empty: they are of another text
  };
  const Case cases[] = {
      {U"😀 甲方\u3000\n张 伟", {U"😀", U"甲方", U"张伟"}, {{0, 1}, {2, 4}, {6, 9}}},
      {U"New  York𠀀", {U"New York", U"𠀀"}, {{0, 9}, {9, 10}}},
      {U"ＡＢ公司", {U"ab", U"公司"}, {{0, 2}, {2, 4}}},
      {U"甲\uE000¶\uE001乙…", {U"甲", U"乙"}, {{0, 1}, {4, 5}}},
      {U"甲", {U"", U"甲", U" "}, {{0, 0}, {0, 1}, {1, 1}}},
      {U"甲乙", {U"乙"}, {}},
      {U"甲", {U"甲", U"甲"}, {}},
  };
  for (const auto& c : cases) {
    std::vector<core::nlp::TokenSpan> placed;
    ASSERT_EQ(core::nlp::place_tokens(c.text, c.tokens, placed), !c.spans.empty());
    for (std::size_t i = 0; i < c.spans.size(); ++i) {
      EXPECT_EQ(std::pair(placed[i].start, placed[i].end), c.spans[i]);
    }
  }
}

// A token a character; every 张伟 is a name with this label.
json parsed(const std::string& bytes, const std::string& label) {
  auto tokens = json::array();
  auto entities = json::array();
  for (std::size_t i = 0; i < bytes.size();) {
    std::size_t end = i + 1;
    while (end < bytes.size() && (static_cast<unsigned char>(bytes[end]) & 0xC0U) == 0x80U) ++end;
    const auto token = bytes.substr(i, end - i);
    i = end;
    if (token == " " || token == "\n") continue;
    if (token == "伟") entities.push_back({"张伟", label, tokens.size() - 1, tokens.size() + 1});
    tokens.push_back(token);
  }
  return {{"tok/fine", {tokens, json::array()}}, {"ner/msra", {entities, json::array()}}};
}

TEST(Hanlp, FindsNamesInPiecesOfAText) {
  LoopbackService service([](const Request& request) {
    return answer(parsed(json::parse(request.body).at("text"), "PERSON").dump());
  });
  auto options = quick_hanlp();
  options.most_characters = 8;
  const HanlpClient client(service.url() + "/api", options);
  const std::vector<RecognizerResult> expected = {{"PERSON", 2, 5, HanlpClient::SCORE},
                                                  {"PERSON", 9, 11, HanlpClient::SCORE}};
  EXPECT_EQ(client.find(U"😀 张 伟签。乙方张伟。"), expected);
  const auto requests = service.requests();
  ASSERT_EQ(requests.size(), 2U);
  EXPECT_TRUE(requests[0].head.starts_with("POST /api/parse "));
  EXPECT_NE(requests[0].head.find("Authorization: Basic abc"), std::string::npos);
  EXPECT_EQ(json::parse(requests[0].body),
            json::parse(R"({"language": "zh", "tasks": ["ner/msra"], "text": "😀 张 伟签。"})"));
}

TEST(Hanlp, MapsTheLabelsOfThreeSets) {
  for (const auto& [label, kind] :
       std::vector<std::pair<const char*, const char*>>{{"nr", "PERSON"},
                                                        {"ns", "LOCATION"},
                                                        {"nt", "ORGANIZATION"},
                                                        {"ORG", "ORGANIZATION"},
                                                        {"GPE", "LOCATION"},
                                                        {"NORP", "NRP"},
                                                        {"DATE", "DATE_TIME"},
                                                        {"WWW", "URL"},
                                                        {"ACCELERATION", "QUANTITY"},
                                                        {"WEIGHT", "QUANTITY"},
                                                        {"ORDINAL", ""},
                                                        {"", ""}}) {
    EXPECT_EQ(core::nlp::kind_of_hanlp_label(label), kind) << label;
  }
}

TEST(Hanlp, RefusesAnswersOfAnythingElse) {
  for (const auto* body :
       {"", "[]", "{}", R"({"tok/fine": [["甲"]], "ner/msra": []})", R"({"tok/fine": [["甲"]]})",
        R"({"tok/fine": [["乙"]], "ner/msra": [[]]})", R"({"tok/fine": "甲", "ner/msra": "甲"})",
        R"({"tok/fine": [[1]], "ner/msra": [[]]})",
        R"({"tok/fine": [["甲"]], "ner/msra": [[["甲", "PERSON", 0]]]})",
        R"({"tok/fine": [["甲"]], "ner/msra": [[["甲", "PERSON", 0, 2]]]})",
        R"({"tok/fine": [["甲"]], "ner/msra": [[["甲", "PERSON", -1, 1]]]})",
        R"({"tok/fine": [["甲"]], "ner/msra": [[["甲", null, 0, 1]]]})"}) {
    LoopbackService service([&](const Request&) { return answer(body); });
    EXPECT_THROW(HanlpClient(service.url(), quick_hanlp()).find(U"甲"), core::ExternalError)
        << body;
  }
}

TEST(Hanlp, StandsInForTheEmbeddedFinders) {
  const std::u32string text = U"本合同由Acme Trading Co., Ltd.与北京华信科技有限公司订立，见张伟";
  // 0: answers, 1: fails, 2: the same with a fallback, 3: refuses the key with a fallback
  for (int how = 0; how < 4; ++how) {
    SCOPED_TRACE(how);
    LoopbackService service([&](const Request& request) {
      return how == 0 ? answer(parsed(json::parse(request.body).at("text"), "PERSON").dump())
                      : answer("{}", how == 3 ? 401 : 500);
    });
    std::string warning;
    core::anonymization::EmbeddedOptions options;
    options.hanlp = std::make_shared<HanlpClient>(service.url(), quick_hanlp());
    if (how >= 2) options.hanlp_fallback = [&](const std::string& reason) { warning = reason; };
    const auto analyzer = core::anonymization::make_embedded_analyzer(options);
    if (how == 1 || how == 3) {
      EXPECT_THROW(analyzer->analyze(text, "zh"), core::ExternalError);
      continue;
    }
    std::vector<std::u32string> names;
    for (const auto& hit : analyzer->analyze(text, "zh")) {
      names.emplace_back(core::text::slice(text, hit.start, hit.end));
    }
    const auto found = [&](const char32_t* name) {
      return std::find(names.begin(), names.end(), name) != names.end();
    };
    EXPECT_TRUE(found(U"Acme Trading Co., Ltd."));
    EXPECT_EQ(found(U"北京华信科技有限公司"), how == 2);
    EXPECT_TRUE(how == 2 || found(U"张伟"));
    EXPECT_EQ(warning.empty(), how == 0) << warning;
  }
}

}  // namespace
