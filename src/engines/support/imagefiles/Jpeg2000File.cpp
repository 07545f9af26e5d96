#include "engines/support/imagefiles/Jpeg2000File.h"

#include <optional>
#include <utility>

#include "engines/support/pictures/ImageError.h"

namespace TarnixTools::engines {

Jpeg2000File::Jpeg2000File(pdf::ByteSource& source) : reader_(source) {
  std::optional<JpxHeader> header = ReadJpxHeader(reader_);
  if (!header) {
    throw ImageError(ImageErrorCode::kDamaged, "the JPEG 2000 data ends before the picture starts");
  }
  header_ = *std::move(header);
  AddFrame({.width = header_.width,
            .height = header_.height,
            .dpi_x = header_.dpi_x,
            .dpi_y = header_.dpi_y});
}

EncodedImage Jpeg2000File::Embed(std::size_t) {
  EncodedImage result;
  ImageStream& image = result.image;
  image.width = header_.width;
  image.height = header_.height;
  image.bits = 0;
  image.space = PictureSpace::kNone;
  image.filter = "JPXDecode";
  if (!header_.has_boxes) {  // a code stream does not say what its components are
    const std::size_t components = header_.components.size();
    image.space = components <= 2   ? PictureSpace::kGray
                  : components == 3 ? PictureSpace::kRgb
                                    : PictureSpace::kCmyk;
  }
  if (header_.HasAlpha()) {
    image.entries = header_.HasPremultipliedAlpha() ? "/SMaskInData 2" : "/SMaskInData 1";
  }
  image.data.push_back({0, reader_.size(), {}});
  return result;
}

}  // namespace TarnixTools::engines
