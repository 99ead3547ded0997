// The embedded name finders.
//
// Each reads every text, whatever its language: a Chinese contract holds English
// names, and the other way round. A hit holds the name alone, without its label,
// title, quotes or the brackets around it.
#pragma once

#include "core/recognition/analyzer_engine.hpp"

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

// Refinements, to be run in this order.

// Persons who stand beside what was found: before a telephone number or a mail
// address, and in brackets behind their name in the other script.
std::vector<RecognizerResult> add_neighbouring_persons(const NlpArtifacts& artifacts,
                                                       std::vector<RecognizerResult> results);

// Further mentions of the names that were found, also by the short forms that the
// document defines or that follow from the full name.
std::vector<RecognizerResult> add_further_mentions(const NlpArtifacts& artifacts,
                                                   std::vector<RecognizerResult> results);

// Drops persons and places inside the name of an organization or an address, and
// dates and places inside the title of a law (《…》).
std::vector<RecognizerResult> drop_misplaced(const NlpArtifacts& artifacts,
                                             std::vector<RecognizerResult> results);

}  // namespace core::nlp
