#include <utility>

#include "core/nlp/characters.hpp"
#include "core/nlp/refinements.hpp"
#include "core/text/regex.hpp"

namespace core::nlp {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// A figure: digits with the separators between them, or a number in characters:
// 1,000.50; 壹拾万; 二百
const Regex RE_FIGURE(
    "RE_FIGURE",
    UR"(\d(?:[,，. \u00a0]?\d)*+|[零〇一二三四五六七八九十两壹贰叁肆伍陆柒捌玖拾])"
    UR"([零〇一二三四五六七八九十百千万亿两壹贰叁肆伍陆柒捌玖拾佰仟]*+)");

// From the first figure to the second: 元-, 万元至人民币, " to USD ". Not the sign or
// the bracket of a single amount: USD -5, 壹佰元(100元)
const Regex RE_RANGE("RE_RANGE",
                     UR"(([^-~～至到]*?)(?:[-~～至到]|\b(?:to|and|or|through)\b)[^0-9]*)");

// What may stand of the second amount before its figure: "USD ", ￥, (人民币
const Regex RE_BEFORE_FIGURE(
    "RE_BEFORE_FIGURE",
    UR"((?:[(（]? ?(?:[A-Z]{2,3}|人民币|美元|港币|欧元)? ?[$¥€£￥]? ?[-−(（]?)$)");

// The smaller units behind 100元: 5角, 5角2分
const Regex RE_SMALLER_UNITS("RE_SMALLER_UNITS", UR"( ?\d{1,2} ?[角毛](?: ?\d{1,2} ?分)?(?!之))");

class Splitter {
 public:
  Splitter(const NlpArtifacts& a, std::vector<RecognizerResult>& out) : t_(a.folded), out_(out) {}

  void split(const RecognizerResult& r) {
    const auto start = static_cast<std::size_t>(r.start);
    const auto surface = text::slice(t_, r.start, r.end);
    const auto figures = RE_FIGURE.find_all(surface);
    std::size_t from = 0;
    for (std::size_t i = 1; i < figures.size(); ++i) {
      const std::size_t cut = border(surface, figures[i - 1], figures[i]);
      if (cut <= from) continue;
      add(r, start + from, start + cut);
      from = cut;
    }
    add(r, start + from, static_cast<std::size_t>(r.end));
    const auto end = static_cast<std::size_t>(r.end);
    const bool yuan = t_[end - 1] == U'元' || t_[end - 1] == U'块';
    if (const auto m = yuan ? RE_SMALLER_UNITS.match_at(t_, end) : std::nullopt) {
      RecognizerResult rest = r;
      rest.start = r.end;
      rest.end = static_cast<std::ptrdiff_t>(m->end());
      split(rest);
    }
  }

 private:
  // Where the amount of the second figure begins; 0 if both are of one amount.
  static std::size_t border(std::u32string_view surface, const text::Match& first,
                            const text::Match& second) {
    const auto gap = surface.substr(first.end(), second.start() - first.end());
    if (const auto range = RE_RANGE.full_match(gap)) return first.end() + range->end(1);
    const bool digits = text::is_decimal_digit(surface[first.start()]) &&
                        text::is_decimal_digit(surface[second.start()]);
    // Where a number in characters is part of an amount, all of it is masked.
    if (!digits || gap.find_first_of(U"百千万亿") != gap.npos) return 0;
    const auto before = RE_BEFORE_FIGURE.search(gap);
    return first.end() + (before ? before->start() : gap.size());
  }

  // Without the blanks and the mark of the range at its edges.
  void add(const RecognizerResult& r, std::size_t start, std::size_t end) {
    const auto is_edge = [](char32_t c) {
      return c == U' ' || c == U'~' || c == U'至' || c == U'到' || c == U',' || c == U'，';
    };
    if (start > static_cast<std::size_t>(r.start)) {
      while (start < end && is_edge(t_[start])) ++start;
      if (t_[start] == U'-') ++start;
      for (const std::u32string_view word : {U"to ", U"and ", U"or ", U"through "}) {
        if (t_.substr(start, word.size()) == word) start += word.size();
      }
      while (start < end && is_edge(t_[start])) ++start;
    }
    while (end > start && end < static_cast<std::size_t>(r.end) && is_edge(t_[end - 1])) --end;
    if (start >= end) return;
    out_.push_back(r);
    out_.back().start = static_cast<std::ptrdiff_t>(start);
    out_.back().end = static_cast<std::ptrdiff_t>(end);
  }

  std::u32string_view t_;
  std::vector<RecognizerResult>& out_;
};

}  // namespace

std::vector<RecognizerResult> split_amounts(const NlpArtifacts& artifacts,
                                            std::vector<RecognizerResult> results) {
  std::vector<RecognizerResult> out;
  out.reserve(results.size());
  Splitter splitter(artifacts, out);
  for (auto& r : results) {
    if (r.entity_type == entity_type::MONEY) {
      splitter.split(r);
    } else {
      out.push_back(std::move(r));
    }
  }
  return out;
}

}  // namespace core::nlp
