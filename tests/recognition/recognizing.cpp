#include "tests/recognition/recognizing.hpp"

#include <gtest/gtest.h>

#include "core/anonymization/analyzer/embedded_analyzer.hpp"
#include "tests/support/notation.hpp"

namespace test {

std::string found(std::string_view marked, std::string_view type) {
  static const auto analyzer = core::anonymization::make_embedded_analyzer(
      core::anonymization::EmbeddedOptions{.percentages_and_quantities = true});
  Marked doc = parse(marked);
  doc.results.clear();
  for (auto& hit : analyzer->analyze(doc.text, "zh")) {
    const bool inside = !doc.results.empty() && hit.end <= doc.results.back().end;
    if (hit.entity_type == type && !inside) doc.results.push_back(std::move(hit));
  }
  return render(doc);
}

void expect_found(std::string_view type, std::span<const Case> cases) {
  for (const Case& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(found(c.marked, type), c.marked);
  }
}

}  // namespace test
