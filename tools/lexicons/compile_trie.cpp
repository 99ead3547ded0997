// Compiles word lists of data/ into one trie (core/text/flat_trie.hpp).
//
//   compile_trie OUTPUT (LIST COLUMN... )...
//
// A LIST is a path that ends in .txt, in the format of core/text/lexicon.hpp. The
// COLUMNs say how those behind the word become bits of its payload, the lowest
// first: "3" is a number of 3 bits, "place|person" is 0 for an empty cell, 1 for
// place and 2 for person, in as many bits as needed. A missing cell is an empty
// one. A word of several lists gets the bits of each.
#include <bit>
#include <charconv>
#include <cstdint>
#include <exception>
#include <fstream>
#include <iostream>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tools/lexicons/trie_builder.hpp"

namespace {

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  while (true) {
    const auto end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::uint32_t parse_number(std::string_view text) {
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) {
    throw std::runtime_error("not a number: " + std::string(text));
  }
  return value;
}

// What a column makes of a cell.
class Column {
 public:
  explicit Column(std::string_view description) {
    if (description.find_first_not_of("0123456789") == std::string_view::npos) {
      bits_ = static_cast<int>(parse_number(description));
    } else {
      names_ = split(description, '|');
      bits_ = static_cast<int>(std::bit_width(names_.size()));
    }
  }

  int bits() const { return bits_; }

  std::uint32_t value(std::string_view cell) const {
    if (cell.empty()) return 0;
    if (names_.empty()) return in_range(parse_number(cell));
    for (std::size_t i = 0; i < names_.size(); ++i) {
      if (names_[i] == cell) return static_cast<std::uint32_t>(i) + 1;
    }
    throw std::runtime_error("unknown word in a column: " + std::string(cell));
  }

 private:
  std::uint32_t in_range(std::uint32_t value) const {
    if (std::bit_width(value) > static_cast<std::size_t>(bits_)) {
      throw std::runtime_error("number too large for its column: " + std::to_string(value));
    }
    return value;
  }

  std::vector<std::string_view> names_;
  int bits_ = 0;
};

// The lists are checked to be UTF-8 by scripts/check_text.sh.
std::u32string decode(std::string_view bytes) {
  std::u32string out;
  for (const char byte : bytes) {
    const auto b = static_cast<unsigned char>(byte);
    if (b < 0x80) {
      out.push_back(b);
    } else if (b >= 0xC0) {
      out.push_back(b & (b < 0xE0 ? 0x1FU : b < 0xF0 ? 0x0FU : 0x07U));
    } else {
      if (out.empty()) throw std::runtime_error("not UTF-8");
      out.back() = out.back() << 6U | (b & 0x3FU);
    }
  }
  return out;
}

// Adds the words of a list; `shift` is the first bit of its columns.
void read_list(const std::string& path, const std::vector<Column>& columns, int shift,
               tools::TrieEntries& entries) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot be read");
  std::string line;
  while (std::getline(file, line)) {
    if (line.empty() || line.front() == '#') continue;
    const auto cells = split(line, '\t');
    if (cells.size() > columns.size() + 1) throw std::runtime_error("too many columns: " + line);
    std::uint32_t payload = 0;
    int at = shift;
    for (std::size_t i = 1; i <= columns.size(); ++i) {
      if (i < cells.size()) payload |= columns[i - 1].value(cells[i]) << at;
      at += columns[i - 1].bits();
    }
    entries[decode(cells.front())] |= payload;
  }
}

void compile(std::span<char*> arguments) {
  if (arguments.size() < 2)
    throw std::runtime_error("usage: compile_trie OUTPUT (LIST COLUMN...)...");
  tools::TrieEntries entries;
  int shift = 0;
  for (std::size_t i = 1; i < arguments.size();) {
    const std::string path = arguments[i++];
    std::vector<Column> columns;
    while (i < arguments.size() && !std::string_view(arguments[i]).ends_with(".txt")) {
      columns.emplace_back(arguments[i++]);
    }
    try {
      read_list(path, columns, shift, entries);
    } catch (const std::exception& error) {
      throw std::runtime_error(path + ": " + error.what());
    }
    for (const Column& column : columns) shift += column.bits();
  }
  const auto words = tools::build_flat_trie(entries);
  std::ofstream out(arguments[0], std::ios::binary);
  out.write(reinterpret_cast<const char*>(words.data()),
            static_cast<std::streamsize>(words.size() * sizeof words[0]));
  if (!out.flush()) throw std::runtime_error(std::string(arguments[0]) + " cannot be written");
}

}  // namespace

int main(int count, char** arguments) {
  try {
    compile(std::span(arguments, static_cast<std::size_t>(count)).subspan(1));
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "compile_trie: " << error.what() << "\n";
    return 1;
  }
}
