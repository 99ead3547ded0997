// The code of the kernels, for files that are compiled for one kind of processor
// each. Such a file gives Eigen another name before it includes this one, and
// includes nothing else: a function that two of these files share by its name
// would be compiled for one of them alone.
#pragma once

#include <Eigen/Core>

#include "core/nlp/spacy/kernels.hpp"

namespace core::nlp::spacy {
namespace {

using RowMajor = Eigen::Matrix<float, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
using ConstRows = Eigen::Map<const RowMajor, 0, Eigen::OuterStride<>>;
using ConstVector = Eigen::Map<const Eigen::ArrayXf>;
using Vector = Eigen::Map<Eigen::ArrayXf>;

Eigen::Index index(std::size_t i) { return static_cast<Eigen::Index>(i); }

void multiply(const float* a, std::size_t rows, std::size_t stride, std::size_t k, const float* w,
              const float* bias, std::size_t n, float* y) {
  Eigen::Map<RowMajor> out(y, index(rows), index(n));
  if (bias == nullptr) {
    out.setZero();
  } else {
    out.rowwise() = Eigen::Map<const Eigen::RowVectorXf>(bias, index(n));
  }
  out.noalias() += ConstRows(a, index(rows), index(k), Eigen::OuterStride<>(index(stride))) *
                   Eigen::Map<const RowMajor>(w, index(k), index(n));
}

void maxout(const float* v, std::size_t width, std::size_t pieces, float* out) {
  Vector best(out, index(width));
  best = ConstVector(v, index(width));
  for (std::size_t p = 1; p < pieces; ++p) {
    best = best.max(ConstVector(v + p * width, index(width)));
  }
}

void maxout_norm(const MaxoutNorm& layer, float* candidates, const float* residual, float* out) {
  constexpr float EPSILON = 1e-8F;
  const auto width = index(layer.width);
  Vector best(candidates, width);
  for (std::size_t p = 1; p < layer.pieces; ++p) {
    best = best.max(Vector(candidates + p * layer.width, width));
  }
  best -= best.mean();
  const float scale = 1.0F / __builtin_sqrtf(best.square().mean() + EPSILON);
  Vector result(out, width);
  const ConstVector gain(layer.gain, width);
  const ConstVector shift(layer.shift, width);
  if (residual == nullptr) {
    result = best * scale * gain + shift;
  } else {
    result = best * scale * gain + shift + ConstVector(residual, width);
  }
}

void sum_rows(const float* const* rows, std::size_t count, std::size_t n, float* sum) {
  Vector out(sum, index(n));
  std::size_t done = 1;
  out = ConstVector(rows[0], index(n));
  for (; done + 2 <= count; done += 2) {
    out += ConstVector(rows[done], index(n)) + ConstVector(rows[done + 1], index(n));
  }
  if (done < count) out += ConstVector(rows[done], index(n));
}

void affine(const float* x, std::size_t k, const float* w, const float* bias, std::size_t n,
            float* y) {
  Eigen::Map<Eigen::VectorXf> out(y, index(n));
  out = Eigen::Map<const Eigen::VectorXf>(bias, index(n));
  out.noalias() += Eigen::Map<const Eigen::MatrixXf>(w, index(n), index(k)) *
                   Eigen::Map<const Eigen::VectorXf>(x, index(k));
}

}  // namespace
}  // namespace core::nlp::spacy
