#include "core/nlp/table_labels.hpp"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "core/nlp/characters.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/rare_characters.hpp"

namespace core::nlp {
namespace {

using recognition::LABEL_CLASSES;
using recognition::NlpArtifacts;
using recognition::WordHit;

// A longer cell is a sentence that begins with a label word.
constexpr std::size_t LONGEST_HEAD = 24;

struct Cell {
  std::size_t start = 0;
  std::size_t end = 0;
  std::size_t label = LABEL_CLASSES;  // class of the label that the cell is; none
  bool is_label() const { return label < LABEL_CLASSES; }
};
using Row = std::vector<Cell>;

class TableReader {
 public:
  explicit TableReader(NlpArtifacts& artifacts) : artifacts_(artifacts) {}

  void read() {
    const std::u32string_view t = artifacts_.folded;
    std::size_t tab = 0;  // the first one from the line on
    for (std::size_t line = 0; line < t.size();) {
      const std::size_t stop = find_rare(t, line, U'\n');
      if (tab < line || line == 0) tab = find_rare(t, line, U'\t');
      if (tab < stop) {
        read_line(line, stop);
      } else {
        head_.clear();
      }
      line = stop + 1;
    }
    for (std::size_t c = 0; c < LABEL_CLASSES; ++c) {
      if (!found_[c].empty()) merge(artifacts_.words[c], found_[c]);
    }
  }

 private:
  // Of two cells or more.
  void read_line(std::size_t start, std::size_t stop) {
    Row row = cells(start, stop);
    for (Cell& cell : row) cell.label = label_of(cell);
    if (row.size() == head_.size()) {
      label_below_head(row);
    } else {
      head_.clear();
    }
    if (!is_head(row, stop + 1)) label_behind_first(row);
    // A row with a single label under a head is an entry such as 项目经理⇥霍启明.
    const auto labels =
        std::count_if(row.begin(), row.end(), [](const Cell& c) { return c.is_label(); });
    const std::ptrdiff_t needed = head_.empty() ? 1 : 2;
    if (labels >= needed && !has_long_number(start, stop)) head_ = std::move(row);
  }

  // Whether the row below has as many cells and does not begin with a label.
  bool is_head(const Row& row, std::size_t below) const {
    const std::u32string_view t = artifacts_.folded;
    if (below >= t.size() || row.size() < 3) return false;
    const Row next = cells(below, std::min(t.find(U'\n', below), t.size()));
    if (next.size() != row.size()) return false;
    for (std::size_t c = 0; c < LABEL_CLASSES; ++c) {
      if (end_of_word_at(artifacts_.words[c], next.front().start) > next.front().start)
        return false;
    }
    return true;
  }

  Row cells(std::size_t start, std::size_t stop) const {
    const std::u32string_view t = artifacts_.folded;
    Row row;
    while (start <= stop) {
      const std::size_t end =
          start + std::min(t.substr(start, stop - start).find(U'\t'), stop - start);
      Cell cell{start, end};
      while (cell.start < cell.end && t[cell.start] == U' ') ++cell.start;
      while (cell.end > cell.start && t[cell.end - 1] == U' ') --cell.end;
      row.push_back(cell);
      start = end + 1;
    }
    return row;
  }

  // The class of the label with which the cell begins.
  std::size_t label_of(const Cell& cell) {
    if (cell.end - cell.start > LONGEST_HEAD) return LABEL_CLASSES;
    for (std::size_t c = 0; c < LABEL_CLASSES; ++c) {
      const auto& list = artifacts_.words[c];
      std::size_t& next = next_[c];
      while (next < list.size() && list[next].start < cell.start) ++next;
      if (next < list.size() && list[next].start == cell.start && list[next].end <= cell.end &&
          !is_han_at(list[next].end)) {
        return c;
      }
    }
    return LABEL_CLASSES;
  }

  // 姓名、手机号 and 联系人的 are no heads; 联系人 PIC and 姓名(中文) are.
  bool is_han_at(std::size_t at) const {
    return at < artifacts_.folded.size() &&
           (is_han(artifacts_.folded[at]) || artifacts_.folded[at] == U'、');
  }

  bool has_long_number(std::size_t start, std::size_t stop) const {
    constexpr std::size_t LONG = 4;
    std::size_t digits = 0;
    for (std::size_t i = start; i < stop; ++i) {
      digits = text::is_ascii_digit(artifacts_.folded[i]) ? digits + 1 : 0;
      if (digits == LONG) return true;
    }
    return false;
  }

  void label_below_head(const Row& row) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (head_[i].is_label() && !row[i].is_label()) add(head_[i].label, row[i].start);
    }
  }

  void label_behind_first(const Row& row) {
    std::size_t label = LABEL_CLASSES;
    for (const Cell& cell : row) {
      if (cell.is_label()) {
        label = cell.label;
      } else if (label < LABEL_CLASSES) {
        add(label, cell.start);
      }
    }
  }

  void add(std::size_t label, std::size_t at) { found_[label].push_back({at, at, true}); }

  static void merge(std::vector<WordHit>& words, std::vector<WordHit>& more) {
    const auto by_start = [](const WordHit& a, const WordHit& b) { return a.start < b.start; };
    std::stable_sort(more.begin(), more.end(), by_start);
    std::vector<WordHit> merged;
    merged.reserve(words.size() + more.size());
    std::merge(words.begin(), words.end(), more.begin(), more.end(), std::back_inserter(merged),
               by_start);
    words = std::move(merged);
  }

  NlpArtifacts& artifacts_;
  std::size_t next_[LABEL_CLASSES] = {};
  std::vector<WordHit> found_[LABEL_CLASSES];
  Row head_;
};

}  // namespace

void add_table_labels(recognition::NlpArtifacts& artifacts) { TableReader(artifacts).read(); }

}  // namespace core::nlp
