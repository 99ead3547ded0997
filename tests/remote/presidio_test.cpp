// The client of a Presidio analyzer, against a service that speaks its protocol.
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "cli/run.hpp"
#include "core/remote/presidio_remote_analyzer.hpp"
#include "core/text/utf8.hpp"
#include "tests/remote/loopback_service.hpp"

namespace {

using core::anonymization::RecognizerResult;
using core::remote::PresidioOptions;
using core::remote::PresidioRemoteAnalyzer;
using nlohmann::json;
using test::answer;
using test::LoopbackService;
using test::Reply;
using test::Request;

PresidioOptions quick_presidio() {
  PresidioOptions options;
  options.http.back_off = std::chrono::milliseconds(1);
  return options;
}

// Every "张伟", at the offsets that Python counts.
json hits_in(const std::string& bytes) {
  const auto text = core::text::decode_utf8(bytes);
  auto hits = json::array();
  for (auto at = text.find(U"张伟"); at != std::u32string::npos; at = text.find(U"张伟", at + 1)) {
    hits.push_back({{"analysis_explanation", nullptr},
                    {"start", at},
                    {"end", at + 2},
                    {"score", 0.85},
                    {"entity_type", "PER"}});
  }
  return hits;
}

Reply speak(const Request& request, bool batches) {
  const auto text = json::parse(request.body).at("text");
  if (text.is_string()) return answer(hits_in(text).dump());
  if (!batches) return answer(R"({"error":"[E1041] Expected a string, but got: secret"})", 500);
  auto lists = json::array();
  for (const auto& one : text) lists.push_back(hits_in(one));
  return answer(lists.dump());
}

TEST(Presidio, ShiftsOffsetsOfPiecesAndSendsThemTogether) {
  for (const bool batches : {true, false}) {
    LoopbackService service([&](const Request& request) { return speak(request, batches); });
    auto options = quick_presidio();
    options.most_characters = 8;
    const PresidioRemoteAnalyzer analyzer(service.url() + "/", options);
    const std::vector<std::u32string_view> texts = {U"😀𠀀张伟\uE000¶\uE001甲方，张伟签", U"",
                                                    U"张伟"};
    const auto found = analyzer.analyze_batch(texts, "zh");
    const std::vector<std::vector<RecognizerResult>> expected = {
        {{"PERSON", 2, 4, 0.85}, {"PERSON", 10, 12, 0.85}}, {}, {{"PERSON", 0, 2, 0.85}}};
    EXPECT_EQ(found, expected);
    const auto requests = service.requests();
    ASSERT_EQ(requests.size(), batches ? 1U : 4U);
    EXPECT_EQ(json::parse(requests[0].body),
              json::parse(R"({"language": "zh", "score_threshold": 0.4,
      "text": ["😀𠀀张伟\n\n\n", "甲方，张伟签", "张伟"]})"));
    EXPECT_TRUE(analyzer.analyze(U"", "zh").empty());  // the service refuses such a text
    EXPECT_EQ(service.requests().size(), requests.size());
  }
}

TEST(Presidio, RefusesAnswersOfAnythingElse) {
  const char* hit = R"([{"start": 0, "end": 2, "score": 0.5, "entity_type": "X"}])";
  struct Case {
    const char* body;
    const char* message;
    int status = 200;
    std::size_t attempts = 1;
  };
  const auto* not_presidio = "the answer is not that of a Presidio analyzer";
  const Case cases[] = {
      {hit, ""},
      {"", not_presidio},
      {"<html>", not_presidio},
      {"{}", not_presidio},
      {"[[]]", not_presidio},
      {"[[[[[[[[[[[[[[]]]]]]]]]]]]]]", not_presidio},
      {R"([{"start": 0, "end": 3, "score": 0.5, "entity_type": "X"}])", not_presidio},
      {R"([{"start": -1, "end": 2, "score": 0.5, "entity_type": "X"}])", not_presidio},
      {R"([{"start": 2, "end": 1, "score": 0.5, "entity_type": "X"}])", not_presidio},
      {R"([{"start": 0.0, "end": 2, "score": 0.5, "entity_type": "X"}])", not_presidio},
      {R"([{"start": 0, "end": 99999999999999999999, "score": 0.5, "entity_type": "X"}])",
       not_presidio},
      {R"([{"start": 0, "end": 2, "score": NaN, "entity_type": "X"}])", not_presidio},
      {R"([{"start": 0, "end": 2, "score": 1e999, "entity_type": "X"}])", not_presidio},
      {R"([{"start": 0, "end": 2, "score": "1", "entity_type": "X"}])", not_presidio},
      {R"([{"start": 0, "end": 2, "score": 0.5, "entity_type": null}])", not_presidio},
      {"[{\"start\": 0, \"end\": 2, \"score\": 0.5, \"entity_type\": \"\xFF\"}]", not_presidio},
      {R"({"error":"No matching recognizers were found to serve the request."})",
       "no recognizers for the language \"zh\"", 500},
      {R"({"error":"secret"})", "refuses the request (status 500", 500},
      {R"({"error":"The server encountered an internal error and so on"})", "the service failed",
       500, 3},
      {R"({"error":"secret"})", "the service failed", 503, 3},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.body);
    LoopbackService service([&](const Request&) { return answer(c.body, c.status); });
    const PresidioRemoteAnalyzer analyzer(service.url(), quick_presidio());
    std::string message;
    try {
      EXPECT_EQ(analyzer.analyze(U"甲方", "zh").size(), 1U);
    } catch (const core::ExternalError& e) {
      message = e.what();
    }
    EXPECT_NE(message.find(c.message), std::string::npos) << message;
    EXPECT_EQ(message.find("secret"), std::string::npos);
    EXPECT_EQ(message.empty(), std::string(c.message).empty()) << message;
    EXPECT_EQ(service.requests().size(), c.attempts);
  }
}

