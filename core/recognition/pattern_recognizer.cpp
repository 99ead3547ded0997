#include "core/recognition/pattern_recognizer.hpp"

#include <algorithm>

#include "core/text/unicode.hpp"

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

// +86, (0755), (+852): the number begins at its signs.
std::size_t dialled_from(std::u32string_view text, std::size_t at) {
  while (at > 0 && (text[at - 1] == U'+' || text[at - 1] == U'(')) --at;
  return at;
}

template <class Visit>
void for_each_digit_run(std::u32string_view folded, const NumberRun& run, Visit visit) {
  for (std::size_t i = run.start; i < run.end; ++i) {
    const bool begins = i == run.start || !text::is_ascii_digit(folded[i - 1]);
    if (begins && text::is_ascii_digit(folded[i])) visit(i);
  }
}

// Calls visit(position) where a pattern with this anchor is tried.
template <class Visit>
void for_each_place(const NlpArtifacts& a, const Anchor& anchor, Visit visit) {
  switch (anchor.kind) {
    case Anchor::Kind::ANYWHERE:
      break;
    case Anchor::Kind::NUMBER:
      for (const auto& run : a.numbers) visit(run.start);
      break;
    case Anchor::Kind::PHONE:
      for (const auto& run : a.numbers) visit(dialled_from(a.folded, run.start));
      break;
    case Anchor::Kind::INNER_DIGIT:
      for (const auto& run : a.numbers) for_each_digit_run(a.folded, run, visit);
      break;
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

// Takes the matches of one pattern; none may begin inside the one before.
struct PatternRecognizer::Collector {
  const PatternRecognizer& recognizer;
  const NlpArtifacts& artifacts;
  const Pattern& pattern;
  std::vector<RecognizerResult>& out;
  std::size_t free_from = 0;

  void take(const text::Match& match) {
    std::size_t group = 0;
    for (std::size_t g = text::Match::MAX_GROUPS - 1; g > 0; --g) {
      if (match.has(g)) group = g;
    }
    const std::size_t start = match.start(group);
    const std::size_t end = match.end(group);
    if (start == end || start < free_from) return;
    const auto score = settle(start, end);
    if (!score) return;
    free_from = end;
    out.push_back({recognizer.supported_entities().front(), static_cast<std::ptrdiff_t>(start),
                   static_cast<std::ptrdiff_t>(end), *score});
  }

  // The score of a hit; nothing for one that the checksum refuses.
  std::optional<double> settle(std::size_t start, std::size_t end) const {
    double score = pattern.score;
    if (recognizer.has_context(artifacts, start)) {
      score = std::min(1.0, score + CONTEXT_BONUS);
    }
    const bool labelled = pattern.anchor.kind == Anchor::Kind::AFTER_WORD;
    if (recognizer.validate_ != nullptr && !labelled) {
      const auto surface = std::u32string_view(artifacts.folded).substr(start, end - start);
      const auto valid = recognizer.validate_(surface);
      if (valid.has_value() && !*valid) return std::nullopt;
      if (valid.has_value()) score = 1.0;
    }
    return score;
  }
};

PatternRecognizer::PatternRecognizer(PatternRecognizerConfig config)
    : EntityRecognizer(std::move(config.name), {std::move(config.entity)},
                       std::move(config.language)),
      patterns_(std::move(config.patterns)),
      context_(std::move(config.context)),
      validate_(config.validate) {}

bool PatternRecognizer::has_context(const NlpArtifacts& artifacts, std::size_t start) const {
  if (context_.empty()) return false;
  const std::size_t from = start > CONTEXT_WINDOW ? start - CONTEXT_WINDOW : 0;
  std::u32string before(std::u32string_view(artifacts.folded).substr(from, start - from));
  for (char32_t& c : before) c = text::case_fold_simple(c);
  return std::any_of(context_.begin(), context_.end(),
                     [&](const auto& word) { return before.find(word) != before.npos; });
}

std::vector<RecognizerResult> PatternRecognizer::analyze(const NlpArtifacts& artifacts) const {
  std::vector<RecognizerResult> results;
  for (const Pattern& pattern : patterns_) {
    Collector collector{*this, artifacts, pattern, results};
    if (pattern.anchor.kind == Anchor::Kind::ANYWHERE) {
      for (const auto& match : pattern.regex->find_all(artifacts.folded)) collector.take(match);
      continue;
    }
    for_each_place(artifacts, pattern.anchor, [&](std::size_t at) {
      if (at < collector.free_from) return;
      const auto window = std::u32string_view(artifacts.folded).substr(0, at + WINDOW);
      if (const auto match = pattern.regex->match_at(window, at)) collector.take(*match);
    });
  }
  return results;
}

}  // namespace core::recognition
