#include "core/nlp/name_finders.hpp"
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

}  // namespace

std::vector<RecognizerResult> drop_misplaced(const NlpArtifacts& artifacts,
                                             std::vector<RecognizerResult> results) {
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
  SpanCover titles;
  for (const auto& m : RE_LAW.find_all(artifacts.text)) {
    titles.add(static_cast<std::ptrdiff_t>(m.start()), static_cast<std::ptrdiff_t>(m.end()));
  }
  titles.finish();
  std::erase_if(results, [&](const auto& r) {
    if (is_in_title_type(r) && titles.contains(r.start, r.end)) return true;
    if (r.entity_type == entity_type::LOCATION && codes.contains(r.start, r.end)) return true;
    return r.entity_type == entity_type::PERSON && names.contains(r.start, r.end);
  });
  return results;
}

}  // namespace core::nlp
