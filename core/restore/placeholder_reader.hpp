// Reads placeholders in a text that somebody may have edited: a person, a word
// processor, a translator, a language model.
//
// All of these are [机构1]:
//
//   【机构1】 ［机构１］ 〔 机构 1 〕 [機構1] \[机构1\] [ORG1] [org 1] [Org-1]
//
// Brackets of one pair may differ, letter case and width do not count, nor do white
// space, invisible characters and the backslashes of Markdown within. Parentheses
// are no such brackets, and a name without brackets is no placeholder.
//
// Offsets count code points. May be called from any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace core::restore {

struct WrittenPlaceholder {
  std::size_t start = 0;
  std::size_t end = 0;
  // Equal for all spellings of one placeholder: its tag, "#", its number.
  std::u32string key;

  std::u32string_view tag() const {
    return std::u32string_view(key).substr(0, key.find_last_of(U'#'));
  }
};

// Everything in the text that is written like a placeholder, sorted and disjoint.
// Whether it is one only a mapping can tell.
std::vector<WrittenPlaceholder> find_written_placeholders(std::u32string_view text);

// The key of one placeholder; empty if it is not written like one.
std::u32string placeholder_key(std::u32string_view placeholder);

// The tag of a key, in the form of WrittenPlaceholder::tag(), is one that veildoc
// gives by itself, so that [DATE9] is a placeholder and [附件9] is none.
bool is_own_tag(std::u32string_view folded_tag);

// One character as it counts in a placeholder: narrow and in lower case; 0 for one
// that does not count at all.
char32_t placeholder_character(char32_t c);

}  // namespace core::restore
