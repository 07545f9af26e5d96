#include "engines/support/codecs/jbig2/Bitmap.h"

#include <algorithm>

#include "engines/support/codecs/jbig2/ArithmeticDecoder.h"
#include "engines/support/codecs/jbig2/Jbig2Limits.h"

namespace TarnixTools::engines::jbig2 {
namespace {

std::uint8_t Combined(std::uint8_t below, std::uint8_t above,
                      CombinationOperator combination_operator) {
  switch (combination_operator) {
    case CombinationOperator::kOr:
      return below | above;
    case CombinationOperator::kAnd:
      return below & above;
    case CombinationOperator::kXor:
      return below ^ above;
    case CombinationOperator::kXnor:
      return below == above ? 1 : 0;
    default:
      return above;
  }
}

}  // namespace

Bitmap::Bitmap(std::uint32_t width, std::uint32_t height, std::uint8_t value)
    : width_(width), height_(height) {
  if (std::uint64_t{width} * height > limits::kMaxPixels) {
    throw Failure();
  }
  pixels_.assign(std::size_t{width} * height, value);
}

void Bitmap::Combine(const Bitmap& other, std::int64_t left, std::int64_t top,
                     CombinationOperator combination_operator) {
  const std::int64_t first_x = std::max<std::int64_t>(0, -left);
  const std::int64_t first_y = std::max<std::int64_t>(0, -top);
  const std::int64_t end_x = std::min(other.width_, width_ - left);
  const std::int64_t end_y = std::min(other.height_, height_ - top);
  for (std::int64_t y = first_y; y < end_y; ++y) {
    for (std::int64_t x = first_x; x < end_x; ++x) {
      std::uint8_t& pixel = pixels_[static_cast<std::size_t>((top + y) * width_ + left + x)];
      pixel = Combined(pixel, other.pixels_[static_cast<std::size_t>(y * other.width_ + x)],
                       combination_operator);
    }
  }
}

Bitmap Bitmap::Part(std::int64_t left, std::int64_t top, std::uint32_t width,
                    std::uint32_t height) const {
  Bitmap part(width, height);
  part.Combine(*this, -left, -top, CombinationOperator::kReplace);
  return part;
}

}  // namespace TarnixTools::engines::jbig2
