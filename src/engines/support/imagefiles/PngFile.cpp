#include "engines/support/imagefiles/PngFile.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <new>

#include <libdeflate.h>

#include "engines/support/codecs/CodecLimits.h"
#include "engines/support/codecs/Exif.h"
#include "engines/support/codecs/PngChunks.h"
#include "engines/support/codecs/PngFilters.h"
#include "engines/support/imagefiles/ImageFileLimits.h"
#include "engines/support/images/RasterEncoder.h"
#include "engines/support/pictures/IccProfile.h"
#include "engines/support/pictures/ImageError.h"
#include "engines/support/pictures/PictureLimits.h"
#include "engines/support/pictures/Units.h"
#include "pdf/Limits.h"
#include "pdf/filters/Filters.h"

namespace TarnixTools::engines {

namespace {

constexpr std::uint32_t Type(const char (&name)[5]) {
  return static_cast<std::uint32_t>(name[0]) << 24 | static_cast<std::uint32_t>(name[1]) << 16 |
         static_cast<std::uint32_t>(name[2]) << 8 | static_cast<std::uint32_t>(name[3]);
}

struct DecompressorDeleter {
  void operator()(libdeflate_decompressor* decompressor) const noexcept {
    libdeflate_free_decompressor(decompressor);
  }
};

// Where the seven passes of an interlaced picture start and how far apart their pixels are (8.2).
struct Pass {
  unsigned x, y, dx, dy;
};

constexpr std::array<Pass, 7> kPasses = {{{0, 0, 8, 8},
                                          {4, 0, 8, 8},
                                          {0, 4, 4, 8},
                                          {2, 0, 4, 4},
                                          {0, 2, 2, 4},
                                          {1, 0, 2, 2},
                                          {0, 1, 1, 2}}};

constexpr std::uint32_t PassSize(std::uint32_t size, unsigned start, unsigned step) {
  return size <= start ? 0 : (size - start + step - 1) / step;
}

bool IsAllowed(int color_type, int bits) {
  switch (color_type) {
    case 0:
      return bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16;
    case 3:
      return bits == 1 || bits == 2 || bits == 4 || bits == 8;
    case 2:
    case 4:
    case 6:
      return bits == 8 || bits == 16;
    default:
      return false;
  }
}

// Copies one pixel of fewer than 8 bits.
void CopyBits(const unsigned char* from, std::uint32_t from_x, unsigned char* to,
              std::uint32_t to_x, unsigned bits) {
  const unsigned mask = (1U << bits) - 1;
  const unsigned from_shift = 8 - bits - (from_x * bits & 7);
  const unsigned to_shift = 8 - bits - (to_x * bits & 7);
  const unsigned value = (from[from_x * bits / 8] >> from_shift) & mask;
  unsigned char& target = to[to_x * bits / 8];
  target = static_cast<unsigned char>((target & ~(mask << to_shift)) | value << to_shift);
}

// Spreads the pixels of a row of a pass over the row that they belong to.
void PutPassRow(const unsigned char* from, std::uint32_t width, const Pass& pass, unsigned char* to,
                int bits, std::size_t pixel_bytes) {
  for (std::uint32_t x = 0; x < width; ++x) {
    const std::uint32_t to_x = pass.x + x * pass.dx;
    if (bits < 8) {
      CopyBits(from, x, to, to_x, static_cast<unsigned>(bits));
    } else {
      std::memcpy(to + to_x * pixel_bytes, from + x * pixel_bytes, pixel_bytes);
    }
  }
}

}  // namespace

bool PngFile::Recognises(ByteReader& reader) {
  return reader.View(0, kPngSignature.size()) == kPngSignature;
}

PngFile::PngFile(pdf::ByteSource& source) : reader_(source) {
  ReadChunks();
  if (color_type_ < 0 || data_.empty() || (IsPalette() && palette_.empty())) {
    throw ImageError(ImageErrorCode::kDamaged, "the PNG data ends before the picture starts");
  }
  ReadTransparency();
  AddFrame(frame_);
}

void PngFile::ReadChunks() {
  std::uint64_t place = kPngSignature.size();
  for (std::size_t parts = 0; parts < limits::kMaxParts && reader_.Has(place, 8); ++parts) {
    const std::uint64_t length = reader_.Number32(place);
    const std::uint32_t type = reader_.Number32(place + 4);
    const std::uint64_t start = place + 8;
    const std::uint64_t there = std::min(length, reader_.size() - start);
    if (color_type_ < 0 && type != Type("IHDR")) {
      return;
    }
    if (type == Type("IEND")) {
      is_complete_ = true;
      return;
    }
    if (type == Type("IDAT")) {
      if (there > 0) {
        data_.push_back({start, there, {}});
      }
    } else if (there == length) {
      ReadChunk(type, start, static_cast<std::size_t>(length));
    }
    place = start + length + 4;
  }
}

void PngFile::ReadHeader(std::uint64_t start, std::size_t length) {
  if (length < 13 || color_type_ >= 0) {
    return;
  }
  frame_.width = reader_.Number32(start);
  frame_.height = reader_.Number32(start + 4);
  bits_ = reader_.Byte(start + 8);
  color_type_ = reader_.Byte(start + 9);
  is_interlaced_ = reader_.Byte(start + 12) == 1;
  if (!IsAllowed(color_type_, bits_) || reader_.Byte(start + 10) != 0 ||
      reader_.Byte(start + 11) != 0 || reader_.Byte(start + 12) > 1) {
    throw ImageError(ImageErrorCode::kUnsupported, "the PNG header says what PNG does not have");
  }
}

void PngFile::ReadChunk(std::uint32_t type, std::uint64_t start, std::size_t length) {
  const bool is_small = length <= limits::kMaxSmallChunk;
  if (type == Type("IHDR")) {
    ReadHeader(start, length);
  } else if (type == Type("PLTE") && IsPalette() && is_small) {
    palette_ = reader_.Read(start, std::min<std::size_t>(length / 3, 256) * 3);
  } else if (type == Type("tRNS") && is_small) {
    transparency_ = reader_.Read(start, length);
  } else if (type == Type("iCCP")) {
    ReadProfile(start, length);
  } else if (type == Type("eXIf") && is_small) {
    const ExifFacts facts = ReadExif(reader_.Read(start, length));
    frame_.orientation = facts.orientation;
    if (frame_.dpi_x <= 0) {
      frame_.dpi_x = facts.dpi_x;
      frame_.dpi_y = facts.dpi_y;
    }
  } else if (type == Type("pHYs") && length >= 9 && reader_.Byte(start + 8) == 1) {
    frame_.dpi_x = reader_.Number32(start) * kMetresPerInch;
    frame_.dpi_y = reader_.Number32(start + 4) * kMetresPerInch;
  }
}

void PngFile::ReadProfile(std::uint64_t start, std::size_t length) {
  if (length > limits::kMaxProfileBytes) {
    return;
  }
  const std::string chunk = reader_.Read(start, length);
  const std::size_t name_end = chunk.find('\0');
  if (name_end == std::string::npos || name_end + 2 > chunk.size()) {
    return;
  }
  const pdf::Decoded decoded =
      pdf::TryDecode({{pdf::FilterKind::kFlate, {}}}, std::string_view(chunk).substr(name_end + 2),
                     limits::kMaxProfileBytes);
  profile_ = UsableProfile(decoded.data, ColorComponents());
}

// A single transparent colour is what /Mask says.
void PngFile::ReadTransparency() {
  if (transparency_.empty() || HasAlphaChannel()) {
    return;
  }
  if (IsPalette()) {
    ReadPaletteTransparency();
    return;
  }
  const std::size_t components = static_cast<std::size_t>(ColorComponents());
  if (transparency_.size() < 2 * components) {
    return;
  }
  if (bits_ == 16) {
    has_deep_key_ = true;
    return;
  }
  const auto* bytes = reinterpret_cast<const unsigned char*>(transparency_.data());
  for (std::size_t i = 0; i < components; ++i) {
    const unsigned value = (bytes[2 * i] << 8 | bytes[2 * i + 1]) & ((1U << bits_) - 1);
    const std::string text = std::to_string(value);
    color_key_ += (i == 0 ? "" : " ") + text + ' ' + text;
  }
}

// Entries that are each either opaque or transparent, with the transparent ones side by side, are
// what /Mask says.
void PngFile::ReadPaletteTransparency() {
  const auto* bytes = reinterpret_cast<const unsigned char*>(transparency_.data());
  const std::size_t count = std::min(transparency_.size(), palette_.size() / 3);
  std::size_t first = 0;
  while (first < count && bytes[first] == 255) {
    ++first;
  }
  std::size_t last = count;
  while (last > first && bytes[last - 1] == 255) {
    --last;
  }
  if (first == last) {
    return;
  }
  if (std::all_of(bytes + first, bytes + last, [](unsigned char b) { return b == 0; })) {
    color_key_ = std::to_string(first) + ' ' + std::to_string(last - 1);
  } else {
    has_palette_alpha_ = true;
  }
}

int PngFile::Channels() const {
  return (IsPalette() ? 1 : ColorComponents()) + (HasAlphaChannel() ? 1 : 0);
}

std::size_t PngFile::RowBytes(std::uint32_t width) const {
  return (std::size_t{width} * static_cast<unsigned>(Channels() * bits_) + 7) / 8;
}

std::size_t PngFile::PixelBytes() const {
  return std::max<std::size_t>(1, static_cast<std::size_t>(Channels() * bits_) / 8);
}

EncodedImage PngFile::Embed(std::size_t) {
  if (is_complete_ && !is_interlaced_ && !HasAlphaChannel()) {
    EncodedImage result;
    if (has_palette_alpha_) {
      result.soft_mask = EncodeMask(PaletteAlpha(Decode()));
    } else if (has_deep_key_) {
      if (Plane alpha = KeyAlpha(Decode()); !alpha.empty()) {
        result.soft_mask = EncodeMask(std::move(alpha));
      }
    }
    result.image = PassThrough();
    return result;
  }
  return EncodeRaster(MakeRaster(Decode()));
}

ImageStream PngFile::PassThrough() {
  ImageStream image;
  image.width = frame_.width;
  image.height = frame_.height;
  image.bits = bits_;
  image.space = IsPalette()              ? PictureSpace::kIndexed
                : ColorComponents() == 1 ? PictureSpace::kGray
                                         : PictureSpace::kRgb;
  image.palette = palette_;
  image.profile = profile_;
  image.filter = "FlateDecode";
  image.parameters = "/Predictor 15/Colors " + std::to_string(Channels()) + "/BitsPerComponent " +
                     std::to_string(bits_) + "/Columns " + std::to_string(frame_.width);
  image.color_key = color_key_;
  for (const DataPiece& piece : data_) {
    image.data.push_back({piece.offset, piece.length, {}});
  }
  return image;
}

// Fills `out` with the filtered rows; what the data does not give becomes zeros.
void PngFile::Inflate(unsigned char* out, std::size_t size) {
  std::string packed;
  for (const DataPiece& piece : data_) {
    if (packed.size() + piece.length > limits::kMaxHeldFileBytes) {
      throw ImageError(ImageErrorCode::kLimit, "the picture is too large to be decoded");
    }
    packed += reader_.Read(piece.offset, static_cast<std::size_t>(piece.length));
  }
  if (size > limits::kAlwaysInflated && size / pdf::limits::kMaxExpansion > packed.size()) {
    throw ImageError(ImageErrorCode::kDamaged, "most of the picture is missing");
  }
  const std::unique_ptr<libdeflate_decompressor, DecompressorDeleter> decompressor(
      libdeflate_alloc_decompressor());
  if (decompressor == nullptr) {
    throw std::bad_alloc();
  }
  if (libdeflate_zlib_decompress(decompressor.get(), packed.data(), packed.size(), out, size,
                                 nullptr) == LIBDEFLATE_SUCCESS) {
    return;
  }
  // Damaged or cut, or there is more than it should be: step by step, as far as it goes.
  const pdf::Decoded decoded =
      pdf::Decode({{pdf::FilterKind::kFlate, {}}}, packed, limits::kMaxDecodedBytes);
  const std::size_t there = std::min(decoded.data.size(), size);
  std::copy_n(decoded.data.data(), there, out);
  std::memset(out + there, 0, size - there);
  if (there < size) {
    NoteCut();
  }
}

Plane PngFile::Decode() {
  Plane plane(frame_.width, frame_.height, Channels(), bits_);
  if (is_interlaced_) {
    Deinterlace(plane);
  } else {
    Inflate(plane.data(), plane.size());
    Unfilter(plane.data(), plane.height(), plane.stride(), PixelBytes());
  }
  return plane;
}

void PngFile::Deinterlace(Plane& plane) {
  std::size_t size = 0;
  for (const Pass& pass : kPasses) {
    const std::uint32_t width = PassSize(frame_.width, pass.x, pass.dx);
    if (width != 0) {
      size += PassSize(frame_.height, pass.y, pass.dy) * (RowBytes(width) + 1);
    }
  }
  const auto data = std::make_unique_for_overwrite<unsigned char[]>(size);
  Inflate(data.get(), size);
  plane.Fill(0);
  std::size_t place = 0;
  for (const Pass& pass : kPasses) {
    const std::uint32_t width = PassSize(frame_.width, pass.x, pass.dx);
    const std::uint32_t height = PassSize(frame_.height, pass.y, pass.dy);
    if (width == 0 || height == 0) {
      continue;
    }
    const std::size_t stride = RowBytes(width) + 1;
    unsigned char* rows = data.get() + place;
    Unfilter(rows, height, stride, PixelBytes());
    for (std::uint32_t y = 0; y < height; ++y) {
      PutPassRow(rows + y * stride + 1, width, pass, plane.row(pass.y + y * pass.dy), bits_,
                 PixelBytes());
    }
    place += stride * height;
  }
}

Raster PngFile::MakeRaster(Plane&& samples) const {
  Raster raster;
  raster.space = IsPalette()              ? PictureSpace::kIndexed
                 : ColorComponents() == 1 ? PictureSpace::kGray
                                          : PictureSpace::kRgb;
  raster.palette = palette_;
  raster.profile = profile_;
  raster.color_key = color_key_;
  if (!HasAlphaChannel()) {
    if (has_palette_alpha_) {
      raster.alpha = PaletteAlpha(samples);
    } else if (has_deep_key_) {
      raster.alpha = KeyAlpha(samples);
    }
    raster.color = std::move(samples);
    return raster;
  }
  SplitAlpha(samples, raster);
  return raster;
}

Plane PngFile::PaletteAlpha(const Plane& indices) const {
  std::array<unsigned char, 256> alpha;
  alpha.fill(255);
  std::memcpy(alpha.data(), transparency_.data(), std::min(transparency_.size(), alpha.size()));
  Plane mask(indices.width(), indices.height(), 1, 8);
  const unsigned bits = static_cast<unsigned>(bits_);
  for (std::uint32_t y = 0; y < indices.height(); ++y) {
    const unsigned char* from = indices.row(y);
    unsigned char* to = mask.row(y);
    for (std::uint32_t x = 0; x < indices.width(); ++x) {
      const std::size_t bit = std::size_t{x} * bits;
      to[x] = alpha[(from[bit / 8] >> (8 - bits - (bit & 7))) & ((1U << bits) - 1)];
    }
  }
  return mask;
}

// What is not the transparent colour; empty when that is all.
Plane PngFile::KeyAlpha(const Plane& samples) const {
  const std::size_t pixel = PixelBytes();
  Plane mask(samples.width(), samples.height(), 1, 8);
  bool has_any = false;
  for (std::uint32_t y = 0; y < samples.height(); ++y) {
    const unsigned char* from = samples.row(y);
    unsigned char* to = mask.row(y);
    for (std::uint32_t x = 0; x < samples.width(); ++x, from += pixel) {
      const bool is_key = std::memcmp(from, transparency_.data(), pixel) == 0;
      to[x] = is_key ? 0 : 255;
      has_any |= is_key;
    }
  }
  return has_any ? std::move(mask) : Plane();
}

}  // namespace TarnixTools::engines
