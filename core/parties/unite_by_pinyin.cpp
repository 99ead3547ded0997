#include <algorithm>
#include <map>

#include "core/parties/party_names.hpp"
#include "core/parties/pinyin.hpp"
#include "core/parties/script_names.hpp"

namespace core::parties {
namespace {

// The parties whose names have one place and brand, by script; of more than one nobody can
// tell which is meant.
struct Bearers {
  static constexpr std::size_t NOBODY = static_cast<std::size_t>(-1);
  std::size_t chinese = NOBODY;
  std::size_t latin = NOBODY;
  bool several = false;

  void add(std::size_t& slot, std::size_t party) {
    several = several || (slot != NOBODY && slot != party);
    slot = party;
  }
};

// The ways to spell a Chinese name; its characters are not turned round.
std::vector<std::u32string> letters_of(std::u32string_view chinese) {
  return pinyin_spellings(chinese, chinese.size());
}

// By "dongguan lianxinda"
using ByLetters = std::map<std::u32string, Bearers>;

void add_chinese(const PartyNames& names, std::size_t i, ByLetters& out) {
  const auto& name = names.name(i);
  constexpr std::size_t LONGEST_PLACE = 4;
  const auto place = bare_place(name.place);
  if (name.brand.empty() || place.empty() || place.size() > LONGEST_PLACE) return;
  for (const auto& where : letters_of(place)) {
    for (const auto& brand : letters_of(name.brand)) {
      std::u32string key = where;
      Bearers& bearers = out[key.append(U" ").append(brand)];
      bearers.add(bearers.chinese, names.party(i));
    }
  }
}

void add_latin(const PartyNames& names, std::size_t i, ByLetters& out) {
  const auto& name = names.name(i);
  constexpr std::size_t MOST_BRAND_WORDS = 3;
  std::u32string place;
  for (std::size_t w = 0; w < name.place_words; ++w) place += name.words[w];
  std::u32string brand;
  for (std::size_t w = name.place_words;
       w < std::min(name.words.size(), name.place_words + MOST_BRAND_WORDS); ++w) {
    brand += name.words[w];
    Bearers& bearers = out[pinyin_letters(place) + U" " + pinyin_letters(brand)];
    bearers.add(bearers.latin, names.party(i));
  }
}

}  // namespace

void unite_by_pinyin(PartyNames& names) {
  ByLetters by_letters;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const auto& name = names.name(i);
    if (!name.is_full() || name.is_branch) continue;
    if (name.script == Script::CHINESE) add_chinese(names, i, by_letters);
    if (name.script == Script::LATIN && name.place_words > 0) add_latin(names, i, by_letters);
  }
  for (const auto& [letters, bearers] : by_letters) {
    if (bearers.several || bearers.chinese == Bearers::NOBODY || bearers.latin == Bearers::NOBODY) {
      continue;
    }
    names.unite(bearers.chinese, bearers.latin);
  }
}

}  // namespace core::parties
