// What a compression did to images, by what they are.
#ifndef TARNIX_ENGINES_OPTIMIZER_OPTIMIZERREPORT_H_
#define TARNIX_ENGINES_OPTIMIZER_OPTIMIZERREPORT_H_

#include <array>
#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines::optimizer {

enum class ImageClass : std::uint8_t {
  kPhotograph,
  kFlatArt,   // screenshots, drawings, few colours
  kTextScan,  // a page of text in gray or colour
  kBitonal,   // one bit a pixel, stencil masks included
  kSoftMask,
};

inline constexpr std::size_t kImageClassCount = 5;

// Why an image stays as it was.
enum class LeftAlone : std::uint8_t {
  kSmallest,    // nothing that looks as good is smaller
  kUnreadable,  // its data cannot be decoded surely
  kUnhandled,   // a colour space or mask that is not computed here
};

inline constexpr std::size_t kLeftAloneCount = 3;

struct ClassFigures {
  std::size_t images = 0;
  std::uint64_t bytes_before = 0;  // of their encoded data
  std::uint64_t bytes_after = 0;
  std::array<std::size_t, kLeftAloneCount> left_alone{};
};

struct OptimizerReport {
  std::array<ClassFigures, kImageClassCount> images;
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_OPTIMIZERREPORT_H_
