#include "core/evaluation/labelled_document.hpp"

#include <algorithm>

#include "core/errors.hpp"
#include "core/text/unicode.hpp"

namespace core::evaluation {
namespace {

constexpr std::u32string_view OPEN = U"<<";
constexpr std::u32string_view CLOSE = U">>";
constexpr auto NONE = std::u32string_view::npos;

bool is_type_character(char32_t c) {
  return (c >= U'A' && c <= U'Z') || text::is_ascii_digit(c) || c == U'_';
}

std::string ascii(std::u32string_view text) { return {text.begin(), text.end()}; }

class Parser {
 public:
  explicit Parser(std::u32string_view labelled) : rest_(labelled) {}

  LabelledDocument parse() && {
    while (!rest_.empty()) {
      const std::size_t open = find_open();
      take(open, "\">>\" without a mark");
      if (rest_.empty()) break;
      rest_.remove_prefix(OPEN.size());
      read_mark();
    }
    return std::move(document_);
  }

 private:
  // In <<<EMAIL_ADDRESS#1:a@b.cn>>> the first and the last sign are of the text.
  std::size_t find_open() const {
    std::size_t open = std::min(rest_.find(OPEN), rest_.size());
    while (rest_.substr(std::min(open + 1, rest_.size())).starts_with(OPEN)) ++open;
    return open;
  }

  [[noreturn]] void fail(const std::string& why) const {
    throw ValueError("line " + std::to_string(line_) + ": " + why);
  }

  // Takes text over, in which no frame may end.
  void take(std::size_t length, const char* if_closed) {
    for (std::size_t i = 0; i < length; ++i) {
      if (rest_.substr(i).starts_with(CLOSE)) fail(if_closed);
      if (rest_[i] == U'\n') ++line_;
    }
    document_.text += rest_.substr(0, length);
    rest_.remove_prefix(length);
  }

  void read_mark() {
    Mark mark;
    const bool optional = rest_.starts_with(U"?");
    if (optional) rest_.remove_prefix(1);
    mark.type = ascii(take_while(is_type_character));
    if (mark.type.empty()) fail("a mark without a type in capital letters");
    if (rest_.starts_with(U"#")) {
      rest_.remove_prefix(1);
      mark.number = ascii(take_while(text::is_ascii_digit));
      if (mark.number.empty()) fail("a mark with \"#\" and no number");
      if (optional) fail("an optional mark with a number");
    } else if (!optional) {
      fail("a mark without a number; an optional one begins with \"<<?\"");
    }
    if (!rest_.starts_with(U":")) fail("a mark without \":\" behind its type and number");
    rest_.remove_prefix(1);
    read_surface(std::move(mark));
  }

  void read_surface(Mark mark) {
    // Not searched to the end of the text: a surface ends in its line.
    const auto line_end = std::min(rest_.find_first_of(U"\n\t"), rest_.size());
    const auto length = rest_.substr(0, line_end).find(CLOSE);
    if (length == NONE) fail("a mark that does not end with \">>\" in its line and cell");
    if (length == 0) fail("a mark without text");
    if (rest_.substr(0, length).find(OPEN) != NONE) fail("a mark inside a mark");
    mark.start = static_cast<Offset>(document_.text.size());
    document_.text += rest_.substr(0, length);
    mark.end = static_cast<Offset>(document_.text.size());
    document_.marks.push_back(std::move(mark));
    rest_.remove_prefix(length + CLOSE.size());
  }

  template <class Predicate>
  std::u32string_view take_while(Predicate predicate) {
    const auto* end = std::find_if_not(rest_.begin(), rest_.end(), predicate);
    const auto length = static_cast<std::size_t>(end - rest_.begin());
    const auto taken = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return taken;
  }

  std::u32string_view rest_;
  std::size_t line_ = 1;
  LabelledDocument document_;
};

}  // namespace

LabelledDocument parse_labelled(std::u32string_view labelled) { return Parser(labelled).parse(); }

}  // namespace core::evaluation
