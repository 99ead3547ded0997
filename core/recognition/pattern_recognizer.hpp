// Entities that are recognised by their shape.
//
// A pattern is tried only where its anchor stands, so that many patterns cost
// little; it reads the folded text of the artifacts. When the pattern has a
// group that took part in the match, the hit is the first such group (labels stay
// outside), otherwise the whole match.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/recognition/context_words.hpp"
#include "core/recognition/deny_list.hpp"
#include "core/recognition/entity_recognizer.hpp"
#include "core/recognition/user_pattern.hpp"
#include "core/text/regex.hpp"

namespace core::recognition {

// Where a pattern is tried.
struct Anchor {
  enum class Kind : std::uint8_t {
    ANYWHERE,     // search of the whole text
    NUMBER,       // where a run of letters and digits with a digit begins
    PHONE,        // the same, or at a "+" and "(" directly before it
    INNER_DIGIT,  // where a digit run begins inside such a run, behind letters, too
    AT_SIGN,      // where the local part before an "@" begins
    WORD,         // where a word of the class begins
    AFTER_WORD    // behind a word of the class
  };
  Kind kind = Kind::ANYWHERE;
  WordClass word_class = WordClass::COUNT;
};

inline constexpr Anchor AT_NUMBER{Anchor::Kind::NUMBER};
inline constexpr Anchor AT_PHONE{Anchor::Kind::PHONE};
inline constexpr Anchor AT_INNER_DIGIT{Anchor::Kind::INNER_DIGIT};
inline constexpr Anchor AT_SIGN{Anchor::Kind::AT_SIGN};
constexpr Anchor at_word(WordClass c) { return {Anchor::Kind::WORD, c}; }
constexpr Anchor after(WordClass c) { return {Anchor::Kind::AFTER_WORD, c}; }

struct Pattern {
  std::string name;
  const text::Regex* regex = nullptr;  // outlives the recognizer
  double score = 0;                    // 0..1
  Anchor anchor;
};

// What a checksum says: true makes the hit certain, false drops it, nothing
// leaves it as it is.
using Validate = std::optional<bool> (*)(std::u32string_view surface);

// Whether a hit is to be dropped that no checksum can tell, such as 000-00-0000.
using Invalidate = bool (*)(std::u32string_view surface);

struct PatternRecognizerConfig {
  std::string name;
  std::string entity;
  std::vector<Pattern> patterns = {};
  // One of them near a hit raises its score; see ContextWords.
  std::vector<std::u32string> context = {};
  // Not asked about hits behind a label: the label is proof enough.
  Validate validate = nullptr;
  std::string language = {};
  Invalidate invalidate = nullptr;
  // How far behind a hit context words count, in code points.
  std::size_t context_after = 0;
  // Patterns that nobody has checked. The hit is the whole match.
  std::vector<UserPattern> user_patterns = {};
  std::vector<std::u32string> deny_list = {};  // words that are hits wherever they stand
  double deny_list_score = 1.0;
};

class PatternRecognizer : public EntityRecognizer {
 public:
  static constexpr std::size_t CONTEXT_WINDOW = 24;  // before a hit, code points
  // What an anchored pattern sees of the text, from its place on. No number is
  // longer, and the engine looks ahead for characters that a pattern requires.
  static constexpr std::size_t WINDOW = 256;  // code points
  // The name of the deny list where a hit is explained.
  static constexpr std::string_view DENY_LIST = "deny_list";

  // Throws RegexError for a user's pattern that does not compile.
  explicit PatternRecognizer(PatternRecognizerConfig config);
  // Those of users behind the others; the deny list, if there is one, last.
  std::vector<std::string> pattern_names() const override;
  // Throws RegexError for a user's pattern that takes too long.
  std::vector<RecognizerResult> analyze(const NlpArtifacts& artifacts) const override;
  std::vector<ExplainedResult> explain(const NlpArtifacts& artifacts) const override;

 private:
  struct Find;
  class Collector;
  std::vector<Find> find(const NlpArtifacts& artifacts) const;
  static void search_numbers(const Pattern& pattern, const NlpArtifacts& artifacts,
                             Collector& collector);
  RecognizerResult result_of(const Find& found) const;

  std::vector<Pattern> patterns_;
  std::vector<CompiledUserPattern> user_patterns_;
  DenyList deny_list_;
  double deny_list_score_;
  ContextWords context_;
  Validate validate_;
  Invalidate invalidate_;
};

}  // namespace core::recognition
