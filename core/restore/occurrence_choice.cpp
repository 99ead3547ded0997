#include "core/restore/occurrence_choice.hpp"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "core/text/unicode.hpp"

namespace core::restore {
namespace {

// What is less on one side says nothing: ：and 甲方 stand everywhere.
constexpr std::size_t LEAST_ON_ONE_SIDE = 6;
constexpr std::size_t HALF_OF_ONE_SIDE = 8;
constexpr std::size_t NEAR = 4;
constexpr std::size_t LEAST_OF_A_LINE = 4;
constexpr char32_t HERE = 0xFFFFFFFF;  // in no text

// Places that look the same.
struct Alike {
  std::vector<std::size_t> ranks;      // in the masked text
  std::optional<std::size_t> surface;  // the one that all of them have
};

// One way to look at what stands around a place; empty where it says nothing.
using View = std::u32string (*)(const std::u32string& before, const std::u32string& after);

// Lines may be broken elsewhere.
std::u32string unbroken(std::u32string side) {
  std::erase(side, LINE_END);
  return side;
}

std::u32string whole(const std::u32string& before, const std::u32string& after) {
  return unbroken(before) + HERE + unbroken(after);
}
std::u32string line(const std::u32string& before, const std::u32string& after) {
  const auto begin = before.find_last_of(LINE_END) + 1;  // 0 where there is none
  const auto end = std::min(after.find(LINE_END), after.size());
  if (before.size() - begin + end < LEAST_OF_A_LINE) return {};
  return before.substr(begin) + HERE + after.substr(0, end);
}
std::u32string left(const std::u32string& before, const std::u32string&) {
  const auto side = unbroken(before);
  return side.size() < LEAST_ON_ONE_SIDE ? std::u32string() : side;
}
std::u32string right(const std::u32string&, const std::u32string& after) {
  const auto side = unbroken(after);
  return side.size() < LEAST_ON_ONE_SIDE ? std::u32string() : side;
}
std::u32string half_left(const std::u32string& before, const std::u32string&) {
  const auto side = unbroken(before);
  if (side.size() < HALF_OF_ONE_SIDE) return {};
  return side.substr(side.size() - HALF_OF_ONE_SIDE);
}
std::u32string half_right(const std::u32string&, const std::u32string& after) {
  const auto side = unbroken(after);
  return side.size() < HALF_OF_ONE_SIDE ? std::u32string() : side.substr(0, HALF_OF_ONE_SIDE);
}
std::u32string near(const std::u32string& before, const std::u32string& after) {
  const auto l = unbroken(before);
  const auto r = unbroken(after);
  if (l.size() < NEAR || r.size() < NEAR) return {};
  return l.substr(l.size() - NEAR) + HERE + r.substr(0, NEAR);
}

class Chooser {
 public:
  Chooser(const Entry& entry, const std::vector<Surroundings>& found)
      : entry_(entry), found_(found), choices_(found.size()), ranks_(found.size()) {}

  std::vector<Choice> run() && {
    by_whole_context();
    by_both_sides(line);
    by_one_side(left, right);
    by_one_side(half_left, half_right);
    by_both_sides(near);
    by_order();
    return std::move(choices_);
  }

 private:
  using Places = std::unordered_map<std::u32string, Alike>;

  Places places(View view) const {
    Places out;
    for (std::size_t rank = 0; rank < entry_.occurrences.size(); ++rank) {
      const auto& occurrence = entry_.occurrences[rank];
      auto seen = view(occurrence.before, occurrence.after);
      if (seen.empty()) continue;
      auto& alike = out[std::move(seen)];
      if (alike.ranks.empty()) alike.surface = occurrence.surface;
      if (alike.surface != occurrence.surface) alike.surface.reset();
      alike.ranks.push_back(rank);
    }
    return out;
  }

  static const Alike* find(const Places& places, const std::u32string& seen) {
    const auto at = places.find(seen);
    return seen.empty() || at == places.end() ? nullptr : &at->second;
  }

