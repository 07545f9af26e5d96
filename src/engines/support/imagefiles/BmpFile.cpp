#include "engines/support/imagefiles/BmpFile.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "engines/support/images/RasterEncoder.h"
#include "engines/support/pictures/ColorCount.h"
#include "engines/support/pictures/ImageError.h"
#include "engines/support/pictures/Units.h"

namespace TarnixTools::engines {

namespace {

constexpr std::uint64_t kFileHeader = 14;
constexpr std::uint32_t kCoreHeader = 12;  // of OS/2
constexpr std::uint32_t kInfoHeader = 40;
constexpr std::uint32_t kMaxHeader = 124;

enum Compression : std::uint32_t { kNone = 0, kRuns8 = 1, kRuns4 = 2, kMasks = 3, kAlphaMasks = 6 };

// The value that a mask takes out of a pixel, widened to 8 bits.
unsigned char Channel(std::uint32_t pixel, std::uint32_t mask) {
  if (mask == 0) {
    return 0;
  }
  const int shift = std::countr_zero(mask);
  const std::uint32_t highest = mask >> shift;
  const std::uint64_t value = (pixel & mask) >> shift;
  return static_cast<unsigned char>((value * 255 + highest / 2) / highest);
}

bool IsContiguous(std::uint32_t mask) {
  const std::uint32_t low = mask == 0 ? 0 : mask >> std::countr_zero(mask);
  return (low & (low + 1)) == 0;
}

}  // namespace

bool BmpFile::Recognises(ByteReader& reader) {
  if (reader.View(0, 2) != "BM") {
    return false;
  }
  const std::uint32_t header = reader.Number32(kFileHeader, ByteOrder::kLittle);
  return header == kCoreHeader || (header >= 16 && header <= kMaxHeader);
}

BmpFile::BmpFile(pdf::ByteSource& source) : reader_(source) {
  ReadHeader();
  AddFrame(frame_);
}

void BmpFile::ReadHeader() {
  const auto number32 = [&](std::uint64_t place) {
    return reader_.Number32(place, ByteOrder::kLittle);
  };
  const auto number16 = [&](std::uint64_t place) {
    return reader_.Number16(place, ByteOrder::kLittle);
  };
  header_size_ = number32(kFileHeader);
  pixels_ = number32(10);
  const bool is_core = header_size_ == kCoreHeader;
  const auto width = is_core ? number16(18) : static_cast<std::int32_t>(number32(18));
  const auto height = is_core ? number16(20) : static_cast<std::int32_t>(number32(22));
  bits_ = number16(is_core ? 24 : 28);
  is_top_down_ = height < 0;
  frame_.width = width > 0 ? static_cast<std::uint32_t>(width) : 0;
  frame_.height =
      height < 0 ? 0U - static_cast<std::uint32_t>(height) : static_cast<std::uint32_t>(height);
  if (header_size_ >= kInfoHeader) {
    compression_ = number32(30);
    frame_.dpi_x = static_cast<std::int32_t>(number32(38)) * kMetresPerInch;
    frame_.dpi_y = static_cast<std::int32_t>(number32(42)) * kMetresPerInch;
  }
  if (!IsKnownKind()) {
    throw ImageError(ImageErrorCode::kUnsupported, "a kind of bitmap that cannot be read");
  }
  if (bits_ <= 8) {
    ReadPalette(is_core ? 3 : 4);
  } else {
    ReadMasks();
  }
  if (pixels_ >= reader_.size()) {
    throw ImageError(ImageErrorCode::kDamaged, "the bitmap ends before the picture starts");
  }
}

bool BmpFile::IsKnownKind() const {
  switch (compression_) {
    case kNone:
      return bits_ == 1 || bits_ == 2 || bits_ == 4 || bits_ == 8 || bits_ == 16 || bits_ == 24 ||
             bits_ == 32;
    case kRuns8:
      return bits_ == 8;
    case kRuns4:
      return bits_ == 4;
    case kMasks:
    case kAlphaMasks:
      return bits_ == 16 || bits_ == 32;
    default:
      return false;
  }
}

void BmpFile::ReadMasks() {
  masks_ = {0xFF0000, 0xFF00, 0xFF, 0};
  if (bits_ == 16) {
    masks_ = {0x7C00, 0x3E0, 0x1F, 0};
  }
  if (compression_ != kMasks && compression_ != kAlphaMasks) {
    return;
  }
  // The masks stand behind a short header, and in a long one: that is one place.
  const std::uint64_t start = kFileHeader + kInfoHeader;
  const bool has_alpha = compression_ == kAlphaMasks || header_size_ >= kInfoHeader + 16;
  for (std::size_t i = 0; i < (has_alpha ? 4 : 3); ++i) {
    masks_[i] = reader_.Number32(start + 4 * i, ByteOrder::kLittle);
    if (!IsContiguous(masks_[i])) {
      throw ImageError(ImageErrorCode::kUnsupported, "a bitmap with odd colour masks");
    }
  }
}

void BmpFile::ReadPalette(unsigned entry_size) {
  const std::uint64_t start = kFileHeader + header_size_;
  std::uint64_t count = std::uint64_t{1} << bits_;
  if (header_size_ >= kInfoHeader) {
    const std::uint32_t used = reader_.Number32(46, ByteOrder::kLittle);
    count = used != 0 ? std::min<std::uint64_t>(count, used) : count;
  }
  if (pixels_ > start) {
    count = std::min(count, (pixels_ - start) / entry_size);
  }
  palette_.assign((std::size_t{1} << bits_) * 3, '\0');
  for (std::uint64_t i = 0; i < count; ++i) {
    for (std::uint64_t c = 0; c < 3; ++c) {  // blue first
      palette_[static_cast<std::size_t>(3 * i + c)] =
          static_cast<char>(reader_.Byte(start + entry_size * i + 2 - c));
    }
  }
}

EncodedImage BmpFile::Embed(std::size_t) {
  Raster raster;
  if (bits_ > 8) {
    raster.space = PictureSpace::kRgb;
    DecodeColors(raster);
    return EncodeRaster(std::move(raster));
  }
  Plane indices = compression_ == kNone ? DecodeIndices() : DecodeRuns();
  ApplyPalette(raster, std::move(indices), palette_);
  return EncodeRaster(std::move(raster));
}

Plane BmpFile::DecodeIndices() {
  Plane plane(frame_.width, frame_.height, 1, static_cast<int>(bits_));
  plane.Fill(0);
  const std::uint64_t stride = (plane.row_bytes() + 3) / 4 * 4;
  for (std::uint32_t y = 0; y < frame_.height; ++y) {
    const std::uint64_t place = pixels_ + stride * StoredRow(y);
    if (!reader_.Has(place, plane.row_bytes())) {
      NoteCut();
    }
    if (reader_.Has(place, 1)) {
      reader_.ReadInto(place, plane.row(y), plane.row_bytes());
    }
  }
  return plane;
}

// Pairs of a count and a value; a count of 0 is followed by 0 end of row, 1 end of picture, 2 a
// step, or how many values come as they are.
Plane BmpFile::DecodeRuns() {
  Plane plane(frame_.width, frame_.height, 1, 8);
  plane.Fill(0);
  std::uint64_t place = pixels_;
  std::uint32_t x = 0;
  std::uint32_t y = 0;
  const auto put = [&](unsigned value) {
    if (x < frame_.width && y < frame_.height) {
      plane.row(StoredRow(y))[x] = static_cast<unsigned char>(value);
    }
    ++x;
  };
  const auto value_at = [&](std::uint64_t start, unsigned i) -> unsigned {
    if (bits_ == 8) {
      return reader_.Byte(start + i);
    }
    const unsigned pair = reader_.Byte(start + i / 2);
    return i % 2 == 0 ? pair >> 4 : pair & 15;
  };
  while (reader_.Has(place, 2) && y < frame_.height) {
    const unsigned count = reader_.Byte(place);
    const unsigned value = reader_.Byte(place + 1);
    place += 2;
    if (count > 0) {
      for (unsigned i = 0; i < count; ++i) {
        put(bits_ == 8 ? value : i % 2 == 0 ? value >> 4 : value & 15);
      }
    } else if (value == 0) {
      x = 0;
      ++y;
    } else if (value == 1) {
      return plane;
    } else if (value == 2) {
      x += reader_.Byte(place);
      y += reader_.Byte(place + 1);
      place += 2;
    } else {
      for (unsigned i = 0; i < value; ++i) {
        put(value_at(place, i));
      }
      const unsigned bytes = bits_ == 8 ? value : (value + 1) / 2;
      place += (std::size_t{bytes} + 1) / 2 * 2;
    }
  }
  // Some programs leave out the end of the last row and of the picture.
  if (std::uint64_t{y} * frame_.width + x < std::uint64_t{frame_.width} * frame_.height) {
    NoteCut();
  }
  return plane;
}

void BmpFile::DecodeColors(Raster& raster) {
  raster.color = Plane(frame_.width, frame_.height, 3, 8);
  if (masks_[3] != 0) {
    raster.alpha = Plane(frame_.width, frame_.height, 1, 8);
  }
  const std::size_t pixel = bits_ / 8;
  const std::size_t stride = (frame_.width * pixel + 3) / 4 * 4;
  std::string row(stride, '\0');
  for (std::uint32_t y = 0; y < frame_.height; ++y) {
    std::fill(row.begin(), row.end(), '\0');
    const std::uint64_t place = pixels_ + std::uint64_t{stride} * StoredRow(y);
    if (!reader_.Has(place, frame_.width * pixel)) {
      NoteCut();
    }
    if (reader_.Has(place, 1)) {
      reader_.ReadInto(place, reinterpret_cast<unsigned char*>(row.data()), row.size());
    }
    DecodeColorRow(reinterpret_cast<const unsigned char*>(row.data()), raster, y);
  }
}

void BmpFile::DecodeColorRow(const unsigned char* from, Raster& raster, std::uint32_t y) const {
  const std::size_t pixel = bits_ / 8;
  unsigned char* to = raster.color.row(y);
  for (std::uint32_t x = 0; x < frame_.width; ++x, from += pixel, to += 3) {
    if (bits_ == 24) {
      to[0] = from[2];
      to[1] = from[1];
      to[2] = from[0];
      continue;
    }
    std::uint32_t value = from[0] | from[1] << 8;
    if (bits_ == 32) {
      value |= static_cast<std::uint32_t>(from[2]) << 16 | static_cast<std::uint32_t>(from[3])
                                                               << 24;
    }
    for (std::size_t c = 0; c < 3; ++c) {
      to[c] = Channel(value, masks_[c]);
    }
    if (masks_[3] != 0) {
      raster.alpha.row(y)[x] = Channel(value, masks_[3]);
    }
  }
}

}  // namespace TarnixTools::engines
