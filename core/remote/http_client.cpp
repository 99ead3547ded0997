#include "core/remote/http_client.hpp"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#define CURL_DISABLE_TYPECHECK  // its macros do not pass our warnings
#include <curl/curl.h>

namespace core::remote {
namespace {

template <auto Free>
struct Freeing {
  template <class T>
  void operator()(T* value) const {
    Free(value);
  }
};
using Easy = std::unique_ptr<CURL, Freeing<curl_easy_cleanup>>;
using Url = std::unique_ptr<CURLU, Freeing<curl_url_cleanup>>;
using CurlString = std::unique_ptr<char, Freeing<curl_free>>;

class Headers {
 public:
  Headers() = default;
  ~Headers() { curl_slist_free_all(list_); }
  Headers(const Headers&) = delete;
  Headers& operator=(const Headers&) = delete;

  void add(const std::string& line) {
    auto* longer = curl_slist_append(list_, line.c_str());
    if (longer == nullptr) throw std::bad_alloc();
    list_ = longer;
  }
  curl_slist* get() const { return list_; }

 private:
  curl_slist* list_ = nullptr;
};

// A write to a connection that the other side closed raises SIGPIPE within TLS,
// which would end the process. Held off on this thread, and taken away.
class WithoutPipeSignal {
 public:
  WithoutPipeSignal() {
    sigemptyset(&pipe_);
    sigaddset(&pipe_, SIGPIPE);
    sigset_t pending;
    sigpending(&pending);
    was_pending_ = sigismember(&pending, SIGPIPE) == 1;
    pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
  }
  ~WithoutPipeSignal() {
    if (!was_pending_) {
      const timespec at_once{};
      while (sigtimedwait(&pipe_, nullptr, &at_once) == SIGPIPE) {
      }
    }
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }
  WithoutPipeSignal(const WithoutPipeSignal&) = delete;
  WithoutPipeSignal& operator=(const WithoutPipeSignal&) = delete;

 private:
  sigset_t pipe_{};
  sigset_t before_{};
  bool was_pending_ = false;
};

void prepare_library() {
  static const CURLcode prepared = curl_global_init(CURL_GLOBAL_DEFAULT);
  if (prepared != CURLE_OK) throw ExternalError("the HTTP library cannot be used");
}

std::string part_of(const Url& url, CURLUPart part) {
  char* value = nullptr;
  if (curl_url_get(url.get(), part, &value, 0) != CURLUE_OK) return {};
  const CurlString owner(value);
  return value;
}

// The message does not quote the address, which may hold credentials.
[[noreturn]] void refuse_address(std::string_view why) {
  throw ValueError("the address of the service " + std::string(why) +
                   "; it reads http://host:port/path or https://...");
}

Url parsed(std::string_view address) {
  prepare_library();
  Url url(curl_url());
  if (url == nullptr) throw std::bad_alloc();
  if (address.empty()) refuse_address("is empty");
  if (address.find("://") == std::string_view::npos) refuse_address("has no http:// before it");
  if (address.find('\0') != std::string_view::npos ||
      curl_url_set(url.get(), CURLUPART_URL, std::string(address).c_str(), 0) != CURLUE_OK) {
    refuse_address("cannot be understood");
  }
  const auto scheme = part_of(url, CURLUPART_SCHEME);
  if (scheme != "http" && scheme != "https") refuse_address("begins with neither http nor https");
  if (!part_of(url, CURLUPART_QUERY).empty() || !part_of(url, CURLUPART_FRAGMENT).empty()) {
    refuse_address("must end with its path, without ? and #");
  }
  return url;
}

std::string without_slashes_at_end(std::string text) {
  while (text.ends_with('/')) text.pop_back();
  return text;
}

void check_authorization(std::string_view value) {
  const bool visible =
      std::all_of(value.begin(), value.end(), [](char c) { return c >= ' ' && c <= '~'; });
  if (!visible) throw ValueError("the key must be one line of visible ASCII characters");
}

// What the body of an answer is collected in, no longer than allowed.
struct Collected {
  std::string body;
  std::size_t most;
  bool too_long = false;
};

std::size_t collect(char* bytes, std::size_t size, std::size_t count, void* into) {
  auto& collected = *static_cast<Collected*>(into);
  const std::size_t length = size * count;
  if (length > collected.most - collected.body.size()) {
    collected.too_long = true;
    return 0;
  }
  collected.body.append(bytes, length);
  return length;
}

// Ends a transfer in which no byte went either way for too long. The library asks
// whenever something happens, and about once a second when nothing does.
struct Watch {
  using Clock = std::chrono::steady_clock;