// What services of Presidio answered: each hit cut out of the text at its offsets is
// what the service meant.
TEST(Presidio, UnderstandsRecordedAnswers) {
  const std::filesystem::path file = VEILDOC_TEST_DIR "/presidio_answers.json";
  std::ifstream in(file);
  const auto recorded = json::parse(in);
  ASSERT_FALSE(recorded.empty());
  for (const auto& c : recorded) {
    SCOPED_TRACE(c.at("why").get<std::string>() + ", version " +
                 c.at("service").get<std::string>());
    LoopbackService service([&](const Request&) { return answer(c.at("answer"), c.at("status")); });
    const PresidioRemoteAnalyzer analyzer(service.url(), quick_presidio());
    const auto text = core::text::decode_utf8(c.at("text").get<std::string>());
    const auto language = c.at("language").get<std::string>();
    if (c.at("status") != 200) {
      EXPECT_THROW(analyzer.analyze(text, language), core::ExternalError);
      continue;
    }
    auto surfaces = json::array();
    for (const auto& hit : analyzer.analyze(text, language)) {
      const auto surface = std::u32string_view(text).substr(
          static_cast<std::size_t>(hit.start), static_cast<std::size_t>(hit.end - hit.start));
      surfaces.push_back({hit.entity_type, core::text::encode_utf8(surface)});
    }
    EXPECT_EQ(surfaces, c.at("surfaces"));
  }
}

TEST(Presidio, LeavesChineseOutOfAddresses) {
  const std::u32string text = U"邮箱z@a.cn见https://a.cn。";
  LoopbackService service([&](const Request&) {
    return answer(R"([{"start": 0, "end": 8, "score": 1, "entity_type": "EMAIL_ADDRESS"},
                      {"start": 9, "end": 22, "score": 1, "entity_type": "URL"}])");
  });
  const std::vector<RecognizerResult> expected = {{"EMAIL_ADDRESS", 2, 8, 1}, {"URL", 9, 21, 1}};
  EXPECT_EQ(PresidioRemoteAnalyzer(service.url(), quick_presidio()).analyze(text, "zh"), expected);
}

struct Ran {
  int code;
  std::string out;
  std::string err;
};

Ran veildoc(const std::vector<std::string>& args, const std::string& in) {
  std::istringstream input(in);
  std::ostringstream out;
  std::ostringstream err;
  const int code = cli::run(args, input, out, err);
  return {code, out.str(), err.str()};
}

TEST(Presidio, ServesTheCommandAloneAndBesideTheEmbeddedRecognizers) {
  LoopbackService service([](const Request& request) { return speak(request, true); });
  const std::string text = "张伟的卡号4111111111111111";
  const auto presidio = "presidio=" + service.url();
  EXPECT_EQ(veildoc({"anonymize", "--analyzer", presidio}, text).out,
            "[NAME1]的卡号4111111111111111");
  const auto both = veildoc({"anonymize", "--analyzer", presidio + "+embedded"}, text).out;
  EXPECT_TRUE(both.starts_with("[NAME1]的卡号[")) << both;
  const auto failed = veildoc({"anonymize", "--analyzer", presidio}, "张伟\xFF");
  EXPECT_EQ(failed.code, cli::EXIT_INPUT);
  for (const auto* wrong : {"presidio", "presidio=", "presidio=host", "spacy"}) {
    EXPECT_EQ(veildoc({"analyze", "--analyzer", wrong}, text).code, cli::EXIT_USAGE) << wrong;
  }
  EXPECT_EQ(veildoc({"analyze", "--hanlp-fallback"}, text).code, cli::EXIT_USAGE);
  LoopbackService broken([](const Request&) { return answer("{}"); });
  const auto error = veildoc({"analyze", "--analyzer", "presidio=" + broken.url()}, text);
  EXPECT_EQ(error.code, cli::EXIT_ANALYZER);
  EXPECT_EQ(error.err, "veildoc: the analyzer failed: " + broken.url() +
                           "/analyze: the answer is not that of a Presidio analyzer\n");
}

}  // namespace
