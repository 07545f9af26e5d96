// A picture in a coding that a document can hold.
#ifndef TARNIX_ENGINES_OPTIMIZER_IMAGES_CODEDPICTURE_H_
#define TARNIX_ENGINES_OPTIMIZER_IMAGES_CODEDPICTURE_H_

#include <cstdint>
#include <optional>
#include <string>

#include "engines/optimizer/images/SamplePicture.h"
#include "engines/support/images/RasterEncoder.h"
#include "engines/support/pictures/Plane.h"

namespace TarnixTools::engines::optimizer {

struct CodedPicture {
  std::uint32_t width = 0;  // pixels
  std::uint32_t height = 0;
  int bits = 8;               // of a component
  std::string color_space;    // as text; empty: that which the image has
  std::string palette;        // three bytes a colour; then color_space is that of its colours
  bool keeps_filter = false;  // with its parameters; the next two do not matter then
  std::string filter;         // "DCTDecode"; empty for none
  std::string parameters;     // entries of /DecodeParms
  std::optional<std::string> decode;  // numbers of /Decode, none for an empty text; else as it was
  std::string data;
};

// How JPEG is written.
struct JpegChoice {
  int quality = 75;
  bool is_subsampled = true;  // colours at half the resolution
  bool is_final = false;      // small rather than fast
};

// As JPEG of one, three or four components, in the colours that the picture has.
CodedPicture CodeAsJpeg(const SamplePicture& picture, const JpegChoice& choice);

// What viewers make of it; of three components the lightness alone. Nothing for data that cannot be
// decoded.
std::optional<SamplePicture> DecodedForLook(const std::string& data);

// Without loss, with as few bits and colours as the picture needs.
//   keeps_space - components and depth stay what they are
CodedPicture CodeWithoutLoss(const SamplePicture& picture, bool keeps_space, Packing packing);

// Samples of any number of components and depth, as they are.
CodedPicture CodePlane(Plane&& samples);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_IMAGES_CODEDPICTURE_H_
