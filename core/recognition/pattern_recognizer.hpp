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

#include "core/recognition/entity_recognizer.hpp"
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

struct PatternRecognizerConfig {
  std::string name;
  std::string entity;
  std::vector<Pattern> patterns;
  // In lower case. One of them within CONTEXT_WINDOW before a hit raises its score.
  std::vector<std::u32string> context = {};
  // Not asked about hits behind a label: the label is proof enough.
  Validate validate = nullptr;
  std::string language = {};
};

class PatternRecognizer : public EntityRecognizer {
 public:
  static constexpr std::size_t CONTEXT_WINDOW = 24;  // code points
  static constexpr double CONTEXT_BONUS = 0.35;
  // What an anchored pattern sees of the text, from its place on. No number is
  // longer, and the engine looks ahead for characters that a pattern requires.
  static constexpr std::size_t WINDOW = 256;  // code points

  explicit PatternRecognizer(PatternRecognizerConfig config);
  std::vector<RecognizerResult> analyze(const NlpArtifacts& artifacts) const override;

 private:
  struct Collector;
  bool has_context(const NlpArtifacts& artifacts, std::size_t start) const;

  std::vector<Pattern> patterns_;
  std::vector<std::u32string> context_;
  Validate validate_;
};

}  // namespace core::recognition
