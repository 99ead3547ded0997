#include "core/text/pattern_scan.hpp"

#include <algorithm>
#include <bit>
#include <map>

#include "core/text/look_behind.hpp"
#include "core/text/pattern_moves.hpp"

namespace core::text {
namespace {

constexpr char32_t BEHIND_PLANE = 0x10000;
constexpr char32_t LAST_VALUE = 0xFFFFFFFF;

}  // namespace

class PatternScanBuilder {
 public:
  explicit PatternScanBuilder(PatternScan& out) : out_(out) {}

  void add(const PatternScan::Item& item) {
    const auto tree = read_pattern(item.pattern);
    if (!tree) return;
    const auto alternatives = alternatives_of(*tree);
    if (out_.item_of_bit_.size() + alternatives.size() > PatternScan::CAPACITY) return;
    std::vector<PatternMoves> moves;
    for (const auto* alternative : alternatives) {
      if (!moves.emplace_back(*alternative).is_usable()) return;
    }
    kinds_ =
        static_cast<SearchIndex::Kinds>(item.where & kinds_by_look_behind(item.pattern, *tree));
    for (std::size_t i = 0; i < moves.size(); ++i) add_alternative(*alternatives[i], moves[i]);
    out_.ids_.push_back(item.id);
  }

  // Cuts the characters where a set begins or ends.
  void finish() {
    std::sort(edges_.begin(), edges_.end(),
              [](const auto& a, const auto& b) { return a.at < b.at; });
    std::map<PatternScan::Row, PatternScan::Class> classes;
    PatternScan::Row row = out_.end_;  // anything may stand where a match may have ended
    Starts starts;
    for (std::size_t e = 0; e < edges_.size() || starts.empty();) {
      const char32_t at = starts.empty() ? 0 : edges_[e].at;
      for (; e < edges_.size() && edges_[e].at == at; ++e) {
        const auto& [where, bit, depth] = edges_[e];
        auto& bits = depth == BEFORE ? row.before : row.inside[depth];
        bits[bit / PatternScan::WORD] ^= mask(bit);
      }
      const auto number = static_cast<PatternScan::Class>(classes.size());
      const auto [it, is_new] = classes.try_emplace(row, number);
      if (is_new) out_.rows_.push_back(row);
      starts.emplace_back(at, it->second);
    }
    fill_pages(starts);
  }

 private:
  static constexpr std::uint16_t BEFORE = 0xFFFF;  // a match, in place of a depth
  using Starts = std::vector<std::pair<char32_t, PatternScan::Class>>;
  struct Edge {
    char32_t at;
    std::uint16_t bit;
    std::uint16_t depth;
  };

  // Of few alternatives each has a bit of its own: what one takes first and another
  // second would pass for both.
  static std::vector<const PatternNode*> alternatives_of(const PatternNode& tree) {
    constexpr std::size_t FEW = 4;
    std::vector<const PatternNode*> out;
    if (tree.kind == PatternNode::Kind::CHOICE && tree.parts.size() <= FEW) {
      for (const auto& part : tree.parts) out.push_back(&part);
    } else {
      out.push_back(&tree);
    }
    return out;
  }

  void add_alternative(const PatternNode& tree, PatternMoves& moves) {
    bit_ = out_.item_of_bit_.size();
    out_.item_of_bit_.push_back(static_cast<std::uint16_t>(out_.ids_.size()));
    for (unsigned k = 0; k < SearchIndex::COUNT; ++k) {
      if ((kinds_ >> k & 1U) != 0) flip(out_.kinds_[k]);
    }
    flip(out_.start_.before);
    add_edges(characters_before(tree), BEFORE);
    auto places = moves.first();
    for (std::size_t depth = 0; depth < PatternScan::DEPTH; ++depth) {
      places = add_depth(moves, places, depth);
    }
  }

  static std::uint64_t mask(std::size_t bit) {
    return std::uint64_t{1} << (bit % PatternScan::WORD);
  }
  void flip(PatternScan::Bits& bits) const { bits[bit_ / PatternScan::WORD] ^= mask(bit_); }