  std::chrono::milliseconds patience;
  curl_off_t bytes = 0;
  Clock::time_point since = Clock::now();
  bool stalled = false;
};

int watch(void* of, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent) {
  auto& watch = *static_cast<Watch*>(of);
  const auto now = Watch::Clock::now();
  if (received + sent != watch.bytes) {
    watch.bytes = received + sent;
    watch.since = now;
  }
  watch.stalled = now - watch.since > watch.patience;
  return watch.stalled ? 1 : 0;
}

std::string seconds_text(std::chrono::milliseconds time) {
  constexpr long PER_SECOND = 1000;
  if (time.count() % PER_SECOND != 0) return std::to_string(time.count()) + " ms";
  return std::to_string(time.count() / PER_SECOND) + " s";
}

// What went wrong without an answer, and whether it may pass.
struct Failed {
  std::string reason;
  bool may_pass = false;
  bool unavailable = true;
};

Failed failed(CURLcode code, bool connected, const char* detail, const HttpOptions& options) {
  switch (code) {
    case CURLE_OPERATION_TIMEDOUT:
      if (connected) return {"no complete answer within " + seconds_text(options.total_timeout)};
      return {"no connection in time", true};
    case CURLE_COULDNT_RESOLVE_HOST:
      return {"the host is not known", true};
    case CURLE_COULDNT_RESOLVE_PROXY:
      return {"the host of the proxy is not known", true};
    case CURLE_COULDNT_CONNECT:
      return {"no connection", true};
    case CURLE_PARTIAL_FILE:
      return {"the answer was cut off", true};
    case CURLE_GOT_NOTHING:
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
      return {"the connection was broken off", true};
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
      // The details of these are the library's own and do not come from an answer.
      return {"no trusted connection (" + std::string(*detail != '\0' ? detail : "TLS") + ")",
              false, false};
    default:
      return {"not the answer of an HTTP service (" + std::string(curl_easy_strerror(code)) + ")",
              false, false};
  }
}

std::string reason_of(int status) {
  const auto number = std::to_string(status);
  switch (status) {
    case 401:
    case 403:
      return "the key is missing, wrong or not allowed to do this (status " + number + ")";
    case 404:
    case 405:
      return "no such service there (status " + number + ")";
    case 407:
      return "the proxy asks for authorization (status 407)";
    case 413:
      return "the text is too long for the service (status 413)";
    case STATUS_TOO_MANY_REQUESTS:
      return "too many requests, or the quota is used up (status 429)";
    default:
      break;
  }
  if (status >= 300 && status < 400) {
    return "it sends on to another address (status " + number + "), which is not followed";
  }
  if (status >= STATUS_SERVER_ERROR) return "the service failed (status " + number + ")";
  return "the service refuses the request (status " + number + ")";
}

}  // namespace

struct HttpClient::Inside {
  std::string url;  // with credentials
  std::string address;
  HttpOptions options;
  std::mutex mutex = {};
  std::vector<Easy> idle = {};  // handles with their connections

  Easy take() {
    const std::lock_guard lock(mutex);
    if (idle.empty()) return Easy(curl_easy_init());
    auto handle = std::move(idle.back());
    idle.pop_back();
    return handle;
  }
  void give_back(Easy handle) {
    curl_easy_reset(handle.get());
    const std::lock_guard lock(mutex);
    idle.push_back(std::move(handle));
  }

  void prepare(CURL* handle, const std::string& path, const std::string* body,
               const Headers& headers) const;
  std::optional<HttpResponse> attempt(const std::string& path, const std::string* body,
                                      Failed& failure);
  HttpResponse ask(const std::string& path, const std::string* body,
                   const IsClientFault& is_client_fault);
};

// Options of the library take a long or a pointer each.
void HttpClient::Inside::prepare(CURL* handle, const std::string& path, const std::string* body,
                                 const Headers& headers) const {
  const auto set = [handle](CURLoption option, auto value) {
    if (curl_easy_setopt(handle, option, value) != CURLE_OK) {
      throw ExternalError("the HTTP library lacks what is needed");
    }
  };
  set(CURLOPT_URL, (url + path).c_str());
  set(CURLOPT_PROTOCOLS_STR, "http,https");
  set(CURLOPT_FOLLOWLOCATION, 0L);
  set(CURLOPT_NOSIGNAL, 1L);
  set(CURLOPT_HTTPHEADER, headers.get());
  set(CURLOPT_USERAGENT, "veildoc");
  set(CURLOPT_CONNECTTIMEOUT_MS, long{options.connect_timeout.count()});
  set(CURLOPT_TIMEOUT_MS, long{options.total_timeout.count()});
  set(CURLOPT_SSLVERSION, long{CURL_SSLVERSION_TLSv1_2});
  const char* trusted = options.ca_file.c_str();
  if (*trusted == '\0') trusted = std::getenv("SSL_CERT_FILE");
  if (trusted != nullptr && *trusted != '\0') set(CURLOPT_CAINFO, trusted);
  if (body != nullptr) {
    set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body->size()));
    set(CURLOPT_POSTFIELDS, body->c_str());
  }
}

