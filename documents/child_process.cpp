#include "documents/child_process.hpp"

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "core/errors.hpp"

namespace documents {
namespace {

constexpr std::size_t MOST_MESSAGES = std::size_t{64} << 10U;
constexpr int CANNOT_RUN = 127;

[[noreturn]] void no_room() { throw core::ExternalError("no other program can be started"); }

class Handle {
 public:
  explicit Handle(int fd = -1) : fd_(fd) {}
  ~Handle() { close(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  int get() const { return fd_; }
  void set(int fd) { fd_ = fd; }
  void close() {
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
  }

 private:
  int fd_;
};

struct Pipe {
  Handle read;
  Handle write;

  Pipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) no_room();
    read.set(ends[0]);
    write.set(ends[1]);
  }
};

// A file without a name, in memory, that holds the input.
void fill_memory_file(const Handle& file, std::string_view input) {
  while (!input.empty()) {
    const auto put = ::write(file.get(), input.data(), input.size());
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) no_room();
    input.remove_prefix(static_cast<std::size_t>(put));
  }
  if (::lseek(file.get(), 0, SEEK_SET) != 0) no_room();
}

void limit(__rlimit_resource resource, std::size_t most) {
  const struct rlimit bounds { most, most };
  ::setrlimit(resource, &bounds);
}

// Between fork and exec only calls that a signal handler may make are safe.
[[noreturn]] void become(char* const* command, int in, int out, int err,
                         const ChildLimits& limits) {
  // Ctrl-C is for us: it must not look like a crash of the child.
  ::setpgid(0, 0);
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  ::signal(SIGPIPE, SIG_DFL);
  limit(RLIMIT_AS, limits.memory);
  limit(RLIMIT_CPU, static_cast<std::size_t>(limits.processor.count()));
  limit(RLIMIT_FSIZE, 0);
  limit(RLIMIT_CORE, 0);
  constexpr int FIRST_OTHER = 3;
  if (::dup2(in, STDIN_FILENO) < 0 || ::dup2(out, STDOUT_FILENO) < 0 ||
      ::dup2(err, STDERR_FILENO) < 0) {
    ::_exit(CANNOT_RUN);
  }
  ::close_range(FIRST_OTHER, ~0U, 0);
  ::execvp(command[0], command);
  ::_exit(CANNOT_RUN);
}

// Reads what is there into `to`, of which no more than `most` is kept. False at the end.
bool take(const Handle& from, std::string& to, std::size_t most) {
  constexpr std::size_t BLOCK = std::size_t{64} << 10U;
  std::array<char, BLOCK> block{};
  const auto got = ::read(from.get(), block.data(), block.size());
  if (got < 0) return errno == EINTR || errno == EAGAIN;
  const auto room = most > to.size() ? most - to.size() : 0;
  to.append(block.data(), std::min(room, static_cast<std::size_t>(got)));
  return got > 0;
}

// Collects both outputs until they end, or a bound is reached.
ChildResult::End collect(Pipe& out, Pipe& err, const ChildLimits& limits, ChildResult& result) {
  using Clock = std::chrono::steady_clock;
  const auto deadline = Clock::now() + limits.time;
  std::array<pollfd, 2> waiting = {{{out.read.get(), POLLIN, 0}, {err.read.get(), POLLIN, 0}}};
  while (waiting[0].fd >= 0 || waiting[1].fd >= 0) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    if (left <= 0) return ChildResult::End::TOO_LONG;
    const int ready = ::poll(waiting.data(), waiting.size(), static_cast<int>(left));
    if (ready < 0 && errno != EINTR) no_room();
    if (ready <= 0) continue;
    if (waiting[0].revents != 0 && !take(out.read, result.out, limits.output + 1)) {
      waiting[0].fd = -1;
    }
    if (waiting[1].revents != 0 && !take(err.read, result.err, MOST_MESSAGES)) waiting[1].fd = -1;
    if (result.out.size() > limits.output) return ChildResult::End::TOO_MUCH;
  }
  return ChildResult::End::EXITED;
}

}  // namespace

ChildResult run_child(const std::vector<std::string>& command, std::string_view input,
                      const ChildLimits& limits) {
  const Handle in(::memfd_create("veildoc", MFD_CLOEXEC));
  if (in.get() < 0) no_room();
  fill_memory_file(in, input);
  Pipe out;
  Pipe err;
  std::vector<char*> words;
  words.reserve(command.size() + 1);
  // exec takes what it does not change as if it did.
  for (const auto& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);

  const pid_t child = ::fork();
  if (child < 0) no_room();
  if (child == 0) become(words.data(), in.get(), out.write.get(), err.write.get(), limits);
  out.write.close();
  err.write.close();
  ChildResult result;
  result.end = collect(out, err, limits, result);
  if (result.end != ChildResult::End::EXITED) ::kill(child, SIGKILL);
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (result.end != ChildResult::End::EXITED) return result;
  if (WIFSIGNALED(status)) {
    const int by = WTERMSIG(status);
    result.end =
        by == SIGXCPU || by == SIGKILL ? ChildResult::End::TOO_LONG : ChildResult::End::CRASHED;
    return result;
  }
  result.code = WEXITSTATUS(status);
  if (result.code == CANNOT_RUN) result.end = ChildResult::End::NOT_FOUND;
  return result;
}

}  // namespace documents
