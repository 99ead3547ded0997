// What an interrupted run of `veildoc batch` left behind.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/line_masker.hpp"

namespace cli {

// The whole lines of FILE.partial, one for each line of the input that is no blank:
// the first ones, or, where the output has numbers, those of the numbers. A line that
// was cut off counts as not written.
class Resumed {
 public:
  // Throws Failure(EXIT_FAILED) for a file that no such run left.
  Resumed(const std::string& partial, bool numbered);

  bool empty() const { return count_ == 0; }
  std::uint64_t count() const { return count_; }
  // How many of them tell of an error.
  std::uint64_t errors() const { return errors_; }
  // In bytes, of the whole lines.
  std::uint64_t whole_size() const { return whole_size_; }

  // Whether this line of the input is done. To be called for each line that is no blank,
  // in their order. The first and the last line that are there are masked again: throws
  // Failure(EXIT_FAILED) if they are not the same.
  bool takes(const InputLine& line, const LineMasker& masker);
  // Throws Failure(EXIT_FAILED) if there were more lines than the input has.
  void check_all_taken() const;

 private:
  void note(const std::string& json, const std::string& partial);

  bool numbered_;
  std::uint64_t count_ = 0;
  std::uint64_t errors_ = 0;
  std::uint64_t taken_ = 0;
  std::uint64_t whole_size_ = 0;
  std::string first_;  // by its place in the input
  std::string last_;
  std::uint64_t first_number_ = 0;  // where the output has numbers
  std::uint64_t last_number_ = 0;
  std::vector<bool> done_;  // by the numbers
};

}  // namespace cli
