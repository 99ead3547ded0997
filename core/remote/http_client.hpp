// A service that is spoken to in JSON over HTTP.
//
// Certificates are verified, proxies come from the environment (http_proxy,
// https_proxy, all_proxy, no_proxy), and no redirection is followed: neither the
// document nor the key goes anywhere but to the address that was given.
//
// A message of an error tells the address, without credentials, and the reason. It
// never holds anything of a request or an answer: both may quote the document.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "core/errors.hpp"

namespace core::remote {

// A service that cannot be reached, does not answer in time, breaks off, or says
// that it cannot serve now.
class ServiceUnavailable : public ExternalError {
  using ExternalError::ExternalError;
};

struct HttpOptions {
  static constexpr std::size_t MEBIBYTE = std::size_t{1} << 20U;

  std::chrono::milliseconds connect_timeout{10'000};
  std::chrono::milliseconds read_timeout{120'000};   // without a byte, to about a second
  std::chrono::milliseconds total_timeout{600'000};  // of one attempt
  std::size_t most_bytes = 64 * MEBIBYTE;            // of an answer
  // Further attempts after a failure that may pass, and how long to wait before
  // the first of them; each waits twice as long as the one before.
  int retries = 2;
  std::chrono::milliseconds back_off{500};
  // Certificates to trust instead of the system's; a PEM file. Empty: the file that
  // the environment variable SSL_CERT_FILE names, if any.
  std::string ca_file = {};
  // The value of the header Authorization; empty: none is sent.
  std::string authorization = {};
};

inline constexpr int STATUS_OK = 200;
inline constexpr int STATUS_TOO_MANY_REQUESTS = 429;
inline constexpr int STATUS_SERVER_ERROR = 500;  // and all above

struct HttpResponse {
  int status = 0;
  std::string body;
};

class HttpClient {
 public:
  // `url` is http://host[:port][/path], or https. Credentials in it (user:password@)
  // are sent as Basic authorization and never shown. Throws ValueError for anything
  // else, and for an authorization that is no single line of visible ASCII.
  explicit HttpClient(std::string_view url, HttpOptions options = {});
  ~HttpClient();
  HttpClient(const HttpClient&) = delete;
  HttpClient& operator=(const HttpClient&) = delete;

  // The address without credentials; behind it, the path of a request.
  const std::string& address() const;

  // Whether the answer, of a status from 500 up, blames the request: asking again
  // is of no use.
  using IsClientFault = std::function<bool(const HttpResponse&)>;

  // The answer with status 200, or one that is_client_fault recognizes. Throws
  // ServiceUnavailable, and ExternalError for any other answer. May be called from
  // any thread; connections are used again.
  HttpResponse get(std::string_view path, const IsClientFault& is_client_fault = {}) const;
  HttpResponse post_json(std::string_view path, const std::string& body,
                         const IsClientFault& is_client_fault = {}) const;

  // Throws ExternalError with the address and the reason.
  [[noreturn]] void fail(std::string_view path, std::string_view reason) const;

 private:
  struct Inside;
  std::unique_ptr<Inside> inside_;
};

}  // namespace core::remote
