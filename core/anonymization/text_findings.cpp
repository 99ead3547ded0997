#include "core/anonymization/text_findings.hpp"

namespace core::anonymization {
namespace {

thread_local TextFindingsScope* innermost_findings = nullptr;

}  // namespace

TextFindingsScope::TextFindingsScope(std::u32string_view text)
    : text_(text), outer_(innermost_findings) {
  innermost_findings = this;
}

TextFindingsScope::~TextFindingsScope() { innermost_findings = outer_; }

TextFindingsScope* TextFindingsScope::of(std::u32string_view text) {
  auto* scope = innermost_findings;
  const bool same =
      scope != nullptr && scope->text_.data() == text.data() && scope->text_.size() == text.size();
  return same ? scope : nullptr;
}

}  // namespace core::anonymization
