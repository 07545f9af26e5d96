// A bitmap of JBIG2, a byte for each pixel: 1 is the foreground, black as a rule.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_BITMAP_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_BITMAP_H_

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TarnixTools::engines::jbig2 {

// What becomes of a pixel that another is put onto. The values are those of the standard's combination
// operators (ISO/IEC 14492, 7.4.1.5).
enum class CombinationOperator : std::uint8_t { kOr, kAnd, kXor, kXnor, kReplace };

class Bitmap {
 public:
  // All pixels have the value, 0 or 1. Throws Failure for more pixels than kMaxPixels.
  Bitmap(std::uint32_t width, std::uint32_t height, std::uint8_t value = 0);

  std::int64_t width() const { return width_; }

  std::int64_t height() const { return height_; }

  // The value of a pixel; 0 for one that lies outside, as templates have it.
  std::uint32_t Get(std::int64_t x, std::int64_t y) const {
    return x < 0 || y < 0 || x >= width_ || y >= height_
               ? 0U
               : pixels_[static_cast<std::size_t>(y * width_ + x)];
  }

  // Only for pixels that lie inside.
  void Set(std::int64_t x, std::int64_t y, std::uint8_t value) {
    pixels_[static_cast<std::size_t>(y * width_ + x)] = value;
  }

  // Puts the other bitmap onto this one; what lies outside is cut off.
  void Combine(const Bitmap& other, std::int64_t left, std::int64_t top,
               CombinationOperator combination_operator);

  // The part as a bitmap of its own; its pixels that lie outside this one are 0.
  Bitmap Part(std::int64_t left, std::int64_t top, std::uint32_t width, std::uint32_t height) const;

 private:
  std::int64_t width_;
  std::int64_t height_;
  std::vector<std::uint8_t> pixels_;
};

}  // namespace TarnixTools::engines::jbig2

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_BITMAP_H_
