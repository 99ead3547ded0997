#include "core/anonymization/strategy.hpp"

#include <algorithm>
#include <string>

#include "core/anonymization/hook.hpp"
#include "core/anonymization/span_index.hpp"
#include "core/errors.hpp"
#include "core/text/find_character.hpp"
#include "core/text/word_set.hpp"

namespace core::anonymization {
namespace {

// What says how much or when, but not who or where.
constexpr auto KINDS_THAT_IDENTITY_LEAVES = text::type_names(
    {// times
     "DATE_TIME", "DATE", "TIME", "YEAR", "DURATION",
     // amounts and counts
     "MONEY", "CURRENCY", "PERCENT", "PERCENTAGE", "QUANTITY", "CARDINAL", "ORDINAL"});

bool is_left_by_identity(const RecognizerResult& r) {
  return KINDS_THAT_IDENTITY_LEAVES.contains(r.entity_type);
}

bool is_left_by_none(const RecognizerResult&) { return false; }

bool is_alias_candidate(const RecognizerResult& r) {
  return r.defined_at != RecognizerResult::NOT_AN_ALIAS;
}

struct ReportedSpan {
  Offset start;
  Offset end;
};

// What the analyzer reported, seen from an alias candidate.
class AliasSupport {
 public:
  AliasSupport(std::u32string_view text, const std::vector<ReportedSpan>& reported,
               std::vector<Offset> org_ends)
      : reported_(SpanIndex::of(reported)), org_ends_(std::move(org_ends)) {
    std::sort(org_ends_.begin(), org_ends_.end());
    for (auto at = text::find_either(text, LINE_FEED, JOINER); at != text::NPOS;
         at = text::find_either(text, LINE_FEED, JOINER, at + 1)) {
      paragraph_ends_.push_back(static_cast<Offset>(at));
    }
  }

  // Whether an organization ends before the definition and in its paragraph,
  // and nothing reported lies over the alias.
  bool holds_for(const RecognizerResult& alias) const {
    const Offset org_end = last(org_ends_, alias.defined_at + 1);
    if (org_end == NONE || reported_.overlaps(alias.start, alias.end)) return false;
    return last(paragraph_ends_, alias.defined_at) < org_end;
  }

 private:
  static constexpr Offset NONE = -1;

  // What ends a paragraph; every paragraph joiner begins with the second.
  static constexpr char32_t LINE_FEED = U'\n';
  static constexpr char32_t JOINER = 0xE000;

  // The last of the sorted offsets that is below `limit`.
  static Offset last(const std::vector<Offset>& sorted, Offset limit) {
    const auto at = std::lower_bound(sorted.begin(), sorted.end(), limit);
    return at == sorted.begin() ? NONE : *(at - 1);
  }

  SpanIndex reported_;
  std::vector<Offset> org_ends_;
  std::vector<Offset> paragraph_ends_;
};

// Drops the alias candidates that nothing speaks for. What the profile is going
// to leave readable does not stand in the way of an alias.
template <class IsLeft>
std::vector<RecognizerResult> drop_unsupported_aliases(std::u32string_view text,
                                                       std::vector<RecognizerResult> results,
                                                       IsLeft is_left) {
  if (std::none_of(results.begin(), results.end(), is_alias_candidate)) return results;
  std::vector<ReportedSpan> reported;
  std::vector<Offset> org_ends;
  reported.reserve(results.size());
  for (const auto& r : results) {
    if (is_alias_candidate(r) || is_left(r)) continue;
    reported.push_back({r.start, r.end});
    if (r.entity_type == entity_type::ORGANIZATION) org_ends.push_back(r.end);
  }
  const AliasSupport support(text, reported, std::move(org_ends));
  std::erase_if(results,
                [&](const auto& r) { return is_alias_candidate(r) && !support.holds_for(r); });
  return results;
}

template <class IsLeft>
StrategyStep alias_step(IsLeft is_left) {
  return [is_left](std::u32string_view text, std::u32string_view,
                   std::vector<RecognizerResult> results) {
    return drop_unsupported_aliases(text, std::move(results), is_left);
  };
}

std::vector<RecognizerResult> keep_identities(std::u32string_view, std::u32string_view,
                                              std::vector<RecognizerResult> results) {
  std::erase_if(results, is_left_by_identity);
  return results;
}

using ResolverHook = Hook<std::optional<StrategySteps>(std::string_view, std::string_view)>;

ResolverHook& strategy_resolver() {
  static ResolverHook instance;
  return instance;
}

}  // namespace

StrategySteps _resolve_semantic_strategy_steps(std::string_view profile,
                                               std::string_view language) {
  if (const auto resolver = strategy_resolver().get()) {
    if (auto steps = (*resolver)(profile, language)) return std::move(*steps);
  }
  return built_in_strategy_steps(profile);
}

void set_strategy_resolver(StrategyResolver resolver) {
  strategy_resolver().set(std::move(resolver));
}

StrategySteps built_in_strategy_steps(std::string_view profile) {
  if (profile == "contract_default" || profile == "strict") {
    return {.before_overlaps = {alias_step(is_left_by_none)}, .after_overlaps = {}};
  }
  if (profile == "identity") {
    // Before the overlaps are resolved: a date must not win over a card number
    // and then stay readable.
    return {.before_overlaps = {alias_step(is_left_by_identity), keep_identities},
            .after_overlaps = {}};
  }
  throw ValueError("Unknown strategy profile \"" + std::string(profile) +
                   "\"; known profiles: contract_default, identity, strict");
}

}  // namespace core::anonymization
