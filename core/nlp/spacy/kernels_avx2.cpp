#define Eigen veildoc_eigen_avx2
#define EIGEN_NO_DEBUG
#define EIGEN_DONT_PARALLELIZE
#include "core/nlp/spacy/kernel_code.hpp"

namespace core::nlp::spacy {

const Kernels AVX2_KERNELS = {"avx2", multiply, maxout_norm, sum_rows, maxout, affine};

}  // namespace core::nlp::spacy
