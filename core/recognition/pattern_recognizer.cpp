#include "core/recognition/pattern_recognizer.hpp"

#include <algorithm>

#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace core::recognition {
namespace {

// A mail address has no longer local part.
constexpr std::size_t MAX_LOCAL_PART = 64;

bool is_local_part(char32_t c) {
  return text::is_ascii_alnum(c) || c == U'.' || c == U'_' || c == U'%' || c == U'+' || c == U'-';
}

std::size_t local_part_start(std::u32string_view text, std::size_t at_sign) {
  std::size_t start = at_sign;
  while (start > 0 && at_sign - start < MAX_LOCAL_PART && is_local_part(text[start - 1])) --start;
  return start;
}

bool is_dialling_sign(char32_t c) { return c == U'+' || c == U'('; }

// Whether a number may begin here, by the kind of anchor.
bool is_number_start(std::u32string_view t, std::size_t at, Anchor::Kind kind) {
  const char32_t before = at > 0 ? t[at - 1] : U' ';
  switch (kind) {
    case Anchor::Kind::INNER_DIGIT:
      return text::is_ascii_digit(t[at]) && !text::is_ascii_digit(before);
    case Anchor::Kind::PHONE:
      // +86, (0755), (+852): the number begins at its signs.
      if (is_dialling_sign(before)) return false;
      if (is_dialling_sign(t[at])) return true;
      [[fallthrough]];
    default:
      return text::is_ascii_alnum(t[at]) && !text::is_ascii_alnum(before);
  }
}

bool is_number_anchor(Anchor::Kind kind) {
  return kind == Anchor::Kind::NUMBER || kind == Anchor::Kind::PHONE ||
         kind == Anchor::Kind::INNER_DIGIT;
}

// Calls visit(position) where a pattern with this anchor is tried.
template <class Visit>
void for_each_place(const NlpArtifacts& a, const Anchor& anchor, Visit visit) {
  switch (anchor.kind) {
    case Anchor::Kind::ANYWHERE:
    case Anchor::Kind::NUMBER:
    case Anchor::Kind::PHONE:
    case Anchor::Kind::INNER_DIGIT:
      break;  // searched for
    case Anchor::Kind::AT_SIGN:
      for (const std::size_t at : a.at_signs) visit(local_part_start(a.folded, at));
      break;
    case Anchor::Kind::WORD:
      for (const auto& word : a.of(anchor.word_class)) visit(word.start);
      break;
    case Anchor::Kind::AFTER_WORD:
      for (const auto& word : a.of(anchor.word_class)) visit(word.end);
      break;
  }
}

}  // namespace

struct PatternRecognizer::Find {
  std::size_t start;
  std::size_t end;
  std::string_view pattern_name;
  double original_score;
  double score;
  std::u32string_view context_word;
  std::optional<bool> valid;
};

// Takes the matches of one pattern; none may begin inside the one before.
class PatternRecognizer::Collector {
 public:
  struct Source {
    std::string_view pattern_name;
    double score;
    bool labelled = false;
  };

  Collector(const PatternRecognizer& recognizer, const NlpArtifacts& artifacts, Source source,
            std::vector<Find>& out)
      : recognizer_(recognizer), artifacts_(artifacts), source_(source), out_(out) {}

  std::size_t free_from() const { return free_from_; }

  void take(const text::Match& match) {
    std::size_t group = 0;
    for (std::size_t g = text::Match::MAX_GROUPS - 1; g > 0; --g) {
      if (match.has(g)) group = g;
    }
    take(match.start(group), match.end(group));
  }

  void take(std::size_t start, std::size_t end) {
    if (start == end || start < free_from_) return;
    if (settle(start, end)) free_from_ = end;
  }

 private:
  // Adds the hit with its score; false for one that a check refuses.
  bool settle(std::size_t start, std::size_t end) {
    Find found{start, end, source_.pattern_name, source_.score, source_.score, {}, {}};
    const auto surface = std::u32string_view(artifacts_.folded).substr(start, end - start);
    if (recognizer_.validate_ != nullptr && !source_.labelled) {
      found.valid = recognizer_.validate_(surface);
    }
    if (found.valid == false) return false;
    if (recognizer_.invalidate_ != nullptr && recognizer_.invalidate_(surface)) return false;
    found.context_word = recognizer_.context_.supporting(artifacts_, start, end);
    if (!found.context_word.empty()) found.score = ContextWords::raised(found.score);
    if (found.valid == true) found.score = 1.0;
    out_.push_back(found);
    return true;
  }

  const PatternRecognizer& recognizer_;
  const NlpArtifacts& artifacts_;
  const Source source_;
  std::vector<Find>& out_;
  std::size_t free_from_ = 0;
};

