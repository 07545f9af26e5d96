#include "engines/support/pictures/Plane.h"

#include <cstring>

#include "engines/support/pictures/ImageError.h"
#include "engines/support/pictures/PictureLimits.h"

namespace TarnixTools::engines {

Plane::Plane(std::uint32_t width, std::uint32_t height, int channels, int bits)
    : width_(width), height_(height), channels_(channels), bits_(bits) {
  const std::uint64_t row_bits = std::uint64_t{width} * static_cast<unsigned>(channels * bits);
  const std::uint64_t stride = (row_bits + 7) / 8 + 1;
  if (stride > limits::kMaxDecodedBytes / (height == 0 ? 1 : height)) {
    throw ImageError(ImageErrorCode::kLimit, "the picture is too large to be decoded");
  }
  stride_ = static_cast<std::size_t>(stride);
  data_ = std::make_unique_for_overwrite<unsigned char[]>(stride_ * height);
}

void Plane::Fill(unsigned char value, std::uint32_t first) {
  if (first < height_) {
    std::memset(data_.get() + first * stride_, value, (height_ - first) * stride_);
  }
}

}  // namespace TarnixTools::engines