  bool is_open(std::size_t i) const { return choices_[i].by == Choice::By::NOTHING; }

  void settle(std::size_t i, std::size_t surface, std::optional<std::size_t> rank) {
    choices_[i] = {Choice::By::CONTEXT, surface};
    ranks_[i] = rank;
  }
  void settle(std::size_t i, const Alike& alike) {
    settle(i, *alike.surface,
           alike.ranks.size() == 1 ? std::optional(alike.ranks[0]) : std::nullopt);
  }

  // Places of the masked text that look the same are told apart by their order, as
  // long as none is missing and none is new.
  void by_whole_context() {
    const auto masked = places(whole);
    std::unordered_map<std::u32string, std::vector<std::size_t>> edited;
    for (std::size_t i = 0; i < found_.size(); ++i) {
      edited[whole(found_[i].before, found_[i].after)].push_back(i);
    }
    for (const auto& [seen, indices] : edited) {
      const auto* alike = find(masked, seen);
      if (alike == nullptr) continue;
      const bool as_many = alike->ranks.size() == indices.size();
      for (std::size_t k = 0; k < indices.size(); ++k) {
        if (as_many) {
          const std::size_t rank = alike->ranks[k];
          settle(indices[k], entry_.occurrences[rank].surface, rank);
        } else if (alike->surface) {
          settle(indices[k], *alike);
        }
      }
    }
  }

  // Sides that speak for different surfaces say nothing.
  void by_one_side(View left_view, View right_view) {
    const auto lefts = places(left_view);
    const auto rights = places(right_view);
    for (std::size_t i = 0; i < found_.size(); ++i) {
      if (!is_open(i)) continue;
      const auto* l = find(lefts, left_view(found_[i].before, found_[i].after));
      const auto* r = find(rights, right_view(found_[i].before, found_[i].after));
      if (l != nullptr && r != nullptr && l->surface != r->surface) continue;
      const auto* side = l != nullptr ? l : r;
      if (side != nullptr && side->surface) settle(i, *side);
    }
  }

  void by_both_sides(View view) {
    const auto masked = places(view);
    for (std::size_t i = 0; i < found_.size(); ++i) {
      if (!is_open(i)) continue;
      const auto* alike = find(masked, view(found_[i].before, found_[i].after));
      if (alike != nullptr && alike->surface) settle(i, *alike);
    }
  }

  // Between places whose ranks are known, and the ends of the text.
  void by_order() {
    std::size_t gap_begin = 0;  // first place behind the last one of known rank
    std::size_t next_rank = 0;  // the rank behind that one's
    const auto close_gap = [&](std::size_t gap_end, std::size_t rank) {
      const bool as_many = rank >= next_rank && rank - next_rank == gap_end - gap_begin;
      for (std::size_t i = gap_begin; as_many && i < gap_end; ++i) {
        if (!is_open(i)) continue;
        choices_[i] = {Choice::By::ORDER, entry_.occurrences[next_rank + (i - gap_begin)].surface};
      }
    };
    for (std::size_t i = 0; i < found_.size(); ++i) {
      if (!ranks_[i]) continue;
      close_gap(i, *ranks_[i]);
      gap_begin = i + 1;
      next_rank = *ranks_[i] + 1;
    }
    close_gap(found_.size(), entry_.occurrences.size());
    const std::size_t first = entry_.first_surface();
    for (auto& choice : choices_) {
      if (choice.by == Choice::By::NOTHING) choice.surface = first;
    }
  }

  const Entry& entry_;
  const std::vector<Surroundings>& found_;
  std::vector<Choice> choices_;
  std::vector<std::optional<std::size_t>> ranks_;  // of those whose occurrence is known
};

}  // namespace

std::vector<Choice> choose_occurrences(const Entry& entry, const std::vector<Surroundings>& found) {
  return Chooser(entry, found).run();
}

}  // namespace core::restore
