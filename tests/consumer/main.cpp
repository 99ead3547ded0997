// The smallest program that uses the installed package.
#include <iostream>

#include "core/anonymization/analyzer/embedded_analyzer.hpp"
#include "core/anonymization_core.hpp"

int main() {
  const auto analyzer = core::anonymization::make_embedded_analyzer();
  std::cout << core::anonymization::anonymize_with_numbered_placeholders(
      "甲方：北京华信科技有限公司", *analyzer, "auto");
}
