// The spelling of a person's name, taken apart.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace core {

// A name in folded case. Of a name without Chinese, Japanese or Korean
// characters the parts are its words, without dots: "SMITH, Mr. John A., Jr."
// gives the names john, a, smith and the generation jr. Of any other name
// the one part is the name as a whole.
struct PersonName {
  // Titles that tell persons apart, because a surname (and perhaps initials) is
  // all that is there besides: mr of Mr. J. Smith, but not of Mr. John Smith.
  std::vector<std::u32string> titles;
  std::vector<std::u32string> names;       // given names first, surname last
  std::vector<std::u32string> generation;  // jr, iii

  // The parts with blanks between them; empty if there are no names.
  std::u32string key() const;
};

// The name that `spelling` is; without names if it holds none.
PersonName parse_person_name(std::u32string_view spelling);

// A name that begins with a Chinese surname: 王 and 建国, or 王 and the title 经理.
struct ChineseName {
  std::u32string surname;
  std::u32string given;
  std::u32string title;
};

// The key of a name taken apart; without a surname if it is no such name.
ChineseName parse_chinese_name(std::u32string_view key);

// Without the Chinese titles and honorifics at the end: Osterkamp of Osterkamp先生.
std::u32string_view without_chinese_title(std::u32string_view name);

enum class Gender { UNKNOWN, FEMALE, MALE };

// What the titles say.
Gender gender_of(const PersonName& name);

// What a word says that stands before a name or behind it: Ms, Mr., 女士.
Gender gender_of_title(std::u32string_view word);

}  // namespace core
