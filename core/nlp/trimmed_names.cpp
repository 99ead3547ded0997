#include <algorithm>
#include <optional>
#include <utility>

#include "core/nlp/characters.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/refinements.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::WordClass;
namespace entity_type = anonymization::entity_type;

constexpr auto NAME_TYPES =
    text::type_names({entity_type::PERSON, entity_type::ORGANIZATION, entity_type::LOCATION,
                      entity_type::GPE, entity_type::NRP, entity_type::ADDRESS});

// Parties of a contract that no list of labels has, as they stand in the text.
constexpr auto ROLES = text::words(
    {U"甲方",           U"乙方",       U"丙方",         U"丁方",        U"戊方",
     U"买方",           U"卖方",       U"供方",         U"需方",        U"我方",
     U"贵方",           U"双方",       U"各方",         U"对方",        U"一方",
     U"三方",           U"本公司",     U"贵公司",       U"该公司",      U"我公司",
     U"我司",           U"贵司",       U"本人",         U"公司",        U"本行",
     U"本院",           U"本所",       U"party",        U"parties",     U"both parties",
     U"company",        U"companies",  U"purchaser",    U"buyer",       U"seller",
     U"first party",    U"borrower",   U"second party", U"corporation", U"firm",
     U"affiliate",      U"affiliates", U"bank",         U"subsidiary",  U"disclosing party",
     U"receiving party"});

// Roles that stand glued before the name that plays them: 甲方北京华信科技有限公司.
constexpr auto LEADING_ROLES =
    text::words({U"甲方", U"乙方", U"丙方", U"丁方", U"买方", U"卖方", U"供方", U"需方"});

constexpr auto LEADING_DETERMINERS =
    text::words({U"the", U"such", U"each", U"any", U"said", U"this", U"that", U"our", U"your",
                 U"either", U"no"});

constexpr auto LEADING_SMALL_WORDS = text::words(
    {U"and", U"or", U"by", U"of", U"with", U"between", U"from", U"to", U"the", U"at", U"in"});

constexpr std::u32string_view QUOTES = U"\"“”„‟「」『』‘’";
constexpr std::u32string_view NAME_STOPS = U":,;，；、。";
// Behind the name of a company no such character belongs to it.
constexpr std::u32string_view PARTICLES_BEHIND_COMPANY = U"的之等与和及同跟向对由在于为";
// Characters that end next to no name.
constexpr std::u32string_view CHINESE_PARTICLES = U"的等与及";

bool is_one_of(char32_t c, std::u32string_view set) { return set.find(c) != set.npos; }

// The labels of a text, whatever they label.
class Labels {
 public:
  explicit Labels(const NlpArtifacts& a) {
    for (std::size_t c = 0; c < recognition::LABEL_CLASSES; ++c) {
      for (const auto& hit : a.words[c]) {
        if (hit.from_table) continue;
        all_.emplace_back(hit.start, hit.end);
        std::size_t at = hit.end;
        while (at < a.folded.size() && a.folded[at] == U' ') ++at;
        if (at < a.folded.size() && a.folded[at] == U':') before_colon_.push_back(hit);
      }
    }
    std::sort(all_.begin(), all_.end());
    std::sort(before_colon_.begin(), before_colon_.end(),
              [](const auto& x, const auto& y) { return x.start < y.start; });
  }

  bool has(std::size_t start, std::size_t end) const {
    return std::binary_search(all_.begin(), all_.end(), std::pair(start, end));
  }

  // The first one that lies in start..end with its colon; nothing if there is none.
  std::optional<WordHit> cut_in(std::size_t start, std::size_t end) const {
    const auto it = first_from(before_colon_, start);
    if (it == before_colon_.end() || it->end + 1 > end) return std::nullopt;
    return *it;
  }

 private:
  std::vector<std::pair<std::size_t, std::size_t>> all_;
  std::vector<WordHit> before_colon_;
};

class Trimmer {
 public:
  explicit Trimmer(const NlpArtifacts& a) : a_(a), t_(a.folded), labels_(a) {}

