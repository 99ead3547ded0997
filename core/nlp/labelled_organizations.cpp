#include <optional>

#include "core/nlp/contract_language.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/latin_lexicon.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/more_organizations.hpp"
#include "core/nlp/name_pieces.hpp"
#include "core/nlp/vocabulary.hpp"
#include "core/nlp/word_segmentation.hpp"
#include "core/text/regex.hpp"

namespace core::nlp {
namespace {

using recognition::NlpArtifacts;
using recognition::RecognizerResult;
using recognition::WordClass;
using text::Regex;

constexpr double LABELLED_ORGANIZATION_SCORE = 0.6;

// Between the label of a party and its name: (盖章)：
const Regex RE_COLON("RE_COLON", UR"([ ]{0,3}(?:[(/][^()\n:]{1,20}[)]?)?[ ]{0,3}:[ ]{0,8})");

// Before the name of who signs
const Regex RE_BEHALF(
    "RE_BEHALF",
    UR"((?:(?<=\n)|(?<![\p{L}]))(?:[Ff]or and on behalf of|[Ss]igned (?:for and )?on behalf of|FOR AND ON BEHALF OF|ON BEHALF OF|[Oo]n behalf of)[ ]{1,3}(?:the )?(?:\p{Lu}[a-z]{4,12}: )?)",
    Regex::Scanned::YES);

class LabelledOrganizationSearch {
 public:
  explicit LabelledOrganizationSearch(const NlpArtifacts& a) : a_(a), t_(a.folded), reader_(a) {}

  void run(std::vector<RecognizerResult>& out) {
    for (const auto& label : a_.of(WordClass::ORGANIZATION_LABEL)) {
      if (label.from_table) {
        take(label.start, false, out);
      } else if (const auto colon = RE_COLON.match_at(t_, label.end)) {
        take(colon->end(), true, out);
      }
    }
    for (const auto& m : RE_BEHALF.find_all(t_, a_.index)) take(m.end(), false, out);
  }

 private:
  void take(std::size_t at, bool in_field, std::vector<RecognizerResult>& out) const {
    if (at >= t_.size()) return;
    const auto end = is_han(t_[at]) ? chinese_end(at, in_field) : latin_end(at);
    if (end)
      out.push_back(make_hit(anonymization::entity_type::ORGANIZATION, at, *end,
                             LABELLED_ORGANIZATION_SCORE));
  }

  // A name in Chinese fills the field or the cell, and a trade, a place or a brand stands in it.
  std::optional<std::size_t> chinese_end(std::size_t at, bool in_field) const {
    constexpr std::size_t SHORTEST = 4;
    constexpr std::size_t LONGEST = 30;
    std::size_t end = at;
    while (end < t_.size() && end - at <= LONGEST && is_han(t_[end])) ++end;
    if (end - at < SHORTEST || end - at > LONGEST) return std::nullopt;
    const bool filled = end == t_.size() || is_cell_end(t_[end]) || t_[end] == U'(' ||
                        t_[end] == U' ' || t_[end] == U';' || t_[end] == U'；' ||
                        (in_field && t_[end] == U'。');
    const auto& trades = a_.of(WordClass::TRADE_WORD);
    const bool trade = is_touched(trades, at + 2, end) && is_touched(trades, end - 1, end);
    const bool other = is_touched(a_.of(WordClass::CLAUSE_WORD), at, end) ||
                       is_touched(a_.of(WordClass::CURRENCY), at, end) ||
                       is_touched(a_.of(WordClass::SHIELD), at, end);
    if (filled && in_field && is_full_name(at, end)) return end;
    if (!filled || other) return std::nullopt;
    return (trade && in_field) || is_particular(at, end, in_field) ? std::optional(end)
                                                                   : std::nullopt;
  }

  // 好日子有为食品有限公司: whatever words a company chose for its name
  bool is_full_name(std::size_t start, std::size_t end) const {
    constexpr std::size_t SHORTEST_NAME = 4;
    const auto ends_in = [&](WordClass c) {
      const auto it = first_from(a_.of(c), end);
      return it != a_.of(c).begin() && std::prev(it)->end == end &&
             std::prev(it)->start >= start + SHORTEST_NAME;
    };
    if (!ends_in(WordClass::COMPANY_FORM) && !ends_in(WordClass::BRANCH)) return false;
    const auto& clauses = a_.of(WordClass::CLAUSE_WORD);
    for (auto it = first_from(clauses, start); it != clauses.end() && it->start < end; ++it) {
      constexpr std::u32string_view PARTICLES = U"的与由";
      if (it->end - it->start > 1 || PARTICLES.find(t_[it->start]) != PARTICLES.npos) return false;
    }
    return true;
  }

