#define EIGEN_NO_DEBUG
#define EIGEN_DONT_PARALLELIZE
#include "core/nlp/spacy/kernel_code.hpp"

namespace core::nlp::spacy {

const Kernels BASELINE_KERNELS = {"baseline", multiply, maxout_norm, sum_rows, maxout, affine};

}  // namespace core::nlp::spacy