  // Adds what a match takes at `depth`; the places behind it. Where the match may have
  // ended, anything may stand.
  PatternMoves::Places add_depth(PatternMoves& moves, const PatternMoves::Places& places,
                                 std::size_t depth) {
    if (places.empty() || places.front() == PatternMoves::END) {
      if (!places.empty()) flip(out_.end_.inside[depth]);
      return places;
    }
    CharacterSet taken;
    PatternMoves::Places behind;
    for (const auto place : places) {
      const auto& at = moves.places()[place];
      taken.insert(taken.end(), at.set->begin(), at.set->end());
      behind.push_back(at.next);
    }
    add_edges(std::move(taken), depth);
    return moves.closure(std::move(behind));
  }

  // The ranges may overlap.
  void add_edges(CharacterSet ranges, std::size_t depth) {
    std::sort(ranges.begin(), ranges.end());
    for (std::size_t i = 0; i < ranges.size();) {
      const char32_t low = ranges[i].first;
      char32_t high = ranges[i].second;
      for (++i; i < ranges.size() && (high == LAST_VALUE || ranges[i].first <= high + 1); ++i) {
        high = std::max(high, ranges[i].second);
      }
      edges_.push_back(edge(low, depth));
      if (high != LAST_VALUE) edges_.push_back(edge(high + 1, depth));
    }
  }

  Edge edge(char32_t at, std::size_t depth) const {
    return {at, static_cast<std::uint16_t>(bit_), static_cast<std::uint16_t>(depth)};
  }

  void fill_pages(const Starts& starts) {
    std::map<PatternScan::Class, std::uint16_t> uniform;  // pages of one class, by it
    std::size_t i = 0;
    for (std::size_t page = 0; page < PatternScan::PAGES; ++page) {
      const auto first = static_cast<char32_t>(page * PatternScan::PAGE);
      while (i + 1 < starts.size() && starts[i + 1].first <= first) ++i;
      const bool is_uniform =
          i + 1 == starts.size() || starts[i + 1].first >= first + PatternScan::PAGE;
      const auto known = uniform.find(starts[i].second);
      if (is_uniform && known != uniform.end()) {
        out_.pages_[page] = known->second;
        continue;
      }
      const auto number = static_cast<std::uint16_t>(out_.classes_.size());
      out_.pages_[page] = number;
      if (is_uniform) uniform.emplace(starts[i].second, number);
      auto& classes = out_.classes_.emplace_back();
      for (std::size_t k = 0; k < PatternScan::PAGE; ++k) {
        while (i + 1 < starts.size() && starts[i + 1].first <= first + k) ++i;
        classes[k] = starts[i].second;
      }
    }
    while (i + 1 < starts.size() && starts[i + 1].first <= BEHIND_PLANE) ++i;
    out_.astral_.emplace_back(BEHIND_PLANE, starts[i].second);
    for (++i; i < starts.size(); ++i) out_.astral_.push_back(starts[i]);
  }

  PatternScan& out_;
  std::size_t bit_ = 0;  // of the alternative that is added
  SearchIndex::Kinds kinds_ = SearchIndex::ALL;
  std::vector<Edge> edges_;
};

// One scan of one text.
class PatternScan::Run {
 public:
  Run(const PatternScan& scan, std::u32string_view text, const SearchIndex& index)
      : scan_(scan),
        text_(text),
        index_(index),
        kinds_(scan.kinds_),
        is_wanted_(scan.ids_.size(), true),
        found_(scan.ids_.size()) {}

  void run() {
    for (std::size_t from = 0; from < text_.size(); from += BLOCK) {
      read(from);
      drop_frequent(std::min(text_.size(), from + BLOCK));
    }
  }

  PatternPlaces places() {
    PatternPlaces out;
    for (std::size_t item = 0; item < found_.size(); ++item) {
      if (is_wanted_[item]) out.set(scan_.ids_[item], std::move(found_[item]));
    }
    return out;
  }

 private:
  static constexpr std::size_t BLOCK = 2048;  // code points

