#include "core/anonymization/identity/tag_and_key.hpp"

#include "core/anonymization/country_names.hpp"
#include "core/anonymization/identity/date_money.hpp"
#include "core/anonymization/identity/location_identity.hpp"
#include "core/anonymization/identity/org_identity.hpp"
#include "core/person_clustering.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace core::anonymization {
namespace {

using text::Regex;

// 约100元, 大约100元
const Regex RE_APPROXIMATION_PREFIX("RE_APPROXIMATION_PREFIX",
                                    UR"(^(?:约|大概|大约|上下|左右|多|余)+)");

// -100, −100
const Regex RE_SIGN_PREFIX("RE_SIGN_PREFIX", UR"(^[-−]+)");

// US$100, RMB¥100
const Regex RE_CURRENCY_PREFIX(
    "RE_CURRENCY_PREFIX",
    UR"((?i)^(?:US\$|HK\$|U\$S?|USD|EUR|GBP|JPY|HKD|CNY|RMB|人民币|¥|￥|\$|€|£)+)");

// 100USD
const Regex RE_CURRENCY_SUFFIX("RE_CURRENCY_SUFFIX", UR"((?i)(?:USD|EUR|GBP|JPY|HKD|CNY|RMB)+$)");

// 100元, 100万. Of 100万元 the whole 万元 goes.
const Regex RE_UNIT_SUFFIX("RE_UNIT_SUFFIX", UR"((?:元|圆|万元|万|亿|千万|千元|角|分|块)$)");

bool is_among(char32_t c, std::u32string_view set) { return set.find(c) != set.npos; }

// A character that begins or ends no currency of RE_CURRENCY_PREFIX and RE_CURRENCY_SUFFIX,
// as those of most amounts are.
bool is_no_currency(char32_t c) {
  return text::is_ascii_digit(c) || (text::is_ideograph(c) && c != U'人');
}

// Each affix is taken off what the ones before left. What it begins or ends with tells of
// most amounts that they have none.
std::u32string money_key(std::u32string_view surface) {
  auto t = text::remove_space(surface);
  std::erase_if(t, [](char32_t c) { return c == U',' || c == U'，'; });
  const auto take_off = [&t](bool may_be, const Regex& affix) {
    if (!may_be) return;
    if (const auto m = affix.search(t)) t.erase(m->start(), m->end() - m->start());
  };
  const auto first = [&t] { return t.empty() ? U' ' : t.front(); };
  const auto last = [&t] { return t.empty() ? U' ' : t.back(); };
  take_off(is_among(first(), U"约大上左多余"), RE_APPROXIMATION_PREFIX);
  take_off(is_among(first(), U"-−"), RE_SIGN_PREFIX);
  take_off(!is_no_currency(first()), RE_CURRENCY_PREFIX);
  take_off(!is_no_currency(last()), RE_CURRENCY_SUFFIX);
  take_off(is_among(last(), U"元圆万亿角分块"), RE_UNIT_SUFFIX);
  return text::case_fold(t);
}

std::u32string position_key(Offset start, Offset end) {
  return text::decode_utf8("@" + std::to_string(start) + ":" + std::to_string(end));
}

}  // namespace

TagAndKey _global_placeholder_tag_and_key(std::string_view tag, std::u32string_view para_text,
                                          Offset start, Offset end) {
  const auto span = text::slice(para_text, start, end);
  if (tag == tag::ORG) {
    const auto country = _canonical_geo_country_identity_fragment(span);
    if (!country.empty() && _geo_country_mask_as_address_enabled() &&
        _org_span_is_bare_geo_country(span, country)) {
      return {std::string(tag::ADDRESS), text::case_fold(country)};
    }
    return {std::string(tag), _organization_identity_key(para_text, start, end)};
  }
  if (tag == tag::NAME) return {std::string(tag), person_identity_key(para_text, start, end)};
  if (tag == tag::ADDRESS) return {std::string(tag), _location_identity_key(para_text, start, end)};
  if (tag == tag::DATE) return {std::string(tag), _datetime_identity_key(para_text, start, end)};
  auto key = _generic_entity_identity_key(tag, para_text, start, end);
  if (tag == tag::MONEY && key.empty()) key = position_key(start, end);
  return {std::string(tag), std::move(key)};
}

std::u32string _generic_entity_identity_key(std::string_view entity_type, std::u32string_view text,
                                            Offset start, Offset end) {
  if (entity_type == entity_type::DATE_TIME) return _datetime_identity_key(text, start, end);
  if (entity_type == entity_type::PERSON) return person_identity_key(text, start, end);
  const auto surface = text::fold_parentheses(text::slice(text, start, end));
  if (entity_type == entity_type::MONEY) return money_key(surface);
  return text::case_fold(text::remove_space(surface));
}

}  // namespace core::anonymization
