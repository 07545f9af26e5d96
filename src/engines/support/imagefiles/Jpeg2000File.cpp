#include "engines/support/imagefiles/Jpeg2000File.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "engines/support/pictures/ImageError.h"

namespace TarnixTools::engines {

namespace {

constexpr std::string_view kCodeStreamEnd = "\xFF\xD9";
constexpr std::uint64_t kEndWindow = 1024;  // bytes; the end is looked for in as many

}  // namespace

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
  if (!HasEnd()) {
    NoteCut();
  }
  return result;
}

// Whether the code stream comes to its end, which is found nowhere else in its data (ISO/IEC 15444-1, A.4.4); what
// some programs put behind it does not count.
bool Jpeg2000File::HasEnd() {
  const std::uint64_t window = std::min<std::uint64_t>(header_.end, kEndWindow);
  return reader_.View(header_.end - window, static_cast<std::size_t>(window))
             .find(kCodeStreamEnd) != std::string_view::npos;
}

}  // namespace TarnixTools::engines
