#include "pdf/Matrix.h"

#include <cmath>
#include <numbers>

namespace TarnixTools::pdf {

namespace {

constexpr double kUnseen = 1e-9;

bool IsNear(double value, double other) {
  return std::abs(value - other) < kUnseen;
}

}  // namespace

Matrix Matrix::Rotation(double degrees) {
  const double turn = std::fmod(degrees, 360);
  const double quarters = turn / 90;
  if (quarters == std::trunc(quarters)) {
    constexpr double kSines[] = {0, 1, 0, -1};
    const auto quarter = static_cast<unsigned>((static_cast<int>(quarters) + 4) % 4);
    const double sine = kSines[quarter];
    const double cosine = kSines[(quarter + 1) % 4];
    return {cosine, sine, -sine, cosine, 0, 0};
  }
  const double radians = turn * std::numbers::pi / 180;
  return {std::cos(radians), std::sin(radians), -std::sin(radians), std::cos(radians), 0, 0};
}

bool Matrix::IsIdentity() const {
  return IsNear(a, 1) && IsNear(b, 0) && IsNear(c, 0) && IsNear(d, 1) && std::abs(e) < 1e-6 &&
         std::abs(f) < 1e-6;
}

bool Matrix::IsFinite() const {
  return std::isfinite(a) && std::isfinite(b) && std::isfinite(c) && std::isfinite(d) &&
         std::isfinite(e) && std::isfinite(f);
}

Matrix operator*(const Matrix& inner, const Matrix& outer) {
  return {inner.a * outer.a + inner.b * outer.c,
          inner.a * outer.b + inner.b * outer.d,
          inner.c * outer.a + inner.d * outer.c,
          inner.c * outer.b + inner.d * outer.d,
          inner.e * outer.a + inner.f * outer.c + outer.e,
          inner.e * outer.b + inner.f * outer.d + outer.f};
}

}  // namespace TarnixTools::pdf
