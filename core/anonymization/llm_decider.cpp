#include "core/anonymization/llm_decider.hpp"

#include <memory>
#include <mutex>

#include "core/errors.hpp"

namespace core::anonymization {
namespace {

struct Decider {
  std::mutex mutex;
  std::shared_ptr<const ReplacementSpanFilter> filter;
};

Decider& decider() {
  static Decider instance;
  return instance;
}

}  // namespace

void set_replacement_span_filter(ReplacementSpanFilter filter) {
  auto next = filter ? std::make_shared<const ReplacementSpanFilter>(std::move(filter)) : nullptr;
  const std::lock_guard lock(decider().mutex);
  decider().filter.swap(next);
}

std::vector<Replacement> filter_replacement_spans(std::u32string_view text,
                                                  const std::vector<Replacement>& spans) {
  std::shared_ptr<const ReplacementSpanFilter> filter;
  {
    // Not held while the decider works, which may take long and ask us things.
    const std::lock_guard lock(decider().mutex);
    filter = decider().filter;
  }
  if (filter == nullptr) throw Error("no keep/mask decider is set");
  return (*filter)(text, spans);
}

}  // namespace core::anonymization
