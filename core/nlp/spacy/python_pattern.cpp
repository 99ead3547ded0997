#include "core/nlp/spacy/python_pattern.hpp"

#include <utility>

#include "core/text/unicode.hpp"

namespace core::nlp::spacy {
namespace {

// The ranges of is_python_space(), and what lies between them.
constexpr std::u32string_view SPACE_IN_CLASS =
    UR"(\x09-\x0D\x1C-\x20\x85\xA0\u1680\u2000-\u200A\u2028\u2029\u202F\u205F\u3000)";
constexpr std::u32string_view NO_SPACE_BELOW_3000_IN_CLASS =
    UR"(\x00-\x08\x0E-\x1B\x21-\x84\x86-\x9F\xA1-\u167F\u1681-\u1FFF\u200B-\u2027\u202A-\u202E\u2030-\u205E\u2060-\u2FFF)";

int hex_value(char32_t c) {
  if (text::is_ascii_digit(c)) return static_cast<int>(c - U'0');
  if (c >= U'a' && c <= U'f') return static_cast<int>(c - U'a' + 10);
  if (c >= U'A' && c <= U'F') return static_cast<int>(c - U'A' + 10);
  return -1;
}

class PatternTranslation {
 public:
  explicit PatternTranslation(std::u32string_view pattern) : rest_(pattern) {}

  std::u32string take() && {
    take_flags();
    while (!rest_.empty()) {
      const char32_t c = rest_.front();
      rest_.remove_prefix(1);
      if (c == U'\\') {
        take_escape();
      } else if (in_class_) {
        take_in_class(c);
      } else {
        take_outside(c);
      }
    }
    return std::move(out_);
  }

 private:
  // (?u) says what holds anyway; PCRE2 has no such flag.
  void take_flags() {
    const auto end = rest_.find(U')');
    if (!rest_.starts_with(U"(?") || end == rest_.npos) return;
    const auto flags = rest_.substr(2, end - 2);
    if (flags.find_first_not_of(U"aiLmsux") != flags.npos) return;
    std::u32string kept;
    for (const char32_t flag : flags) {
      if (flag != U'u') kept.push_back(flag);
    }
    if (!kept.empty()) out_ += U"(?" + kept + U")";
    rest_.remove_prefix(end + 1);
  }

  void take_escape() {
    first_in_class_ = false;
    if (rest_.empty()) return out_.push_back(U'\\');
    const char32_t c = rest_.front();
    rest_.remove_prefix(1);
    switch (c) {
      case U'u':
        return take_code_point(4);
      case U'U':
        return take_code_point(8);
      case U's':
        return put_class(SPACE_IN_CLASS, false);
      case U'S':
        return in_class_ ? put_no_space_in_class() : put_class(SPACE_IN_CLASS, true);
      case U'Z':
        out_ += in_class_ ? U"Z" : UR"(\z)";
        return;
      default:
        out_.push_back(U'\\');
        out_.push_back(c);
    }
  }

  void take_code_point(std::size_t digits) {
    char32_t value = 0;
    for (std::size_t i = 0; i < digits; ++i) {
      const int digit = i < rest_.size() ? hex_value(rest_[i]) : -1;
      if (digit < 0) {  // no code point: fails when it is compiled
        out_ += UR"(\p)";
        return;
      }
      value = value * 16 + static_cast<char32_t>(digit);
    }
    rest_.remove_prefix(digits);
    if (value < 0x80 && !text::is_ascii_alnum(value)) out_.push_back(U'\\');
    out_.push_back(value);
  }

  void put_class(std::u32string_view members, bool negated) {
    if (in_class_) {
      out_ += members;
      return;
    }
    out_ += negated ? U"[^" : U"[";
    out_ += members;
    out_ += U"]";
  }

  void put_no_space_in_class() {
    out_ += NO_SPACE_BELOW_3000_IN_CLASS;
    out_ += U"\u3001-";
    out_.push_back(0x10FFFF);
  }

  void take_in_class(char32_t c) {
    const bool first = std::exchange(first_in_class_, false);
    if (c == U']' && !first) {
      in_class_ = false;
    } else if (c == U'[') {  // [: would begin the name of a class
      out_.push_back(U'\\');
    }
    out_.push_back(c);
  }

  void take_outside(char32_t c) {
    out_.push_back(c);
    if (c == U'[') {
      in_class_ = true;
      first_in_class_ = true;
      if (rest_.starts_with(U"^")) {
        out_.push_back(U'^');
        rest_.remove_prefix(1);
      }
    } else if (c == U'{' && rest_.size() > 1 && rest_[0] == U',' &&
               text::is_ascii_digit(rest_[1])) {
      out_.push_back(U'0');
    }
  }

  std::u32string_view rest_;
  std::u32string out_;
  bool in_class_ = false;
  bool first_in_class_ = false;
};

}  // namespace

bool is_python_space(char32_t c) {
  if (c < 0x80) return c == U' ' || (c >= 9 && c <= 13) || (c >= 28 && c <= 31);
  return c != 0x180E && text::is_space(c);
}

std::u32string from_python_pattern(std::u32string_view pattern) {
  return PatternTranslation(pattern).take();
}

}  // namespace core::nlp::spacy
