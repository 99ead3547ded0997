// The smallest program that uses the installed package.
#include <iostream>

#include "core/anonymization_core.hpp"
#include "core/recognition/embedded_analyzer.hpp"

int main() {
  const auto analyzer = core::recognition::make_embedded_analyzer();
  std::cout << core::anonymization::anonymize_with_numbered_placeholders(
      "甲方：北京华信科技有限公司", *analyzer, "auto");
}
