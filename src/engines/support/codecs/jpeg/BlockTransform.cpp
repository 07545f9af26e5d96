#include "engines/support/codecs/jpeg/BlockTransform.h"

#include <cmath>

namespace TarnixTools::engines::jpeg {
namespace {

CosineBasis MakeBasis() {
  CosineBasis basis{};
  const double pi = std::acos(-1.0);
  for (std::size_t u = 0; u < 8; ++u) {
    for (std::size_t x = 0; x < 8; ++x) {
      const double scale = u == 0 ? std::sqrt(0.125) : 0.5;
      basis[u][x] = static_cast<float>(
          scale * std::cos((2 * static_cast<double>(x) + 1) * static_cast<double>(u) * pi / 16));
    }
  }
  return basis;
}

// Transforms eight columns at once. A wave of even frequency is the same from both ends, one of odd
// frequency the opposite: sums and differences of the ends are all that it needs. The inner loops run
// over numbers that lie side by side, for the compiler to take together.
//   stride - samples from one row to the next
void TransformColumns(const CosineBasis& basis, const float* samples, std::size_t stride,
                      float* out) {
  std::array<std::array<float, 8>, 4> sums;
  std::array<std::array<float, 8>, 4> differences;
  for (std::size_t y = 0; y < 4; ++y) {
    const float* upper = samples + y * stride;
    const float* lower = samples + (7 - y) * stride;
    for (std::size_t x = 0; x < 8; ++x) {
      sums[y][x] = upper[x] + lower[x];
      differences[y][x] = upper[x] - lower[x];
    }
  }
  for (std::size_t v = 0; v < 8; ++v) {
    const auto& ends = v % 2 == 0 ? sums : differences;
    for (std::size_t x = 0; x < 8; ++x) {
      out[8 * v + x] = basis[v][0] * ends[0][x] + basis[v][1] * ends[1][x] +
                       basis[v][2] * ends[2][x] + basis[v][3] * ends[3][x];
    }
  }
}

// By place and half the frequency: what each place of the first half adds to the waves of even
// frequency, and to those of odd frequency.
struct HalfBasis {
  using Weights = std::array<std::array<float, 4>, 4>;

  explicit HalfBasis(const CosineBasis& basis) {
    for (std::size_t x = 0; x < 4; ++x) {
      for (std::size_t half = 0; half < 4; ++half) {
        even[x][half] = basis[2 * half][x];
        odd[x][half] = basis[2 * half + 1][x];
      }
    }
  }

  Weights even{};
  Weights odd{};
};

// Transforms a row, in place: four waves at once.
void TransformRow(const HalfBasis& basis, float* row) {
  std::array<float, 4> even{};
  std::array<float, 4> odd{};
  for (std::size_t x = 0; x < 4; ++x) {
    const float sum = row[x] + row[7 - x];
    const float difference = row[x] - row[7 - x];
    for (std::size_t half = 0; half < 4; ++half) {
      even[half] += sum * basis.even[x][half];
      odd[half] += difference * basis.odd[x][half];
    }
  }
  for (std::size_t half = 0; half < 4; ++half) {
    row[2 * half] = even[half];
    row[2 * half + 1] = odd[half];
  }
}

}  // namespace

const CosineBasis& TheCosineBasis() {
  static const CosineBasis basis = MakeBasis();
  return basis;
}

void Transform(const float* samples, std::size_t stride, Block& block) {
  const CosineBasis& basis = TheCosineBasis();
  static const HalfBasis half_basis(basis);
  TransformColumns(basis, samples, stride, block.data());
  for (std::size_t y = 0; y < 8; ++y) {
    TransformRow(half_basis, block.data() + 8 * y);
  }
}

}  // namespace TarnixTools::engines::jpeg
