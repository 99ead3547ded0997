#include <algorithm>
#include <utility>

#include "core/nlp/characters.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/refinements.hpp"
#include "core/text/regex.hpp"

namespace core::nlp {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// What is left of an address behind its street: 88号3栋1205室, A座 12层, ，3号楼5室
const Regex RE_HOUSE(
    "RE_HOUSE",
    UR"((?:[,，]? ?(?:[A-Za-z]?\d{1,5}(?:-\d{1,5}){0,2}[A-Za-z]?|[A-Za-z])(?:号楼|号院|号|弄|楼|层|室|栋|座|幢|单元|房))+)");

// Chinese addresses go from the large to the small.
int level_of(char32_t c) {
  switch (c) {
    case U'省':
      return 1;
    case U'市':
    case U'州':
    case U'盟':
      return 2;
    case U'区':
    case U'县':
    case U'旗':
      return 3;
    case U'镇':
    case U'乡':
      return 4;
    case U'村':
    case U'道':
    case U'路':
    case U'街':
    case U'巷':
    case U'弄':
      return 5;
    case U'号':
    case U'园':
    case U'院':
      return 6;
    case U'楼':
    case U'栋':
    case U'座':
    case U'幢':
      return 7;
    case U'层':
    case U'室':
    case U'房':
      return 8;
    default:
      return 0;
  }
}

constexpr int PROVINCE = 1;
constexpr int STREET = 5;

bool is_place(const RecognizerResult& r) {
  return r.entity_type == entity_type::LOCATION || r.entity_type == entity_type::GPE ||
         r.entity_type == entity_type::ADDRESS;
}

bool has_digit(std::u32string_view s) {
  return std::any_of(s.begin(), s.end(), text::is_ascii_digit);
}

class Joiner {
 public:
  explicit Joiner(const NlpArtifacts& a) : a_(a), t_(a.folded) {}

  // Whether `right`, which does not begin before `left`, goes on with its address.
  bool goes_on(const RecognizerResult& left, const RecognizerResult& right) const {
    if (right.start < left.end) return right.end > left.end;
    constexpr std::ptrdiff_t WIDEST_GAP = 3;
    if (right.start - left.end > WIDEST_GAP) return false;
    const auto gap = text::slice(t_, left.end, right.start);
    if (gap.find_first_not_of(U" ,，") != gap.npos) return false;
    const auto a = text::slice(t_, left.start, left.end);
    const auto b = text::slice(t_, right.start, right.end);
    if (is_latin_letter(a.back()) || is_latin_letter(b.front())) {
      return !gap.empty() && latin(left, right);
    }
    return (is_han(b.front()) || text::is_ascii_digit(b.front())) && chinese(a, b, gap);
  }

  // The end of the house number behind an address that ends in its street.
  std::ptrdiff_t house_end(const RecognizerResult& r) const {
    const auto end = static_cast<std::size_t>(r.end);
    if (level_of(t_[end - 1]) < STREET) return r.end;
    const auto m = RE_HOUSE.match_at(t_, end);
    return m ? static_cast<std::ptrdiff_t>(m->end()) : r.end;
  }

 private:
  static bool chinese(std::u32string_view a, std::u32string_view b, std::u32string_view gap) {
    int last = 0;
    for (const char32_t c : a) last = std::max(last, level_of(c));
    int first = level_of(b.back());
    for (std::size_t i = b.size(); i-- > 1;) {
      if (const int level = level_of(b[i]); level > 0) first = level;
    }
    if (first == PROVINCE) return false;
    const bool narrower = first > last;
    if (!gap.empty()) return last > 0 && narrower && (gap == U" " || has_digit(b));
    return narrower || (last > 0 && (first == 0 || first == last || has_digit(b)));
  }

  // 12 Main Street + London + W1A 1AA, but not + 45 High Road; and not "…, Germany" +
  // Hamburg.
  bool latin(const RecognizerResult& left, const RecognizerResult& right) const {
    const auto a = text::slice(t_, left.start, left.end);
    const auto b = text::slice(t_, right.start, right.end);
    if (!has_digit(a) || !is_upper(b.front()) || a.find(b) != a.npos) return false;
    return !ends_in_region(left) || ends_in_region(right);
  }

  bool ends_in_region(const RecognizerResult& r) const {
    const auto& regions = a_.of(recognition::WordClass::EN_REGION);
    const auto it = first_from(regions, static_cast<std::size_t>(r.end));
    return it != regions.begin() && std::prev(it)->end == static_cast<std::size_t>(r.end);
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
};

}  // namespace

std::vector<RecognizerResult> join_addresses(const NlpArtifacts& artifacts,
                                             std::vector<RecognizerResult> results) {
  const auto places_begin = std::stable_partition(results.begin(), results.end(),
                                                  [](const auto& r) { return !is_place(r); });
  std::stable_sort(places_begin, results.end(), [](const auto& x, const auto& y) {
    return x.start != y.start ? x.start < y.start : x.end > y.end;
  });
  const Joiner joiner(artifacts);
  auto last = results.end();
  auto to = places_begin;
  for (auto it = places_begin; it != results.end(); ++it) {
    if (last != results.end() && joiner.goes_on(*last, *it)) {
      last->end = std::max(last->end, it->end);
      last->score = std::max(last->score, it->score);
    } else {
      if (to != it) *to = std::move(*it);
      // A place inside `last` is judged by its score later.
      if (last == results.end() || to->end > last->end) last = to;
      ++to;
    }
    last->end = joiner.house_end(*last);
  }
  results.erase(to, results.end());
  return results;
}

}  // namespace core::nlp
