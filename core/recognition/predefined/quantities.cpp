#include "core/recognition/pattern_recognizer.hpp"
#include "core/recognition/predefined/predefined.hpp"

namespace core::recognition {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// 13%, 0.5‰, 2.35 per cent, 25 bps, 3个百分点
const Regex RE_PERCENT(
    "RE_PERCENT",
    UR"((?<![\d.])\d{1,12}(?:\.\d{1,8})? ?(?:[%‰‱]|个百分点|个基点|(?i:per ?cent|percent|basis points|bps)(?![A-Za-z])))");

// 百分之三十, 万分之五
const Regex RE_CN_PERCENT("RE_CN_PERCENT",
                          UR"([百千万]分之[一二三四五六七八九十百零〇点两\d.]{1,12})");

// 240套, 18,500 units, 1,180公里, 86.4吨. Not 3条, 2期, 30日.
const Regex RE_QUANTITY(
    "RE_QUANTITY",
    UR"((?<![\d.])(?:\d{1,3}(?:,\d{3}){1,6}|\d{1,12})(?:\.\d{1,8})? ?(?:[台套件吨箱只辆根块桶袋盒瓶株头批亩]|个(?!月|工作日|自然日|百分点|基点)|公斤|千克|公里|平方米|立方米|米|升|兆瓦|千瓦|(?i:kg|km|mm|cm|m²|m2|m³|mwh?|kwh?|tons?|tonnes?|mt|units?|pieces|pcs|sets?|litres?|barrels)(?![A-Za-z])))");

}  // namespace

void add_quantity_recognizers(RecognizerRegistry& registry) {
  registry.add_recognizer(std::make_shared<PatternRecognizer>(PatternRecognizerConfig{
      "PercentRecognizer",
      std::string(entity_type::PERCENT),
      {{"sign or word", &RE_PERCENT, 0.7, AT_INNER_DIGIT}, {"Chinese", &RE_CN_PERCENT, 0.7, {}}}}));
  registry.add_recognizer(std::make_shared<PatternRecognizer>(
      PatternRecognizerConfig{"QuantityRecognizer",
                              std::string(entity_type::QUANTITY),
                              {{"unit", &RE_QUANTITY, 0.6, AT_INNER_DIGIT}}}));
}

}  // namespace core::recognition
