#include "bench/documents.hpp"

#include <random>

#include "core/anonymization/rules/helpers.hpp"

namespace bench {
namespace {

using core::anonymization::Offset;

constexpr std::u32string_view FILLER =
    U"根据《中华人民共和国民法典》及相关法律规定双方经友好协商就本合同项下货物的采购交付验收与付款事宜达成如下条款"
    U"任何一方未按约定履行义务的应当承担违约责任并赔偿对方因此遭受的损失本条款不因合同终止而失效";
constexpr std::u32string_view NAME_CHARACTERS =
    U"华信科远东方海天宏图瑞丰泰和嘉盛中恒通达博雅明德新宇世纪金桥银河星光";
constexpr std::string_view TYPES[] = {"ORGANIZATION", "PERSON", "LOCATION",
                                      "DATE_TIME",    "MONEY",  "PHONE_NUMBER"};

std::u32string digits(std::size_t number) {
  std::u32string out;
  for (const char c : std::to_string(number)) out.push_back(static_cast<char32_t>(c));
  return out;
}

// A name that differs for every number.
std::u32string name(std::size_t number, std::size_t least) {
  std::u32string out;
  while (out.size() < least || number > 0) {
    out.push_back(NAME_CHARACTERS[number % NAME_CHARACTERS.size()]);
    number /= NAME_CHARACTERS.size();
  }
  return out;
}

std::u32string surface(std::string_view type, std::size_t number) {
  if (type == "ORGANIZATION") return U"北京" + name(number, 3) + U"科技有限公司";
  if (type == "PERSON") return U"王" + name(number, 2);
  if (type == "LOCATION") return name(number, 2) + U"市" + name(number / 7, 2) + U"区";
  if (type == "DATE_TIME") return digits(1000 + number) + U"年3月15日";
  if (type == "MONEY") return U"人民币" + digits(1000 + number) + U"元";
  return U"138" + digits(10'000'000 + number);
}

}  // namespace

Document make_contract(const Shape& shape) {
  Document out;
  std::mt19937 random(20240315);
  std::size_t entities = 0;
  std::size_t next_break = shape.characters_per_paragraph;
  while (out.text.size() < shape.characters) {
    const auto type = TYPES[random() % std::size(TYPES)];
    const bool repeat =
        entities > 0 && static_cast<double>(random() % 1000) < shape.share_of_repeats * 1000;
    const auto words = surface(type, repeat ? random() % entities : entities);
    entities += repeat ? 0 : 1;
    const auto start = static_cast<Offset>(out.text.size());
    out.text += words;
    out.analyzer.hits.push_back(
        {std::string(type), start, static_cast<Offset>(out.text.size()), 0.85});
    while (out.text.size() < static_cast<std::size_t>(start) + shape.characters_per_entity) {
      out.text.push_back(FILLER[random() % FILLER.size()]);
    }
    if (shape.characters_per_paragraph > 0 && out.text.size() > next_break) {
      out.text += core::anonymization::PARAGRAPH_JOINER;
      next_break = out.text.size() + shape.characters_per_paragraph;
    }
  }
  return out;
}

}  // namespace bench
