#include "cli/resume.hpp"

#include <charconv>
#include <iostream>
#include <limits>

#include "cli/failure.hpp"
#include "cli/line_reader.hpp"

namespace cli {
namespace {

constexpr std::string_view NUMBER_MEMBER = "{\"line\":";
constexpr std::string_view FIRST_MEMBER = "{\"id\":";
constexpr std::string_view ERROR_MEMBER = ",\"error\":\"";
// A file that was not left by us may claim any number.
constexpr std::uint64_t MOST_LINES = std::uint64_t{1} << 32U;

[[noreturn]] void foreign(const std::string& partial) {
  throw Failure(EXIT_FAILED, partial + ": not what a run with these options left");
}

// 0 if it has none.
std::uint64_t number_of(std::string_view json) {
  std::uint64_t number = 0;
  if (json.starts_with(NUMBER_MEMBER)) {
    json.remove_prefix(NUMBER_MEMBER.size());
    std::from_chars(json.data(), json.data() + json.size(), number);
  }
  return number > MOST_LINES ? 0 : number;
}

}  // namespace

Resumed::Resumed(const std::string& partial, bool numbered) : numbered_(numbered) {
  LineReader reader(partial, std::cin, std::numeric_limits<std::size_t>::max());
  for (InputLine line; reader.next(line) && line.ended;) {
    whole_size_ = line.behind;
    note(line.bytes, partial);
  }
}

void Resumed::note(const std::string& json, const std::string& partial) {
  if (!json.starts_with(numbered_ ? NUMBER_MEMBER : FIRST_MEMBER)) foreign(partial);
  ++count_;
  // Within a string of JSON its quotes would be escaped.
  if (json.find(ERROR_MEMBER) != std::string::npos) ++errors_;
  if (!numbered_) {
    if (count_ == 1) first_ = json;
    last_ = json;
    return;
  }
  const auto number = number_of(json);
  if (number == 0) foreign(partial);
  if (number >= done_.size()) done_.resize(number + 1);
  if (done_[number]) foreign(partial);  // twice
  done_[number] = true;
  if (first_number_ == 0 || number < first_number_) {
    first_number_ = number;
    first_ = json;
  }
  if (number > last_number_) {
    last_number_ = number;
    last_ = json;
  }
}

bool Resumed::takes(const InputLine& line, const LineMasker& masker) {
  const bool is_done =
      numbered_ ? line.number < done_.size() && done_[line.number] : taken_ < count_;
  if (!is_done) return false;
  ++taken_;
  const bool is_first = numbered_ ? line.number == first_number_ : taken_ == 1;
  const bool is_last = numbered_ ? line.number == last_number_ : taken_ == count_;
  if (is_first || is_last) {
    auto json = masker.mask(line).json;
    json.pop_back();  // its line end
    if ((is_first && json != first_) || (is_last && json != last_)) {
      throw Failure(EXIT_FAILED,
                    "what is to be resumed was made of another input, or with other options");
    }
  }
  return true;
}

void Resumed::check_all_taken() const {
  if (taken_ != count_) {
    throw Failure(EXIT_FAILED, "what is to be resumed has more lines than the input");
  }
}

}  // namespace cli
