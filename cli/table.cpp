#include "cli/table.hpp"

#include <algorithm>
#include <array>
#include <cstdio>

#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace cli {
namespace {

constexpr std::size_t GAP = 2;

std::size_t width_of(std::u32string_view text) {
  std::size_t width = 0;
  for (const char32_t c : text) width += core::text::display_width(c);
  return width;
}

// A file may have any name; of one that is no UTF-8 the ASCII part is shown.
std::u32string decoded(const std::string& text) {
  try {
    return core::text::decode_utf8(text);
  } catch (const core::text::DecodeError&) {
    std::u32string out;
    for (const char c : text) {
      const auto byte = static_cast<unsigned char>(c);
      out += byte < 0x80 ? static_cast<char32_t>(byte) : U'\uFFFD';
    }
    return out;
  }
}

}  // namespace

Table::Cell Table::cell_of(const std::string& text) {
  auto characters = decoded(text);
  for (char32_t& c : characters) {
    if (core::text::is_control(c)) c = U'\uFFFD';
  }
  return {core::text::encode_utf8(characters), width_of(characters)};
}

void Table::add(const std::vector<std::string>& cells) {
  std::vector<Cell> row;
  row.reserve(cells.size());
  for (const auto& cell : cells) row.push_back(cell_of(cell));
  rows_.push_back(std::move(row));
}

std::string Table::text() const {
  std::vector<Cell> head;
  std::vector<std::size_t> widths;
  for (const auto& column : columns_) {
    head.push_back(cell_of(column.head));
    widths.push_back(head.back().width);
  }
  for (const auto& row : rows_) {
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].width);
  }
  std::string out;
  std::size_t blanks = 0;  // held back until something follows
  const auto put = [&](const Cell& cell) {
    if (cell.text.empty()) return;
    out.append(blanks, ' ').append(cell.text);
    blanks = 0;
  };
  const auto put_row = [&](const std::vector<Cell>& row) {
    blanks = 0;
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::size_t padding = widths[i] - row[i].width;
      const bool right = columns_[i].align == Align::RIGHT;
      if (right) blanks += padding;
      put(row[i]);
      blanks += GAP + (right ? 0 : padding);
    }
    out += '\n';
  };
  put_row(head);
  for (const auto& row : rows_) put_row(row);
  return out;
}

std::string fixed(double value, int decimals) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
  return text.data();
}

}  // namespace cli
