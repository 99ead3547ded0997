// The arithmetic of the networks, compiled once for every processor and once for
// those with AVX2 and FMA; the better one is chosen when the program runs.
//
// Matrices are dense and row by row unless a stride is given. Functions do not
// allocate more than some working space of constant size, may be called from any
// thread, and run on the calling one alone.
#pragma once

#include <cstddef>

namespace core::nlp::spacy {

// The end of a layer of maxout and the norm behind it. `pieces` candidates for each of
// `width` outputs; of all outputs the first candidates come first, then the second ones.
struct MaxoutNorm {
  std::size_t width = 0;
  std::size_t pieces = 0;
  const float* gain = nullptr;   // width
  const float* shift = nullptr;  // width
};

struct Kernels {
  const char* name;

  // y (rows x n) = a (rows x k, rows `stride` apart) * w (k x n), plus `bias` (n) in
  // each row unless it is null
  void (*multiply)(const float* a, std::size_t rows, std::size_t stride, std::size_t k,
                   const float* w, const float* bias, std::size_t n, float* y);
  // The largest candidate of each output, normed, and `residual` added unless it is
  // null. `candidates` are changed.
  void (*maxout_norm)(const MaxoutNorm& layer, float* candidates, const float* residual,
                      float* out);
  // sum[i] = the sum of rows[0][i] to rows[count - 1][i]; count > 0
  void (*sum_rows)(const float* const* rows, std::size_t count, std::size_t n, float* sum);
  // out[i] = the largest of v[i], v[width + i], ...
  void (*maxout)(const float* v, std::size_t width, std::size_t pieces, float* out);
  // y (n) = bias (n) + x (k) * w (k x n)
  void (*affine)(const float* x, std::size_t k, const float* w, const float* bias, std::size_t n,
                 float* y);
};

// Those for this processor.
const Kernels& kernels();

extern const Kernels BASELINE_KERNELS;
#ifdef VEILDOC_AVX2_KERNELS
extern const Kernels AVX2_KERNELS;
#endif

}  // namespace core::nlp::spacy
