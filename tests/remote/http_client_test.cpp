// What may go wrong between a client and its service.
#include "core/remote/http_client.hpp"

#include <cstdlib>

#include <gtest/gtest.h>

#include "core/remote/text_pieces.hpp"
#include "tests/remote/loopback_service.hpp"

namespace {

using core::remote::HttpClient;
using core::remote::HttpOptions;
using core::remote::ServiceUnavailable;
using test::answer;
using test::LoopbackService;
using test::Reply;
using test::Request;

HttpOptions quick() {
  HttpOptions options;
  options.back_off = std::chrono::milliseconds(1);
  options.most_bytes = 100'000;
  return options;
}

// The message of the error; "" if there is none.
std::string failure(const HttpClient& client, bool& unavailable) {
  try {
    client.post_json("/ask", R"({"text": "secret"})");
  } catch (const ServiceUnavailable& e) {
    unavailable = true;
    return e.what();
  } catch (const core::ExternalError& e) {
    unavailable = false;
    return e.what();
  }
  return "";
}

TEST(HttpClient, TellsWhatWentWrongAndTriesAgainWhereThatHelps) {
  struct Case {
    const char* why;
    Reply reply;
    const char* message;
    bool unavailable;
    std::size_t attempts;
  };
  const std::string ok = "HTTP/1.1 200 OK\r\n";
  const Case cases[] = {
      {"server failure", answer("secret", 503), "the service failed (status 503)", true, 3},
      {"key", answer("secret", 401), "the key is missing, wrong", false, 1},
      {"quota", answer("secret", 429), "too many requests", true, 1},
      {"malformed", answer("secret", 422), "refuses the request (status 422)", false, 1},
      {"no content", answer("", 204), "(status 204)", false, 1},
      {"redirection", answer("", 307, "Location: http://127.0.0.1:1/\r\n"), "not followed", false,
       1},
      {"cut off", {ok + "Content-Length: 100\r\n\r\n[1, 2"}, "the answer was cut off", true, 3},
      {"cut off in a chunk", {ok + "Transfer-Encoding: chunked\r\n\r\n20\r\n[1"}, "", true, 3},
      {"closed", {""}, "the connection was broken off", true, 3},
      {"no HTTP", {"secret secret\r\n\r\n"}, "not the answer of an HTTP service", false, 1},
      {"too long", answer(std::string(200'000, ' ')), "the answer is too long", false, 1},
      {"too long, unannounced", {ok + "\r\n" + std::string(200'000, ' ')}, "too long", false, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    LoopbackService service([&](const Request&) { return c.reply; });
    const HttpClient client("http://user:password@" + service.host() + "/api/", quick());
    bool unavailable = false;
    const auto message = failure(client, unavailable);
    EXPECT_TRUE(message.starts_with(service.url() + "/api/ask: ")) << message;
    EXPECT_NE(message.find(c.message), std::string::npos) << message;
    for (const auto* hidden : {"secret", "password", "user"}) {
      EXPECT_EQ(message.find(hidden), std::string::npos) << message;
    }
    EXPECT_EQ(unavailable, c.unavailable);
    EXPECT_EQ(service.requests().size(), c.attempts);
  }
}

TEST(HttpClient, GivesUpOnSlowServices) {
  const std::string head = "HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n";
  struct Case {
    Reply reply;
    bool total;  // which of the limits is short
  };
  const Case cases[] = {{{"", Reply::HOLD}, false},
                        {{"", Reply::HOLD}, true},
                        {{head, Reply::HOLD}, true},
                        {{head, Reply::TRICKLE}, true}};
  for (const auto& c : cases) {
    LoopbackService service([&](const Request&) { return c.reply; });
    auto options = quick();
    (c.total ? options.total_timeout : options.read_timeout) = std::chrono::milliseconds(100);
    bool unavailable = false;
    const auto message = failure(HttpClient(service.url(), options), unavailable);
    EXPECT_NE(message.find(c.total ? "within 100 ms" : "no byte for 100 ms"), std::string::npos)
        << message;
    EXPECT_TRUE(unavailable);
    EXPECT_EQ(service.requests().size(), 1U);
  }
}

TEST(HttpClient, TakesAnyProperAnswerAfterAFailureThatPassed) {
  int asked = 0;
  const Reply proper[] = {
      answer("[1]"),
      {"HTTP/1.0 200 OK\r\n\r\n[1]"},
      {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\n[\r\n2\r\n1]\r\n0\r\n\r\n"},
  };
  for (const auto& reply : proper) {
    asked = 0;
    LoopbackService service([&](const Request&) {
      return ++asked == 1 ? Reply{} : asked == 2 ? answer("", 502) : reply;
    });
    auto options = quick();
    options.authorization = "Basic abc";
    EXPECT_EQ(HttpClient(service.url(), options).post_json("/ask", "{}").body, "[1]");
    const auto requests = service.requests();
    ASSERT_EQ(requests.size(), 3U);
    EXPECT_TRUE(requests[2].head.starts_with("POST /ask HTTP/1.1\r\n"));
    EXPECT_NE(requests[2].head.find("\r\nAuthorization: Basic abc"), std::string::npos);
  }
}

TEST(HttpClient, RespectsTheProxyOfTheEnvironment) {
  LoopbackService proxy([](const Request&) { return answer("\"proxy\""); });
  LoopbackService service([](const Request&) { return answer("\"service\""); });
  ::setenv("http_proxy", proxy.url().c_str(), 1);
  ::setenv("no_proxy", "", 1);
  EXPECT_EQ(HttpClient(service.url(), quick()).get("/x").body, "\"proxy\"");
  EXPECT_TRUE(proxy.requests().front().head.starts_with("GET " + service.url() + "/x "));
  ::setenv("no_proxy", "127.0.0.1", 1);
  EXPECT_EQ(HttpClient(service.url(), quick()).get("/x").body, "\"service\"");
  ::unsetenv("http_proxy");
}

TEST(HttpClient, RefusesAddressesAndKeys) {
  for (const auto* url :
       {"", "localhost:5002", "ftp://host", "file:///etc/passwd", "http://",
        "http://host/?key=secret", "http://host#x", "http://ho st", "http://h:x"}) {
    EXPECT_THROW(HttpClient{url}, core::ValueError) << url;
  }
  EXPECT_EQ(HttpClient("https://u:p@host:1/a//").address(), "https://host:1/a");
  auto options = quick();
  options.authorization = "Basic a\r\nHost: b";
  EXPECT_THROW(HttpClient("http://host", options), core::ValueError);
}

TEST(TextPieces, EndWithParagraphsSentencesWords) {
  struct Case {
    const char32_t* text;
    std::size_t most;
    std::vector<std::u32string> pieces;
  };
  const Case cases[] = {
      {U"", 5, {}},
      {U" \n ", 1, {}},
      {U"甲方\n乙方\n丙", 4, {U"甲方\n", U"乙方\n丙"}},
      {U"a\r\nb\r\n", 5, {U"a\r\n", U"b\r\n"}},
      {U"甲说。”乙说。丙", 5, {U"甲说。”", U"乙说。丙"}},
      {U"Mr. A ran. He won", 12, {U"Mr. A ran.", U" He won"}},
      {U"one two three", 8, {U"one two ", U"three"}},
      {U"𠀀😀丙丁戊", 2, {U"𠀀😀", U"丙丁", U"戊"}},
  };
  for (const auto& c : cases) {
    std::vector<std::u32string> pieces;
    for (const auto& piece : core::remote::text_pieces(c.text, c.most)) {
      EXPECT_EQ(std::u32string_view(c.text).substr(piece.start, piece.text.size()), piece.text);
      pieces.emplace_back(piece.text);
    }
    EXPECT_EQ(pieces, c.pieces);
  }
  EXPECT_EQ(core::remote::with_line_ends(U"甲\uE000¶\uE001乙\uE000"), U"甲\n\n\n乙\uE000");
}

}  // namespace
