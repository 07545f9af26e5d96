#include "engines/support/images/ColorRows.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace TarnixTools::engines {

ColorRows::ColorRows(ImageSamples samples)
    : RowSource(samples.rows->format().width, samples.rows->format().height,
                RowConverter::LayoutOf(samples.space)),
      samples_(std::move(samples.rows)),
      converter_(samples_->format(), std::move(samples.space), samples.decode) {}

bool ColorRows::ReadRow(std::uint8_t* row) {
  last_samples_ = samples_->ReadRow();
  if (last_samples_.size() < format().row_bytes()) {
    ConvertPart(row);
    return false;
  }
  converter_.Convert(last_samples_.data(), row);
  return true;
}

// The pixels that are there; the others are white.
void ColorRows::ConvertPart(std::uint8_t* row) {
  std::memset(row, 0xFF, row_bytes());
  if (last_samples_.empty()) {
    return;
  }
  std::vector<std::uint8_t> packed(format().row_bytes());
  std::copy(last_samples_.begin(), last_samples_.end(), packed.begin());
  std::vector<std::uint8_t> pixels(row_bytes());
  converter_.Convert(packed.data(), pixels.data());
  const std::size_t bytes = BytesPerPixel(layout());
  std::copy_n(pixels.begin(), row_bytes() * last_samples_.size() / packed.size() / bytes * bytes,
              row);
}

bool ColorRows::ReadBits(std::uint8_t* bits) {
  last_samples_ = samples_->ReadRow();
  if (last_samples_.size() < format().row_bytes()) {
    std::memset(bits, 0xFF, format().row_bytes());
    return false;
  }
  converter_.ConvertToBits(last_samples_.data(), bits);
  return true;
}

}  // namespace TarnixTools::engines
