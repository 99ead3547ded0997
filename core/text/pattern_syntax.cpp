#include "core/text/pattern_syntax.hpp"

#include <algorithm>
#include <string>

#include <unicode/uset.h>

#include "core/text/unicode.hpp"

namespace core::text {

CharacterSet tidied(CharacterSet set) {
  std::sort(set.begin(), set.end());
  CharacterSet out;
  for (const auto& [low, high] : set) {
    if (!out.empty() && (low <= out.back().second || low - 1 == out.back().second)) {
      out.back().second = std::max(out.back().second, high);
    } else {
      out.emplace_back(low, high);
    }
  }
  return out;
}

CharacterSet complement(const CharacterSet& set) {
  CharacterSet out;
  char32_t next = 0;
  for (const auto& [low, high] : set) {
    if (low > next) out.emplace_back(next, low - 1);
    if (high == GREATEST_CHARACTER) return out;
    next = high + 1;
  }
  out.emplace_back(next, GREATEST_CHARACTER);
  return out;
}

namespace {

using Kind = PatternNode::Kind;
constexpr char32_t LAST = GREATEST_CHARACTER;
constexpr unsigned DEEPEST = 100;

void add(CharacterSet& to, const CharacterSet& more) {
  to.insert(to.end(), more.begin(), more.end());
}

CharacterSet ranges_of(const USet* icu) {
  CharacterSet out;
  for (int32_t i = 0; i < uset_getItemCount(icu); ++i) {
    UChar32 low = 0;
    UChar32 high = 0;
    UErrorCode error = U_ZERO_ERROR;
    if (uset_getItem(icu, i, &low, &high, nullptr, 0, &error) != 0) continue;  // a string
    out.emplace_back(static_cast<char32_t>(low), static_cast<char32_t>(high));
  }
  return out;
}

CharacterSet by_property(std::u16string_view icu_pattern) {
  UErrorCode error = U_ZERO_ERROR;
  USet* icu =
      uset_openPattern(icu_pattern.data(), static_cast<int32_t>(icu_pattern.size()), &error);
  if (U_FAILURE(error)) return {{0, LAST}};
  CharacterSet out = ranges_of(icu);
  uset_close(icu);
  return out;
}

// Hundreds of ranges would make hundreds of classes of characters. Where a set holds
// something of these scripts, which contracts seldom use, it gets all of them.
CharacterSet widened(CharacterSet set) {
  static constexpr std::pair<char32_t, char32_t> SELDOM[] = {
      {0x100, 0x1FFF}, {0x2E80, 0x2FFF}, {0x3040, 0x4DFF}, {0xA000, 0xFDFF}, {0x10000, LAST}};
  CharacterSet more;
  for (const auto& zone : SELDOM) {
    const bool meets = std::any_of(set.begin(), set.end(), [&](const auto& range) {
      return range.first <= zone.second && range.second >= zone.first;
    });
    if (meets) more.push_back(zone);
  }
  add(set, more);
  return tidied(std::move(set));
}

const CharacterSet& decimal_digits() {
  static const CharacterSet set = widened(by_property(u"[:Nd:]"));
  return set;
}

const CharacterSet& white_space() {
  static const CharacterSet set = by_property(u"[[:White_Space:]\\u180E]");
  return set;
}

const CharacterSet& letters() {
  static const CharacterSet set = widened(by_property(u"[:L:]"));
  return set;
}

const CharacterSet& capitals() {
  static const CharacterSet set = widened(by_property(u"[:Lu:]"));
  return set;
}

const CharacterSet& numbers() {
  static const CharacterSet set = widened(by_property(u"[:N:]"));
  return set;
}

const CharacterSet& horizontal_space() {
  static const CharacterSet set = by_property(u"[[:Zs:]\\u0009\\u180E]");
  return set;
}

const CharacterSet WORD = {{U'0', U'9'}, {U'A', U'Z'}, {U'_', U'_'}, {U'a', U'z'}, {0x80, LAST}};
const CharacterSet ASCII_WORD = {{U'0', U'9'}, {U'A', U'Z'}, {U'_', U'_'}, {U'a', U'z'}};
const CharacterSet ASCII_CAPITALS = {{U'A', U'Z'}};
const CharacterSet ASCII_LETTERS = {{U'A', U'Z'}, {U'a', U'z'}};
const CharacterSet ANY = {{0, LAST}};

// Ideographs and what stands among them know no case.
bool is_caseless(char32_t low, char32_t high) {
  return (high < 0x80) || (low >= 0x2E80 && high <= 0xA4CF);
}

// Ranges as large as whole scripts have nearly all of their letters in both cases.
bool is_large(char32_t low, char32_t high) { return high - low > 0x200; }

// What the letters of such ranges fold to outside them: ſ and K to s and k.
const CharacterSet OTHER_CASES = {{U'A', U'Z'},     {U'a', U'z'},      {0xB5, 0xB5},
                                  {0xC0, 0x1FFF},   {0x2126, 0x218F},  {0x24B6, 0x24E9},
                                  {0x2C00, 0x2D2F}, {0xA640, 0xABFF},  {0xFB00, 0xFB06},
                                  {0xFF21, 0xFF5A}, {0x10400, 0x1E943}};

CharacterSet with_cases_of_icu(const CharacterSet& set) {
  CharacterSet out = set;
  USet* icu = uset_openEmpty();
  for (const auto& [low, high] : set) {
    if (is_caseless(low, high) && low >= 0x80) continue;
    if (is_large(low, high)) {
      add(out, OTHER_CASES);
      continue;
    }
    uset_addRange(icu, static_cast<UChar32>(std::min<char32_t>(low, 0x10FFFF)),
                  static_cast<UChar32>(std::min<char32_t>(high, 0x10FFFF)));
  }
  uset_closeOver(icu, USET_CASE_INSENSITIVE);
  add(out, ranges_of(icu));
  uset_close(icu);
  return out;
}

CharacterSet with_both_cases(const CharacterSet& set) {
  const bool simple = std::all_of(set.begin(), set.end(), [](const auto& range) {
    return is_caseless(range.first, range.second);
  });
  if (!simple) return with_cases_of_icu(set);
  CharacterSet out = set;
  for (const auto& [low, high] : set) {
    for (char32_t c = low; c <= high && c < 0x80; ++c) {
      if (is_ascii_alpha(c)) out.emplace_back(c ^ 0x20U, c ^ 0x20U);
      if ((c | 0x20U) == U'k') out.emplace_back(0x212A, 0x212A);
      if ((c | 0x20U) == U's') out.emplace_back(0x17F, 0x17F);
    }
  }
  return out;
}

// A class, or one item of it: what it takes at most and at least. The second is
// needed where a class is negated.
struct Bounds {
  CharacterSet most;
  CharacterSet least;
};

Bounds exactly(const CharacterSet& set) { return {set, set}; }

struct Flags {
  bool caseless = false;
  bool extended = false;
};

class Reader {
 public:
  explicit Reader(std::u32string_view pattern) : pattern_(pattern) {}

