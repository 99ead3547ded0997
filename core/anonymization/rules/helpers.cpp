#include "core/anonymization/rules/helpers.hpp"

#include "core/anonymization/hook.hpp"

namespace core::anonymization {
namespace {

using JoinerHook = Hook<std::optional<std::vector<std::u32string>>()>;

JoinerHook& joiner_setting() {
  static JoinerHook instance;
  return instance;
}

}  // namespace

std::vector<std::u32string> docx_para_joiner_sequences() {
  if (const auto setting = joiner_setting().get()) {
    if (auto joiners = (*setting)()) return std::move(*joiners);
  }
  return {DOCX_PARA_JOINER_SEQUENCES.begin(), DOCX_PARA_JOINER_SEQUENCES.end()};
}

void set_joiner_setting(JoinerSetting setting) { joiner_setting().set(std::move(setting)); }

// Behind 24,000,000:
//   (twenty-four million euros)
//   （SAY US DOLLARS FIVE HUNDRED ONLY）
//   (Five Hundred Thousand Dollars and 50/100)
//   (in words: RMB One Million Two Hundred Thousand)
// but not
//   (excluding VAT)   (the Price)   (three months)   (one)   (thousand dollars)
//
// Two look-aheads ask for a numeral and for a word that makes it an amount; then
// every word up to the closing parenthesis must be one of an amount's words. A
// mere unit of the figure, (thousand dollars), has no numeral and stays.
const text::Regex RE_EN_WRITTEN_CURRENCY_IN_PARENS("RE_EN_WRITTEN_CURRENCY_IN_PARENS",
                                                   UR"((?xi)
(?(DEFINE)
  (?<numeral> one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|thirteen|fourteen
            |fifteen|sixteen|seventeen|eighteen|nineteen|twenty|thirty|fou?rty|fifty|sixty|seventy
            |eighty|ninety|half)
  (?<scale> hundred|thousand|millions?|billions?|trillions?|lakhs?|crores?)
  (?<currency> dollars?|euros?|pounds?|sterling|yuan|renminbi|yen|won|francs?|rou?bles?|rupees?
             |dirhams?|riyals?|baht|ringgit|rupiah|pesos?|dong|liras?|kron[ao]r?|kroner|reais|rand
             |zloty|tenge|lari|manat|som|sum|dinars?|shekels?|patacas?|shillings?|naira
             |USD|EUR|GBP|JPY|HKD|CNY|CNH|RMB|AUD|NZD|CAD|SGD|CHF|KRW|INR|MOP|TWD|NTD|THB|MYR|IDR
             |PHP|VND|AED|SAR|QAR|KWD|ILS|RUB|SEK|NOK|DKK|PLN|CZK|HUF|ZAR|BRL|MXN|TRY|KZT|GEL|AZN
             |UZS|NGN|EGP)
  (?<subunit> cents?|pence|penny|fen|jiao|centimes?|sen|paise|fils|kopecks?|halalas?)
  (?<country> US|U\.S\.?|USA|united\s++states|american|hong\s++kong|HK|maca[uo]|canad(?:a|ian)
            |australian?|new\s++zealand|singapore|china|chinese|(?:new\s++)?taiwan|NT|japanese
            |(?:south\s++)?korean|swiss|british|UK|great\s++britain|indian|russian|UAE|saudi|qatari
            |kuwaiti|thai|malaysian|indonesian|philippine|vietnamese|mexican|turkish|swedish
            |norwegian|danish|south\s++african|israeli|georgian
            |of\s++the\s++united\s++states(?:\s++of\s++america)?)
)
\s*+ [(（] \s*+
(?= [^()（）]*? \b (?: (?&numeral) | an? \s++ (?&scale) ) \b )
(?= [^()（）]*? (?: \b (?: (?&scale) | (?&currency) | only ) \b | [$€£¥￥] ) )
(?> (?: (?:in\s++)?+ words? | say(?:ing)? | total | the\s++sum\s++of | being ) \b [\s:：,]*+ )*+
(?: (?> (?: zero | (?&numeral) | quarters? | (?&scale) | point | and | an? | only | exactly
          | (?&country) | (?&currency) | (?&subunit) ) (?![A-Za-z0-9])
      | (?:US|HK|NT|[ACS])?+ \$ | [€£¥￥]
      | (?:\d{1,2}|no|xx?) / 100 (?!\d)
      | \d{1,2} (?= \s++ (?&subunit) \b ) )
    [\s,.;:：\-‐‑–—]*+ )++
[)）] [\ \t]*+)");

}  // namespace core::anonymization
