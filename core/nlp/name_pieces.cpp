#include "core/nlp/name_pieces.hpp"

#include <algorithm>

#include "core/nlp/characters.hpp"
#include "core/nlp/chinese_lexicon.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/word_segmentation.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::ChineseWord;
using recognition::ChineseWordClass;
using recognition::WordClass;

constexpr std::size_t LONGEST_PIECED_NAME = 40;
// 天津 (滨海) in a name, not a remark
constexpr std::size_t LONGEST_BRACKET = 12;

// Words of running text that may as well be the first character of a brand (和泰).
constexpr std::u32string_view NAME_LINKS =
    U"和同为经以至如可来有于去自要作是按据到系在即过待赴往找接送寄派报住租卖买借缴领拉劝催替帮靠未付交存告设";

// Characters of running text of which brands are made, too: 海之声, 你我他
constexpr std::u32string_view BRAND_CHARACTERS = U"之我你她他这";

// A character before a place that belongs to the sentence.
bool is_link(char32_t c) { return NAME_LINKS.find(c) != NAME_LINKS.npos; }

// Whether a name is left that does without what stands before its pieces (the last
// piece first): a place, or two characters before a word for a trade.
bool leaves_a_name(const std::vector<NamePiece>& last_first) {
  constexpr std::size_t SHORTEST_BRAND = 2;
  std::size_t brand = 0;
  for (auto it = last_first.rbegin(); it != last_first.rend(); ++it) {
    if (it->kind == PieceKind::PLACE) return true;
    if (it->kind == PieceKind::TRADE) break;
    brand += it->end - it->start;
  }
  return brand >= SHORTEST_BRAND;
}

// Whether the pieces (the last one first) say what a company does, without a brand.
bool goes_on_without_brand(const std::vector<NamePiece>& last_first) {
  constexpr std::size_t SHORTEST_BRAND = 2;
  std::size_t brand = 0;
  bool words = false;
  for (const NamePiece& piece : last_first) {
    if (piece.kind == PieceKind::PLACE) return false;
    if (piece.kind == PieceKind::BRAND) brand += piece.end - piece.start;
    words = words || piece.kind == PieceKind::TRADE || piece.end - piece.start > 1;
  }
  return words && brand < SHORTEST_BRAND;
}

// Whether the end of an organization's name lies in start..end: 教育局与财政局
bool ends_in_body(const recognition::NlpArtifacts& a, std::size_t start, std::size_t end) {
  for (const auto c : {WordClass::PUBLIC_BODY, WordClass::INSTITUTION, WordClass::PLAIN_COMPANY,
                       WordClass::BANK, WordClass::BRANCH}) {
    if (is_touched(a.of(c), start, end)) return true;
  }
  return false;
}

}  // namespace

NamePieceReader::NamePieceReader(const recognition::NlpArtifacts& artifacts)
    : a_(artifacts), t_(artifacts.folded) {}

NamePieces NamePieceReader::before(std::size_t end, std::size_t floor, bool of_body) const {
  NamePieces out;
  for (std::size_t at = end; end - at < LONGEST_PIECED_NAME;) {
    const auto piece = piece_before(at, floor, out.pieces, of_body);
    if (!piece) {
      out.at_edge = true;
      break;
    }
    out.pieces.push_back(*piece);
    at = piece->start;
  }
  std::reverse(out.pieces.begin(), out.pieces.end());
  return out;
}

std::optional<NamePiece> NamePieceReader::piece_before(std::size_t end, std::size_t floor,
                                                       const std::vector<NamePiece>& last_first,
                                                       bool of_body) const {
  if (end <= floor) return std::nullopt;
  const char32_t c = t_[end - 1];
  if (is_han(c)) {
    const Word word = word_before(end, floor);
    const bool link = end - word.start == 1 && is_link(c) && word.kind != PieceKind::PLACE;
    if ((word.stop || (link && leaves_a_name(last_first))) &&
        !is_in_brand(word, end, floor, last_first) &&
        !(of_body && (c == U'与' || c == U'及') && joins_fields(end - 1, floor))) {
      return std::nullopt;
    }
    return NamePiece{word.start, end, word.kind};
  }
  const auto is_letter = [](char32_t x) { return text::is_ascii_alpha(x) || x == U'·'; };
  if (is_letter(c)) {
    std::size_t start = end;
    while (start > floor && is_letter(t_[start - 1])) --start;
    return NamePiece{start, end, PieceKind::BRAND};
  }
  const std::size_t open = c == U')' ? opening_bracket(end - 1, floor) : end;
  if (open < end - 1) return NamePiece{open, end, PieceKind::OTHER};
  const bool blank = c == U' ' && end >= floor + 2 && is_han(t_[end - 2]) &&
                     (last_first.empty() || t_[end] == U'(');
  return blank ? std::optional(NamePiece{end - 1, end, PieceKind::OTHER}) : std::nullopt;
}

