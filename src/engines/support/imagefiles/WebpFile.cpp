#include "engines/support/imagefiles/WebpFile.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

#include <webp/decode.h>

#include "engines/support/codecs/CodecLibrary.h"
#include "engines/support/codecs/CodecLimits.h"
#include "engines/support/codecs/Exif.h"
#include "engines/support/imagefiles/ImageFileLimits.h"
#include "engines/support/images/RasterEncoder.h"
#include "engines/support/pictures/IccProfile.h"
#include "engines/support/pictures/ImageError.h"
#include "engines/support/pictures/PictureLimits.h"
#include "engines/support/pictures/Raster.h"

namespace TarnixTools::engines {

namespace {

constexpr std::uint32_t Type(const char (&name)[5]) {
  return static_cast<std::uint32_t>(name[0]) | static_cast<std::uint32_t>(name[1]) << 8 |
         static_cast<std::uint32_t>(name[2]) << 16 | static_cast<std::uint32_t>(name[3]) << 24;
}

constexpr std::uint64_t kFileHeader = 12;
constexpr std::uint64_t kChunkHeader = 8;
constexpr std::uint64_t kFrameHeader = 16;  // of an animation's frame
constexpr std::uint32_t kHasAlpha = 0x10;

struct LibWebp {
  LibWebp() : library("libwebp.so.7") {
    library.Resolve(NewRgb, "WebPINewRGB");
    library.Resolve(Update, "WebPIUpdate");
    library.Resolve(Delete, "WebPIDelete");
  }

  static const LibWebp& Get() {
    static const LibWebp webp;
    return webp;
  }

