#include <algorithm>
#include <iterator>
#include <unordered_map>

#include "core/nlp/characters.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/rare_characters.hpp"
#include "core/nlp/refinements.hpp"
#include "core/nlp/span_cover.hpp"
#include "core/text/regex.hpp"

namespace core::nlp {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// 《中华人民共和国民法典》, 《1994年约克—安特卫普规则》. Not 《2024年度采购合同》.
const Regex RE_LAW(
    "RE_LAW",
    UR"(《[^《》\n\t\uE000\uE001]{1,80}(?:法|典|条例|公约|规则|规定|办法|通则|细则|解释|准则|通知|意见|标准|规范|协定|议定书)(?:[(（][^()（）》]{1,20}[)）])?》)");

bool is_address(const RecognizerResult& r) {
  constexpr double ADDRESS_SCORE = 0.85;
  return r.entity_type == entity_type::LOCATION && r.score >= ADDRESS_SCORE;
}

// The groups of an IBAN look like telephone numbers and accounts.
void drop_parts_of_iban(std::vector<RecognizerResult>& results) {
  SpanCover ibans;
  for (const auto& r : results) {
    if (r.entity_type == entity_type::IBAN_CODE) ibans.add(r.start, r.end);
  }
  ibans.finish();
  std::erase_if(results, [&](const auto& r) {
    return r.entity_type != entity_type::IBAN_CODE && ibans.contains(r.start, r.end);
  });
}

bool is_in_title_type(const RecognizerResult& r) {
  return r.entity_type == entity_type::LOCATION || r.entity_type == entity_type::DATE_TIME ||
         r.entity_type == entity_type::ORGANIZATION || r.entity_type == entity_type::PERSON;
}

bool is_name(std::string_view type) {
  return type == entity_type::PERSON || type == entity_type::ORGANIZATION ||
         type == entity_type::LOCATION || type == entity_type::GPE;
}

// 张三 + 律师事务所: the whole is the name of a firm. Not 张三 + 医院, which may be where
// he went.
void widen_to_firms(const NlpArtifacts& a, std::vector<RecognizerResult>& results) {
  using recognition::WordClass;
  for (auto& r : results) {
    if (r.entity_type != entity_type::PERSON) continue;
    const auto at = static_cast<std::size_t>(r.end);
    for (const auto form : {WordClass::INSTITUTION, WordClass::COMPANY_FORM}) {
      const std::size_t end = end_of_word_at(a.of(form), at);
      const auto word = std::u32string_view(a.folded).substr(at, end - at);
      if (!word.ends_with(U"事务所") && !word.ends_with(U"有限公司")) continue;
      r.entity_type = entity_type::ORGANIZATION;
      r.end = static_cast<std::ptrdiff_t>(end);
      break;
    }
  }
}

// Drops what lies within a longer hit of the list, which is sorted by start, the longer
// first: it would win over the longer one by its score and leave the rest readable.
void drop_nested(const std::vector<RecognizerResult*>& sorted) {
  const RecognizerResult* widest = nullptr;
  for (auto* r : sorted) {
    if (widest != nullptr && r->end <= widest->end) {
      if (r->start > widest->start || r->end < widest->end) r->score = 0;
    } else {
      widest = r;
    }
  }
}

// Ngozi Young of Aire Valley University: a person and a firm. Not Bank of Cyprus.
void part_persons_from_firms(std::u32string_view t, std::vector<RecognizerResult>& results) {
  constexpr std::u32string_view OF = U" of ";
  const bool any = std::any_of(results.begin(), results.end(), [&](const auto& r) {
    return r.entity_type == entity_type::ORGANIZATION &&
           text::slice(t, r.start, r.end).find(OF) != t.npos;
  });
  if (!any) return;
  std::unordered_map<anonymization::Offset, anonymization::Offset> person_ends;
  for (const auto& r : results) {
    if (r.entity_type == entity_type::PERSON) person_ends.emplace(r.start, r.end);
  }
  for (auto& r : results) {
    if (r.entity_type != entity_type::ORGANIZATION) continue;
    const auto found = person_ends.find(r.start);
    if (found == person_ends.end() || found->second >= r.end) continue;
    const auto at = static_cast<std::size_t>(found->second);
    if (t.substr(at, OF.size()) != OF) continue;
    const auto start = found->second + static_cast<anonymization::Offset>(OF.size());
    if (start < r.end) r.start = start;
  }
}

// A name within a longer one of its kind, one character within any longer name.
void drop_parts_of_names(std::vector<RecognizerResult>& results) {
  std::vector<RecognizerResult*> names;
  for (auto& r : results) {
    if (is_name(r.entity_type)) names.push_back(&r);
  }
  std::stable_sort(names.begin(), names.end(), [](const auto* x, const auto* y) {
    return x->start != y->start ? x->start < y->start : x->end > y->end;
  });
  for (const auto kind : {entity_type::PERSON, entity_type::ORGANIZATION}) {
    std::vector<RecognizerResult*> of_kind;
    std::copy_if(names.begin(), names.end(), std::back_inserter(of_kind),
                 [&](const auto* r) { return r->entity_type == kind; });
    drop_nested(of_kind);
  }
  const RecognizerResult* widest = nullptr;
  for (auto* r : names) {
    if (widest != nullptr && r->end <= widest->end && r->end - r->start == 1) r->score = 0;
    if (widest == nullptr || r->end > widest->end) widest = r;
  }
  std::erase_if(results, [](const auto& r) { return is_name(r.entity_type) && r.score <= 0; });
}

SpanCover titles_of_laws(std::u32string_view text) {
  SpanCover titles;
  for (std::size_t at = find_rare(text, 0, U'《'); at < text.size();) {
    const auto m = RE_LAW.match_at(text, at);
    if (m) titles.add(static_cast<std::ptrdiff_t>(at), static_cast<std::ptrdiff_t>(m->end()));
    at = find_rare(text, m ? m->end() : at + 1, U'《');
  }
  titles.finish();
  return titles;
}

}  // namespace

std::vector<RecognizerResult> drop_misplaced(const NlpArtifacts& artifacts,
                                             std::vector<RecognizerResult> results) {
  widen_to_firms(artifacts, results);
  part_persons_from_firms(artifacts.folded, results);
  drop_parts_of_names(results);
  SpanCover addresses;
  SpanCover codes;
  for (const auto& r : results) {
    if (is_address(r)) addresses.add(r.start, r.end);
    if (r.entity_type == entity_type::VEHICLE_PLATE || r.entity_type == entity_type::MONEY) {
      codes.add(r.start, r.end);
    }
  }
  addresses.finish();
  codes.finish();
  drop_parts_of_iban(results);
  const auto inside_longer = [&](const RecognizerResult& r) {
    return addresses.contains(r.start, r.end) &&
           (addresses.contains(r.start - 1, r.end) || addresses.contains(r.start, r.end + 1));
  };
  std::erase_if(results, [&](const auto& r) {
    return r.entity_type == entity_type::ORGANIZATION && inside_longer(r);
  });
  SpanCover names = addresses;
  for (const auto& r : results) {
    if (r.entity_type == entity_type::ORGANIZATION) names.add(r.start, r.end);
  }
  names.finish();
  const SpanCover titles = titles_of_laws(artifacts.text);
  std::erase_if(results, [&](const auto& r) {
    if (is_in_title_type(r) && titles.contains(r.start, r.end)) return true;
    if (r.entity_type == entity_type::LOCATION && codes.contains(r.start, r.end)) return true;
    return r.entity_type == entity_type::PERSON && names.contains(r.start, r.end);
  });
  return results;
}

}  // namespace core::nlp