  // 泾川汭丰合作联社: a place and a brand; 铂犀众联: behind a colon, a brand that is no person.
  bool is_particular(std::size_t start, std::size_t end, bool in_field) const {
    constexpr std::size_t LONGEST_PERSON = 4;
    constexpr std::size_t SHORTEST_BRAND = 2;
    const NamePieces name = reader_.before(end, start);
    if (name.empty() || name.pieces.front().start != start) return false;
    const std::size_t brand = NamePieceReader::brand_length(name);
    if (name.pieces.front().kind == PieceKind::PLACE) {
      // 浙江省 and 浙江宁波 are places.
      if (is_place_end(t_[end - 1])) return false;
      // 债务人：唐山三友
      constexpr std::size_t LONGEST_BRAND = 4;
      const std::size_t own = end - std::min(end, reader_.place_end(start));
      return brand >= SHORTEST_BRAND ||
             (in_field && own >= SHORTEST_BRAND && own <= LONGEST_BRAND &&
              !are_ordinary_words(a_.chinese_words, end - own, end));
    }
    const bool person = end - start <= LONGEST_PERSON && (is_chinese_surname(t_.substr(start, 1)) ||
                                                          is_chinese_surname(t_.substr(start, 2)));
    return in_field && brand >= SHORTEST_BRAND && brand < end - start && !person &&
           is_touched(a_.of(WordClass::TRADE_WORD), start + SHORTEST_BRAND, end);
  }

  static bool is_place_end(char32_t c) {
    constexpr std::u32string_view ENDS = U"省市区县镇乡村组路街道号室楼层巷弄栋幢园港岛";
    return ENDS.find(c) != ENDS.npos;
  }

  std::optional<std::size_t> latin_end(std::size_t at) const {
    constexpr int MOST_WORDS = 7;
    if (t_[at] == U' ') return std::nullopt;
    const auto first = token_after(t_, at).in(t_);
    if (is_connective(first) || first == U"&" || is_contract_language(first)) return std::nullopt;
    std::size_t end = at;
    int names = 0;
    for (int i = 0; i < MOST_WORDS; ++i) {
      const Token token = token_after(t_, end);
      if (token.empty()) break;
      const auto word = token.in(t_);
      const bool connective = is_connective(word) || word == U"&";
      if (!connective && !is_upper(word.front())) return std::nullopt;
      names += connective || is_contract_language(word) ? 0 : 1;
      end = token.end;
      if (ends_sentence(at, end)) break;
    }
    if (names > 0 && ends_sentence(at, end)) return end - 1;
    const bool place = end_of_word_at(a_.of(WordClass::EN_PLACE), at) >= end;
    if (names == 0 || place || is_person(at, end) || !stops_at(end)) return std::nullopt;
    if (t_[end - 1] == U'.') --end;
    return end;
  }

  // Knight & Hallam. The
  bool ends_sentence(std::size_t at, std::size_t end) const {
    constexpr std::size_t ABBREVIATION = 5;
    if (end == at || end >= t_.size() || t_[end - 1] != U'.' || t_[end] != U' ') return false;
    const Token last = token_before(t_, end);
    return last.start >= at && last.end - last.start > ABBREVIATION &&
           !is_covered(a_.of(WordClass::EN_LEGAL_FORM), last.start, last.end);
  }

  // Agent: Chiara Morandelli
  bool is_person(std::size_t at, std::size_t end) const {
    const Token first = token_after(t_, at);
    const Token second = token_after(t_, first.end);
    if (second.end != end || second.empty()) return false;
    const auto facts = latin_word(first.in(t_));
    const auto last = latin_name_class(second.in(t_));
    const bool given =
        facts.name_class == LatinNameClass::GIVEN || facts.name_class == LatinNameClass::BOTH;
    return given && !facts.name_is_common_word && last != LatinNameClass::PROPER &&
           !is_common_english_word(second.in(t_), 3) &&
           !is_covered(a_.of(WordClass::EN_ORGANIZATION_HEAD), second.start, second.end);
  }

  bool stops_at(std::size_t end) const {
    if (end >= t_.size()) return true;
    constexpr std::u32string_view STOPS = U",;(:/\n\t\r\"，；";
    std::size_t next = end;
    while (next < t_.size() && t_[next] == U' ') ++next;
    return next >= t_.size() || STOPS.find(t_[next]) != STOPS.npos || is_cell_end(t_[next]) ||
           is_han(t_[next]);
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  NamePieceReader reader_;
};

}  // namespace

void add_labelled_organizations(const NlpArtifacts& artifacts, std::vector<RecognizerResult>& out) {
  LabelledOrganizationSearch(artifacts).run(out);
}

}  // namespace core::nlp
