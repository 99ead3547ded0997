// Regular expressions over UTF-32 text.
//
// The syntax is PCRE2's: look-behind, named groups, inline flags such as (?i),
// leftmost-first alternatives. `\d`, `\w`, `\s`, `\b` follow Unicode, \uXXXX
// names a code point, `.` stops at a line feed only, and `$` also matches
// before a final line feed. `\s` matches exactly what is_space() accepts.
// Any 32-bit value may stand in the text.
//
// The kinds of match are the names of the methods:
//   full_match  the whole text          match  anchored at the start
//   search      the first one anywhere
//
// A Regex is meant to be a constant of the file that uses it. It is compiled
// when it is built (a bad pattern throws RegexError there) and brought to
// machine code at its first use. It is immutable and may be used from any
// thread at once; it cannot be copied, because what is compiled is costly.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/text/search_index.hpp"

namespace core::text {

// One match: the offsets of the whole (group 0) and of its groups, in code
// points of the text that was given. It refers to that text and must not outlive it.
class Match {
 public:
  static constexpr std::size_t MAX_GROUPS = 12;  // of a pattern, the whole match counted

  std::size_t start(std::size_t group = 0) const { return bounds_[group].first; }
  std::size_t end(std::size_t group = 0) const { return bounds_[group].second; }
  // False for a group that took no part in the match; its text is empty.
  bool has(std::size_t group) const { return start(group) != std::u32string_view::npos; }
  std::u32string_view text(std::size_t group = 0) const {
    return has(group) ? subject_.substr(start(group), end(group) - start(group))
                      : std::u32string_view();
  }

 private:
  friend class Regex;
  std::u32string_view subject_;
  std::array<std::pair<std::size_t, std::size_t>, MAX_GROUPS> bounds_;
};

class Regex {
 public:
  // `name` is what error messages call the pattern. Throws RegexError, naming
  // the pattern and the offset, if it does not compile or has too many groups.
  Regex(std::string_view name, std::u32string_view pattern);
  // A pattern that is searched for in whole documents: it joins the scan, see below.
  enum class Scanned : std::uint8_t { YES };
  Regex(std::string_view name, std::u32string_view pattern, Scanned);
  ~Regex();
  Regex(const Regex&) = delete;
  Regex& operator=(const Regex&) = delete;

  // Each throws RegexError, naming the pattern, if the engine gives up.
  std::optional<Match> full_match(std::u32string_view text) const;
  std::optional<Match> match(std::u32string_view text) const;
  // From offset `from` on; what stands before `from` is seen by look-behind.
  std::optional<Match> search(std::u32string_view text, std::size_t from = 0) const;
  // Anchored at offset `at`; what stands before is seen by look-behind.
  std::optional<Match> match_at(std::u32string_view text, std::size_t at) const;

  // All matches, left to right without overlap. An empty match is taken too,
  // but not twice at one place.
  std::vector<Match> find_all(std::u32string_view text) const;

  // The same with the index of `text`: as fast as can be for a long text. The search
  // may be confined to matches whose first character is of the kinds `where`; it may
  // then also find others.
  std::optional<Match> search(std::u32string_view text, const SearchIndex& index,
                              std::size_t from = 0,
                              SearchIndex::Kinds where = SearchIndex::ALL) const;
  std::vector<Match> find_all(std::u32string_view text, const SearchIndex& index) const;

  // From now on the pattern is among those of scan_patterns(), for matches whose first
  // character is of one of the kinds `where`. May be called again with others.
  void join_scan(SearchIndex::Kinds where = SearchIndex::ALL) const;

  // Every match replaced by `replacement`, taken literally.
  std::u32string replace_all(std::u32string_view text, std::u32string_view replacement) const;

  // What stands between the matches: always one piece more than there are matches.
  std::vector<std::u32string_view> split(std::u32string_view text) const;

  // The number of a named group. Throws RegexError if there is none of that name.
  std::size_t group(std::u32string_view group_name) const;

  const std::string& name() const { return name_; }
  std::u32string_view pattern() const;

 private:
  struct Programs;
  struct Request;
  bool run(const Request& request, Match& match) const;
  // The first match from `request.from` on; the same as run(), often sooner.
  bool run_search(const Request& request, Match& match) const;
  // The same where the match can only begin at one of `places`.
  bool run_at(const PatternPlaces::Offsets& places, const Request& request, Match& match) const;
  std::vector<Match> find_all(const Request& all) const;
  std::optional<Match> once(const Request& request) const;
  bool may_begin(std::u32string_view text, std::size_t at) const;

  std::string name_;
  std::unique_ptr<Programs> programs_;
};

// Looks for the beginnings of all patterns that have joined the scan, in one pass over
// `text`, whose index it is; the index keeps them for the searches. Does nothing until
// so much text has been seen that it is worth it.
void scan_patterns(std::u32string_view text, SearchIndex& index);

// The patterns that have joined the scan so far, for measurements.
std::vector<std::u32string_view> scanned_patterns();

// `text` with every character that has a meaning in a pattern escaped, so that
// the pattern matches it literally.
std::u32string escape_for_regex(std::u32string_view text);

}  // namespace core::text
