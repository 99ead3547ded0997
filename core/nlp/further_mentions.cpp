#include <algorithm>
#include <deque>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "core/nlp/characters.hpp"
#include "core/nlp/chinese_lexicon.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/refinements.hpp"
#include "core/nlp/short_forms.hpp"
#include "core/nlp/span_cover.hpp"
#include "core/nlp/word_segmentation.hpp"
#include "core/text/multi_pattern.hpp"

namespace core::nlp {
namespace {

namespace entity_type = anonymization::entity_type;

constexpr double FURTHER_MENTION_SCORE = 0.55;

bool is_name_type(std::string_view type) {
  return type == entity_type::PERSON || type == entity_type::ORGANIZATION ||
         type == entity_type::LOCATION || type == entity_type::GPE;
}

bool is_blank(char32_t c) { return c == U' ' || c == U'\n' || c == U'\r'; }

// A letter that stands in words with blanks between them, or a digit.
bool is_word(char32_t c) {
  return is_latin_letter(c) || text::is_ascii_digit(c) || (c >= 0x370 && c < 0x600);
}

// A full stop or comma behind a Latin word: Pte. Ltd. is Pte Ltd.
bool is_stop_behind_word(std::u32string_view text, std::size_t i) {
  return (text[i] == U'.' || text[i] == U',') && i > 0 && is_latin_letter(text[i - 1]);
}

// What may stand in one spelling of a name and not in another.
bool is_filler(std::u32string_view text, std::size_t i) {
  return is_blank(text[i]) || is_stop_behind_word(text, i);
}

// A text without blanks, single line ends and stops behind words, in lower case, and
// where each of its characters stands in the text. The end of a cell or a paragraph
// stays.
class Squeezed {
 public:
  explicit Squeezed(std::u32string_view text) {
    squeezed_.resize(text.size());
    std::size_t size = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (!text::is_ideograph(text[i]) && is_left_out(text, i)) {
        gaps_.push_back(static_cast<std::uint32_t>(size));
      } else {
        squeezed_[size++] = lower(text[i]);
      }
    }
    squeezed_.resize(size);
  }

  std::u32string_view text() const { return squeezed_; }
  // Of a part of the squeezed text, where it begins and ends in the text.
  std::size_t start(std::size_t at) const {
    const auto behind = std::upper_bound(gaps_.begin(), gaps_.end(), at);
    return at + static_cast<std::size_t>(behind - gaps_.begin());
  }
  std::size_t end(std::size_t at) const { return start(at - 1) + 1; }

 private:
  static bool is_left_out(std::u32string_view text, std::size_t i) {
    return is_blank(text[i]) ? !ends_paragraph(text, i) : is_stop_behind_word(text, i);
  }

  // An empty line follows, or what is no word.
  static bool ends_paragraph(std::u32string_view text, std::size_t i) {
    if (text[i] != U'\n') return false;
    std::size_t next = i + 1;
    while (next < text.size() && text[next] == U' ') ++next;
    return next == text.size() || text[next] == U'\n' || text[next] == U'\r';
  }

  std::u32string squeezed_;
  std::vector<std::uint32_t> gaps_;  // where in it something was left out, each time
};

class Mentions {
 public:
  Mentions(const NlpArtifacts& a, std::vector<RecognizerResult> results)
      : a_(a), t_(a.folded), results_(std::move(results)) {}

  std::vector<RecognizerResult> run() {
    for (const auto& r : results_) {
      taken_.add(r.start, r.end);
      if (r.entity_type == entity_type::EMAIL_ADDRESS || r.entity_type == entity_type::URL ||
          r.entity_type == entity_type::SOCIAL_ACCOUNT) {
        network_.add(r.start, r.end);
      }
    }
    taken_.finish();
    network_.finish();
    collect();
    if (!keys_.empty()) search();
    drop_parts_of_mentions();
    return std::move(results_);
  }

 private:
  struct Found {
    std::size_t form;
    std::size_t start;
    std::size_t end;
  };

  void collect() {
    for (const auto& r : results_) {
      if (!is_name_type(r.entity_type)) continue;
      const auto surface = text::slice(t_, r.start, r.end);
      if (!seen_[r.entity_type].insert(surface).second) continue;
      if (may_spread(r, surface)) add({std::u32string(surface), r.entity_type, false});
      for (auto& form : short_forms_of(a_, r)) add(std::move(form));
    }
    for (auto& form : defined_short_forms(a_, results_)) add(std::move(form));
  }

  // The name of a place may be a part of other words; a whole address is not.
  static bool may_spread(const RecognizerResult& r, std::u32string_view surface) {
    constexpr std::size_t SHORTEST = 2;
    constexpr std::size_t SHORTEST_PLACE = 4;
    const bool place = r.entity_type == entity_type::LOCATION || r.entity_type == entity_type::GPE;
    if (r.entity_type == entity_type::PERSON && is_everyday_name(surface)) return false;
    return surface.size() >= (place ? SHORTEST_PLACE : SHORTEST);
  }

