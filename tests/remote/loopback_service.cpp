#include "tests/remote/loopback_service.hpp"

#include <array>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace test {
namespace {

constexpr int TICK_MS = 20;  // how often somebody looks whether it is over

bool readable(int socket) {
  pollfd waiting{socket, POLLIN, 0};
  return ::poll(&waiting, 1, TICK_MS) > 0;
}

bool send_all(int socket, const std::string& bytes) {
  for (std::size_t sent = 0; sent < bytes.size();) {
    const auto n = ::send(socket, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (n <= 0) return false;
    sent += static_cast<std::size_t>(n);
  }
  return true;
}

std::size_t announced_length(const std::string& head) {
  const std::string name = "\r\nContent-Length: ";
  const auto at = head.find(name);
  return at == std::string::npos ? 0 : std::stoul(head.substr(at + name.size()));
}

}  // namespace

Reply answer(const std::string& body, int status, const std::string& headers) {
  return {"HTTP/1.1 " + std::to_string(status) + " Said\r\nContent-Type: application/json\r\n" +
          headers + "Content-Length: " + std::to_string(body.size()) +
          "\r\nConnection: close\r\n\r\n" + body};
}

LoopbackService::LoopbackService(Handler handler) : handler_(std::move(handler)) {
  ::setenv("no_proxy", "127.0.0.1", 1);  // whatever proxy the machine has
  listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* plain = reinterpret_cast<sockaddr*>(&address);
  if (::bind(listener_, plain, size) != 0 || ::listen(listener_, SOMAXCONN) != 0 ||
      ::getsockname(listener_, plain, &size) != 0) {
    throw std::runtime_error("no socket on the loopback interface");
  }
  port_ = ntohs(address.sin_port);
  acceptor_ = std::thread([this] { accept_all(); });
}

LoopbackService::~LoopbackService() {
  stopping_ = true;
  acceptor_.join();
  for (auto& connection : connections_) connection.join();
  ::close(listener_);
}

std::vector<Request> LoopbackService::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void LoopbackService::accept_all() {
  while (!stopping_) {
    if (!readable(listener_)) continue;
    const int connection = ::accept(listener_, nullptr, nullptr);
    if (connection < 0) continue;
    connections_.emplace_back([this, connection] {
      serve(connection);
      ::close(connection);
    });
  }
}

void LoopbackService::serve(int connection) {
  const std::string head_end = "\r\n\r\n";
  std::string read;
  std::array<char, 65536> block{};
  std::size_t body_at = std::string::npos;
  do {
    while (!readable(connection)) {
      if (stopping_) return;
    }
    const auto n = ::recv(connection, block.data(), block.size(), 0);
    if (n <= 0) return;
    read.append(block.data(), static_cast<std::size_t>(n));
    if (body_at == std::string::npos) body_at = read.find(head_end);
  } while (body_at == std::string::npos ||
           read.size() < body_at + head_end.size() + announced_length(read.substr(0, body_at)));
  const Request request{read.substr(0, body_at), read.substr(body_at + head_end.size())};
  {
    const std::lock_guard lock(mutex_);
    requests_.push_back(request);
  }
  const auto reply = handler_(request);
  if (!send_all(connection, reply.bytes)) return;
  while (reply.then != Reply::CLOSE && !stopping_) {
    if (readable(connection)) return;  // the client is gone
    if (reply.then == Reply::TRICKLE && !send_all(connection, " ")) return;
  }
}

}  // namespace test
