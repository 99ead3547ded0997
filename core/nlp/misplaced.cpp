#include "core/nlp/name_finders.hpp"
#include "core/nlp/span_cover.hpp"
#include "core/text/regex.hpp"

namespace core::nlp {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// 《中华人民共和国民法典》, 《1994年约克—安特卫普规则》. The joiners and line ends never stand in a title.
const Regex RE_TITLE("RE_TITLE", UR"(《[^《》\n\t\x{E000}\x{E001}]{1,80}》)");

}  // namespace

std::vector<RecognizerResult> drop_misplaced(const NlpArtifacts& artifacts,
                                             std::vector<RecognizerResult> results) {
  SpanCover names;
  for (const auto& r : results) {
    constexpr double ADDRESS_SCORE = 0.85;
    const bool address = r.entity_type == entity_type::LOCATION && r.score >= ADDRESS_SCORE;
    if (r.entity_type == entity_type::ORGANIZATION || address) names.add(r.start, r.end);
  }
  names.finish();
  SpanCover titles;
  for (const auto& m : RE_TITLE.find_all(artifacts.text)) {
    titles.add(static_cast<std::ptrdiff_t>(m.start()), static_cast<std::ptrdiff_t>(m.end()));
  }
  titles.finish();
  std::erase_if(results, [&](const auto& r) {
    const bool dated = r.entity_type == entity_type::LOCATION || r.entity_type == entity_type::DATE_TIME;
    if (dated && titles.contains(r.start, r.end)) return true;
    return r.entity_type == entity_type::PERSON && names.contains(r.start, r.end);
  });
  return results;
}

}  // namespace core::nlp
