#include "core/nlp/hits.hpp"
#include "core/nlp/latin_names.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/name_finders.hpp"
#include "core/text/regex.hpp"

namespace core::nlp {
namespace {

using recognition::WordClass;
using text::Regex;

constexpr double LABEL_SCORE = 0.9;
constexpr double PROSE_SCORE = 0.6;

// Between a label and a name; group 1 is a mark that makes the word a label:
// "Name: ", "Attention (Legal): ", "联系人 Contact："
const Regex RE_SEPARATOR(
    "RE_SEPARATOR",
    UR"((?:[ ]?(?:\([^()\n]{1,24}\)|[A-Za-z/ ]{1,20}(?=:)|[\u4e00-\u9fff]{1,6}(?=:)))?[ ]{0,4}(:)?[ ]{0,8}(?:_{1,40}[ ]{1,4})?(?:(?:Mr|Ms|Mrs|Dr|Prof|Mme|Miss)\.? )?)");

// Labels that need no mark: "attention Jürgen Petersen", "with a copy to Wei-Ling Szeto"
const Regex RE_OPEN_LABEL(
    "RE_OPEN_LABEL",
    UR"((?i)attention|attn|dear|represented by|signed by|witnessed by|with a copy to|copy to|by|cc|sole arbitrator|sole member|service owner|account manager)");

class Search {
 public:
  explicit Search(const NlpArtifacts& a) : a_(a), t_(a.folded) {}

  std::vector<RecognizerResult> run() {
    behind_titles();
    behind_labels();
    before_roles();
    given_names();
    return std::move(out_);
  }

 private:
  void add(std::size_t start, std::size_t end, double score) {
    if (end > start) {
      out_.push_back(make_hit(anonymization::entity_type::PERSON, start, end, score));
    }
  }

  void behind_titles() {
    for (const auto& title : a_.of(WordClass::EN_TITLE)) {
      std::size_t at = title.end;
      if (at < t_.size() && t_[at] == U'.') ++at;
      while (at < t_.size() && t_[at] == U' ') ++at;
      std::size_t start = at;
      // Ms van Oostrum: a particle may come first.
      const Token first = token_after(t_, at);
      if (!first.empty() && is_connective(first.in(t_)) && first.end < t_.size())
        start = first.end + 1;
      const std::size_t end = latin_name_end(a_, start, 1);
      if (end > start) add(at, end, LABEL_SCORE);
    }
  }

  void behind_labels() {
    for (const auto& label : a_.of(WordClass::PERSON_LABEL)) {
      const auto m = RE_SEPARATOR.match_at(t_, label.end);
      if (!m) continue;
      const auto word = t_.substr(label.start, label.end - label.start);
      // 订单经理 Annegret Vollmer: a blank sets the two scripts off well enough
      const bool chinese = !word.empty() && is_han(word.front()) && m->end() > label.end;
      const bool marked = label.from_table || m->has(1) || chinese;
      if (!marked && !RE_OPEN_LABEL.full_match(word)) continue;
      add(m->end(), latin_name_end(a_, m->end(), 2), LABEL_SCORE);
      // Authorised signatory: van Oostrum
      const Token first = token_after(t_, m->end());
      if (m->has(1) && first.start == m->end() && first.end < t_.size() &&
          is_connective(first.in(t_))) {
        const std::size_t end = latin_name_end(a_, first.end + 1, 1);
        if (end > first.end + 1) add(m->end(), end, LABEL_SCORE);
      }
    }
  }

  // Ruth Ann Calloway, Managing Member; Theodora Blackmantle (Director)
  void before_roles() {
    for (const auto& role : a_.of(WordClass::EN_ROLE)) {
      std::size_t end = role.start;
      while (end > 0 && (t_[end - 1] == U' ' || t_[end - 1] == U'(')) --end;
      const bool bracket = end < role.start && t_[role.start - 1] == U'(';
      const bool comma = end > 0 && end < role.start && t_[end - 1] == U',';
      if (!bracket && !comma) continue;
      if (comma) --end;
      add(latin_name_start(a_, end), end, PROSE_SCORE);
    }
  }

  void given_names() {
    for (const auto& given : a_.of(WordClass::EN_GIVEN_NAME)) {
      const Token before = token_before(t_, given.start);
      const bool inside_name = !before.empty() && before.end + 1 == given.start &&
                               is_upper(t_[before.start]) && !is_contract_word(before.in(t_)) &&
                               !is_covered(a_.of(WordClass::EN_TITLE), before.start, before.end);
      if (inside_name) continue;
      add(given.start, latin_name_end(a_, given.start, 2), PROSE_SCORE);
    }
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  std::vector<RecognizerResult> out_;
};

}  // namespace

LatinPersonFinder::LatinPersonFinder()
    : EntityRecognizer("LatinPersonFinder", {std::string(anonymization::entity_type::PERSON)}) {}

std::vector<RecognizerResult> LatinPersonFinder::analyze(const NlpArtifacts& artifacts) const {
  return Search(artifacts).run();
}

}  // namespace core::nlp
