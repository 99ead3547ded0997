#include "core/text/look_behind.hpp"

#include <algorithm>
#include <optional>

namespace core::text {
namespace {

using Kind = PatternNode::Kind;
const CharacterSet ANYTHING = {{0, GREATEST_CHARACTER}};

CharacterSet intersection(const CharacterSet& a, const CharacterSet& b) {
  CharacterSet out;
  for (std::size_t i = 0, j = 0; i < a.size() && j < b.size();) {
    const char32_t low = std::max(a[i].first, b[j].first);
    const char32_t high = std::min(a[i].second, b[j].second);
    if (low <= high) out.emplace_back(low, high);
    if (a[i].second < b[j].second) {
      ++i;
    } else {
      ++j;
    }
  }
  return out;
}

bool takes_nothing(const PatternNode& node) {
  switch (node.kind) {
    case Kind::SET:
    case Kind::REPEAT:
    case Kind::UNKNOWN:
      return false;
    case Kind::SEQUENCE:
    case Kind::CHOICE:
      return std::all_of(node.parts.begin(), node.parts.end(), takes_nothing);
    default:
      return true;
  }
}

// What the text that the node takes can end with; nothing if it may be anything.
std::optional<CharacterSet> last_of(const PatternNode& node) {
  if (node.kind == Kind::SET) return node.set;
  if (node.kind == Kind::REPEAT && node.min > 0) return last_of(node.parts[0]);
  if (node.kind == Kind::SEQUENCE) {
    const auto last = std::find_if_not(node.parts.rbegin(), node.parts.rend(), takes_nothing);
    return last == node.parts.rend() ? std::nullopt : last_of(*last);
  }
  if (node.kind != Kind::CHOICE) return std::nullopt;
  CharacterSet all;
  for (const auto& part : node.parts) {
    const auto one = last_of(part);
    if (!one) return std::nullopt;
    all.insert(all.end(), one->begin(), one->end());
  }
  return tidied(std::move(all));
}

// The characters that are by themselves what the node takes.
void add_single(const PatternNode& node, CharacterSet& out) {
  if (node.kind == Kind::SET) out.insert(out.end(), node.least.begin(), node.least.end());
  const bool goes_on =
      node.kind == Kind::CHOICE || (node.kind == Kind::SEQUENCE && node.parts.size() == 1);
  if (!goes_on) return;
  for (const auto& part : node.parts) add_single(part, out);
}

CharacterSet before_sequence(const std::vector<PatternNode>& parts) {
  CharacterSet out = ANYTHING;
  for (const auto& part : parts) {
    out = intersection(out, characters_before(part));
    if (!takes_nothing(part)) break;
  }
  return out;
}

// Reads one (?<![...]) at the front of `rest`, and takes it off; the characters of the
// class, or nothing.
std::u32string_view take_negative_look_behind(std::u32string_view& rest) {
  constexpr std::u32string_view HEAD = U"(?<![";
  if (!rest.starts_with(HEAD)) return {};
  const auto end = rest.find(U"])");
  if (end == rest.npos || rest.substr(0, end).find(U"\\]") != rest.npos) return {};
  const auto items = rest.substr(HEAD.size(), end - HEAD.size());
  rest.remove_prefix(end + 2);
  return items;
}

}  // namespace

CharacterSet characters_before(const PatternNode& tree) {
  switch (tree.kind) {
    case Kind::BEHIND:
      return last_of(tree.parts[0]).value_or(ANYTHING);
    case Kind::NOT_BEHIND: {
      CharacterSet excluded;
      add_single(tree.parts[0], excluded);
      return complement(tidied(std::move(excluded)));
    }
    case Kind::SEQUENCE:
      return before_sequence(tree.parts);
    case Kind::CHOICE: {
      CharacterSet all;
      for (const auto& part : tree.parts) {
        const auto one = characters_before(part);
        all.insert(all.end(), one.begin(), one.end());
      }
      return tidied(std::move(all));
    }
    case Kind::REPEAT:
      return tree.min > 0 ? characters_before(tree.parts[0]) : ANYTHING;
    default:
      return ANYTHING;
  }
}

SearchIndex::Kinds kinds_by_look_behind(std::u32string_view pattern, const PatternNode& tree) {
  using Index = SearchIndex;
  bool not_after_digit = false;
  bool not_after_letter = false;
  const auto has = [](std::u32string_view items, std::u32string_view item) {
    return items.find(item) != items.npos;
  };
  if (pattern.starts_with(U"(?i)")) pattern.remove_prefix(4);
  while (tree.parts.size() == 1) {
    const auto items = take_negative_look_behind(pattern);
    if (items.empty()) break;
    if (items.front() == U'^') continue;
    not_after_digit |= has(items, U"\\d") || has(items, U"0-9");
    not_after_letter |= has(items, U"A-Za-z") || has(items, U"\\p{L}");
  }
  auto kinds = Index::ALL;
  const auto drop = [&](Index::Kinds some) { kinds = static_cast<Index::Kinds>(kinds & ~some); };
  if (not_after_digit) drop(Index::DIGIT_AFTER_DIGIT);
  if (not_after_letter) drop(Index::DIGIT_AFTER_LETTER);
  if (not_after_digit && not_after_letter) drop(Index::UPPER_INSIDE | Index::LOWER_INSIDE);
  return kinds;
}

}  // namespace core::text
