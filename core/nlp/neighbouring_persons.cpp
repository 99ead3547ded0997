#include <unordered_set>

#include "core/nlp/characters.hpp"
#include "core/nlp/chinese_names.hpp"
#include "core/nlp/contract_language.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/latin_names.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/refinements.hpp"
#include "core/nlp/span_cover.hpp"
#include "core/nlp/vocabulary.hpp"
#include "core/text/regex.hpp"

namespace core::nlp {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

constexpr double NEIGHBOUR_SCORE = 0.6;

// The same person in the other script: 乐海涛 (Le Haitao), 박지명 / Park Ji-myeong
const Regex RE_OTHER_SCRIPT(
    "RE_OTHER_SCRIPT",
    UR"(:? ?(?:\( ?|/ )(\p{Lu}[\p{L}'-]+(?: \p{Lu}[\p{L}'.-]*){1,3}|[\u4e00-\u9fff·]{2,12}|[\uac00-\ud7a3]{2,6})(?: ?\)|(?=$|[\n，,;；/])))");

// A Chinese name and a romanized one in brackets, or the other way round
const Regex RE_PAIR(
    "RE_PAIR",
    UR"((?<![\u4e00-\u9fff])([\u4e00-\u9fff]{2,4}) ?\((\p{Lu}[\p{L}'-]+(?: \p{Lu}[\p{L}'-]+){1,2})\))"
    UR"(|(?<!\p{L} )(?<![\p{L}'-])(\p{Lu}[\p{L}'-]+(?: \p{Lu}[\p{L}'-]+){1,2}) ?\(([\u4e00-\u9fff]{2,4})\))",
    Regex::Scanned::YES);

class Neighbours {
 public:
  Neighbours(const NlpArtifacts& a, std::vector<RecognizerResult> results)
      : a_(a), t_(a.folded), results_(std::move(results)) {}

  std::vector<RecognizerResult> run() {
    const std::size_t known = results_.size();
    add_pairs();
    for (std::size_t i = 0; i < known; ++i) {
      const auto type = results_[i].entity_type;
      if (type == entity_type::PHONE_NUMBER || type == entity_type::EMAIL_ADDRESS) {
        add_before(static_cast<std::size_t>(results_[i].start));
      } else if (type == entity_type::ORGANIZATION) {
        add_signatory(static_cast<std::size_t>(results_[i].end));
      }
    }
    for (std::size_t i = 0; i < results_.size(); ++i) {
      if (results_[i].entity_type == entity_type::PERSON) add_other_script(i);
    }
    add_single_names();
    return std::move(results_);
  }

 private:
  // Johannes, who was Johannes Botha before
  void add_single_names() {
    std::unordered_set<std::u32string_view> given;
    SpanCover taken;
    for (const auto& r : results_) {
      taken.add(r.start, r.end);
      if (r.entity_type != entity_type::PERSON) continue;
      const Token word = token_after(t_, static_cast<std::size_t>(r.start));
      const bool more = static_cast<std::ptrdiff_t>(word.end) < r.end;
      if (more && word.end - word.start >= 4 && is_upper(t_[word.start]) &&
          is_lower(t_[word.end - 1]))
        given.insert(word.in(t_));
    }
    taken.finish();
    for (const auto& hit : a_.of(recognition::WordClass::EN_GIVEN_NAME)) {
      const auto start = static_cast<std::ptrdiff_t>(hit.start);
      if (!given.contains(t_.substr(hit.start, hit.end - hit.start))) continue;
      if (taken.touches(start, static_cast<std::ptrdiff_t>(hit.end))) continue;
      const Token next = token_after(t_, hit.end);
      const bool goes_on = !next.empty() && next.start == hit.end + 1 && is_upper(t_[next.start]);
      const bool glued = hit.start > 0 && (t_[hit.start - 1] == U'-' || t_[hit.start - 1] == U'.');
      if (!goes_on && !glued && next.start != hit.end) add(hit.start, hit.end);
    }
  }

  void add(std::size_t start, std::size_t end) {
    results_.push_back(make_hit(entity_type::PERSON, start, end, NEIGHBOUR_SCORE));
  }

