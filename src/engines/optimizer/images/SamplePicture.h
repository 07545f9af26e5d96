// Pictures as the optimizer works on them: eight bits a component, in whatever colours the image
// has, so that what is stored again means what it meant.
//
//   SamplePicture picture = ReadPicture(*OwnSamples(std::move(samples.rows)));
//   SamplePicture small = Scaled(picture, 850, 1100);
#ifndef TARNIX_ENGINES_OPTIMIZER_IMAGES_SAMPLEPICTURE_H_
#define TARNIX_ENGINES_OPTIMIZER_IMAGES_SAMPLEPICTURE_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engines/support/images/SampleRows.h"
#include "engines/support/pictures/RowSource.h"

namespace TarnixTools::engines::optimizer {

struct SamplePicture {
  std::uint32_t width = 0;  // pixels
  std::uint32_t height = 0;
  int components = 1;  // 1, 3 or 4
  std::vector<std::uint8_t> samples;
  bool is_whole = true;  // false: the data has ended before the last row

  std::size_t row_bytes() const { return std::size_t{width} * static_cast<unsigned>(components); }

  const std::uint8_t* row(std::uint32_t y) const { return samples.data() + y * row_bytes(); }

  std::uint64_t pixels() const { return std::uint64_t{width} * height; }
};

// Whether pictures of so many components are worked on here.
constexpr bool IsPictureOf(int components) {
  return components == 1 || components == 3 || components == 4;
}

// The samples of an image as rows of bytes, the least value of each as 0 and the greatest as 255;
// of four components they go by the name of a layout of four bytes.
//   samples - of 1, 3 or 4 components
RowSourcePtr OwnSamples(SampleRowsPtr samples);

// The samples of an image with a palette as the colours that they stand for.
//   table - of the palette: `components` bytes for each index; what it lacks is 0
RowSourcePtr PaletteSamples(SampleRowsPtr samples, std::string table, int components);

// A part of a picture: `width` pixels from `left` on of `height` rows from `top` on.
RowSourcePtr PartOf(RowSourcePtr rows, std::uint32_t left, std::uint32_t top, std::uint32_t width,
                    std::uint32_t height);

// All rows. Throws std::bad_alloc.
SamplePicture ReadPicture(RowSource& rows);

// The picture as rows; it outlives them.
RowSourcePtr RowsOf(const SamplePicture& picture);

// Bands of rows from all over the picture, one below the other: what is found out about them holds,
// more or less, for all of it. Nothing for a picture that is not much larger.
std::optional<SamplePicture> BandsOf(const SamplePicture& picture);

// In another size: where there are fewer pixels each is the mean of the area that it covers, where
// there are more each is mixed of the four that are nearest.
SamplePicture Scaled(const SamplePicture& picture, std::uint32_t width, std::uint32_t height);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_IMAGES_SAMPLEPICTURE_H_
