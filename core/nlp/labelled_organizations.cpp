#include <optional>

#include "core/nlp/contract_language.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/more_organizations.hpp"
#include "core/text/regex.hpp"

namespace core::nlp {
namespace {

using recognition::NlpArtifacts;
using recognition::RecognizerResult;
using recognition::WordClass;
using text::Regex;

constexpr double SCORE = 0.6;

// Between the label of a party and its name: (盖章)：
const Regex RE_COLON("RE_COLON", UR"([ ]{0,3}(?:[(/][^()\n:]{1,20}[)]?)?[ ]{0,3}:[ ]{0,8})");

// Before the name of who signs
const Regex RE_BEHALF(
    "RE_BEHALF",
    UR"((?:(?<=\n)|(?<![\p{L}]))(?:[Ff]or and on behalf of|[Ss]igned (?:for and )?on behalf of|FOR AND ON BEHALF OF|ON BEHALF OF|[Oo]n behalf of)[ ]{1,3}(?:the )?(?:\p{Lu}[a-z]{4,12}: )?)");

class Search {
 public:
  explicit Search(const NlpArtifacts& a) : a_(a), t_(a.folded) {}

  void run(std::vector<RecognizerResult>& out) {
    for (const auto& label : a_.of(WordClass::ORGANIZATION_LABEL)) {
      if (label.from_table) {
        take(label.start, false, out);
      } else if (const auto colon = RE_COLON.match_at(t_, label.end)) {
        take(colon->end(), true, out);
      }
    }
    for (const auto& m : RE_BEHALF.find_all(t_)) take(m.end(), false, out);
  }

 private:
  void take(std::size_t at, bool in_field, std::vector<RecognizerResult>& out) const {
    if (at >= t_.size()) return;
    const auto end = is_han(t_[at]) ? (in_field ? chinese_end(at) : std::nullopt) : latin_end(at);
    if (end) out.push_back(make_hit(anonymization::entity_type::ORGANIZATION, at, *end, SCORE));
  }

  // A name in Chinese fills the field, and a trade or a place stands in it.
  std::optional<std::size_t> chinese_end(std::size_t at) const {
    constexpr std::size_t SHORTEST = 4;
    constexpr std::size_t LONGEST = 25;
    std::size_t end = at;
    while (end < t_.size() && end - at <= LONGEST && is_han(t_[end])) ++end;
    if (end - at < SHORTEST || end - at > LONGEST) return std::nullopt;
    const bool filled = end == t_.size() || is_cell_end(t_[end]) || t_[end] == U'(' ||
                        t_[end] == U' ' || t_[end] == U';' || t_[end] == U'；';
    const auto& trades = a_.of(WordClass::TRADE_WORD);
    const bool trade = is_touched(trades, at + 2, end) && is_touched(trades, end - 1, end);
    const bool other = is_touched(a_.of(WordClass::CLAUSE_WORD), at, end) ||
                       is_touched(a_.of(WordClass::CURRENCY), at, end) ||
                       is_touched(a_.of(WordClass::SHIELD), at, end);
    if (!filled || !trade || other) return std::nullopt;
    return end;
  }

  std::optional<std::size_t> latin_end(std::size_t at) const {
    constexpr int MOST_WORDS = 7;
    std::size_t end = at;
    int names = 0;
    for (int i = 0; i < MOST_WORDS; ++i) {
      const Token token = token_after(t_, end);
      if (token.empty() || (i == 0 && token.start != at)) break;
      const auto word = token.in(t_);
      const bool connective = is_connective(word) || word == U"&";
      if (!connective && !is_upper(word.front())) return std::nullopt;
      if (i == 0 && (connective || is_contract_language(word))) return std::nullopt;
      names += connective || is_contract_language(word) ? 0 : 1;
      end = token.end;
    }
    const bool place = end_of_word_at(a_.of(WordClass::EN_PLACE), at) >= end;
    if (names == 0 || place || !stops_at(end)) return std::nullopt;
    if (t_[end - 1] == U'.') --end;
    return end;
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
};

}  // namespace

void add_labelled_organizations(const NlpArtifacts& artifacts, std::vector<RecognizerResult>& out) {
  Search(artifacts).run(out);
}

}  // namespace core::nlp
