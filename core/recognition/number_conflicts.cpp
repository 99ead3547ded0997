#include "core/recognition/number_conflicts.hpp"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <tuple>
#include <utility>

#include "core/anonymization/span_index.hpp"
#include "core/text/word_set.hpp"

namespace core::recognition {
namespace {

using anonymization::RecognizerResult;

constexpr auto NUMBER_TYPES =
    text::type_names({"AU_ABN",        "BANK_ACCOUNT",   "CARD_LAST4",
                      "CHINA_ID_CARD", "CHINA_MOBILE",   "CHINA_USCC",
                      "CONTRACT_NO",   "CREDIT_CARD",    "CRYPTO",
                      "DATE_TIME",     "EMAIL_ADDRESS",  "IBAN_CODE",
                      "IN_AADHAAR",    "IN_PAN",         "IP_ADDRESS",
                      "MAC_ADDRESS",   "MONEY",          "PASSPORT_NUMBER",
                      "PERCENT",       "PHONE_NUMBER",   "QUAL_CODE",
                      "QUANTITY",      "SG_NRIC_FIN",    "SOCIAL_ACCOUNT",
                      "STOCK_TICKER",  "SWIFT_CODE",     "UK_NINO",
                      "URL",           "US_BANK_NUMBER", "US_DRIVER_LICENSE",
                      "US_ITIN",       "US_PASSPORT",    "US_SSN",
                      "VEHICLE_PLATE"});
constexpr auto NAME_TYPES = text::type_names({"GPE", "LOCATION", "NRP", "ORGANIZATION", "PERSON"});
constexpr auto ADDRESS_TYPES = text::type_names({"EMAIL_ADDRESS", "URL"});

enum class Sort : std::uint8_t { OTHER, NAME, NUMBER };

std::vector<Sort> sorts_of(const std::vector<RecognizerResult>& results) {
  std::vector<Sort> sorts;
  sorts.reserve(results.size());
  for (const auto& r : results) {
    sorts.push_back(NAME_TYPES.contains(r.entity_type)     ? Sort::NAME
                    : NUMBER_TYPES.contains(r.entity_type) ? Sort::NUMBER
                                                           : Sort::OTHER);
  }
  return sorts;
}

// How far a hit is proved: 3 is the most.
int proof(const RecognizerResult& r) {
  constexpr double LIKELY = 0.5;
  if (ADDRESS_TYPES.contains(r.entity_type)) return 3;
  if (r.score >= 1.0) return 2;
  return r.score >= LIKELY ? 1 : 0;
}

// A guess within a longer name or address: the house, the flat, the postal code.
class NamesAround {
 public:
  NamesAround(const std::vector<RecognizerResult>& results, const std::vector<Sort>& sorts)
      : names_(anonymization::SpanIndex::of(names_of(results, sorts))) {}

  bool hold(const RecognizerResult& r) const {
    constexpr double GUESS = 0.6;
    return r.score < GUESS &&
           (names_.covers(r.start - 1, r.end) || names_.covers(r.start, r.end + 1));
  }

 private:
  static std::vector<RecognizerResult> names_of(const std::vector<RecognizerResult>& results,
                                                const std::vector<Sort>& sorts) {
    std::vector<RecognizerResult> names;
    for (std::size_t i = 0; i < results.size(); ++i) {
      if (sorts[i] == Sort::NAME) names.push_back(results[i]);
    }
    return names;
  }

  anonymization::SpanIndex names_;
};

// The positions of the hits of numbers, the best first.
std::vector<std::size_t> best_first(const std::vector<RecognizerResult>& results,
                                    const std::vector<Sort>& sorts) {
  using Rank = std::tuple<int, anonymization::Offset, double, std::size_t>;
  std::vector<Rank> ranks;
  for (std::size_t i = 0; i < results.size(); ++i) {
    const auto& r = results[i];
    if (sorts[i] == Sort::NUMBER) ranks.emplace_back(-proof(r), r.start - r.end, -r.score, i);
  }
  std::sort(ranks.begin(), ranks.end());
  std::vector<std::size_t> order;
  order.reserve(ranks.size());
  for (const auto& rank : ranks) order.push_back(std::get<3>(rank));
  return order;
}

// Ends a name before the number that begins within it and goes on behind it:
// Dhaliwal HK$55,000. Numbers within a name are part of it.
void cut_names(std::vector<RecognizerResult>& results, const std::vector<Sort>& sorts,
               const std::vector<std::size_t>& numbers, const std::vector<bool>& dropped) {
  std::vector<std::pair<anonymization::Offset, anonymization::Offset>> kept;
  for (const std::size_t i : numbers) {
    if (!dropped[i]) kept.emplace_back(results[i].start, results[i].end);
  }
  std::sort(kept.begin(), kept.end());  // none overlaps another
  for (std::size_t i = 0; i < results.size(); ++i) {
    auto& r = results[i];
    if (dropped[i] || sorts[i] != Sort::NAME) continue;
    const auto last = std::partition_point(kept.begin(), kept.end(),
                                           [&](const auto& n) { return n.first < r.end; });
    if (last == kept.begin()) continue;
    const auto& number = *std::prev(last);
    if (number.first > r.start && number.second > r.end) r.end = number.first;
  }
}

}  // namespace

std::vector<RecognizerResult> settle_number_conflicts(const NlpArtifacts&,
                                                      std::vector<RecognizerResult> results) {
  const auto sorts = sorts_of(results);
  const auto order = best_first(results, sorts);
  const NamesAround names(results, sorts);
  std::vector<anonymization::Offset> starts;
  starts.reserve(order.size());
  for (const std::size_t i : order) starts.push_back(results[i].start);
  anonymization::SpanIndex taken(std::move(starts));
  std::vector<bool> dropped(results.size(), false);
  for (const std::size_t i : order) {
    const auto& r = results[i];
    dropped[i] = names.hold(r) || taken.overlaps(r.start, r.end);
    if (!dropped[i]) taken.add(r.start, r.end);
  }
  for (std::size_t i = 0; i < results.size(); ++i) {
    const auto& r = results[i];
    if (sorts[i] == Sort::NAME) dropped[i] = taken.covers(r.start, r.end);
  }
  cut_names(results, sorts, order, dropped);
  std::size_t kept = 0;
  for (std::size_t i = 0; i < results.size(); ++i) {
    if (dropped[i]) continue;
    if (kept != i) results[kept] = std::move(results[i]);
    ++kept;
  }
  results.resize(kept);
  return results;
}

}  // namespace core::recognition
