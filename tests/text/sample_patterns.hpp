// Patterns, and texts that they half match, for the tests of what stands before the
// regex engine.
#pragma once

#include <random>
#include <string>
#include <string_view>

namespace core::text {

// Patterns that use, between them, all of the syntax in which ours are written.
inline const std::u32string_view PATTERNS[] = {
    UR"((?<![A-Za-z0-9])(?:19|20)\d{2}\s?年\s?\d{1,2}\s?月(?:\s?\d{1,2}\s?[日号])?)",
    UR"((?i)(?:no\.?|k[is]t)\h*[:：]?\h*([A-Z]{1,3}-?\d{3,}+))",
    UR"([^\d\s年][\-a-c\]]{2}|[\u4e00-\u9fa5]{2,4}(?=公司)|\x41\tb\b)",
    UR"((?(?=\d)\d{2}|[a-f]+)x(?>a|ab)c?+)",
    UR"((?<part>a|1)(?&part)[月k-m]*?z)",
    UR"((?xi) a \d+ # comment
        (?-i: K ) [\ #] )",
    UR"(\p{Lu}[\p{L}'.]*(?:\ \p{Lu}\P{L}?){1,3})",
    UR"((a|b)\1{2,3}[^a]?\.\d{20,}|1{18,19}[A-F])",
    UR"([\W_]\w\S\D[^\w])",
    UR"((?:ab|a)?(?:c|(?:d1)+?){2,}\$)",
    UR"((?<![A-Za-z0-9])(?<![.-])(?:a?\d{2}|x1))",
    UR"((?<![\d.])(?<!\d )\d[\d.]?[a-z](?!\d))",
    UR"((?i)(?<![A-Za-z])[kx] ?\d)",
    UR"([\u4e00-\u9fff][A-F]\d)",
    UR"((?:(?<=[年-])|(?<=b:|b :| )|(?<![\p{L}:])(?<!a|1b))(?:\d|(?<![^b]b)k)[\w.])",
    UR"((?i)(?:(?<!\w)|(?<=[^\d\s]))(?<![k月\W])x?\d{2})",
    UR"((?<!z)(?=[A-F\d]{3,5}(?!\d))(?=\w+)(?:[A-F]|\d)+(?=月|日日))",
};

// Made of what the patterns are about, so that many matches begin and half of them fail.
inline std::u32string random_text(std::mt19937& random) {
  static const std::u32string LETTERS =
      U"aabbccddxzKkſ\u212A12205年月日号公司AFB-.:：[]#_$' \t\n\U00020000\U0001F600é";
  std::u32string text;
  for (int i = 0; i < 60; ++i) text.push_back(LETTERS[random() % LETTERS.size()]);
  return text;
}

}  // namespace core::text