  std::optional<PatternNode> read() {
    Flags flags;
    PatternNode root = choice(flags, 0);
    if (failed_ || at_ != pattern_.size()) return std::nullopt;
    return root;
  }

 private:
  bool done() const { return failed_ || at_ >= pattern_.size(); }
  char32_t peek(std::size_t ahead = 0) const {
    return at_ + ahead < pattern_.size() ? pattern_[at_ + ahead] : U'\0';
  }
  bool take(std::u32string_view word) {
    if (pattern_.substr(at_, word.size()) != word) return false;
    at_ += word.size();
    return true;
  }
  void skip_behind(char32_t end) {
    while (at_ < pattern_.size() && pattern_[at_] != end) ++at_;
    if (at_ < pattern_.size()) {
      ++at_;
    } else {
      failed_ = true;
    }
  }

  static PatternNode unknown() { return {.kind = Kind::UNKNOWN}; }
  static PatternNode taking(CharacterSet set, CharacterSet least = {}) {
    return {.kind = Kind::SET, .set = tidied(std::move(set)), .least = tidied(std::move(least))};
  }
  static PatternNode literal(char32_t c, const Flags& flags) {
    const CharacterSet set = {{c, c}};
    return taking(flags.caseless ? with_both_cases(set) : set, set);
  }

