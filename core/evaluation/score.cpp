#include "core/evaluation/score.hpp"

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

#include "core/text/unicode.hpp"

namespace core::evaluation {
namespace {

namespace entity_type = anonymization::entity_type;
using anonymization::MaskedStretch;

constexpr std::u32string_view NUMERALS =
    U"0123456789０１２３４５６７８９零〇一二三四五六七八九十百千万亿兆壹贰叁肆伍陆柒捌玖拾佰仟两";

// By character: which stretch masks it (from 1; 0: none), and whether a mark holds it.
class Scorer {
 public:
  Scorer(const LabelledDocument& document, const std::vector<MaskedStretch>& stretches)
      : document_(document),
        stretches_(stretches),
        masked_by_(document.text.size(), 0),
        in_mark_(document.text.size(), false) {
    for (std::size_t i = 0; i < stretches.size(); ++i) {
      fill(masked_by_, stretches[i].start, stretches[i].end, i + 1);
    }
    for (const auto& mark : document.marks) fill(in_mark_, mark.start, mark.end, true);
  }

  DocumentScore run() && {
    for (const auto& mark : document_.marks) {
      if (!mark.optional()) count(mark);
    }
    count_entities();
    count_overmasking();
    return std::move(out_);
  }

 private:
  using Entity = std::pair<std::string, std::string>;  // type and number

  template <class List, class Value>
  static void fill(List& list, Offset start, Offset end, Value value) {
    const auto size = static_cast<Offset>(list.size());
    std::fill(list.begin() + std::clamp<Offset>(start, 0, size),
              list.begin() + std::clamp<Offset>(end, 0, size), value);
  }

  bool is_masked(std::size_t at) const { return masked_by_[at] != 0; }

  // The characters of the mark that must not be read.
  std::vector<std::size_t> sensitive(const Mark& mark) const {
    std::vector<std::size_t> all;
    std::vector<std::size_t> numerals;
    for (auto i = static_cast<std::size_t>(mark.start); i < static_cast<std::size_t>(mark.end);
         ++i) {
      const char32_t c = document_.text[i];
      if (!text::is_letter_or_number(c)) continue;
      all.push_back(i);
      if (NUMERALS.find(c) != NUMERALS.npos) numerals.push_back(i);
    }
    return mark.type == entity_type::MONEY && !numerals.empty() ? numerals : all;
  }

  void count(const Mark& mark) {
    auto& tally = out_.score.by_type[mark.type];
    ++tally.mentions;
    const auto characters = sensitive(mark);
    const auto masked = static_cast<std::size_t>(std::count_if(
        characters.begin(), characters.end(), [&](std::size_t i) { return is_masked(i); }));
    if (masked < characters.size()) {
      ++tally.leaked;
      if (masked > 0) ++tally.cut_short;
      out_.leaks.push_back({mark.type, mark.start, mark.end});
    } else if (reaches_beyond(mark)) {
      ++tally.reaching;
    }
    note_placeholder(mark);
  }

  bool reaches_beyond(const Mark& mark) const {
    const auto unmarked_at = [&](std::size_t i) {
      return !in_mark_[i] && text::is_letter_or_number(document_.text[i]);
    };
    const auto start = static_cast<std::size_t>(mark.start);
    const auto end = static_cast<std::size_t>(mark.end);
    for (std::size_t i = start; i > 0 && masked_by_[i - 1] == masked_by_[start]; --i) {
      if (masked_by_[start] == 0 || in_mark_[i - 1]) break;
      if (unmarked_at(i - 1)) return true;
    }
    for (std::size_t i = end; i < masked_by_.size() && masked_by_[i] == masked_by_[end - 1]; ++i) {
      if (masked_by_[end - 1] == 0 || in_mark_[i]) break;
      if (unmarked_at(i)) return true;
    }
    return false;
  }

  void note_placeholder(const Mark& mark) {
    if (mark.type == entity_type::MONEY || mark.type == entity_type::DATE_TIME) return;
    std::set<std::u32string_view> placeholders;
    for (auto i = mark.start; i < mark.end; ++i) {
      const auto by = masked_by_[static_cast<std::size_t>(i)];
      if (by != 0) placeholders.insert(stretches_[by - 1].placeholder);
    }
    if (placeholders.size() != 1) return;
    const Entity entity{mark.type, mark.number};
    placeholders_of_[entity].insert(*placeholders.begin());
    entities_of_[*placeholders.begin()].insert(entity);
  }

  void count_entities() {
    for (const auto& [entity, placeholders] : placeholders_of_) {
      auto& tally = out_.score.by_type[entity.first];
      ++tally.entities;
      if (placeholders.size() > 1) ++tally.split;
    }
    for (const auto& [placeholder, entities] : entities_of_) {
      if (entities.size() > 1) ++out_.score.merged;
    }
  }

  void count_overmasking() {
    bool goes_on = false;
    for (std::size_t i = 0; i < masked_by_.size(); ++i) {
      if (!in_mark_[i]) ++out_.score.unmarked;
      const bool overmasked = !in_mark_[i] && is_masked(i);
      if (overmasked) {
        ++out_.score.overmasked;
        const auto at = static_cast<Offset>(i);
        if (!goes_on) out_.overmasks.push_back({{}, at, at});
        out_.overmasks.back().end = at + 1;
      }
      goes_on = overmasked;
    }
  }

  const LabelledDocument& document_;
  const std::vector<MaskedStretch>& stretches_;
  std::vector<std::size_t> masked_by_;
  std::vector<bool> in_mark_;
  std::map<Entity, std::set<std::u32string_view>> placeholders_of_;
  std::map<std::u32string_view, std::set<Entity>> entities_of_;
  DocumentScore out_;
};

}  // namespace

double Tally::share(std::size_t part, std::size_t whole) {
  return whole == 0 ? 0 : static_cast<double>(part) / static_cast<double>(whole);
}

Tally& Tally::operator+=(const Tally& other) {
  mentions += other.mentions;
  leaked += other.leaked;
  cut_short += other.cut_short;
  reaching += other.reaching;
  entities += other.entities;
  split += other.split;
  return *this;
}

Tally Score::total() const {
  Tally out;
  for (const auto& [type, tally] : by_type) out += tally;
  return out;
}

Score& Score::operator+=(const Score& other) {
  for (const auto& [type, tally] : other.by_type) by_type[type] += tally;
  unmarked += other.unmarked;
  overmasked += other.overmasked;
  merged += other.merged;
  return *this;
}

DocumentScore score(const LabelledDocument& document, const std::vector<MaskedStretch>& stretches) {
  return Scorer(document, stretches).run();
}

}  // namespace core::evaluation