  // Adds what is left of the name.
  void trim(const RecognizerResult& r, std::vector<RecognizerResult>& out) const {
    auto start = static_cast<std::size_t>(r.start);
    const auto end = static_cast<std::size_t>(r.end);
    while (const auto label = labels_.cut_in(start, end)) {
      add(r, start, label->start, out);
      start = label->end + 1;
    }
    add(r, start, end, out);
  }

 private:
  struct Span {
    std::size_t start;
    std::size_t end;
    bool operator==(const Span&) const = default;
    std::size_t size() const { return end - start; }
  };

  void add(const RecognizerResult& r, std::size_t start, std::size_t end,
           std::vector<RecognizerResult>& out) const {
    if (start >= end) return;
    Span span = to_word_edges({start, end});
    for (Span last{0, 0}; span != last && span.size() > 0;) {
      last = span;
      strip_marks(span);
      strip_words(span, r.entity_type);
    }
    if (span.size() == 0 || is_role(span)) return;
    out.push_back(r);
    out.back().start = static_cast<std::ptrdiff_t>(span.start);
    out.back().end = static_cast<std::ptrdiff_t>(span.end);
  }

  std::u32string_view in(const Span& s) const { return t_.substr(s.start, s.size()); }

  // A hit inside a Latin word, as of a tokenizer that knows no such word.
  Span to_word_edges(Span s) const {
    constexpr std::size_t LONGEST = 40;
    if (is_latin_letter(t_[s.start])) {
      std::size_t at = s.start;
      while (at > 0 && s.start - at < LONGEST && is_latin_letter(t_[at - 1])) --at;
      s.start = at;
    }
    if (is_latin_letter(t_[s.end - 1])) {
      std::size_t at = s.end;
      while (at < t_.size() && at - s.end < LONGEST && is_latin_letter(t_[at])) ++at;
      s.end = at;
    }
    return s;
  }

  void strip_marks(Span& s) const {
    const auto is_mark = [](char32_t c) {
      return text::is_space(c) || is_one_of(c, QUOTES) || is_one_of(c, NAME_STOPS);
    };
    while (s.size() > 0 && is_mark(t_[s.start])) ++s.start;
    while (s.size() > 0 && is_mark(t_[s.end - 1])) --s.end;
    if (s.size() < 2) return;
    const bool opens = in(s).find(U'(') != t_.npos;
    const bool closes = in(s).find(U')') != t_.npos;
    const bool wrapped = t_[s.start] == U'(' && in(s).find(U')') == s.size() - 1;
    const bool quoted = t_[s.start] == U'\'' && t_[s.end - 1] == U'\'';
    if (wrapped || quoted || t_[s.start] == U')' || (t_[s.start] == U'(' && !closes)) ++s.start;
    if (wrapped || quoted || t_[s.end - 1] == U'(' || (t_[s.end - 1] == U')' && !opens)) --s.end;
  }

  void strip_words(Span& s, std::string_view type) const {
    if (s.size() < 3) return;
    if (is_han(t_[s.start])) {
      strip_chinese_head(s, type);
    } else if (is_latin_letter(t_[s.start])) {
      strip_latin_head(s);
      if (type == entity_type::ORGANIZATION || type == entity_type::PERSON) cut_at_sentence(s);
    }
    if (s.size() < 3) return;
    is_han(t_[s.end - 1]) ? strip_chinese_tail(s) : strip_latin_tail(s);
  }

  void strip_chinese_head(Span& s, std::string_view type) const {
    constexpr std::size_t ROLE = 2;
    const std::size_t least = type == entity_type::PERSON ? 2 : 4;
    if (s.size() >= ROLE + least && LEADING_ROLES.contains(t_.substr(s.start, ROLE))) {
      s.start += ROLE;
    } else if (const std::size_t label = glued_label(s);
               type == entity_type::ORGANIZATION && label > 0) {
      s.start += label;
    } else if (type == entity_type::ORGANIZATION && is_one_of(t_[s.start], U"与由向和及在为对") &&
               end_of_word_at(a_.of(WordClass::PLACE), s.start + 1) > s.start + 1) {
      ++s.start;
    }
  }