// 之 in 海口海之声会展服务, 小姐 in 三亚鹿小姐文化传播, 展示 in 广州大榕树展示工程: a word of
// running text shortly behind a place, where what follows it has no brand of its own.
bool NamePieceReader::is_in_brand(const Word& word, std::size_t end, std::size_t floor,
                                  const std::vector<NamePiece>& last_first) const {
  constexpr std::size_t LONGEST_HEAD = 4;
  const bool single = end - word.start == 1;
  const bool link = single && is_link(t_[word.start]);
  if (single && !link && BRAND_CHARACTERS.find(t_[word.start]) == BRAND_CHARACTERS.npos) {
    return false;
  }
  if (!goes_on_without_brand(last_first)) return false;
  if (ends_clause_word(end)) return false;
  for (std::size_t at = word.start; word.start - at <= LONGEST_HEAD && at > floor; --at) {
    if (const std::size_t place = place_before(at, floor); place < at) {
      // 五常市|拉|林河畔: the name fills the field; 与宁波|放心|吃食品
      if (at < word.start) return names_nobody(at, word.start);
      constexpr std::u32string_view BEFORE_PARTIES = U"与由向";
      const bool field = place == 0 || !is_han(t_[place - 1]);
      const bool led = field || BEFORE_PARTIES.find(t_[place - 1]) != BEFORE_PARTIES.npos ||
                       ends_clause_word(place);
      return link ? field : led;
    }
    if (!is_han(t_[at - 1])) break;
  }
  return false;
}

bool NamePieceReader::ends_clause_word(std::size_t end) const {
  const auto& clauses = a_.of(WordClass::CLAUSE_WORD);
  const auto it = first_from(clauses, end);
  return it != clauses.begin() && std::prev(it)->end == end;
}

// 大榕树, 海, but not 客户: no words for those of whom a sentence may speak.
bool NamePieceReader::names_nobody(std::size_t start, std::size_t end) const {
  constexpr unsigned COMMON = 17;
  constexpr std::u32string_view BODIES = U"厂店局部所院校站处行社队场库仓人方司户商";
  const auto& words = a_.chinese_words;
  for (std::size_t i = word_index(words, start); i < words.size() && words[i].start < end; ++i) {
    const auto surface = t_.substr(words[i].start, words[i].length());
    const bool single =
        surface.size() == 1 && BRAND_CHARACTERS.find(surface.front()) != BRAND_CHARACTERS.npos;
    if ((!single && is_prose_word(surface)) || BODIES.find(surface.back()) != BODIES.npos)
      return false;
    if (words[i].length() > 1 && words[i].frequency > COMMON) return false;
  }
  return true;
}

// 江西省护理|与|静脉治疗学会: a place, and nothing but its fields behind it.
bool NamePieceReader::joins_fields(std::size_t at, std::size_t floor) const {
  constexpr std::size_t LONGEST_FIELDS = 8;
  constexpr std::size_t SHORTEST_FIELD = 2;
  for (std::size_t i = at; i > floor && at - i <= LONGEST_FIELDS; --i) {
    if (const std::size_t place = place_before(i, floor); place < i) {
      return at - i >= SHORTEST_FIELD && is_name_text(i, at) && !ends_in_body(a_, i, at);
    }
    if (!is_han(t_[i - 1])) return false;
  }
  return false;
}

NamePieceReader::Word NamePieceReader::word_before(std::size_t end, std::size_t floor) const {
  if (const std::size_t place = place_before(end, floor); place < end) {
    return {place, PieceKind::PLACE};
  }
  const ChineseWord* const word = word_at(a_.chinese_words, end - 1);
  if (word == nullptr) return {end - 1, PieceKind::BRAND};
  const std::size_t start = std::max<std::size_t>(word->start, floor);
  const bool whole = word->end == end && word->start == start;
  const auto surface = t_.substr(start, end - start);
  if (is_clause_word(start, end)) return {start, PieceKind::WORD, true};
  const auto& trades = a_.of(WordClass::TRADE_WORD);
  if (is_covered(trades, start, end)) return {start, PieceKind::TRADE};
  // 实验|室: the word goes on in the ending.
  if (!whole) return {start, PieceKind::WORD};
  if (is_prose_word(surface)) {
    constexpr unsigned COMMON = 24;
    const bool brand =
        word->length() > 1 && word->frequency < COMMON && stands_behind_place(start, floor);
    return {start, brand ? PieceKind::BRAND : PieceKind::WORD, !brand};
  }
  switch (word->word_class) {
    case ChineseWordClass::PLACE:
      return {start, PieceKind::PLACE};
    case ChineseWordClass::ORDINARY:
      return {start, PieceKind::WORD};
    default:
      return {start, PieceKind::BRAND};
  }
}

