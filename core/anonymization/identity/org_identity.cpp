#include "core/anonymization/identity/org_identity.hpp"

#include <algorithm>

#include "core/anonymization/avs_workgroup_party.hpp"
#include "core/text/unicode.hpp"

namespace core::anonymization {

const text::Regex RE_JOINER_FRAGMENT_IN_ORG_SPAN("RE_JOINER_FRAGMENT_IN_ORG_SPAN",
                                                 UR"(§|¶|⟦|⟧|¤|※|\uE000|\uE001)");

namespace {

using text::Regex;

// Acme Trading Pty Ltd, ACME PTY LTD.
const Regex RE_PTY_LTD("RE_PTY_LTD", UR"((?i)([A-Za-z][A-Za-z0-9&\.\- ]{1,60})\s+Pty\s+Ltd\.?)");

// Acme Trading Limited
const Regex RE_LIMITED("RE_LIMITED", UR"((?i)([A-Za-z][A-Za-z0-9&\.\- ]{1,60})\s+Limited\.?)");

// "Foo Not Limited" is no company form.
const Regex RE_NOT_LIMITED("RE_NOT_LIMITED", UR"((?i)\bnot\s+limited\b)");

// 某某公司集团
const Regex RE_COMPANY_GROUP("RE_COMPANY_GROUP", UR"(公司集团$)");

// 某某有限公司集团
const Regex RE_LIMITED_COMPANY_GROUP("RE_LIMITED_COMPANY_GROUP",
                                     UR"((?:有限责任公司|股份有限公司|有限公司)集团$)");

// 成都印钞厂 of 成都印钞厂有限公司: what follows the works is its legal form.
const Regex RE_PRINTING_WORKS("RE_PRINTING_WORKS", UR"(^([\u4e00-\u9fffA-Za-z0-9·]+印钞厂))");

// 英美烟草, 英美烟草公司, 英美烟草集团公司
const Regex RE_BAT("RE_BAT", UR"(英美烟草(?:集团)?(?:公司)?)");

// 北京大学, 某某研究院: names that need no legal form.
const Regex RE_INSTITUTION_NOUN(
    "RE_INSTITUTION_NOUN",
    UR"((?:厂|院|所|局|厅|署|银行|学院|大学|学校|医院|研究院|研究所|中心|集团)$)");

constexpr std::u32string_view LEGAL_FORMS[] = {U"有限责任公司", U"股份有限公司", U"有限公司"};
constexpr std::size_t MIN_INSTITUTION_CORE = 4;
constexpr std::size_t GROUP_LENGTH = 2;  // 集团, or the 公司 of 集团有限公司

// The name in front of Pty Ltd or Limited; empty if `s` has no such form.
std::u32string_view english_company_name(std::u32string_view s) {
  if (s.empty() || !text::is_ascii_alpha(text::case_fold_simple(s.front()))) return {};
  if (const auto m = RE_PTY_LTD.full_match(s)) return m->text(1);
  if (const auto m = RE_LIMITED.full_match(s); m && !RE_NOT_LIMITED.search(s)) return m->text(1);
  return {};
}

void drop_outer_parentheses(std::u32string& t) {
  if (t.size() < 2 || t.front() != U'(' || t.back() != U')') return;
  if (std::count(t.begin(), t.end(), U'(') != 1) return;
  t = text::strip(std::u32string_view(t).substr(1, t.size() - 2));
}

// Four tests, each on what the one before left.
void drop_group_word(std::u32string& t) {
  const auto drop = [&t](bool found) {
    if (found) t.resize(t.size() - GROUP_LENGTH);
  };
  drop(t.ends_with(U"集团有限公司"));
  const bool group = t.ends_with(U"集团");  // most names end otherwise
  drop(group && RE_COMPANY_GROUP.search(t));
  drop(group && RE_LIMITED_COMPANY_GROUP.search(t));
  drop(t.ends_with(U"有限公司集团"));
}

void drop_legal_form_of_institution(std::u32string& t) {
  for (const auto form : LEGAL_FORMS) {
    if (!t.ends_with(form)) continue;
    const auto core = std::u32string_view(t).substr(0, t.size() - form.size());
    constexpr std::u32string_view LAST_OF_NOUNS = U"厂院所局厅署行学校心团";
    if (core.size() >= MIN_INSTITUTION_CORE &&
        LAST_OF_NOUNS.find(core.back()) != LAST_OF_NOUNS.npos && RE_INSTITUTION_NOUN.search(core)) {
      t.resize(core.size());
    }
    return;
  }
}

}  // namespace

bool is_joiner_fragment(char32_t c) {
  return c == U'§' || c == U'¶' || c == U'⟦' || c == U'⟧' || c == U'¤' || c == U'※' ||
         c == 0xE000 || c == 0xE001;
}

std::u32string _organization_identity_key(std::u32string_view text, Offset start, Offset end) {
  const auto s = text::strip(text::slice(text, start, end));
  if (auto known = avs_workgroup_party_canonical_org_key_from_span_text(s); !known.empty()) {
    return known;
  }
  if (const auto name = english_company_name(s); !name.empty()) {
    return text::case_fold(text::remove_space(name));
  }
  return text::case_fold(_normalize_party_org_identity_fragment(s));
}

std::u32string _normalize_party_org_identity_fragment(std::u32string_view fragment) {
  auto t = text::remove_space(fragment);
  std::erase_if(t, is_joiner_fragment);
  t = text::fold_parentheses(t);
  drop_outer_parentheses(t);
  drop_group_word(t);
  if (t.find(U"印钞厂") != t.npos) {
    if (const auto works = RE_PRINTING_WORKS.match(t)) return std::u32string(works->text(1));
  }
  if (RE_BAT.full_match(t)) return U"英美烟草集团公司";
  drop_legal_form_of_institution(t);
  return t;
}

}  // namespace core::anonymization
