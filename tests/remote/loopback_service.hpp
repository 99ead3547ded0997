// A service on the loopback interface that answers as a test says, with real sockets.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace test {

struct Request {
  std::string head;  // request line and headers
  std::string body;
};

// What goes over the wire, and what follows.
struct Reply {
  enum Then { CLOSE, HOLD, TRICKLE };  // HOLD: silence; TRICKLE: blanks, one by one

  std::string bytes;
  Then then = CLOSE;
};

// A whole answer of this status.
Reply answer(const std::string& body, int status = 200, const std::string& headers = "");

class LoopbackService {
 public:
  using Handler = std::function<Reply(const Request&)>;

  explicit LoopbackService(Handler handler);
  ~LoopbackService();
  LoopbackService(const LoopbackService&) = delete;
  LoopbackService& operator=(const LoopbackService&) = delete;

  std::string url() const { return "http://" + host(); }
  std::string host() const { return "127.0.0.1:" + std::to_string(port_); }
  std::vector<Request> requests() const;

 private:
  void accept_all();
  void serve(int connection);

  Handler handler_;
  int listener_ = -1;
  int port_ = 0;
  std::atomic<bool> stopping_ = false;
  mutable std::mutex mutex_;
  std::vector<Request> requests_;
  std::vector<std::thread> connections_;
  std::thread acceptor_;
};

}  // namespace test