// 雁归来 in 昆明雁归来冷链: a rare verb between a place and the rest.
bool NamePieceReader::stands_behind_place(std::size_t at, std::size_t floor) const {
  constexpr std::size_t LONGEST_BRAND = 1;
  for (std::size_t n = 0; n <= LONGEST_BRAND && at > floor + n; ++n) {
    if (place_before(at - n, floor) < at - n) return true;
    if (!is_han(t_[at - n - 1])) return false;
  }
  return false;
}

// Whether a word that announces no name ends at `end`; start..end is a word of the text.
bool NamePieceReader::is_clause_word(std::size_t start, std::size_t end) const {
  const auto& clauses = a_.of(WordClass::CLAUSE_WORD);
  const auto it = first_from(clauses, end);
  if (it == clauses.begin() || std::prev(it)->end != end) return false;
  // 自由, 理由: no preposition in a longer word.
  return std::prev(it)->start <= start || is_prose_word(t_.substr(start, end - start));
}

// Where the place begins that ends at `end`; `end` if none does.
std::size_t NamePieceReader::place_before(std::size_t end, std::size_t floor) const {
  const auto& places = a_.of(WordClass::PLACE);
  const auto it = first_from(places, end);
  if (it != places.begin()) {
    const auto& place = *std::prev(it);
    if (place.end == end && place.start >= floor &&
        !is_covered(a_.of(WordClass::SHIELD), place.start, place.end)) {
      return place.start;
    }
  }
  const ChineseWord* const word = end > 0 ? word_at(a_.chinese_words, end - 1) : nullptr;
  const bool place = word != nullptr && word->end == end && word->start >= floor &&
                     word->word_class == ChineseWordClass::PLACE &&
                     !is_covered(a_.of(WordClass::SHIELD), word->start, word->end);
  return place ? word->start : end;
}

// The bracket that is closed at `close`, if what it holds may stand in a name; or `close`.
std::size_t NamePieceReader::opening_bracket(std::size_t close, std::size_t floor) const {
  for (std::size_t i = close; i > floor && close - i < LONGEST_BRACKET; --i) {
    const char32_t c = t_[i - 1];
    if (c == U'(') {
      const bool behind_name = i >= floor + 2 && (is_han(t_[i - 2]) || t_[i - 2] == U' ');
      return behind_name && close > i ? i - 1 : close;
    }
    if (!is_han(c)) return close;
  }
  return close;
}

bool NamePieceReader::is_name_text(std::size_t start, std::size_t end) const {
  for (std::size_t i = start; i < end; ++i) {
    if (!is_han(t_[i])) return false;
  }
  if (is_touched(a_.of(WordClass::CLAUSE_WORD), start, end)) return false;
  for (std::size_t i = word_index(a_.chinese_words, start);
       i < a_.chinese_words.size() && a_.chinese_words[i].start < end; ++i) {
    const ChineseWord& word = a_.chinese_words[i];
    if (word.start < start || word.end > end) continue;
    const auto surface = t_.substr(word.start, word.length());
    if (is_prose_word(surface) || surface == U"和" || surface == U"同") return false;
  }
  return true;
}

bool NamePieceReader::is_right_edge(std::size_t at) const {
  if (at >= t_.size() || !is_han(t_[at])) return true;
  if (!is_word_boundary(a_.chinese_words, at)) return false;
  const ChineseWord* const word = word_at(a_.chinese_words, at);
  if (word == nullptr) return true;
  const auto surface = t_.substr(word->start, word->length());
  // 未经澜图科技书面同意
  static constexpr auto BEHIND_NAMES = text::words(
      {U"书面",   U"事先",   U"方面", U"员工",     U"工作人员", U"负责人", U"股东",   U"名下",
       U"旗下",   U"内部",   U"董事", U"代表",     U"账户",     U"门店",   U"工程师", U"总监",
       U"经理",   U"总经理", U"主任", U"项目经理", U"司机",     U"会计",   U"业务员", U"技术员",
       U"设计师", U"采购员", U"牧民", U"村民",     U"居民",     U"农户",   U"社员",   U"农民"});
  if (BEHIND_NAMES.contains(surface)) return true;
  return is_prose_word(surface) || (surface.size() == 1 && is_link(surface.front())) ||
         end_of_word_at(a_.of(WordClass::CLAUSE_WORD), at) > at;
}

std::size_t NamePieceReader::place_end(std::size_t at) const {
  const std::size_t listed = end_of_word_at(a_.of(WordClass::PLACE), at);
  if (listed > at) return is_covered(a_.of(WordClass::SHIELD), at, listed) ? at : listed;
  const ChineseWord* const word = word_at(a_.chinese_words, at);
  return word != nullptr && word->start == at && word->word_class == ChineseWordClass::PLACE
             ? word->end
             : at;
}

std::size_t NamePieceReader::brand_length(const NamePieces& name) {
  std::size_t longest = 0;
  std::size_t run = 0;
  for (const NamePiece& piece : name.pieces) {
    run = piece.kind == PieceKind::BRAND ? run + piece.end - piece.start : 0;
    longest = std::max(longest, run);
  }
  return longest;
}

}  // namespace core::nlp
