// Aligned columns, for people.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace cli {

enum class Align { LEFT, RIGHT };

class Table {
 public:
  struct Column {
    std::string head;
    Align align = Align::LEFT;
  };

  explicit Table(std::vector<Column> columns) : columns_(std::move(columns)) {}

  // One cell a column, UTF-8. Control characters, which a terminal would obey,
  // are shown as U+FFFD.
  void add(const std::vector<std::string>& cells);

  // Head and rows, each with a line end; columns are two blanks apart, and wide
  // characters count as two. No blank stands at the end of a line.
  std::string text() const;

 private:
  struct Cell {
    std::string text;
    std::size_t width = 0;
  };
  static Cell cell_of(const std::string& text);

  std::vector<Column> columns_;
  std::vector<std::vector<Cell>> rows_;
};

// With a fixed number of decimals: "12.50".
std::string fixed(double value, int decimals);

}  // namespace cli