namespace {

// Where a number may begin, and the signs that it may begin with.
text::SearchIndex::Kinds number_kinds(Anchor::Kind kind) {
  using Index = text::SearchIndex;
  if (kind == Anchor::Kind::INNER_DIGIT) return Index::DIGIT_FIRST | Index::DIGIT_AFTER_LETTER;
  constexpr Index::Kinds FIRST = Index::DIGIT_FIRST | Index::UPPER_FIRST | Index::LOWER_FIRST;
  return kind == Anchor::Kind::PHONE ? FIRST | Index::SIGN : FIRST;
}

// The patterns that are searched for all over the text.
void join_scan(const std::vector<Pattern>& patterns) {
  for (const auto& pattern : patterns) {
    const auto kind = pattern.anchor.kind;
    if (kind == Anchor::Kind::ANYWHERE) pattern.regex->join_scan();
    if (is_number_anchor(kind)) pattern.regex->join_scan(number_kinds(kind));
  }
}

std::vector<CompiledUserPattern> compiled(const PatternRecognizerConfig& config) {
  std::vector<CompiledUserPattern> out;
  for (const auto& pattern : config.user_patterns) out.emplace_back(config.name, pattern);
  return out;
}

}  // namespace

PatternRecognizer::PatternRecognizer(PatternRecognizerConfig config)
    : EntityRecognizer(config.name, {std::move(config.entity)}, std::move(config.language)),
      patterns_(std::move(config.patterns)),
      user_patterns_(compiled(config)),
      deny_list_(config.deny_list),
      deny_list_score_(config.deny_list_score),
      context_(std::move(config.context), CONTEXT_WINDOW, config.context_after),
      validate_(config.validate),
      invalidate_(config.invalidate) {
  join_scan(patterns_);
}

std::vector<std::string> PatternRecognizer::pattern_names() const {
  std::vector<std::string> names;
  for (const auto& pattern : patterns_) names.push_back(pattern.name);
  for (const auto& pattern : user_patterns_) names.emplace_back(pattern.name());
  if (!deny_list_.empty()) names.emplace_back(DENY_LIST);
  return names;
}

// A search costs less than a try at every number.
void PatternRecognizer::search_numbers(const Pattern& pattern, const NlpArtifacts& artifacts,
                                       Collector& collector) {
  const std::u32string_view t = artifacts.folded;
  const auto kinds = number_kinds(pattern.anchor.kind);
  std::size_t from = 0;
  while (const auto match = pattern.regex->search(t, artifacts.index, from, kinds)) {
    if (match->start() >= t.size()) return;
    from = match->start() + 1;
    if (!is_number_start(t, match->start(), pattern.anchor.kind)) continue;
    collector.take(*match);
    from = std::max(from, collector.free_from());
  }
}

std::vector<PatternRecognizer::Find> PatternRecognizer::find(const NlpArtifacts& artifacts) const {
  std::vector<Find> found;
  for (const Pattern& pattern : patterns_) {
    const bool labelled = pattern.anchor.kind == Anchor::Kind::AFTER_WORD;
    Collector collector(*this, artifacts, {pattern.name, pattern.score, labelled}, found);
    if (pattern.anchor.kind == Anchor::Kind::ANYWHERE) {
      for (const auto& match : pattern.regex->find_all(artifacts.folded, artifacts.index))
        collector.take(match);
      continue;
    }
    if (is_number_anchor(pattern.anchor.kind)) {
      search_numbers(pattern, artifacts, collector);
      continue;
    }
    for_each_place(artifacts, pattern.anchor, [&](std::size_t at) {
      if (at < collector.free_from()) return;
      const auto window = std::u32string_view(artifacts.folded).substr(0, at + WINDOW);
      if (const auto match = pattern.regex->match_at(window, at)) collector.take(*match);
    });
  }
  const auto take_all = [&](const Collector::Source& source, const auto& spans) {
    Collector collector(*this, artifacts, source, found);
    for (const auto& [start, end] : spans) collector.take(start, end);
  };
  for (const auto& pattern : user_patterns_) {
    // As the text stands, and in the form that shipped patterns read.
    take_all({pattern.name(), pattern.score()}, pattern.find(artifacts.text));
    if (artifacts.text != artifacts.folded) {
      take_all({pattern.name(), pattern.score()}, pattern.find(artifacts.folded));
    }
  }
  take_all({DENY_LIST, deny_list_score_}, deny_list_.find(artifacts.text));
  return found;
}

RecognizerResult PatternRecognizer::result_of(const Find& found) const {
  return {supported_entities().front(), static_cast<std::ptrdiff_t>(found.start),
          static_cast<std::ptrdiff_t>(found.end), found.score};
}

std::vector<RecognizerResult> PatternRecognizer::analyze(const NlpArtifacts& artifacts) const {
  std::vector<RecognizerResult> results;
  for (const auto& found : find(artifacts)) results.push_back(result_of(found));
  return results;
}

std::vector<ExplainedResult> PatternRecognizer::explain(const NlpArtifacts& artifacts) const {
  std::vector<ExplainedResult> results;
  for (const auto& found : find(artifacts)) {
    results.push_back({result_of(found),
                       {name(), std::string(found.pattern_name), found.original_score, found.score,
                        text::encode_utf8(found.context_word), found.valid}});
  }
  return results;
}

}  // namespace core::recognition
