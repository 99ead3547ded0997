// Masks standard input in the language that the argument names, as a C++ program does.
#include <iostream>
#include <iterator>
#include <string>

#include "core/anonymization/analyzer/embedded_analyzer.hpp"
#include "core/anonymization_core.hpp"

int main(int, char** argv) {
  const std::string text((std::istreambuf_iterator<char>(std::cin)), {});
  const auto analyzer = core::anonymization::make_embedded_analyzer();
  std::cout << core::anonymization::anonymize_with_numbered_placeholders(text, *analyzer, argv[1]);
}