  CodecLibrary library;
  // NOLINTBEGIN(readability-identifier-naming): named as the functions that they are
  decltype(WebPINewRGB)* NewRgb = nullptr;
  decltype(WebPIUpdate)* Update = nullptr;
  decltype(WebPIDelete)* Delete = nullptr;
  // NOLINTEND(readability-identifier-naming)
};

// Fills the plane as far as the data goes. VP8_STATUS_OK for all of it, VP8_STATUS_SUSPENDED for less.
VP8StatusCode Decode(const std::string& file, Plane& plane) {
  const LibWebp& webp = LibWebp::Get();
  plane.Fill(0);
  const std::unique_ptr<WebPIDecoder, decltype(webp.Delete)> decoder(
      webp.NewRgb(plane.channels() == 4 ? MODE_RGBA : MODE_RGB, plane.row(0), plane.size() - 1,
                  static_cast<int>(plane.stride())),
      webp.Delete);
  if (decoder == nullptr) {
    throw std::bad_alloc();
  }
  return webp.Update(decoder.get(), reinterpret_cast<const std::uint8_t*>(file.data()),
                     file.size());
}

std::string Little32(std::uint64_t value) {
  std::string bytes;
  for (unsigned i = 0; i < 4; ++i) {
    bytes += static_cast<char>(value >> 8 * i);
  }
  return bytes;
}

}  // namespace

bool WebpFile::Recognises(ByteReader& reader) {
  return reader.View(0, 4) == "RIFF" && reader.View(8, 4) == "WEBP";
}

WebpFile::WebpFile(pdf::ByteSource& source) : reader_(source) {
  ReadChunks(kFileHeader, reader_.size(), false);
  if (width_ == 0) {
    throw ImageError(ImageErrorCode::kDamaged, "the WebP data ends before the picture starts");
  }
  frame_.width = std::max(frame_.width, left_ + width_);
  frame_.height = std::max(frame_.height, top_ + height_);
  AddFrame(frame_);
}

void WebpFile::ReadChunks(std::uint64_t start, std::uint64_t end, bool is_animation_frame) {
  for (std::size_t parts = 0; parts < limits::kMaxParts; ++parts) {
    if (start > end || end - start < kChunkHeader) {
      return;
    }
    const std::uint32_t type = reader_.Number32(start, ByteOrder::kLittle);
    const std::uint64_t length = reader_.Number32(start + 4, ByteOrder::kLittle);
    const std::uint64_t content = start + kChunkHeader;
    if (type == Type("ANMF") && !is_animation_frame && width_ == 0 && length > kFrameHeader) {
      const auto number24 = [&](std::uint64_t place) {
        return reader_.Number32(place, ByteOrder::kLittle) & 0xFFFFFF;
      };
      left_ = 2 * number24(content);
      top_ = 2 * number24(content + 3);
      parts_ = content + kFrameHeader;
      parts_end_ = std::min(end, content + length);
      ReadChunks(parts_, parts_end_, true);
    } else {
      ReadChunk(type, content, std::min(length, end - content));
    }
    start = content + length + length % 2;
  }
}

void WebpFile::ReadChunk(std::uint32_t type, std::uint64_t start, std::uint64_t length) {
  if (type == Type("VP8X") && length >= 10) {
    has_alpha_ |= (reader_.Byte(start) & kHasAlpha) != 0;
    frame_.width = (reader_.Number32(start + 4, ByteOrder::kLittle) & 0xFFFFFF) + 1;
    frame_.height = (reader_.Number32(start + 6, ByteOrder::kLittle) >> 8) + 1;
  } else if (type == Type("ALPH")) {
    has_alpha_ = true;
  } else if ((type == Type("VP8 ") || type == Type("VP8L")) && width_ == 0) {
    ReadSize(type, start);
  } else if (type == Type("ICCP") && length <= limits::kMaxProfileBytes) {
    profile_ = UsableProfile(reader_.Read(start, static_cast<std::size_t>(length)), 3);
  } else if (type == Type("EXIF") && length <= limits::kMaxExifBytes) {
    const ExifFacts facts = ReadExif(reader_.Read(start, static_cast<std::size_t>(length)));
    frame_.orientation = facts.orientation;
    frame_.dpi_x = facts.dpi_x;
    frame_.dpi_y = facts.dpi_y;
  }
}

void WebpFile::ReadSize(std::uint32_t type, std::uint64_t start) {
  if (type == Type("VP8L") && reader_.Byte(start) == 0x2F) {
    const std::uint32_t bits = reader_.Number32(start + 1, ByteOrder::kLittle);
    width_ = (bits & 0x3FFF) + 1;
    height_ = (bits >> 14 & 0x3FFF) + 1;
    has_alpha_ |= (bits >> 28 & 1) != 0;
  } else if (type == Type("VP8 ") && reader_.View(start + 3, 3) == "\x9D\x01\x2A") {
    width_ = reader_.Number16(start + 6, ByteOrder::kLittle) & 0x3FFF;
    height_ = reader_.Number16(start + 8, ByteOrder::kLittle) & 0x3FFF;
  }
}

// The file, or one made of an animation's first picture.
std::string WebpFile::PictureFile() {
  if (reader_.size() > limits::kMaxHeldFileBytes) {
    throw ImageError(ImageErrorCode::kLimit, "the picture is too large to be decoded");
  }
  if (parts_ == 0) {
    return reader_.Read(0, static_cast<std::size_t>(reader_.size()));
  }
  std::string header = "VP8X" + Little32(10) + Little32(has_alpha_ ? kHasAlpha : 0);
  header += Little32(width_ - 1).substr(0, 3) + Little32(height_ - 1).substr(0, 3);
  const std::string parts = reader_.Read(parts_, static_cast<std::size_t>(parts_end_ - parts_));
  return "RIFF" + Little32(4 + header.size() + parts.size()) + "WEBP" + header + parts;
}

// Beside the picture nothing is painted.
Plane WebpFile::OnCanvas(const Plane& picture) const {
  Plane canvas(frame_.width, frame_.height, 4, 8);
  canvas.Fill(0);
  const auto channels = static_cast<std::size_t>(picture.channels());
  for (std::uint32_t y = 0; y < height_; ++y) {
    const unsigned char* from = picture.row(y);
    unsigned char* to = canvas.row(top_ + y) + std::size_t{4} * left_;
    for (std::uint32_t x = 0; x < width_; ++x, from += channels, to += 4) {
      std::memcpy(to, from, 3);
      to[3] = has_alpha_ ? from[3] : 255;
    }
  }
  return canvas;
}

EncodedImage WebpFile::Embed(std::size_t) {
  Plane picture(width_, height_, has_alpha_ ? 4 : 3, 8);
  const VP8StatusCode status = Decode(PictureFile(), picture);
  if (status == VP8_STATUS_SUSPENDED) {
    NoteCut();
  } else if (status != VP8_STATUS_OK) {
    throw ImageError(ImageErrorCode::kDamaged, "the WebP picture cannot be decoded");
  }
  Raster raster;
  raster.space = PictureSpace::kRgb;
  raster.profile = profile_;
  if (width_ != frame_.width || height_ != frame_.height) {
    picture = OnCanvas(picture);
  }
  if (picture.channels() == 4) {
    SplitAlpha(picture, raster);
  } else {
    raster.color = std::move(picture);
  }
  return EncodeRaster(std::move(raster));
}

}  // namespace TarnixTools::engines
