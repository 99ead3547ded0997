#include "core/anonymization/doc_alias_scan.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "core/anonymization/defined_term.hpp"
#include "core/anonymization/text_findings.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"

namespace core::anonymization {
namespace {

using text::Regex;

// Surer than a guess, less sure than what an analyzer recognises.
constexpr double ALIAS_SCORE = 0.6;

// What is read around a term, at most: between its quotes, back to its bracket,
// back over the words that introduce it, and between it and the term before it.
constexpr std::size_t MAX_QUOTED = 48;
constexpr std::size_t MAX_CLAUSE = 240;
constexpr std::size_t MAX_LEAD = 96;
constexpr std::size_t MAX_JOINT = 24;
// A term without quotes and brackets is told from the running text by being short.
constexpr std::size_t MAX_BARE = 12;
// Brackets that are open at once; a text that has more is no contract.
constexpr std::size_t MAX_DEPTH = 32;

// Words that introduce a term: 以下简称, 下称：, 中文简称为.
const Regex RE_ZH_INTRODUCTION(
    "RE_ZH_INTRODUCTION",
    UR"((?:(?:以下|下文|后文|文中|中文|英文|本合同|本协议)(?:均|统一|合并|共同|单独|分别)?)?(?:简称|下称|以下称|统称|合称|并称)[为作是]?\s{0,4}[：:]?\s{0,4}$)");

// The same: hereinafter, hereafter referred to as the, collectively known as.
const Regex RE_EN_INTRODUCTION(
    "RE_EN_INTRODUCTION",
    UR"((?i)\b(?:here(?:in)?after|(?:referred\s{1,4}to|known)\s{1,4}as)\b(?:[\s,]{1,4}(?:also|jointly|collectively|individually|together|each|be|shall|referred|to|known|called|as|the|an?|and|or)\b){0,10}[\s,:]{0,4}$)");

// What may stand between a bracket and the term that is all it is there for:
// (“Acme”, (the "Supplier", (each, a "Party"
const Regex RE_BARE_LEAD(
    "RE_BARE_LEAD",
    UR"((?i)[\s,，]{0,4}(?:(?:the|an?|each|together|collectively|individually|with|its|即|又称|也称|或称)[\s,，]{0,4}){0,5})");

// What stands between two terms of one definition: “华信”或“华信科技”, "Acme" or the "Buyer".
const Regex RE_JOINT(
    "RE_JOINT",
    UR"((?i)[\s,，、/]{0,4}(?:(?:or|and|also|the|an?|each|或者?|及|和|与|以及|[中英]文|简称为?|下称)[\s,，]{0,4}){0,4})");

// What follows a term that only its bracket marks as a definition.
// Not “雪松财富”轮: a ship is spoken of.
const Regex RE_AFTER_TERM("RE_AFTER_TERM",
                          UR"(\s{0,4}(?:[)）,，、;；/]|(?i:or|and)\b|或|和|与|及))");

// A definition without quotes: (hereinafter Acme), (hereinafter referred to as Acme Group)
const Regex RE_EN_BARE_DEFINITION(
    "RE_EN_BARE_DEFINITION",
    UR"([(（]\s{0,4}(?i:here(?:in)?after)\b(?:[\s,]{1,4}(?i:also|collectively|referred|to|known|called|as|the)\b){0,6}[\s,:]{1,4}(?<term>[^()（）"“”‘「\n]{2,60}+)[)）])");

// Between terms that have no quotes.
const Regex RE_BARE_SEPARATOR("RE_BARE_SEPARATOR", UR"(\s{1,4}or\s{1,4}(?:the\s{1,4})?|或者?|、)");

enum class Sign { NONE, OPEN, CLOSE, BREAK, ZH_TRIGGER, QUOTE };

constexpr Sign sign_of(char32_t c) {
  switch (c) {
    case U'(':
    case U'（':
      return Sign::OPEN;
    case U')':
    case U'）':
      return Sign::CLOSE;
    case U'\n':
    case U'\uE000':
      return Sign::BREAK;
    case U'称':
      return Sign::ZH_TRIGGER;
    case U'"':
    case U'＂':
    case U'“':
    case U'„':
    case U'\'':
    case U'‘':
    case U'「':
    case U'『':
      return Sign::QUOTE;
    default:
      return Sign::NONE;
  }
}

