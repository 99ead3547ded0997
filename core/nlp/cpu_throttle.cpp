#include "core/nlp/cpu_throttle.hpp"

#include <atomic>

namespace core::nlp {
namespace {

constexpr unsigned THROTTLED = 1;
std::atomic<unsigned> thread_limit = 0;

}  // namespace

void apply_zh_nlp_cpu_throttle() { thread_limit = THROTTLED; }

unsigned zh_nlp_thread_limit() { return thread_limit; }

}  // namespace core::nlp
