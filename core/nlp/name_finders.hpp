// The embedded name finders.
//
// Each reads every text, whatever its language: a Chinese contract holds English
// names, and the other way round. A hit holds the name alone, without its label,
// title, quotes or the brackets around it.
#pragma once

#include "core/recognition/entity_recognizer.hpp"

namespace core::nlp {

using recognition::NlpArtifacts;
using recognition::RecognizerResult;

// 苏州澜迅精密机械有限公司, 江澜银行股份有限公司苏州吴中支行, 绍兴市柯桥区人民法院
class ChineseOrganizationFinder : public recognition::EntityRecognizer {
 public:
  ChineseOrganizationFinder();
  std::vector<RecognizerResult> analyze(const NlpArtifacts& artifacts) const override;
};

// Bramblewick Robotics, Inc.; Fenwater Bank plc, Leeds branch; High Court of Singapore
class LatinOrganizationFinder : public recognition::EntityRecognizer {
 public:
  LatinOrganizationFinder();
  std::vector<RecognizerResult> analyze(const NlpArtifacts& artifacts) const override;
};

// Behind a label, before a title, with a compound surname, with dots between its parts.
class ChinesePersonFinder : public recognition::EntityRecognizer {
 public:
  ChinesePersonFinder();
  std::vector<RecognizerResult> analyze(const NlpArtifacts& artifacts) const override;
};

// Behind a title or a label, before a role, with a common given name.
class LatinPersonFinder : public recognition::EntityRecognizer {
 public:
  LatinPersonFinder();
  std::vector<RecognizerResult> analyze(const NlpArtifacts& artifacts) const override;
};

// 北京市海淀区中关村大街27号院3号楼1205室 as one hit; 无锡, 新西兰
class ChinesePlaceFinder : public recognition::EntityRecognizer {
 public:
  ChinesePlaceFinder();
  std::vector<RecognizerResult> analyze(const NlpArtifacts& artifacts) const override;
};

// 1200 Harbor Blvd, Suite 400, Weehawken, NJ 07086, USA as one hit; Rotterdam
class LatinPlaceFinder : public recognition::EntityRecognizer {
 public:
  LatinPlaceFinder();
  std::vector<RecognizerResult> analyze(const NlpArtifacts& artifacts) const override;
};

// Names that no other finder has read: capitalized words in running text that are not
// explained as words of the language or of contracts (..., with Pagewell; Blue Gum Haulage).
// Runs behind the others and leaves what they found.
class UnexplainedNameFinder : public recognition::EntityRecognizer {
 public:
  UnexplainedNameFinder();
  std::vector<RecognizerResult> analyze(const NlpArtifacts& artifacts) const override;
};

}  // namespace core::nlp