  void read(std::size_t from) {
    const std::size_t count = std::min(BLOCK, text_.size() - from);
    const std::size_t seen = std::min(BLOCK + DEPTH - 1, text_.size() - from);
    rows_[0] = from == 0 ? &scan_.start_ : row_of(text_[from - 1]);
    for (std::size_t i = 0; i < seen; ++i) rows_[i + 1] = row_of(text_[from + i]);
    for (std::size_t i = seen; i < count + DEPTH - 1; ++i) rows_[i + 1] = &scan_.end_;
    for (std::size_t i = 0; i < count; ++i) {
      const auto& kind = kinds_[static_cast<unsigned>(std::countr_zero(index_.at(from + i)))];
      try_at(from + i, rows_.data() + i, kind);
    }
  }

  const Row* row_of(char32_t c) const { return &scan_.rows_[scan_.class_of(c)]; }

  // `rows` begins with the character before the offset.
  void try_at(std::size_t offset, const Row* const* rows, const Bits& kind) {
    Bits may;
    std::uint64_t any = 0;
    // Three at once, without a question between them, because most places fail at the third.
    for (std::size_t w = 0; w < may.size(); ++w) {
      may[w] = rows[0]->before[w] & rows[1]->inside[0][w] & rows[2]->inside[1][w] &
               rows[3]->inside[2][w] & kind[w];
      any |= may[w];
    }
    for (std::size_t depth = 3; depth < DEPTH && any != 0; ++depth) {
      any = 0;
      for (std::size_t w = 0; w < may.size(); ++w) {
        may[w] &= rows[depth + 1]->inside[depth][w];
        any |= may[w];
      }
    }
    if (any != 0) take(offset, may);
  }

  void take(std::size_t offset, const Bits& may) {
    for (std::size_t w = 0; w < may.size(); ++w) {
      for (std::uint64_t rest = may[w]; rest != 0; rest &= rest - 1) {
        const auto bit = w * WORD + static_cast<std::size_t>(std::countr_zero(rest));
        auto& offsets = found_[scan_.item_of_bit_[bit]];
        if (offsets.empty() || offsets.back() != offset) {
          offsets.push_back(static_cast<std::uint32_t>(offset));
        }
      }
    }
  }

  // A pattern that may begin nearly anywhere is better searched for by itself.
  void drop_frequent(std::size_t so_far) {
    constexpr std::size_t FEW = 1024;
    constexpr std::size_t WORTH = 5;  // code points passed over for each place
    for (std::size_t bit = 0; bit < scan_.item_of_bit_.size(); ++bit) {
      auto& offsets = found_[scan_.item_of_bit_[bit]];
      if (is_wanted_[scan_.item_of_bit_[bit]] && offsets.size() <= FEW + so_far / WORTH) continue;
      for (auto& wanted : kinds_) wanted[bit / WORD] &= ~(std::uint64_t{1} << (bit % WORD));
      is_wanted_[scan_.item_of_bit_[bit]] = false;
      PatternPlaces::Offsets().swap(offsets);
    }
  }

  const PatternScan& scan_;
  const std::u32string_view text_;
  const SearchIndex& index_;
  std::array<Bits, SearchIndex::COUNT> kinds_;    // of the patterns still wanted
  std::vector<bool> is_wanted_;                   // by item
  std::vector<PatternPlaces::Offsets> found_;     // by item
  std::array<const Row*, BLOCK + DEPTH> rows_{};  // from before the block on
};

PatternScan::PatternScan(const std::vector<Item>& items) {
  PatternScanBuilder builder(*this);
  for (const auto& item : items) builder.add(item);
  builder.finish();
}

PatternScan::Class PatternScan::class_of(char32_t c) const {
  if (c < BEHIND_PLANE) return classes_[pages_[c / PAGE]][c % PAGE];
  const auto after =
      std::upper_bound(astral_.begin(), astral_.end(), c,
                       [](char32_t value, const auto& entry) { return value < entry.first; });
  return std::prev(after)->second;
}

PatternPlaces PatternScan::scan(std::u32string_view text, const SearchIndex& index) const {
  Run run(*this, text, index);
  run.run();
  return run.places();
}

}  // namespace core::text
