#include "core/anonymization/llm_decider.hpp"

#include "core/anonymization/hook.hpp"
#include "core/errors.hpp"

namespace core::anonymization {
namespace {

using DeciderHook =
    Hook<std::vector<Replacement>(std::u32string_view text, const std::vector<Replacement>& spans)>;

DeciderHook& decider() {
  static DeciderHook instance;
  return instance;
}

}  // namespace

void set_replacement_span_filter(ReplacementSpanFilter filter) { decider().set(std::move(filter)); }

std::vector<Replacement> filter_replacement_spans(std::u32string_view text,
                                                  const std::vector<Replacement>& spans) {
  const auto filter = decider().get();
  if (filter == nullptr) throw Error("no keep/mask decider is set");
  return (*filter)(text, spans);
}

}  // namespace core::anonymization
