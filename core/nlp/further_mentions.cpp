#include <unordered_map>

#include "core/nlp/characters.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/name_finders.hpp"
#include "core/nlp/short_forms.hpp"
#include "core/nlp/span_cover.hpp"
#include "core/text/multi_pattern.hpp"

namespace core::nlp {
namespace {

namespace entity_type = anonymization::entity_type;

constexpr double SCORE = 0.55;

bool is_name_type(std::string_view type) {
  return type == entity_type::PERSON || type == entity_type::ORGANIZATION ||
         type == entity_type::LOCATION;
}

std::u32string lowered(std::u32string_view s) {
  std::u32string out(s);
  for (char32_t& c : out) c = lower(c);
  return out;
}

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
      constexpr std::size_t SHORTEST = 2;
      if (surface.size() >= SHORTEST && r.entity_type != entity_type::LOCATION) {
        add({std::u32string(surface), r.entity_type, false});
      }
      for (auto& form : short_forms_of(a_, r)) add(std::move(form));
    }
    for (auto& form : defined_short_forms(a_, results_)) add(std::move(form));
  }

  // Of two kinds that share a spelling the first found counts.
  void add(ShortForm form) {
    std::u32string key = lowered(form.surface);
    if (!index_.try_emplace(key, keys_.size()).second) return;
    keys_.push_back(std::move(key));
    forms_.push_back(std::move(form));
  }

  void search() {
    const std::vector<std::u32string_view> views(keys_.begin(), keys_.end());
    std::vector<Found> found;
    std::vector<bool> everyday(forms_.size());
    text::MultiPattern(views).scan(
        t_,
        [&](const text::MultiPattern::Hit& hit) {
          if (!stands_alone(hit.start, hit.end)) return;
          const bool latin = is_latin_letter(t_[hit.start]);
          const auto start = static_cast<std::ptrdiff_t>(hit.start);
          if (latin && is_lower(t_[hit.start])) {
            everyday[hit.pattern] = everyday[hit.pattern] || !network_.contains(start, start + 1);
          } else {
            found.push_back({hit.pattern, hit.start, hit.end});
          }
        },
        lower);
    std::sort(found.begin(), found.end(), [](const Found& x, const Found& y) {
      return x.start != y.start ? x.start < y.start : x.end > y.end;
    });
    report(found, everyday);
  }

  void report(const std::vector<Found>& found, const std::vector<bool>& everyday) {
    std::size_t covered = 0;
    for (const Found& f : found) {
      const ShortForm& form = forms_[f.form];
      if (f.start < covered || (form.single_word && everyday[f.form])) continue;
      if (form.at_edge && !begins_phrase(f.start)) continue;
      if (taken_.contains(static_cast<std::ptrdiff_t>(f.start), static_cast<std::ptrdiff_t>(f.end)))
        continue;
      const std::size_t end =
          form.entity_type == entity_type::ORGANIZATION ? branch_end(f.end) : f.end;
      results_.push_back(make_hit(form.entity_type, f.start, end, SCORE));
      covered = end;
    }
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

  // Not inside a longer word in Latin letters.
  bool stands_alone(std::size_t start, std::size_t end) const {
    const bool before = start > 0 && is_word(t_[start]) && is_word(t_[start - 1]);
    const bool behind = end < t_.size() && is_word(t_[end - 1]) && is_word(t_[end]);
    return !before && !behind;
  }

  static bool is_word(char32_t c) { return is_latin_letter(c) || text::is_ascii_digit(c); }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  std::vector<RecognizerResult> results_;
  SpanCover taken_;
  SpanCover network_;
  std::vector<std::u32string> keys_;
  std::vector<ShortForm> forms_;
  std::unordered_map<std::u32string, std::size_t> index_;
};

}  // namespace

std::vector<RecognizerResult> add_further_mentions(const NlpArtifacts& artifacts,
                                                   std::vector<RecognizerResult> results) {
  return Mentions(artifacts, std::move(results)).run();
}

}  // namespace core::nlp
