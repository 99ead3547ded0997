#include "core/recognition/checksums.hpp"
#include "core/recognition/pattern_recognizer.hpp"
#include "core/recognition/predefined/predefined.hpp"
#include "core/text/unicode.hpp"

namespace core::recognition {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// 账号：3205 0188 4720 0006 913, account no. 072-904417-3, A/C 7559 0288 1610 008
const Regex RE_LABELLED_ACCOUNT(
    "RE_LABELLED_ACCOUNT",
    UR"((?i)[ \t]{0,4}(?:号码|号|nos?\.?|number)?(?:\([^()\n]{1,12}\))?[ \t]{0,2}(?:为|是|:|,|#)?[ \t(\[“"]{0,4}\n?((?:(?:NRA|OSA|FTN|FTE) ?)?\d(?:[ -]?\d){6,33}|\d{2}-\d{2}-\d{2}|\d{3}-\d{3}|[A-Z]{4}0[A-Z0-9]{6})(?![\dA-Z年月日%]|[.,]\d))");

// 6299 2788 8660 2803 586, 640218830900127745. Not a telephone number in groups.
const Regex RE_ACCOUNT(
    "RE_ACCOUNT",
    UR"((?<![\d.,-])(?<!\d )(?<![A-Z]{4} )(?<![A-Z]{2}\d{2} )(?:\d{4}(?: \d{4}){2,4}(?: \d{1,4})?|\d{2,8}(?: \d{4}){3,4}(?: \d{1,5})?|\d{15,21})(?![\dA-Za-z]| \d|[.,]\d))");

// 81782 20014 21003 965, 501-774-923-6 with a word such as "bank" near: groups of another length
const Regex RE_GROUPED_ACCOUNT(
    "RE_GROUPED_ACCOUNT",
    UR"((?<![\d.,-])(?<!\d )(?:\d{5}(?: \d{5}){1,3}(?: \d{1,4})?|\d{3}(?: \d{3}){3,5}(?: \d{1,2})?|\d{6}(?: \d{6}){1,2}(?: \d{1,5})?|\d{3}-\d{3}-\d{3}-\d{1,4}|\d{3}-\d-\d{6}-\d{3}|\d{3}-\d{6}-\d{3})(?![\dA-Za-z]|[ -]\d|[.,]\d))");

// 开户行：中国银行上海分行，12345678901234
const Regex RE_SHORT_ACCOUNT(
    "RE_SHORT_ACCOUNT",
    UR"((?<![\d.,-])(?<!\d )(?!1[3-9]\d{9}(?!\d))\d{10,14}(?![\dA-Za-z]|[ ,.-]\d|[元年月日]))");

// 5273 8486 2385 1350, 4913-0503-0139-6696, 3782 822463 10005
const Regex RE_CARD(
    "RE_CARD",
    UR"((?<![\d.,-])(?<!\d )(?:62\d{2}(?:[ -]?\d{4}){2}[ -]?\d{4}(?:[ -]?\d{1,3})?|(?:4\d|5[0-8]|2[2-7]|3[05-6]|6[0345])\d{2}(?:[ -]?\d{4}){3}|3[47]\d{2}[ -]?\d{6}[ -]?\d{5})(?![\dA-Za-z]| \d{3}))");
const Regex RE_LABELLED_CARD(
    "RE_LABELLED_CARD",
    UR"((?i)[ \t]{0,3}(?:\(?卡号|号码|号|nos?\.?|number)?(?:\([^()\n\d]{1,12}\))?[ \t]{0,2}(?:为|是|:)?[ \t(]{0,3}(\d{4}(?:[ -]?\d{3,6}){2}[ -]?\d{0,7})(?![\dA-Z]))");

// 尾号1234, 尾号为9052, ending in 1234
const Regex RE_LAST4("RE_LAST4",
                     UR"([ \t]{0,2}(?:为|是|in|:)?[ \t:"“]{0,3}(\d{4})(?![\dA-Za-z年]))");

// DE92 3044 9481 5716 7349 66, NL65NDRV5568567041
const Regex RE_IBAN("RE_IBAN",
                    UR"([A-Z]{2}\d{2}(?: ?[A-Z0-9]{4}){2,7}(?: ?[A-Z0-9]{1,4})?(?![A-Za-z0-9]))");
const Regex RE_LABELLED_IBAN(
    "RE_LABELLED_IBAN",
    UR"((?i)[ \t]{0,2}(?:号|账号|nos?\.?|number|code)?[ \t]{0,2}(?:\([^()\n]{1,12}\))?[-:]?[ \t(]{0,4}([A-Z]{2}\d{2}(?:[ -]?[A-Z0-9]{2,4}){3,8}(?:[ -]?[A-Z0-9])?)(?![A-Za-z0-9]))");