// The signs by one byte each, which they share with other characters: it tells of most
// characters that they are none, without the comparisons.
constexpr std::size_t rough(char32_t c) { return (c ^ (c >> 8U)) & 0xFFU; }
constexpr auto MAY_BE_SIGN = [] {
  std::array<bool, 256> out{};
  for (const char32_t c : std::u32string_view(U"()（）\n\uE000称\"＂“„'‘「『"))
    out[rough(c)] = true;
  return out;
}();

// What closes a quote. Typists mix the shapes of double quotes.
constexpr std::u32string_view closing_quotes(char32_t open) {
  switch (open) {
    case U'\'':
    case U'‘':
      return U"’'";
    case U'「':
      return U"」";
    case U'『':
      return U"』";
    default:
      return U"”“\"＂";
  }
}

class AliasScan {
 public:
  explicit AliasScan(std::u32string_view text) : text_(text) {}

  std::vector<RecognizerResult> run() {
    for (std::size_t i = 0; i < text_.size(); ++i) {
      if (!MAY_BE_SIGN[rough(text_[i])]) continue;
      const auto sign = sign_of(text_[i]);
      if (sign != Sign::NONE) i = read(sign, i);
    }
    return std::move(out_);
  }

 private:
  // Where a definition clause begins, or text::NPOS for what is no definition.
  using ClauseStart = std::size_t;

  // Reads the sign at `i` and returns the last character that was dealt with.
  std::size_t read(Sign sign, std::size_t i) {
    switch (sign) {
      case Sign::OPEN:
        if (brackets_.size() == MAX_DEPTH) brackets_.clear();
        brackets_.push_back(i);
        read_bare_english(i);
        return i;
      case Sign::CLOSE:
        if (!brackets_.empty()) brackets_.pop_back();
        return i;
      case Sign::ZH_TRIGGER:
        read_bare_chinese(i);
        return i;
      case Sign::QUOTE:
        return read_quoted(i);
      default:
        brackets_.clear();
        return i;
    }
  }

  // The bracket that is open at `i`, if it is near enough.
  std::optional<std::size_t> bracket_at(std::size_t i) const {
    if (brackets_.empty() || i - brackets_.back() > MAX_CLAUSE) return std::nullopt;
    return brackets_.back();
  }

  std::size_t read_quoted(std::size_t open) {
    const auto inside = text_.substr(open + 1, MAX_QUOTED);
    const auto size = inside.find_first_of(closing_quotes(text_[open]));
    if (size == text::NPOS || size == 0) return open;
    const auto close = open + 1 + size;
    const auto start = clause_of_quote(open, close);
    if (start == text::NPOS) return open;
    last_term_end_ = close + 1;
    last_clause_ = start;
    report(open + 1, close, start);
    return close;
  }

  ClauseStart clause_of_quote(std::size_t open, std::size_t close) const {
    if (continues_last_definition(open)) return last_clause_;
    const auto bracket = bracket_at(open);
    const auto from = std::max(bracket ? *bracket + 1 : 0, open - std::min(open, MAX_LEAD));
    const auto lead = text_.substr(from, open - from);
    if (const auto words = introduction_at_end(lead)) return bracket.value_or(from + *words);
    if (!bracket || !RE_AFTER_TERM.match_at(text_, close + 1)) return text::NPOS;
    const auto whole_lead = text_.substr(*bracket + 1, open - *bracket - 1);
    return RE_BARE_LEAD.full_match(whole_lead) || is_name_and_comma(whole_lead) ? *bracket
                                                                                : text::NPOS;
  }

  // Where the words at the end of `lead` begin that introduce a term.
  static std::optional<std::size_t> introduction_at_end(std::u32string_view lead) {
    if (lead.find(U'称') != text::NPOS) {
      if (const auto found = RE_ZH_INTRODUCTION.search(lead)) return found->start();
    }
    if (const auto found = RE_EN_INTRODUCTION.search(lead)) return found->start();
    return std::nullopt;
  }