  // 陶然, 0512-8817 6042; 司空远帆⇥15857004418; 皇甫志远（父女）⇥0576-…
  void add_before(std::size_t at) {
    std::size_t end = at;
    constexpr std::size_t FARTHEST = 4;
    while (end > 0 && at - end < FARTHEST && is_mark(t_[end - 1])) --end;
    if (end == at || end == 0) return;
    if (t_[end - 1] == U')') end = before_remark(end);
    if (is_han(t_[end - 1])) {
      add_chinese(end);
    } else if (const std::size_t start = latin_name_start(a_, end); start < end) {
      add(start, end);
    }
  }

  // 武汉瑾樘生物制药股份有限公司：管清漪, a line of signatures
  void add_signatory(std::size_t at) {
    if (at + 2 >= t_.size() || t_[at] != U':') return;
    ++at;
    while (at < t_.size() && t_[at] == U' ') ++at;
    if (at < t_.size() && is_han(t_[at])) {
      const std::size_t end = chinese_name_end(a_, at, NameContext::LABEL);
      const bool bounded = end >= t_.size() || !is_han(t_[end]);
      if (end > at && bounded && has_surname(at)) add(at, end);
    } else if (const std::size_t end = latin_name_end(a_, at, 2); end > at) {
      add(at, end);
    }
  }

  bool has_surname(std::size_t at) const {
    return is_chinese_surname(t_.substr(at, 1)) || is_chinese_surname(t_.substr(at, 2));
  }

  // 应雪瑶 (Ying Xueyao), Cen Lixia (岑丽霞): two forms of one name beside each other
  void add_pairs() {
    for (const auto& m : RE_PAIR.find_all(t_, a_.index)) {
      const std::size_t han = m.has(1) ? 1 : 4;
      const std::size_t latin = m.has(1) ? 2 : 3;
      const std::size_t start = m.start(han);
      const auto& places = a_.of(recognition::WordClass::PLACE);
      if (is_everyday_word(m.text(han)) || is_touched(places, start, m.end(han))) continue;
      if (chinese_name_end(a_, start, NameContext::LABEL) != m.end(han)) continue;
      if (latin_name_end(a_, m.start(latin), 2) != m.end(latin)) continue;
      add(start, m.end(han));
      add(m.start(latin), m.end(latin));
    }
  }

  static bool is_mark(char32_t c) {
    return c == U' ' || c == U',' || c == U'，' || c == U'(' || c == U'\t' || c == U':' ||
           c == U'<' || c == U'"' || c == U'[';
  }

  std::size_t before_remark(std::size_t end) const {
    constexpr std::size_t LONGEST = 12;
    for (std::size_t i = end - 1; i > 1 && end - i < LONGEST; --i) {
      if (t_[i - 1] == U'(') return i - 1;
    }
    return end;
  }

  void add_chinese(std::size_t end) {
    const std::size_t start = chinese_name_start(a_, end);
    const bool bounded = start == 0 || !is_han(t_[start - 1]);
    if (start < end && bounded) add(start, end);
  }

  void add_other_script(std::size_t index) {
    const auto end = static_cast<std::size_t>(results_[index].end);
    const auto m = RE_OTHER_SCRIPT.match_at(t_, end);
    if (!m) return;
    const bool latin = is_latin_letter(t_[static_cast<std::size_t>(results_[index].end - 1)]);
    const char32_t first = m->text(1).front();
    if (latin == is_latin_letter(first)) return;
    if (is_han(first) && is_everyday_word(m->text(1))) return;
    if (is_han(first) && chinese_name_end(a_, m->start(1), NameContext::LABEL) != m->end(1)) return;
    if (is_latin_letter(first) && latin_name_end(a_, m->start(1), 2) != m->end(1)) return;
    add(m->start(1), m->end(1));
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  std::vector<RecognizerResult> results_;
};

}  // namespace

std::vector<RecognizerResult> add_neighbouring_persons(const NlpArtifacts& artifacts,
                                                       std::vector<RecognizerResult> results) {
  return Neighbours(artifacts, std::move(results)).run();
}

}  // namespace core::nlp
