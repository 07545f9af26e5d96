#include "engines/support/pictures/Orientation.h"

#include <array>
#include <cstddef>

namespace TarnixTools::engines {

namespace {

// Where the stored picture's right and lower edges point on the seen picture, x to the right and y
// downwards.
struct Turn {
  int xx, xy;  // of the step to the right
  int yx, yy;  // of the step downwards

  bool operator==(const Turn&) const = default;
};

constexpr std::array<Turn, 8> kTurns = {{
    {1, 0, 0, 1},    // 1
    {-1, 0, 0, 1},   // 2
    {-1, 0, 0, -1},  // 3
    {1, 0, 0, -1},   // 4
    {0, 1, 1, 0},    // 5
    {0, 1, -1, 0},   // 6
    {0, -1, -1, 0},  // 7
    {0, -1, 1, 0},   // 8
}};

Turn TurnOf(int orientation) {
  return kTurns[static_cast<std::size_t>(ValidOrientation(orientation) - 1)];
}

}  // namespace

int Compose(int inner, int outer) {
  const Turn i = TurnOf(inner);
  const Turn o = TurnOf(outer);
  const Turn both = {i.xx * o.xx + i.xy * o.yx, i.xx * o.xy + i.xy * o.yy,
                     i.yx * o.xx + i.yy * o.yx, i.yx * o.xy + i.yy * o.yy};
  for (std::size_t n = 0; n < kTurns.size(); ++n) {
    if (kTurns[n] == both) {
      return static_cast<int>(n + 1);
    }
  }
  return kUpright;
}

pdf::Matrix OrientationMatrix(int orientation) {
  // The image's y axis points up and the picture's down, on both sides.
  const Turn turn = TurnOf(orientation);
  pdf::Matrix matrix;
  matrix.a = turn.xx;
  matrix.b = -turn.xy;
  matrix.c = -turn.yx;
  matrix.d = turn.yy;
  matrix.e = matrix.a + matrix.c < 0 ? 1 : 0;
  matrix.f = matrix.b + matrix.d < 0 ? 1 : 0;
  return matrix;
}

}  // namespace TarnixTools::engines
