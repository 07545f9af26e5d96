// Pictures as other programs write them: files of the formats PBM, PGM and PPM in binary.
//
//   const PnmImage image = ReadPnm(result.output);
//   EXPECT_EQ(image.At(3, 4), (Rgb{255, 0, 0}));
#ifndef TARNIX_TESTS_SUPPORT_PNM_IMAGE_H_
#define TARNIX_TESTS_SUPPORT_PNM_IMAGE_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/JpegImage.h"

namespace TarnixTools::testing {

struct PnmImage {
  int width = 0;  // 0 when it is no such file
  int height = 0;
  std::vector<std::uint8_t> pixels;  // red, green, blue

  Rgb At(int x, int y) const;
};

// Samples of eight bits, or of one.
PnmImage ReadPnm(std::string_view bytes);

// An image that a document draws, as pdfimages of poppler decodes it; nothing where it does not.
//   index - in the order in which they are drawn, soft masks after their pictures
PnmImage ImageByPoppler(const std::string& document, int index = 0);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_PNM_IMAGE_H_