  // A full name and a comma: （Acme (China) Co., Ltd.，“艾克美”）
  static bool is_name_and_comma(std::u32string_view lead) {
    lead = text::strip(lead);
    if (lead.empty() || (lead.back() != U',' && lead.back() != U'，')) return false;
    return lead.find_first_of(U"\"“”。；;") == text::NPOS;
  }

  // Whether the quote at `open` belongs to the definition of the term before it.
  bool continues_last_definition(std::size_t open) const {
    if (last_clause_ == text::NPOS || open - last_term_end_ > MAX_JOINT) return false;
    const auto joint = text_.substr(last_term_end_, open - last_term_end_);
    // Outside brackets a comma alone begins the next part of the sentence.
    const bool bracketed = sign_of(text_[last_clause_]) == Sign::OPEN;
    if (!bracketed && joint.find_first_not_of(U" ,，\u3000") == text::NPOS) return false;
    return !joint.empty() && RE_JOINT.full_match(joint);
  }

  // 以下简称华信科技 behind a 称 at `i`.
  void read_bare_chinese(std::size_t i) {
    std::size_t at = i + 1;
    const auto skip = [&](std::u32string_view set) {
      while (at < text_.size() && at - i < MAX_BARE && set.find(text_[at]) != text::NPOS) ++at;
    };
    skip(U"为作是 \u3000：:");
    if (at == text_.size() || sign_of(text_[at]) == Sign::QUOTE) return;
    const auto from = i - std::min<std::size_t>(i, MAX_BARE);
    const auto words = RE_ZH_INTRODUCTION.search(text_.substr(from, at - from));
    if (!words) return;
    const auto bracket = bracket_at(i);
    const auto size = text_.substr(at, MAX_QUOTED).find_first_of(U")）,，。；;\n\t\uE000");
    if (size == text::NPOS) return;
    // Without 以下 a sentence may say anything: 股票简称见附件.
    if (!bracket && (size > MAX_BARE || words->text().find(U'下') == text::NPOS)) return;
    report_each(at, at + size, bracket.value_or(from + words->start()));
  }

  void read_bare_english(std::size_t open) {
    static const std::size_t term = RE_EN_BARE_DEFINITION.group(U"term");
    const auto head = text_.substr(open + 1, 5);
    if (head.find(U'h') == text::NPOS && head.find(U'H') == text::NPOS) return;
    if (const auto found = RE_EN_BARE_DEFINITION.match_at(text_, open)) {
      report_each(found->start(term), found->end(term), open);
    }
  }

  // Reports the terms of start..end, which have no quotes.
  void report_each(std::size_t start, std::size_t end, ClauseStart clause) {
    for (const auto term : RE_BARE_SEPARATOR.split(text_.substr(start, end - start))) {
      const auto at = static_cast<std::size_t>(term.data() - text_.data());
      report(at, at + term.size(), clause);
    }
  }

  void report(std::size_t start, std::size_t end, ClauseStart clause) {
    static constexpr std::u32string_view MARKS = U" \u3000\t,，;；";
    while (start < end && MARKS.find(text_[start]) != text::NPOS) ++start;
    while (start < end && MARKS.find(text_[end - 1]) != text::NPOS) --end;
    if (!is_name_like_term(text_.substr(start, end - start))) return;
    if (ends_in_document_title(text_.substr(0, clause))) return;
    out_.push_back({std::string(entity_type::ORGANIZATION), static_cast<Offset>(start),
                    static_cast<Offset>(end), ALIAS_SCORE, static_cast<Offset>(clause)});
  }

  std::u32string_view text_;
  std::vector<RecognizerResult> out_;
  std::vector<std::size_t> brackets_;
  std::size_t last_term_end_ = 0;
  ClauseStart last_clause_ = text::NPOS;
};

}  // namespace

std::vector<RecognizerResult> scan_defined_alias_candidates(std::u32string_view text) {
  return found_once(text, &TextFindingsScope::alias_candidates,
                    [](std::u32string_view of) { return AliasScan(of).run(); });
}

}  // namespace core::anonymization
