#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "core/nlp/chinese_lexicon.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/latin_lexicon.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/refinements.hpp"
#include "core/text/unicode.hpp"

namespace core::nlp {
namespace {

const std::string PERSON = "PERSON";
const std::string ORGANIZATION = "ORGANIZATION";

// A Chinese company's name takes its brand from so many characters.
constexpr std::size_t SHORTEST_SHARED_BRAND = 2;
constexpr std::size_t LONGEST_SHARED_BRAND = 6;
constexpr std::size_t LONGEST_SINGLE_NAME = 60;  // of a company, code points
// Surnames proper are above this; see NameCharacter.
constexpr unsigned RARE_SURNAME = 18;

using WordSet = std::unordered_set<std::u32string>;

template <class Visit>
void for_each_word(std::u32string_view surface, Visit visit) {
  while (!surface.empty()) {
    const std::size_t end = std::min(surface.find(U' '), surface.size());
    if (end > 0) visit(std::u32string(surface.substr(0, end)));
    surface.remove_prefix(std::min(end + 1, surface.size()));
  }
}

// The names of a document, by how they are spelled.
class Kinds {
 public:
  void add_person(const std::u32string& surface) {
    ++counts_[surface].persons;
    if (surface.find(U' ') != std::u32string::npos) {
      for_each_word(surface, [&](std::u32string word) { of_persons_.insert(std::move(word)); });
    } else if (text::contains_ideograph(surface)) {  // 佐仓 of 佐仓健一
      for (std::size_t n = 1; n < std::min(surface.size(), LONGEST_SHARED_BRAND); ++n) {
        of_persons_.insert(surface.substr(0, n));
      }
    }
  }

  void add_organization(const std::u32string& surface) {
    auto& count = counts_[surface];
    const bool is_person = count.persons > 0;  // Dominic Westerby is no firm of that name
    if (++count.organizations > 1 || is_person || surface.size() > LONGEST_SINGLE_NAME) return;
    if (surface.find(U' ') != std::u32string::npos) {
      for_each_word(surface, [&](std::u32string word) { brands_.insert(std::move(word)); });
      add_latin_brands(surface);
    } else if (text::contains_ideograph(surface)) {
      add_chinese_brands(surface);
    }
  }

  // The kind that all mentions with this spelling have; empty: what was found.
  std::string_view kind_of(const std::u32string& surface) const {
    const auto& count = counts_.at(surface);
    if (count.persons == 0) {
      return is_part_of_person(surface) ? std::string_view(PERSON) : std::string_view();
    }
    if (count.organizations > 0) {
      if (count.organizations == count.persons) return is_brand(surface) ? ORGANIZATION : PERSON;
      return count.organizations > count.persons ? ORGANIZATION : PERSON;
    }
    return is_brand(surface) ? std::string_view(ORGANIZATION) : std::string_view();
  }

 private:
  struct Count {
    std::size_t persons = 0;
    std::size_t organizations = 0;
  };

  // Westerby, who is Dominic Westerby elsewhere, and no firm
  bool is_part_of_person(const std::u32string& surface) const {
    constexpr std::size_t SHORTEST = 4;
    return surface.size() >= SHORTEST && !text::contains_ideograph(surface) &&
           of_persons_.contains(surface) && !brands_.contains(surface);
  }

  // 凡特瑞 of 凡特瑞动力技术有限公司, 恪诚招标 of 乌鲁木齐恪诚招标有限公司.
  void add_chinese_brands(const std::u32string& surface) {
    for (std::size_t start = 0; start + SHORTEST_SHARED_BRAND < surface.size(); ++start) {
      for (std::size_t n = SHORTEST_SHARED_BRAND;
           n <= LONGEST_SHARED_BRAND && start + n < surface.size(); ++n) {
        brands_.insert(surface.substr(start, n));
      }
    }
  }

  // Banyan Ridge of Banyan Ridge Ventures; not the person whose name a firm bears
  void add_latin_brands(const std::u32string& surface) {
    const auto first = latin_name_class(surface.substr(0, surface.find(U' ')));
    if (first == LatinNameClass::GIVEN || first == LatinNameClass::BOTH) return;
    constexpr int LONGEST = 3;  // words
    std::size_t end = surface.find(U' ');
    for (int n = 0; n < LONGEST && end != std::u32string::npos; ++n) {
      brands_.insert(surface.substr(0, end));
      end = surface.find(U' ', end + 1);
    }
  }

  // Firms are named after persons, too: a name that somebody bears stays a person's.
  bool is_brand(const std::u32string& surface) const {
    if (!brands_.contains(surface) || of_persons_.contains(surface)) return false;
    return !text::contains_ideograph(surface) ||
           name_character(surface.front()).surname < RARE_SURNAME;
  }

  std::unordered_map<std::u32string, Count> counts_;
  WordSet brands_;
  WordSet of_persons_;
};

// Watson Farley & Kreuger: what looks like a person is a firm where another name without a
// given one stands behind an ampersand.
void join_partners(const NlpArtifacts& a, std::vector<RecognizerResult>& results) {
  const std::u32string_view t = a.folded;
  constexpr std::u32string_view AND = U" & ";
  std::unordered_set<std::ptrdiff_t> starts;  // empty until they are asked for
  for (auto& r : results) {
    const auto end = static_cast<std::size_t>(r.end);
    if (r.entity_type != PERSON || !is_latin_letter(t[end - 1]) || !t.substr(end).starts_with(AND))
      continue;
    if (starts.empty()) {
      for (const auto& other : results) starts.insert(other.start);
    }
    const std::size_t next = end + AND.size();
    const Token word = token_after(t, next);
    if (word.empty() || word.start != next || !is_upper(t[next]) || word.end < next + 3 ||
        starts.contains(static_cast<std::ptrdiff_t>(next)) || is_contract_word(word.in(t)) ||
        is_covered(a.of(recognition::WordClass::EN_TITLE), word.start, word.end) ||
        latin_name_class(word.in(t)) == LatinNameClass::GIVEN) {
      continue;
    }
    std::size_t stop = word.end;
    while (stop > next && !is_latin_letter(t[stop - 1])) --stop;
    r.end = static_cast<std::ptrdiff_t>(stop);
    r.entity_type = ORGANIZATION;
  }
}

}  // namespace

std::vector<RecognizerResult> agree_on_kinds(const NlpArtifacts& artifacts,
                                             std::vector<RecognizerResult> results) {
  const auto surface_of = [&](const RecognizerResult& hit) {
    return text::case_fold(text::slice(artifacts.folded, hit.start, hit.end));
  };
  Kinds kinds;
  // A text is shorter than 2^32.
  const auto span_of = [](const RecognizerResult& hit) {
    return static_cast<std::uint64_t>(hit.start) << 32U | static_cast<std::uint64_t>(hit.end);
  };
  std::unordered_set<std::uint64_t> persons;
  std::unordered_set<std::uint64_t> organizations;
  for (const auto& hit : results) {
    if (hit.entity_type == PERSON && persons.insert(span_of(hit)).second) {
      kinds.add_person(surface_of(hit));
    }
  }
  for (const auto& hit : results) {
    if (hit.entity_type == ORGANIZATION && organizations.insert(span_of(hit)).second) {
      kinds.add_organization(surface_of(hit));
    }
  }
  for (auto& hit : results) {
    if (hit.entity_type != PERSON && hit.entity_type != ORGANIZATION) continue;
    const auto kind = kinds.kind_of(surface_of(hit));
    if (!kind.empty()) hit.entity_type = kind;
  }
  join_partners(artifacts, results);
  return results;
}

}  // namespace core::nlp
