#include <vector>

#include "core/nlp/characters.hpp"
#include "core/nlp/vocabulary.hpp"
#include "core/text/lexicon.hpp"

namespace core::text::lexicon_data {
extern const std::string_view traditional_characters;
}  // namespace core::text::lexicon_data

namespace core::nlp {
namespace {

bool is_chinese_stop(char32_t c) { return c == U'，' || c == U'；' || c == U'！' || c == U'？'; }

bool is_dash(char32_t c) {
  return (c >= 0x2010 && c <= 0x2015) || c == 0x2212 || c == 0x30FC || c == 0xFE58;
}

// 臺 as 台, so that the lists of words need to hold each word once.
class Simplified {
 public:
  static const Simplified& instance() {
    static const Simplified table;
    return table;
  }

  char32_t of(char32_t c) const {
    return c >= FIRST && c - FIRST < to_.size() ? to_[c - FIRST] : c;
  }

 private:
  static constexpr char32_t FIRST = 0x4E00;
  static constexpr char32_t LAST = 0x9FFF;

  Simplified() : to_(LAST - FIRST + 1) {
    for (std::size_t i = 0; i < to_.size(); ++i) to_[i] = FIRST + static_cast<char32_t>(i);
    for (const auto& row : text::lexicon_rows(text::lexicon_data::traditional_characters)) {
      to_[row.at(0).front() - FIRST] = row.at(1).front();
    }
  }

  std::vector<char32_t> to_;
};

char32_t fold_one(const Simplified& simplified, char32_t c) {
  if (c < 0x80) return c == U'\v' || c == U'\f' ? U' ' : c;
  if (text::is_ideograph(c)) return simplified.of(c);
  if (c >= 0xFF01 && c <= 0xFF5E) return is_chinese_stop(c) ? c : c - 0xFF01 + U'!';
  if (c == 0xFFE5) return U'¥';
  if (c == 0xFFE1) return U'£';
  if (is_dash(c)) return U'-';
  if (c == 0x2019 || c == 0x2018) return U'\'';
  return c != 0x85 && c != 0x2028 && c != 0x2029 && text::is_space(c) ? U' ' : c;
}

}  // namespace

std::u32string fold_width(std::u32string_view text) {
  const Simplified& simplified = Simplified::instance();
  std::u32string out(text);
  for (char32_t& c : out) c = fold_one(simplified, c);
  return out;
}

}  // namespace core::nlp
