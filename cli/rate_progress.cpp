#include "cli/rate_progress.hpp"

#include <cmath>
#include <cstdio>
#include <iostream>

#include <unistd.h>

#include "cli/table.hpp"

namespace cli {
namespace {

constexpr double BYTES_OF_MEGABYTE = 1e6;

std::string time_text(double seconds) {
  constexpr std::uint64_t MINUTE = 60;
  constexpr double MOST = 1e6;
  const auto whole = static_cast<std::uint64_t>(std::ceil(std::min(seconds, MOST)));
  const auto two_digits = [](std::uint64_t n) { return (n < 10 ? "0" : "") + std::to_string(n); };
  const auto minutes = whole / MINUTE;
  const auto tail = two_digits(whole % MINUTE);
  if (minutes < MINUTE) return std::to_string(minutes) + ":" + tail;
  return std::to_string(minutes / MINUTE) + ":" + two_digits(minutes % MINUTE) + ":" + tail;
}

}  // namespace

RateProgress::RateProgress(std::ostream& err, Unit unit, std::optional<std::uint64_t> total)
    : err_(err),
      shown_(&err == &std::cerr && ::isatty(STDERR_FILENO) != 0),
      unit_(unit),
      total_(total) {}

void RateProgress::show(std::uint64_t done, std::uint64_t lines, std::uint64_t before) {
  if (!shown_) return;
  const auto now = Clock::now();
  if (now < next_) return;
  constexpr auto PAUSE = std::chrono::milliseconds(200);
  next_ = now + PAUSE;
  const std::chrono::duration<double> passed = now - start_;
  err_ << "\r\x1B[K" << progress_line(unit_, total_, done, lines, before, passed.count())
       << std::flush;
  is_there_ = true;
}

void RateProgress::clear() {
  if (is_there_) err_ << "\r\x1B[K" << std::flush;
  is_there_ = false;
}

std::string progress_line(RateProgress::Unit unit, std::optional<std::uint64_t> total,
                          std::uint64_t done, std::uint64_t lines, std::uint64_t before,
                          double seconds) {
  constexpr double PERCENT = 100;
  const bool bytes = unit == RateProgress::Unit::BYTES;
  const auto fresh = static_cast<double>(done - std::min(done, before));
  const double rate = seconds > 0 ? fresh / seconds : 0;
  std::string out = "veildoc: ";
  if (bytes) {
    out += std::to_string(lines) + (lines == 1 ? " line, " : " lines, ") +
           fixed(rate / BYTES_OF_MEGABYTE, 1) + " MB/s";
  } else {
    out += std::to_string(done) + (total ? " of " + std::to_string(*total) : "") + " files, " +
           fixed(rate, 1) + "/s";
  }
  if (!total || *total == 0) return out;
  const auto whole = static_cast<double>(*total);
  if (bytes) out += ", " + fixed(PERCENT * static_cast<double>(done) / whole, 0) + "%";
  if (rate > 0) {
    out += ", " + time_text((whole - static_cast<double>(std::min(done, *total))) / rate) + " left";
  }
  return out;
}

}  // namespace cli
