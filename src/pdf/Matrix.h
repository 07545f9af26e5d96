// Transformation matrices (ISO 32000-2, 8.3.3).
#ifndef TARNIX_PDF_MATRIX_H_
#define TARNIX_PDF_MATRIX_H_

namespace TarnixTools::pdf {

struct Point {
  double x = 0;
  double y = 0;

  friend bool operator==(const Point&, const Point&) = default;
};

// (x, y) becomes (a x + c y + e, b x + d y + f).
struct Matrix {
  double a = 1;
  double b = 0;
  double c = 0;
  double d = 1;
  double e = 0;
  double f = 0;

  static Matrix Translation(double dx, double dy) { return {1, 0, 0, 1, dx, dy}; }

  // Counter-clockwise; exact for multiples of 90 degrees.
  static Matrix Rotation(double degrees);

  Point Apply(double x, double y) const { return {a * x + c * y + e, b * x + d * y + f}; }

  // Whether nothing moves, as far as that can be seen on a page.
  bool IsIdentity() const;
  // Whether every number is one.
  bool IsFinite() const;
};

// First `inner`, then `outer`: what the operator cm does with the matrix in force as `outer`.
Matrix operator*(const Matrix& inner, const Matrix& outer);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_MATRIX_H_