  // Of two kinds that share a spelling the first found counts.
  void add(ShortForm form) {
    key_.clear();
    for (std::size_t i = 0; i < form.surface.size(); ++i) {
      if (!is_filler(form.surface, i)) key_.push_back(lower(form.surface[i]));
    }
    if (key_.empty() || index_.contains(key_)) return;
    index_.insert(keys_.emplace_back(key_));
    forms_.push_back(std::move(form));
  }

  void search() {
    const Squeezed squeezed(t_);
    const std::vector<std::u32string_view> views(keys_.begin(), keys_.end());
    std::vector<Found> found;
    std::vector<bool> everyday(forms_.size());
    text::MultiPattern(views).scan(squeezed.text(), [&](const text::MultiPattern::Hit& hit) {
      const Found f{hit.pattern, squeezed.start(hit.start), squeezed.end(hit.end)};
      if (!stands_alone(f) || !is_spaced_well(f)) return;
      const bool single = forms_[f.form].surface.find(U' ') == std::u32string::npos;
      const auto start = static_cast<std::ptrdiff_t>(f.start);
      if (single && is_lower(t_[f.start])) {
        everyday[f.form] = everyday[f.form] || !network_.contains(start, start + 1);
      } else {
        found.push_back(f);
      }
    });
    sort_by_start(found);
    report(found, everyday);
  }

  // What was found comes by its ends, so that little stands far from its place.
  static void sort_by_start(std::vector<Found>& found) {
    constexpr std::size_t FEW = 4;
    const auto before = [](const Found& x, const Found& y) {
      return x.start != y.start ? x.start < y.start : x.end > y.end;
    };
    std::size_t moves = 0;
    for (std::size_t i = 1; i < found.size() && moves <= FEW * found.size(); ++i) {
      const Found at = found[i];
      std::size_t to = i;
      for (; to > 0 && before(at, found[to - 1]); --to, ++moves) found[to] = found[to - 1];
      found[to] = at;
    }
    if (moves > FEW * found.size()) std::sort(found.begin(), found.end(), before);
  }

  void report(const std::vector<Found>& found, const std::vector<bool>& everyday) {
    std::size_t covered = 0;
    results_.reserve(results_.size() + found.size());
    for (const Found& f : found) {
      const ShortForm& form = forms_[f.form];
      if (f.start < covered || (form.single_word && everyday[f.form])) continue;
      if (form.at_edge && !begins_phrase(f.start)) continue;
      if (taken_.contains(static_cast<std::ptrdiff_t>(f.start), static_cast<std::ptrdiff_t>(f.end)))
        continue;
      const std::size_t start =
          form.entity_type == entity_type::PERSON ? given_name_start(f.start) : f.start;
      const std::size_t end = whole_end(form, f.end);
      mentions_.add(static_cast<std::ptrdiff_t>(start), static_cast<std::ptrdiff_t>(end));
      results_.push_back(make_hit(form.entity_type, start, end, FURTHER_MENTION_SCORE));
      covered = end;
    }
  }

  // "Katarzyna" at the end of a line whose "Wolanski" stands on the next.
  void drop_parts_of_mentions() {
    mentions_.finish();
    std::erase_if(results_, [&](const auto& r) {
      return is_name_type(r.entity_type) && mentions_.contains_more_than(r.start, r.end);
    });
  }

  // The end of what belongs to the name: its branch, its legal form in any spelling.
  std::size_t whole_end(const ShortForm& form, std::size_t at) const {
    if (form.entity_type == entity_type::ORGANIZATION) {
      at = is_latin_letter(t_[at - 1]) ? legal_form_end(at) : branch_end(at);
    }
    const bool stop = form.surface.back() == U'.' && at < t_.size() && t_[at] == U'.';
    return stop ? at + 1 : at;
  }

  // Quillhaven Instruments + Corp.
  std::size_t legal_form_end(std::size_t at) const {
    std::size_t form = at;
    if (form < t_.size() && t_[form] == U',') ++form;
    if (form >= t_.size() || t_[form] != U' ') return at;
    const std::size_t end = end_of_word_at(a_.of(recognition::WordClass::EN_LEGAL_FORM), form + 1);
    return end > form + 1 ? end : at;
  }

  // Theodora + Blackmantle, Theodora J. + Blackmantle
  std::size_t given_name_start(std::size_t at) const {
    const auto& given = a_.of(recognition::WordClass::EN_GIVEN_NAME);
    if (at < 2 || t_[at - 1] != U' ' || !is_latin_letter(t_[at])) return at;
    std::size_t end = at - 1;
    if (end > 3 && t_[end - 1] == U'.' && is_upper(t_[end - 2]) && t_[end - 3] == U' ') end -= 3;
    const auto it = first_from(given, end);
    return it != given.begin() && std::prev(it)->end == end ? std::prev(it)->start : at;
  }

