#include "engines/support/codecs/jpeg/BlockTransform.h"

#include <cmath>

namespace TarnixTools::engines::jpeg {
namespace {

CosineBasis MakeBasis(bool by_place) {
  CosineBasis basis{};
  const double pi = std::acos(-1.0);
  for (std::size_t u = 0; u < 8; ++u) {
    for (std::size_t x = 0; x < 8; ++x) {
      const double scale = u == 0 ? std::sqrt(0.125) : 0.5;
      basis[by_place ? x : u][by_place ? u : x] = static_cast<float>(
          scale * std::cos((2 * static_cast<double>(x) + 1) * static_cast<double>(u) * pi / 16));
    }
  }
  return basis;
}

}  // namespace

const CosineBasis& TheCosineBasis() {
  static const CosineBasis basis = MakeBasis(false);
  return basis;
}

// Both inner loops run over eight numbers that lie side by side, for the compiler to take at once.
void Transform(const float* samples, std::size_t stride, Block& block) {
  static const CosineBasis of_places = MakeBasis(true);
  const CosineBasis& of_frequencies = TheCosineBasis();
  Block columns{};  // transformed downwards
  for (std::size_t v = 0; v < 8; ++v) {
    for (std::size_t y = 0; y < 8; ++y) {
      const float factor = of_frequencies[v][y];
      for (std::size_t x = 0; x < 8; ++x) {
        columns[8 * v + x] += factor * samples[y * stride + x];
      }
    }
  }
  block.fill(0);
  for (std::size_t v = 0; v < 8; ++v) {
    for (std::size_t x = 0; x < 8; ++x) {
      const float factor = columns[8 * v + x];
      for (std::size_t u = 0; u < 8; ++u) {
        block[8 * v + u] += factor * of_places[x][u];
      }
    }
  }
}

}  // namespace TarnixTools::engines::jpeg
