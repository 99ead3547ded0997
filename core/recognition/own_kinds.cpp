#include "core/recognition/own_kinds.hpp"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "core/anonymization/span_index.hpp"

namespace core::recognition {
namespace {

using anonymization::RecognizerResult;

bool holds(const std::vector<std::string>& kinds, const std::string& kind) {
  return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

std::vector<RecognizerResult> without_others(const std::vector<std::string>& kinds,
                                             std::vector<RecognizerResult> results) {
  std::vector<RecognizerResult> preferred;
  std::copy_if(results.begin(), results.end(), std::back_inserter(preferred),
               [&](const auto& hit) { return holds(kinds, hit.entity_type); });
  if (preferred.empty()) return results;
  const auto spans = anonymization::SpanIndex::of(preferred);
  std::erase_if(results, [&](const auto& hit) {
    return !holds(kinds, hit.entity_type) && spans.covers(hit.start, hit.end);
  });
  return results;
}

}  // namespace

std::vector<std::string> own_kinds(const RecognizerRegistry& registry,
                                   const RecognizerList& recognizers) {
  std::set<std::string> known;
  for (const auto& recognizer : registry.recognizers()) {
    const auto& kinds = recognizer->supported_entities();
    known.insert(kinds.begin(), kinds.end());
  }
  std::vector<std::string> own;
  for (const auto& recognizer : recognizers) {
    for (const auto& kind : recognizer->supported_entities()) {
      if (known.insert(kind).second) own.push_back(kind);
    }
  }
  return own;
}

Refinement prefer_kinds(std::vector<std::string> kinds) {
  return {"kinds of one's own",
          [kinds = std::move(kinds)](const NlpArtifacts&, std::vector<RecognizerResult> results) {
            return without_others(kinds, std::move(results));
          }};
}

}  // namespace core::recognition
