// The name of an organization, taken apart, and when a shorter one may stand for it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace core::parties {

enum class Script { NONE, CHINESE, LATIN };

// In folded case, without blanks (Chinese) or as words without dots (Latin).
//
//   北京市华信（香港）信息科技集团有限公司  ->  place 北京市, core 华信信息科技, brand 华信,
//                                            qualifier 香港, form 有限公司, is_group
//   Nordvik Havbruk (Asia) Co., Ltd.    ->  words nordvik havbruk (asia), form "co ltd"
struct OrganizationName {
  Script script = Script::NONE;
  std::u32string place;
  std::u32string core;
  std::u32string brand;      // what stands before the first word for a trade; may be empty
  std::u32string qualifier;  // what stands in brackets inside a Chinese name
  std::vector<std::u32string> words;
  std::size_t place_words = 0;  // how many of `words` name a place, from the first on
  std::u32string form;          // legal form; that of a plain 公司 too
  bool is_group = false;
  bool is_branch = false;  // 分公司, 支行, Sub-branch
  // Of a Chinese branch: 湘沅银行 and 岳麓支行. Where no word tells one from the
  // other (驭川遵义分公司), the name as a whole is the branch.
  std::u32string company;
  std::u32string branch;
  bool is_institution = false;  // a body, bank, court, hospital: no company

  // Whether the name is one of a register, rather than a short one.
  bool is_full() const;
};

OrganizationName parse_organization_name(std::u32string_view surface);

enum class Likeness {
  NONE,
  POSSIBLE,  // a reader might take the one for the other, we do not
  SHORT,
};

// Whether `name` is written like a shorter form of `longer`, of the same script.
//
//   华信科技, 华信公司, 北京华信 of 北京华信科技有限公司    ->  SHORT
//   上海华信, 华信集团 of it                             ->  NONE
//   Nordvik of Nordvik Havbruk AS                     ->  SHORT
//   ABC Holdings of ABC Holdings (Asia) Ltd           ->  POSSIBLE
Likeness likeness(const OrganizationName& name, const OrganizationName& longer);

// Whether the two are one name, legal form and all, in different punctuation:
// Acme Ltd and ACME, Limited; Smith & Co Inc. and Smith and Co Inc.
bool is_same_name(const OrganizationName& a, const OrganizationName& b);

// Whether `alias` can be read as an abbreviation of `name`: the first letters of
// its words (ICC, C&F), some of its words, some of its ideographs (贸仲委).
bool abbreviates(std::u32string_view alias, std::u32string_view name);

}  // namespace core::parties