  // Ends before ")" or at the end. Flags set in it hold to its end.
  PatternNode choice(Flags& flags, unsigned depth) {
    PatternNode out{.kind = Kind::CHOICE};
    if (depth > DEEPEST) failed_ = true;
    out.parts.push_back(sequence(flags, depth));
    while (!done() && peek() == U'|') {
      ++at_;
      out.parts.push_back(sequence(flags, depth));
    }
    return out;
  }

  PatternNode sequence(Flags& flags, unsigned depth) {
    PatternNode out{.kind = Kind::SEQUENCE};
    while (!done() && peek() != U'|' && peek() != U')') {
      if (flags.extended && skip_extended()) continue;
      PatternNode part = atom(flags, depth);
      while (flags.extended && skip_extended()) {
      }
      out.parts.push_back(quantified(std::move(part)));
    }
    return out;
  }

  bool skip_extended() {
    if (peek() == U'#') {
      while (at_ < pattern_.size() && pattern_[at_] != U'\n') ++at_;
      return true;
    }
    if (done() || !is_space(peek())) return false;
    ++at_;
    return true;
  }

  std::optional<unsigned> number() {
    if (!is_ascii_digit(peek())) return std::nullopt;
    unsigned value = 0;
    while (is_ascii_digit(peek())) {
      value = std::min(value * 10 + static_cast<unsigned>(peek() - U'0'), 100'000U);
      ++at_;
    }
    return value;
  }

  // {3}, {3,}, {3,5}; anything else in braces is literal.
  bool braces(unsigned& min, unsigned& max) {
    const std::size_t before = at_;
    if (take(U"{")) {
      if (const auto low = number()) {
        min = max = *low;
        if (take(U",")) max = number().value_or(PatternNode::UNLIMITED);
        if (take(U"}")) return true;
      }
    }
    at_ = before;
    return false;
  }

  PatternNode quantified(PatternNode part) {
    for (;;) {
      unsigned min = 0;
      unsigned max = PatternNode::UNLIMITED;
      if (take(U"+")) {
        min = 1;
      } else if (take(U"?")) {
        max = 1;
      } else if (!take(U"*") && !braces(min, max)) {
        return part;
      }
      if (!take(U"?")) take(U"+");  // lazy and possessive ones take no more
      PatternNode repeat{.kind = Kind::REPEAT, .min = min, .max = max};
      repeat.parts.push_back(std::move(part));
      part = std::move(repeat);
    }
  }

  PatternNode atom(Flags& flags, unsigned depth) {
    const char32_t c = peek();
    switch (c) {
      case U'(':
        return group(flags, depth);
      case U'[': {
        ++at_;
        return character_class(flags);
      }
      case U'\\':
        ++at_;
        return escape(flags);
      case U'.':
        ++at_;
        return taking({{0, U'\n' - 1}, {U'\n' + 1, LAST}});
      case U'^':
      case U'$':
        ++at_;
        return {};
      default:
        ++at_;
        return literal(c, flags);
    }
  }

  PatternNode group(Flags& flags, unsigned depth) {
    take(U"(");
    if (peek() == U'*') failed_ = true;
    if (!take(U"?")) return inside(flags, depth);
    if (take(U":") || take(U">") || take(U"|")) return inside(flags, depth);
    if (take(U"=")) {
      PatternNode ahead{.kind = Kind::AHEAD};
      ahead.parts.push_back(inside(flags, depth));
      return ahead;
    }
    for (const auto& [sign, kind] :
         {std::pair(U"<=", Kind::BEHIND), std::pair(U"<!", Kind::NOT_BEHIND)}) {
      if (!take(sign)) continue;
      PatternNode behind{.kind = kind};
      behind.parts.push_back(inside(flags, depth));
      return behind;
    }
    if (take(U"!")) {
      inside(flags, depth);
      return {};
    }
    if (take(U"#")) {
      skip_behind(U')');
      return {};
    }
    if (take(U"P<") || take(U"<")) {
      skip_behind(U'>');
      return inside(flags, depth);
    }
    if (take(U"'")) {
      skip_behind(U'\'');
      return inside(flags, depth);
    }
    if (take(U"(")) return conditional(flags, depth);
    if (is_flag(peek())) return with_flags(flags, depth);
    skip_behind(U')');  // a call of another group, or a back reference
    return unknown();
  }

  PatternNode inside(Flags flags, unsigned depth) {
    PatternNode out = choice(flags, depth + 1);
    if (!take(U")")) failed_ = true;
    return out;
  }

  PatternNode conditional(Flags flags, unsigned depth) {
    const bool definition = take(U"DEFINE)");
    if (!definition) {
      if (take(U"?=") || take(U"?!") || take(U"?<=") || take(U"?<!")) {
        inside(flags, depth);
      } else {
        skip_behind(U')');
      }
    }
    PatternNode out = inside(flags, depth);
    if (definition) return {};
    out.parts.emplace_back();  // neither branch
    return out;
  }

  static bool is_flag(char32_t c) {
    return std::u32string_view(U"imsxnJU-^").find(c) != std::u32string_view::npos && c != 0;
  }

  PatternNode with_flags(Flags& flags, unsigned depth) {
    Flags changed = flags;
    bool on = true;
    for (; is_flag(peek()); ++at_) {
      if (peek() == U'-') on = false;
      if (peek() == U'^') changed = Flags();
      if (peek() == U'i') changed.caseless = on;
      if (peek() == U'x') changed.extended = on;
      if (peek() == U's') failed_ = true;  // "." is read without it
    }
    if (take(U":")) return inside(changed, depth);
    if (!take(U")")) {  // no flags after all: (?i is followed by something else
      failed_ = true;
      return unknown();
    }
    flags = changed;
    return {};
  }

  std::optional<char32_t> hex(std::size_t digits) {
    char32_t value = 0;
    for (std::size_t i = 0; i < digits; ++i) {
      const char32_t c = peek(i);
      const char32_t lower = c | 0x20U;
      if (is_ascii_digit(c)) {
        value = value * 16 + (c - U'0');
      } else if (lower >= U'a' && lower <= U'f') {
        value = value * 16 + (lower - U'a' + 10);
      } else {
        return std::nullopt;
      }
    }
    at_ += digits;
    return value;
  }

  static std::optional<char32_t> control(char32_t c) {
    switch (c) {
      case U't':
        return U'\t';
      case U'n':
        return U'\n';
      case U'r':
        return U'\r';
      case U'f':
        return U'\f';
      default:
        return std::nullopt;
    }
  }

  // Behind "\": one character, if that is what it stands for.
  std::optional<char32_t> escaped_character() {
    const char32_t c = peek();
    if (!is_ascii_alnum(c)) {
      ++at_;
      return c;
    }
    if (const auto plain = control(c)) {
      ++at_;
      return plain;
    }
    if (c == U'u' || c == U'x') {
      ++at_;
      if (const auto value = hex(c == U'u' ? 4 : 2)) return value;
      --at_;
    }
    return std::nullopt;
  }

  // Behind "\": a set of characters, if that is what it stands for.
  std::optional<Bounds> escaped_set(const Flags& flags) {
    const char32_t c = peek();
    const auto taken = [&](Bounds bounds) {
      ++at_;
      return bounds;
    };
    switch (c) {
      case U'd':
        return taken({decimal_digits(), {{U'0', U'9'}}});
      case U's':
        return taken(exactly(white_space()));
      case U'h':
        return taken({horizontal_space(), {{U' ', U' '}, {U'\t', U'\t'}}});
      case U'w':
        return taken({WORD, ASCII_WORD});
      case U'D':
        return taken({complement({{U'0', U'9'}}), {}});
      case U'S':
        return taken({complement(tidied(white_space())), {}});
      case U'W':
        return taken({complement(ASCII_WORD), {}});
      case U'H':
      case U'N':
      case U'R':
      case U'V':
      case U'v':
        return taken({ANY, {}});
      case U'p':
        return property(flags);
      case U'P':
        property(flags);
        return Bounds{ANY, {}};
      default:
        return std::nullopt;
    }
  }

  std::optional<Bounds> property(const Flags& flags) {
    ++at_;
    if (!take(U"{")) {
      ++at_;
      return Bounds{ANY, {}};
    }
    const std::size_t start = at_;
    skip_behind(U'}');
    if (failed_) return std::nullopt;
    const auto name = pattern_.substr(start, at_ - 1 - start);
    if (name == U"L") return Bounds{letters(), ASCII_LETTERS};
    if (name == U"Lu") return Bounds{flags.caseless ? letters() : capitals(), ASCII_CAPITALS};
    if (name == U"Ll") return Bounds{letters(), {}};
    if (name == U"Latin") return Bounds{ANY, ASCII_LETTERS};
    if (name == U"N") return Bounds{numbers(), {}};
    return Bounds{ANY, {}};
  }

  PatternNode escape(const Flags& flags) {
    if (const auto set = escaped_set(flags)) return taking(set->most, set->least);
    if (const auto c = escaped_character()) return literal(*c, flags);
    const char32_t c = peek();
    ++at_;
    if (std::u32string_view(U"bBAzZGK").find(c) != std::u32string_view::npos) return {};
    if (c == U'Q' || c == U'E') failed_ = true;
    if ((c == U'k' || c == U'g') &&
        std::u32string_view(U"{<'").find(peek()) != std::u32string_view::npos) {
      skip_behind(peek() == U'{' ? U'}' : peek() == U'<' ? U'>' : U'\'');
    } else {
      while (is_ascii_digit(peek())) ++at_;
    }
    return unknown();
  }

  // Behind "[".
  PatternNode character_class(const Flags& flags) {
    const bool negated = take(U"^");
    Bounds all;
    bool first = true;
    while (!done() && (first || peek() != U']')) {
      first = false;
      if (peek() == U'[' && (peek(1) == U':' || peek(1) == U'.' || peek(1) == U'=')) {
        failed_ = true;
        return unknown();
      }
      class_item(flags, all);
    }
    if (!take(U"]")) failed_ = true;
    if (negated) return taking(complement(tidied(all.least)));
    return taking(flags.caseless ? with_both_cases(all.most) : all.most, all.least);
  }

  void class_item(const Flags& flags, Bounds& all) {
    std::optional<char32_t> low;
    if (take(U"\\")) {
      if (const auto set = escaped_set(flags)) {
        add(all.most, set->most);
        add(all.least, set->least);
        return;
      }
      low = take(U"b") ? U'\b' : escaped_character();
      if (!low) failed_ = true;
    } else {
      low = peek();
      ++at_;
    }
    char32_t high = low.value_or(0);
    if (low && peek() == U'-' && peek(1) != U']' && at_ + 1 < pattern_.size())
      high = upper_end(high);
    if (!low || high < *low) return;
    all.most.emplace_back(*low, high);
    all.least.emplace_back(*low, high);
  }

  // At the "-" behind `low`: the upper end of the range; `low` where the "-" stands
  // for itself.
  char32_t upper_end(char32_t low) {
    const std::size_t before = at_;
    ++at_;
    if (!take(U"\\")) {
      ++at_;
      return pattern_[at_ - 1];
    }
    if (const auto c = escaped_character()) return *c;
    at_ = before;
    return low;
  }

  std::u32string_view pattern_;
  std::size_t at_ = 0;
  bool failed_ = false;
};

}  // namespace

std::optional<PatternNode> read_pattern(std::u32string_view pattern) {
  return Reader(pattern).read();
}

}  // namespace core::text
