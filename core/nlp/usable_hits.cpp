#include <algorithm>
#include <cmath>
#include <utility>

#include "core/anonymization/result.hpp"
#include "core/nlp/characters.hpp"
#include "core/nlp/refinements.hpp"
#include "core/nlp/span_cover.hpp"
#include "core/text/unicode.hpp"

namespace core::nlp {
namespace {

using anonymization::Offset;

constexpr double LEAST_SCORE = 0.01;

double usable_score(double score) { return std::isnan(score) ? LEAST_SCORE : std::min(score, 1.0); }

// Adds the part of `hit` from start to end, if there is anything in it.
void add_part(std::u32string_view text, const RecognizerResult& hit, std::size_t start,
              std::size_t end, std::vector<RecognizerResult>& out) {
  while (start < end && text::is_space(text[start])) ++start;
  while (start < end && text::is_space(text[end - 1])) --end;
  if (start == end) return;
  out.push_back(hit);
  out.back().start = static_cast<Offset>(start);
  out.back().end = static_cast<Offset>(end);
}

// The mark between the private-use characters of a joiner is no part either.
std::size_t end_of_joiner(std::u32string_view text, std::size_t at) {
  constexpr std::size_t LENGTH = 3;
  const bool joiner = text[at] == 0xE000 && at + LENGTH <= text.size() && text[at + 2] == 0xE001;
  return at + (joiner ? LENGTH : 1);
}

void add_parts(std::u32string_view text, const RecognizerResult& hit,
               std::vector<RecognizerResult>& out) {
  const auto size = static_cast<Offset>(text.size());
  auto start = static_cast<std::size_t>(std::clamp<Offset>(hit.start, 0, size));
  const auto end = static_cast<std::size_t>(std::clamp<Offset>(hit.end, 0, size));
  for (std::size_t i = start; i < end;) {
    if (!is_cell_end(text[i])) {
      ++i;
      continue;
    }
    add_part(text, hit, start, i, out);
    start = i = end_of_joiner(text, i);
  }
  if (start < end) add_part(text, hit, start, end, out);
}

}  // namespace

std::vector<RecognizerResult> make_usable(const NlpArtifacts& artifacts,
                                          std::vector<RecognizerResult> results) {
  std::vector<RecognizerResult> out;
  out.reserve(results.size());
  for (auto& r : results) {
    r.score = usable_score(r.score);
    if (r.score > 0) add_parts(artifacts.text, r, out);
  }
  return out;
}

std::vector<std::string> shield_kinds() {
  return {std::string(anonymization::entity_type::GENERIC_INSTITUTION_NOUN),
          std::string(anonymization::entity_type::IT_PROTOCOL)};
}

std::vector<RecognizerResult> apply_shields(const NlpArtifacts& /*artifacts*/,
                                            std::vector<RecognizerResult> results) {
  const auto kinds = shield_kinds();
  const auto is_shield = [&](const RecognizerResult& r) {
    return std::find(kinds.begin(), kinds.end(), r.entity_type) != kinds.end();
  };
  SpanCover shields;
  for (const auto& r : results) {
    if (is_shield(r)) shields.add(r.start, r.end);
  }
  shields.finish();
  std::erase_if(results,
                [&](const auto& r) { return !is_shield(r) && shields.contains(r.start, r.end); });
  return results;
}

}  // namespace core::nlp
