// How well a document was masked, measured on its marks.
//
//   leaked     a required mark of which a letter or number can still be read; of
//              an amount, a numeral (its currency words may stay)
//   cut short  a leaked one of which another is masked
//   reaching   one that is masked whole, together with letters or numbers beside
//              it that no mark holds
//   overmask   masked characters outside all marks
//   split      an entity with more than one placeholder
//   merged     a placeholder for more than one entity
//
// Amounts and dates have no entities here: they are keyed by their wording. A
// mention that holds more than one placeholder says nothing about its entity.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "core/evaluation/labelled_document.hpp"
#include "core/masked_stretches.hpp"

namespace core::evaluation {

struct Tally {
  std::size_t mentions = 0;
  std::size_t leaked = 0;
  std::size_t cut_short = 0;
  std::size_t reaching = 0;
  std::size_t entities = 0;
  std::size_t split = 0;

  double leak_rate() const { return share(leaked, mentions); }  // 0..1
  double split_rate() const { return share(split, entities); }
  std::size_t boundary_errors() const { return cut_short + reaching; }
  Tally& operator+=(const Tally& other);
  bool operator==(const Tally&) const = default;

  // 0 of nothing.
  static double share(std::size_t part, std::size_t whole);
};

// A part of the text that is read or masked wrongly.
struct Fault {
  std::string type;  // of the leaked mark; empty where too much is masked
  Offset start = 0;
  Offset end = 0;

  bool operator==(const Fault&) const = default;
};

struct Score {
  std::map<std::string, Tally> by_type;
  std::size_t unmarked = 0;  // characters outside all marks
  std::size_t overmasked = 0;
  std::size_t merged = 0;

  Tally total() const;
  double overmask_per_1000() const { return 1000 * Tally::share(overmasked, unmarked); }
  Score& operator+=(const Score& other);
};

struct DocumentScore {
  Score score;
  std::vector<Fault> leaks;  // in text order
  std::vector<Fault> overmasks;
};

// `stretches` are what was masked of document.text, sorted and disjoint.
DocumentScore score(const LabelledDocument& document,
                    const std::vector<anonymization::MaskedStretch>& stretches);

}  // namespace core::evaluation