// SWIFT: QHHYCNBS, BIC HVLKGB2LXXX. Not SWIFT MESSAGE.
const Regex RE_LABELLED_SWIFT(
    "RE_LABELLED_SWIFT",
    UR"((?i)[ \t]{0,2}(?:代码|code|号)?\)?[ \t]{0,2}(?:为|是|:)?[ \t(]{0,4}((?-i)[A-Z]{4}(?!SAGE|MENT)[A-Z]{2}[A-Z0-9]{2}(?:[A-Z0-9]{3})?)(?![A-Za-z0-9]))");

// NGKBINBBXXX: a head office, which no word looks like
const Regex RE_SWIFT_HEAD_OFFICE("RE_SWIFT_HEAD_OFFICE",
                                 UR"((?<![A-Za-z0-9])[A-Z]{6}[A-Z0-9]{2}XXX(?![A-Za-z0-9]))");

// routing number 061000052, ABA: 021000021
const Regex RE_LABELLED_ROUTING(
    "RE_LABELLED_ROUTING",
    UR"((?i)[ \t]{0,2}(?:nos?\.?|number|#)?[ \t]{0,2}:?[ \t]{0,4}(\d{9})(?!\d))");
const Regex RE_ROUTING("RE_ROUTING", UR"((?<![\d.,-])\d{9}(?![\dA-Za-z]|[-.]\d))");

std::optional<bool> validate_card(std::u32string_view s) { return is_luhn_valid(s); }
std::optional<bool> validate_iban(std::u32string_view s) { return is_iban_valid(s); }

std::optional<bool> validate_routing(std::u32string_view s) {
  return is_aba_routing_valid(s) ? std::nullopt : std::optional(false);
}

// A payment card is not reported as an account as well.
std::optional<bool> validate_account(std::u32string_view s) {
  constexpr std::size_t CARD_DIGITS = 16;
  const std::size_t blanks = text::remove_space(s).size();
  const bool card =
      blanks == CARD_DIGITS && (s.front() == U'4' || s.front() == U'5') && is_luhn_valid(s);
  return card ? std::optional(false) : std::nullopt;
}

}  // namespace

void add_banking_recognizers(RecognizerRegistry& registry) {
  const auto add = [&](PatternRecognizerConfig config) {
    registry.add_recognizer(std::make_shared<PatternRecognizer>(std::move(config)));
  };
  add({"BankAccountRecognizer",
       std::string(entity_type::BANK_ACCOUNT),
       {{"behind a label", &RE_LABELLED_ACCOUNT, 0.85, after(WordClass::ACCOUNT_LABEL)},
        {"groups of four", &RE_ACCOUNT, 0.5, AT_NUMBER},
        {"groups, with context", &RE_GROUPED_ACCOUNT, 0.1, AT_NUMBER},
        {"with context", &RE_SHORT_ACCOUNT, 0.1, AT_NUMBER}},
       {U"账户", U"账号", U"帐号", U"帐户", U"银行", U"支行", U"分行", U"开户", U"account",
        U"bank"},
       validate_account});
  add({"CreditCardRecognizer",
       std::string(entity_type::CREDIT_CARD),
       {{"Luhn", &RE_CARD, 0.5, AT_NUMBER},
        {"behind a label", &RE_LABELLED_CARD, 0.85, after(WordClass::CARD_LABEL)}},
       {},
       validate_card});
  add({"CardLast4Recognizer",
       std::string(entity_type::CARD_LAST4),
       {{"behind a label", &RE_LAST4, 0.8, after(WordClass::LAST4_LABEL)}}});
  add({"IbanRecognizer",
       std::string(entity_type::IBAN_CODE),
       {{"mod 97", &RE_IBAN, 0.5, AT_NUMBER},
        {"behind a label", &RE_LABELLED_IBAN, 0.85, after(WordClass::IBAN_LABEL)}},
       {},
       validate_iban});
  add({"SwiftRecognizer",
       std::string(entity_type::SWIFT_CODE),
       {{"behind a label", &RE_LABELLED_SWIFT, 0.85, after(WordClass::SWIFT_LABEL)},
        {"head office", &RE_SWIFT_HEAD_OFFICE, 0.8, {}}}});
  add({"UsBankRecognizer",
       std::string(entity_type::US_BANK_NUMBER),
       {{"behind a label", &RE_LABELLED_ROUTING, 0.85, after(WordClass::US_BANK_LABEL)},
        {"routing number", &RE_ROUTING, 0.2, AT_NUMBER}},
       {U"routing", U"aba"},
       validate_routing});
}

}  // namespace core::recognition
