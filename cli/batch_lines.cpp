#include "cli/batch_lines.hpp"

#include <condition_variable>
#include <csignal>
#include <deque>
#include <exception>
#include <map>
#include <mutex>
#include <optional>
#include <ostream>
#include <thread>
#include <vector>

#include <pthread.h>

#include "cli/failure.hpp"
#include "cli/interrupt.hpp"
#include "cli/line_masker.hpp"
#include "cli/line_reader.hpp"
#include "cli/rate_progress.hpp"
#include "cli/resume.hpp"

namespace cli {
namespace {

// What is read and not yet written: so much, or one line.
constexpr std::size_t MOST_BYTES_AHEAD = std::size_t{32} << 20U;
constexpr std::size_t LINES_AHEAD_PER_JOB = 256;

// Signals are for the thread that reads. Of threads that are started while it lives.
class SignalsHeldBack {
 public:
  SignalsHeldBack() {
    sigset_t watched;
    sigemptyset(&watched);
    sigaddset(&watched, SIGINT);
    sigaddset(&watched, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &watched, &old_);
  }
  ~SignalsHeldBack() { pthread_sigmask(SIG_SETMASK, &old_, nullptr); }
  SignalsHeldBack(const SignalsHeldBack&) = delete;
  SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;

 private:
  sigset_t old_{};
};

// Lines go in at one end, in their order, and out at the other, in that order or as
// they are ready. What goes wrong at the far end ends the near one.
class LinePipeline {
 public:
  LinePipeline(const LinesOptions& options, const LineMasker& masker, LineOutput& output,
               RateProgress& progress);
  ~LinePipeline() { close(); }
  LinePipeline(const LinePipeline&) = delete;
  LinePipeline& operator=(const LinePipeline&) = delete;

  // Waits for room. False if it is broken.
  bool add(InputLine line);
  // Counts what an earlier run did.
  void skip(const InputLine& line);
  // Leaves what no thread has begun with.
  void drop_waiting();
  // Waits until all is written. Rethrows what broke it.
  void finish();

  std::uint64_t written() const { return written_; }
  std::uint64_t errors() const { return errors_; }

 private:
  struct Work {
    std::uint64_t place;
    InputLine line;
  };
  struct Done {
    std::string json;
    std::size_t input_size;
    std::uint64_t behind;
  };

  void work();
  void put(std::uint64_t place, Done done);
  void write(const Done& done);
  void break_off();
  void close();

  const LinesOptions& options_;
  const LineMasker& masker_;
  LineOutput& output_;
  RateProgress& progress_;

  std::mutex mutex_;
  std::condition_variable has_work_;
  std::condition_variable has_room_;
  std::deque<Work> waiting_;
  std::map<std::uint64_t, Done> ready_;  // ordered, but not yet their turn
  std::uint64_t added_ = 0;
  std::uint64_t next_ = 0;  // the place whose turn it is
  std::size_t lines_ahead_ = 0;
  std::size_t bytes_ahead_ = 0;
  std::uint64_t written_ = 0;
  std::uint64_t errors_ = 0;
  std::uint64_t read_ = 0;    // bytes of the input
  std::uint64_t before_ = 0;  // of these, by an earlier run
  bool closed_ = false;
  std::exception_ptr broken_;
  std::vector<std::thread> threads_;
};

LinePipeline::LinePipeline(const LinesOptions& options, const LineMasker& masker,
                           LineOutput& output, RateProgress& progress)
    : options_(options), masker_(masker), output_(output), progress_(progress) {
  const SignalsHeldBack held;
  for (std::size_t i = 0; i < options.jobs; ++i) threads_.emplace_back([this] { work(); });
}

bool LinePipeline::add(InputLine line) {
  std::unique_lock lock(mutex_);
  const auto size = line.bytes.size();
  has_room_.wait(lock, [&] {
    return broken_ != nullptr || lines_ahead_ == 0 ||
           (lines_ahead_ < LINES_AHEAD_PER_JOB * options_.jobs &&
            bytes_ahead_ + size <= MOST_BYTES_AHEAD);
  });
  if (broken_ != nullptr) return false;
  ++lines_ahead_;
  bytes_ahead_ += size;
  waiting_.push_back({added_++, std::move(line)});
  has_work_.notify_one();
  return true;
}

void LinePipeline::skip(const InputLine& line) {
  const std::lock_guard lock(mutex_);
  read_ = before_ = line.behind;
  progress_.show(read_, written_, before_);
}

void LinePipeline::work() {
  while (true) {
    std::unique_lock lock(mutex_);
    has_work_.wait(lock, [this] { return closed_ || !waiting_.empty(); });
    if (waiting_.empty()) return;
    auto [place, line] = std::move(waiting_.front());
    waiting_.pop_front();
    lock.unlock();
    try {
      const auto size = line.bytes.size();
      auto masked = masker_.mask(line);
      lock.lock();
      if (masked.is_error) ++errors_;
      put(place, {std::move(masked.json), size, line.behind});
    } catch (...) {
      if (!lock.owns_lock()) lock.lock();
      break_off();
    }
  }
}

void LinePipeline::put(std::uint64_t place, Done done) {
  if (broken_ != nullptr) return;
  if (options_.unordered) {
    write(done);
  } else {
    ready_.emplace(place, std::move(done));
    for (auto turn = ready_.find(next_); turn != ready_.end(); turn = ready_.find(next_)) {
      write(turn->second);
      ready_.erase(turn);
      ++next_;
    }
  }
  // Whoever waits for an answer before the next question gets it.
  if (lines_ahead_ == 0) output_.flush();
}

void LinePipeline::write(const Done& done) {
  output_.write(done.json);
  ++written_;
  --lines_ahead_;
  bytes_ahead_ -= done.input_size;
  read_ = std::max(read_, done.behind);
  progress_.show(read_, written_, before_);
  has_room_.notify_one();
}

void LinePipeline::break_off() {
  if (broken_ == nullptr) broken_ = std::current_exception();
  waiting_.clear();
  has_room_.notify_all();
}

void LinePipeline::drop_waiting() {
  const std::lock_guard lock(mutex_);
  waiting_.clear();
}

void LinePipeline::close() {
  {
    const std::lock_guard lock(mutex_);
    closed_ = true;
  }
  has_work_.notify_all();
  for (auto& thread : threads_) thread.join();
  threads_.clear();
}

void LinePipeline::finish() {
  close();
  progress_.clear();
  if (broken_ == nullptr) return;
  // What stands in order before the line that broke it is finished.
  try {
    std::rethrow_exception(broken_);
  } catch (const ServiceFailure&) {
    output_.flush();
    throw;
  }
}

class LinesRun {
 public:
  LinesRun(const LinesOptions& options, const MaskingOptions& masking, const Context& context)
      : options_(options),
        context_(context),
        output_(options.output, context.out, options.mapping ? Privacy::SECRET : Privacy::ORDINARY,
                options.start),
        masking_(masking) {}