  // 驭川 + 遵义分公司: the branch belongs to the name.
  std::size_t branch_end(std::size_t at) const {
    constexpr std::size_t LONGEST_PLACE = 6;
    const auto& branches = a_.of(recognition::WordClass::BRANCH);
    const auto it = first_from(branches, at);
    if (it == branches.end() || it->start - at > LONGEST_PLACE) return at;
    for (std::size_t i = at; i < it->start; ++i) {
      if (!is_han(t_[i])) return at;
    }
    return is_touched(a_.of(recognition::WordClass::CLAUSE_WORD), at, it->start) ? at : it->end;
  }

  // Behind a mark or a word such as 由; a brand of two characters may stand in
  // any word by accident.
  bool begins_phrase(std::size_t at) const {
    constexpr std::u32string_view LINKS = U"由与和向或及对指";
    return at == 0 || !is_han(t_[at - 1]) || LINKS.find(t_[at - 1]) != LINKS.npos;
  }

  // Not inside a longer word: 王建国 not in 王建国际.
  bool stands_alone(const Found& f) const {
    if (f.start > 0 && is_word(t_[f.start]) && is_word(t_[f.start - 1])) return false;
    if (f.end < t_.size() && is_word(t_[f.end - 1]) && is_word(t_[f.end])) return false;
    constexpr std::size_t LONGEST_IN_WORD = 4;
    const ShortForm& form = forms_[f.form];
    return f.end - f.start > LONGEST_IN_WORD || !is_han(t_[f.start]) ||
           form.entity_type != entity_type::PERSON || !is_part_of_words(f.start, f.end);
  }

  // Whether the dictionary reads start..end as parts of other words, and what is left
  // of them makes no words by itself: 王建国 in 王建国际 (王|建|国际), for 际 is none. But
  // not in 王建国家里 (王|建|国家|里), for 家里 is one.
  bool is_part_of_words(std::size_t start, std::size_t end) const {
    const auto* first = word_at(a_.chinese_words, start);
    const auto* last = word_at(a_.chinese_words, end - 1);
    if (first == nullptr || last == nullptr) return false;
    const bool before = first->start < start;
    const bool behind = last->end > end;
    if (before && behind) return true;
    return (before && !ends_in_word(start)) || (behind && !begins_with_word(end));
  }

  bool begins_with_word(std::size_t at) const {
    return is_ordinary_word(t_.substr(at, 1)) || chinese_word(t_.substr(at, 2)).has_value();
  }
  bool ends_in_word(std::size_t at) const {
    return is_ordinary_word(t_.substr(at - 1, 1)) ||
           (at > 1 && chinese_word(t_.substr(at - 2, 2)).has_value());
  }

  // Blanks may stand between all ideographs of a name, and between the words of a
  // Latin one where it has its own. A line ends in no word and in no short name.
  bool is_spaced_well(const Found& f) const {
    const auto surface = t_.substr(f.start, f.end - f.start);
    const bool wrapped = surface.find_first_of(U"\n\r") != surface.npos;
    if (surface.size() == keys_[f.form].size()) return true;
    if (!is_word(surface.front())) {
      constexpr std::size_t SHORTEST_WRAPPED = 6;
      return !wrapped || keys_[f.form].size() >= SHORTEST_WRAPPED;
    }
    const std::u32string_view name = forms_[f.form].surface;
    std::size_t at = 0;
    for (std::size_t i = 0; i < surface.size();) {
      const std::size_t blanks = count_fillers(surface, i);
      const std::size_t own = count_fillers(name, at);
      if (blanks > 0 && own == 0 && is_word(surface[i - 1])) return false;
      i += blanks + 1;
      at += own + 1;
    }
    return true;
  }

  static std::size_t count_fillers(std::u32string_view s, std::size_t at) {
    std::size_t n = 0;
    while (at + n < s.size() && is_filler(s, at + n)) ++n;
    return n;
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  std::vector<RecognizerResult> results_;
  SpanCover taken_;
  SpanCover network_;
  SpanCover mentions_;
  std::deque<std::u32string> keys_;
  std::u32string key_;  // of the form at hand
  std::vector<ShortForm> forms_;
  std::unordered_set<std::u32string_view> index_;  // of keys_
  // The surfaces of each type
  std::unordered_map<std::string, std::unordered_set<std::u32string_view>> seen_;
};

}  // namespace

std::vector<RecognizerResult> add_further_mentions(const NlpArtifacts& artifacts,
                                                   std::vector<RecognizerResult> results) {
  return Mentions(artifacts, std::move(results)).run();
}

}  // namespace core::nlp
