#include "core/nlp/name_abbreviations.hpp"

#include <cstdint>
#include <unordered_map>
#include <unordered_set>

#include "core/nlp/characters.hpp"
#include "core/nlp/chinese_lexicon.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/name_pieces.hpp"
#include "core/nlp/span_cover.hpp"
#include "core/nlp/word_segmentation.hpp"

namespace core::nlp {
namespace {

using recognition::NlpArtifacts;
using recognition::RecognizerResult;
using recognition::WordClass;
namespace entity_type = anonymization::entity_type;

constexpr std::size_t BRAND = 2;
constexpr std::size_t SHORTEST_NAME = 6;
constexpr std::size_t SHORTEST = 3;
// Of the words of the lists, that no company takes for a brand alone
constexpr unsigned COMMON = 22;
constexpr std::size_t LONGEST = 8;
// Names with one brand; where there are more, it is a word like any other.
constexpr std::size_t MOST_ALIKE = 16;

// Where the characters from which names are shortened begin.
class Abbreviations {
 public:
  Abbreviations(const NlpArtifacts& a, const std::vector<RecognizerResult>& results)
      : a_(a), t_(a.folded), reader_(a) {
    std::unordered_set<std::u32string_view> seen;
    for (const auto& r : results) {
      if (r.entity_type != entity_type::ORGANIZATION) continue;
      taken_.add(r.start, r.end);
      const auto name = text::slice(t_, r.start, r.end);
      if (seen.insert(name).second) add_name(name, static_cast<std::size_t>(r.start));
    }
    taken_.finish();
  }

  void run(std::vector<ShortForm>& out) const {
    if (names_.empty()) return;
    std::unordered_set<std::u32string_view> found;
    for (std::size_t i = 0; i + SHORTEST <= t_.size(); ++i) {
      if (!is_han(t_[i]) || !first_[t_[i] % FIRST]) continue;
      const auto names = names_.find(key(i));
      if (names == names_.end() || names->second.size() > MOST_ALIKE) continue;
      const std::size_t length = longest(i, names->second);
      if (length == 0) continue;
      const auto form = t_.substr(i, length);
      if (found.insert(form).second) {
        out.push_back({std::u32string(form), std::string(entity_type::ORGANIZATION)});
      }
      i += length - 1;
    }
  }

 private:
  static constexpr std::size_t FIRST = 4096;

  struct Name {
    std::u32string_view rest;  // behind the brand
    bool place = false;        // begins with a place, so that the brand is none
    bool unknown = false;      // the brand is no everyday word
  };

  std::uint64_t key(std::size_t at) const {
    return std::uint64_t{t_[at]} << 32U | std::uint64_t{t_[at + 1]};
  }

  void add_name(std::u32string_view name, std::size_t start) {
    const std::size_t end = start + name.size();
    if (name.size() < SHORTEST_NAME || !is_han(name.front())) return;
    add_from(start, end, reader_.place_end(start) > start);
    std::size_t brand = start;
    while (reader_.place_end(brand) > brand) brand = reader_.place_end(brand);
    if (brand > start && brand + BRAND < end) add_from(brand, end, false);
  }

  void add_from(std::size_t at, std::size_t end, bool place) {
    if (at + BRAND >= end || !is_han(t_[at]) || !is_han(t_[at + 1])) return;
    const auto* const word = word_at(a_.chinese_words, at);
    const bool unknown = word != nullptr && !word->known() && word->start == at;
    // 质量检测 is no short form of 绍兴市质量技术监督检测院.
    if (!place && !unknown && (word == nullptr || word->frequency > COMMON)) return;
    names_[key(at)].push_back({t_.substr(at + BRAND, end - at - BRAND), place, unknown});
    first_[t_[at] % FIRST] = true;
  }

  // How many characters at `at` abbreviate one of the names; 0 if none does.
  std::size_t longest(std::size_t at, const std::vector<Name>& names) const {
    if (!is_word_boundary(a_.chinese_words, at)) return 0;
    std::size_t best = 0;
    for (const Name& name : names) {
      std::size_t end = at + BRAND;
      std::size_t next = 0;
      while (end < t_.size() && end - at < LONGEST) {
        next = name.rest.find(t_[end], next);
        if (next == name.rest.npos) break;
        ++next;
        ++end;
      }
      // 顺冰达|应保证: the sentence goes on.
      constexpr std::u32string_view SENTENCE = U"应将须可在为与及由对以向未已";
      while (end > at + BRAND && SENTENCE.find(t_[end - 1]) != SENTENCE.npos) --end;
      const std::size_t length = end - at;
      const std::size_t needed = name.place ? SHORTEST + 1 : SHORTEST;
      if (length < needed || length <= best || !fits(at, end, name)) continue;
      best = length;
    }
    return best;
  }

  bool fits(std::size_t start, std::size_t end, const Name& name) const {
    if (taken_.touches(static_cast<std::ptrdiff_t>(start), static_cast<std::ptrdiff_t>(end))) {
      return false;
    }
    if (!reader_.is_right_edge(end) || is_ordinary_word(t_.substr(start, end - start)))
      return false;
    std::size_t place = start;
    while (reader_.place_end(place) > place) place = reader_.place_end(place);
    // 北京仲裁 is no short form of 北京仲裁委员会.
    if (place >= end || (place > start && are_ordinary_words(a_.chinese_words, place, end))) {
      return false;
    }
    return name.unknown || !are_ordinary_words(a_.chinese_words, start, end) ||
           is_touched(a_.of(WordClass::TRADE_WORD), end - 1, end);
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  NamePieceReader reader_;
  SpanCover taken_;
  std::unordered_map<std::uint64_t, std::vector<Name>> names_;
  std::vector<bool> first_ = std::vector<bool>(FIRST);
};

}  // namespace

void add_abbreviations(const NlpArtifacts& artifacts, const std::vector<RecognizerResult>& results,
                       std::vector<ShortForm>& out) {
  Abbreviations(artifacts, results).run(out);
}

}  // namespace core::nlp