  void run();

 private:
  void feed(LineReader& reader, const InterruptWatch& watch, const LineMasker& masker,
            LinePipeline& pipeline);
  void settle();
  void tell(std::uint64_t written, std::uint64_t errors, bool interrupted) const;

  const LinesOptions& options_;
  const Context& context_;
  LineOutput output_;
  const MaskingOptions& masking_;
  std::optional<Resumed> resumed_;
  bool settled_ = false;
};

void LinesRun::run() {
  if (output_.is_finished()) {
    context_.err << "veildoc: " << options_.output << " is finished\n";
    return;
  }
  const InterruptWatch watch;
  LineReader reader(options_.input, context_.in, options_.longest,
                    [&watch] { return watch.interrupted(); });
  const OverrideLists overrides(masking_);
  const GuardedAnalyzer analyzer(context_, masking_);
  const LineMasker masker(
      masking_, analyzer, overrides,
      {.numbered = options_.unordered, .mapping = options_.mapping, .longest = options_.longest});
  if (options_.start == LineOutput::Start::RESUME) {
    resumed_.emplace(output_.partial(), options_.unordered);
  }
  RateProgress progress(context_.err, RateProgress::Unit::BYTES, reader.size());
  LinePipeline pipeline(options_, masker, output_, progress);
  feed(reader, watch, masker, pipeline);
  if (watch.interrupted()) pipeline.drop_waiting();
  pipeline.finish();
  if (watch.interrupted()) {
    output_.flush();
  } else {
    if (resumed_) resumed_->check_all_taken();
    settle();
    output_.finish();
  }
  tell(pipeline.written(), pipeline.errors(), watch.interrupted());
}

void LinesRun::feed(LineReader& reader, const InterruptWatch& watch, const LineMasker& masker,
                    LinePipeline& pipeline) {
  for (InputLine line; !watch.interrupted() && reader.next(line);) {
    if (is_blank(line)) continue;
    if (resumed_ && resumed_->takes(line, masker)) {
      pipeline.skip(line);
      continue;
    }
    settle();
    if (!pipeline.add(std::move(line))) return;
  }
}

// Cuts off half a line that an earlier run left, and no sooner than it is known whose
// lines stand before it.
void LinesRun::settle() {
  if (resumed_ && !settled_) output_.go_on_at(resumed_->whole_size());
  settled_ = true;
}

void LinesRun::tell(std::uint64_t written, std::uint64_t errors, bool interrupted) const {
  if (resumed_) {
    written += resumed_->count();
    errors += resumed_->errors();
  }
  const auto lines = [](std::uint64_t n) {
    return std::to_string(n) + (n == 1 ? " line" : " lines");
  };
  if (interrupted) {
    throw Failure(EXIT_INTERRUPTED,
                  "interrupted; " + lines(written) + " finished" +
                      (output_.partial().empty() ? "" : ", --resume goes on behind them"));
  }
  if (errors > 0) {
    throw Failure(EXIT_INPUT, lines(errors) + " of " + std::to_string(written) +
                                  (errors == 1 ? " was" : " were") +
                                  " not masked; the \"error\" in the output tells why");
  }
}

}  // namespace

void batch_lines(const LinesOptions& options, const MaskingOptions& masking,
                 const Context& context) {
  LinesRun(options, masking, context).run();
}

}  // namespace cli