std::optional<HttpResponse> HttpClient::Inside::attempt(const std::string& path,
                                                        const std::string* body, Failed& failure) {
  Headers headers;
  headers.add("Accept: application/json");
  headers.add("Expect:");  // no question in advance whether a long body is welcome
  if (body != nullptr) headers.add("Content-Type: application/json");
  if (!options.authorization.empty()) headers.add("Authorization: " + options.authorization);
  Collected collected{{}, options.most_bytes};
  Watch watched{options.read_timeout};
  std::array<char, CURL_ERROR_SIZE> detail{};
  auto handle = take();
  if (handle == nullptr) throw std::bad_alloc();
  prepare(handle.get(), path, body, headers);
  curl_easy_setopt(handle.get(), CURLOPT_ERRORBUFFER, detail.data());
  curl_easy_setopt(handle.get(), CURLOPT_WRITEFUNCTION, collect);
  curl_easy_setopt(handle.get(), CURLOPT_WRITEDATA, &collected);
  curl_easy_setopt(handle.get(), CURLOPT_NOPROGRESS, 0L);
  curl_easy_setopt(handle.get(), CURLOPT_XFERINFOFUNCTION, watch);
  curl_easy_setopt(handle.get(), CURLOPT_XFERINFODATA, &watched);
  CURLcode code = CURLE_OK;
  {
    const WithoutPipeSignal held_off;
    code = curl_easy_perform(handle.get());
  }
  long status = 0;
  double connected_after = 0;
  curl_easy_getinfo(handle.get(), CURLINFO_RESPONSE_CODE, &status);
  curl_easy_getinfo(handle.get(), CURLINFO_PRETRANSFER_TIME, &connected_after);
  give_back(std::move(handle));
  if (code == CURLE_OK) return HttpResponse{static_cast<int>(status), std::move(collected.body)};
  if (collected.too_long) {
    failure = {"the answer is too long", false, false};
  } else if (watched.stalled) {
    failure = {"no byte for " + seconds_text(options.read_timeout)};
  } else {
    failure = failed(code, connected_after > 0, detail.data(), options);
  }
  return {};
}

HttpResponse HttpClient::Inside::ask(const std::string& path, const std::string* body,
                                     const IsClientFault& is_client_fault) {
  Failed failure;
  for (int tried = 0;; ++tried) {
    auto response = attempt(path, body, failure);
    if (response) {
      const int status = response->status;
      if (status == STATUS_OK) return *std::move(response);
      const bool server_failed = status >= STATUS_SERVER_ERROR;
      if (server_failed && is_client_fault && is_client_fault(*response)) {
        return *std::move(response);
      }
      failure = {reason_of(status), server_failed,
                 server_failed || status == STATUS_TOO_MANY_REQUESTS};
    }
    if (!failure.may_pass || tried >= options.retries) break;
    constexpr int MOST_DOUBLINGS = 6;
    std::this_thread::sleep_for(options.back_off * (1 << std::min(tried, MOST_DOUBLINGS)));
  }
  const auto message = address + path + ": " + failure.reason;
  if (failure.unavailable) throw ServiceUnavailable(message);
  throw ExternalError(message);
}

HttpClient::HttpClient(std::string_view url, HttpOptions options) {
  auto parts = parsed(url);
  check_authorization(options.authorization);
  auto with_credentials = without_slashes_at_end(part_of(parts, CURLUPART_URL));
  curl_url_set(parts.get(), CURLUPART_USER, nullptr, 0);
  curl_url_set(parts.get(), CURLUPART_PASSWORD, nullptr, 0);
  curl_url_set(parts.get(), CURLUPART_OPTIONS, nullptr, 0);
  auto address = without_slashes_at_end(part_of(parts, CURLUPART_URL));
  inside_.reset(new Inside{std::move(with_credentials), std::move(address), std::move(options)});
}

HttpClient::~HttpClient() = default;

const std::string& HttpClient::address() const { return inside_->address; }

HttpResponse HttpClient::get(std::string_view path, const IsClientFault& is_client_fault) const {
  return inside_->ask(std::string(path), nullptr, is_client_fault);
}

HttpResponse HttpClient::post_json(std::string_view path, const std::string& body,
                                   const IsClientFault& is_client_fault) const {
  return inside_->ask(std::string(path), &body, is_client_fault);
}

void HttpClient::fail(std::string_view path, std::string_view reason) const {
  throw ExternalError(inside_->address + std::string(path) + ": " + std::string(reason));
}

}  // namespace core::remote