  // 保险人|齐海财产保险股份有限公司, 承运方|青岛…: the label of a party before the name of a
  // company with its form, that leaves enough of a name. The length of the label; 0 for none.
  std::size_t glued_label(const Span& s) const {
    constexpr std::size_t LEAST_REST = 6;
    constexpr std::size_t SHORTEST = 3;
    constexpr std::u32string_view PARTIES = U"人方";
    const std::size_t end = end_of_word_at(a_.of(WordClass::ORGANIZATION_LABEL), s.start);
    const bool party = end >= s.start + SHORTEST && PARTIES.find(t_[end - 1]) != t_.npos;
    return party && end + LEAST_REST <= s.end ? end - s.start : 0;
  }

  void strip_chinese_tail(Span& s) const {
    const char32_t last = t_[s.end - 1];
    if (is_one_of(last, CHINESE_PARTICLES) ||
        (is_one_of(last, PARTICLES_BEHIND_COMPANY) && ends_in_company_form(s.start, s.end - 1))) {
      --s.end;
    }
  }

  bool ends_in_company_form(std::size_t start, std::size_t end) const {
    const auto& forms = a_.of(WordClass::COMPANY_FORM);
    auto it = first_from(forms, end);
    return it != forms.begin() && std::prev(it)->end == end && std::prev(it)->start > start;
  }

  // "and Acme Ltd", "Party A Acme Ltd"
  void strip_latin_head(Span& s) const {
    const auto surface = in(s);
    const std::size_t blank = surface.find(U' ');
    if (blank == surface.npos) return;
    if (LEADING_SMALL_WORDS.contains(surface.substr(0, blank))) {
      s.start += blank + 1;
      return;
    }
    constexpr std::size_t PARTY = 8;  // "Party A "
    if (surface.size() > PARTY && lowered(surface.substr(0, 6)) == U"party " &&
        is_upper(surface[6]) && surface[7] == U' ') {
      s.start += PARTY;
    }
  }

  // "Acme Holdings Inc. The Company"
  void cut_at_sentence(Span& s) const {
    const auto surface = in(s);
    for (std::size_t at = surface.find(U". "); at != surface.npos;
         at = surface.find(U". ", at + 1)) {
      const auto word = token_after(surface, at + 1).in(surface);
      const auto low = lowered(word);
      if (LEADING_DETERMINERS.contains(low) || low == U"it" || low == U"if" || low == U"in") {
        s.end = s.start + at + 1;
        return;
      }
    }
  }

  void strip_latin_tail(Span& s) const {
    const auto surface = in(s);
    if (surface.ends_with(U"'s") || surface.ends_with(U"'S")) {
      s.end -= 2;
      return;
    }
    const auto last = token_before(t_, s.end);
    if (last.start <= s.start + 1 || last.end != s.end) return;
    const auto word = last.in(t_);
    if (word == U"and" || word == U"or" || word == U"of" || word == U"the" || word == U"&") {
      s.end = last.start - 1;
    }
  }

  // 地址, 甲方, Party A, the Company
  bool is_role(const Span& s) const {
    if (labels_.has(s.start, s.end)) return true;
    auto surface = lowered(in(s));
    if (const std::size_t blank = surface.find(U' ');
        blank != surface.npos && LEADING_DETERMINERS.contains(surface.substr(0, blank))) {
      surface.erase(0, blank + 1);
      if (labels_.has(s.start + blank + 1, s.end)) return true;
    }
    constexpr std::size_t PARTY = 7;  // "party a"
    if (surface.size() == PARTY && surface.starts_with(U"party ")) return true;
    return ROLES.contains(surface);
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  Labels labels_;
};

}  // namespace

std::vector<RecognizerResult> trim_names(const NlpArtifacts& artifacts,
                                         std::vector<RecognizerResult> results) {
  const Trimmer trimmer(artifacts);
  std::vector<RecognizerResult> out;
  out.reserve(results.size());
  for (auto& r : results) {
    if (NAME_TYPES.contains(r.entity_type)) {
      trimmer.trim(r, out);
    } else {
      out.push_back(std::move(r));
    }
  }
  return out;
}

}  // namespace core::nlp
