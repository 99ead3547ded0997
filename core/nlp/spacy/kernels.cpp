#include "core/nlp/spacy/kernels.hpp"

namespace core::nlp::spacy {
namespace {

const Kernels& best_kernels() {
#ifdef VEILDOC_AVX2_KERNELS
  __builtin_cpu_init();
  if (__builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("fma") != 0) {
    return AVX2_KERNELS;
  }
#endif
  return BASELINE_KERNELS;
}

}  // namespace

const Kernels& kernels() {
  static const Kernels& chosen = best_kernels();
  return chosen;
}

}  // namespace core::nlp::spacy
