// A picture as a PDF document stores it: one image XObject, perhaps with a soft mask (ISO 32000-2,
// 8.9.5 and 11.6.5.2). A value: ImageWriter puts it into a file.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_ENCODEDIMAGE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_ENCODEDIMAGE_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engines/support/pictures/HeldBytes.h"
#include "engines/support/pictures/PictureSpace.h"

namespace TarnixTools::engines {

// A part of a stream's data: bytes of the image file, or bytes that are held here.
struct DataPiece {
  std::uint64_t offset = 0;  // in the image file, of `length` bytes
  std::uint64_t length = 0;
  HeldBytes held;  // when its data is not null, instead

  std::uint64_t size() const { return held.data != nullptr ? held.size : length; }
};

struct ImageStream {
  std::uint32_t width = 0;   // pixels
  std::uint32_t height = 0;  // pixels
  int bits = 8;              // per component; 0: the data tells
  PictureSpace space = PictureSpace::kGray;
  std::string palette;     // of an indexed image: three bytes for each index
  std::string profile;     // ICC profile of the colours (of the palette's, when there is one)
  std::string filter;      // "DCTDecode"; empty for none
  std::string parameters;  // entries of /DecodeParms: "/K -1/Columns 8"
  std::string decode;      // numbers of /Decode: "1 0"
  std::string color_key;   // numbers of /Mask: the range of each component that is not painted
  std::string entries;     // further entries as they are: "/SMaskInData 1"
  std::vector<DataPiece> data;
};

struct EncodedImage {
  ImageStream image;
  std::optional<ImageStream> soft_mask;
};

// One held piece of a copy of these bytes.
DataPiece Hold(std::string_view bytes);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_ENCODEDIMAGE_H_
