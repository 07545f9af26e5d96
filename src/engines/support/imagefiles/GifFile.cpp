#include "engines/support/imagefiles/GifFile.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>
#include <vector>

#include "engines/support/codecs/CodecLimits.h"
#include "engines/support/imagefiles/ImageFileLimits.h"
#include "engines/support/images/RasterEncoder.h"
#include "engines/support/pictures/ColorCount.h"
#include "engines/support/pictures/ImageError.h"
#include "engines/support/pictures/Raster.h"

namespace TarnixTools::engines {

namespace {

constexpr unsigned kHasPalette = 0x80;
constexpr unsigned kIsInterlaced = 0x40;
constexpr unsigned kMaxCodeBits = 12;
constexpr std::size_t kMaxCodes = std::size_t{1} << kMaxCodeBits;

// Variable-length codes, lowest bits first (GIF 89a, appendix F). Stops at the first code that
// makes no sense.
class LzwReader {
 public:
  LzwReader(const std::string& data, unsigned root_bits) : data_(&data), root_bits_(root_bits) {
    Reset();
  }

  // Fills `out`; what the data does not give stays as it is, and false is returned.
  bool Decode(std::vector<unsigned char>& out) {
    const unsigned clear = 1U << root_bits_;
    std::size_t done = 0;
    int previous = -1;
    while (done < out.size()) {
      const int code = NextCode();
      if (code < 0 || code == static_cast<int>(clear) + 1) {
        return false;
      }
      if (code == static_cast<int>(clear)) {
        Reset();
        previous = -1;
        continue;
      }
      const auto next = static_cast<int>(next_code_);
      if (code > next || (code == next && previous < 0)) {
        return false;
      }
      // The string of a code that is being made is the one before it and its own first value.
      const int known = code == next ? previous : code;
      const std::size_t length = lengths_[static_cast<std::size_t>(known)];
      unsigned char first = 0;
      int link = known;
      for (std::size_t i = length; i-- > 0; link = links_[static_cast<std::size_t>(link)]) {
        first = values_[static_cast<std::size_t>(link)];
        if (done + i < out.size()) {
          out[done + i] = first;
        }
      }
      done += length;
      if (code == next && done < out.size()) {
        out[done++] = first;
      }
      Learn(previous, first);
      previous = code;
    }
    return true;
  }

 private:
  void Reset() {
    const std::size_t roots = std::size_t{1} << root_bits_;
    for (std::size_t i = 0; i < roots; ++i) {
      values_[i] = static_cast<unsigned char>(i);
      lengths_[i] = 1;
    }
    next_code_ = roots + 2;
    code_bits_ = root_bits_ + 1;
  }

  void Learn(int previous, unsigned char value) {
    if (previous < 0 || next_code_ >= kMaxCodes) {
      return;
    }
    values_[next_code_] = value;
    links_[next_code_] = previous;
    lengths_[next_code_] =
        static_cast<std::uint16_t>(lengths_[static_cast<std::size_t>(previous)] + 1);
    ++next_code_;
    if (next_code_ == std::size_t{1} << code_bits_ && code_bits_ < kMaxCodeBits) {
      ++code_bits_;
    }
  }

  int NextCode() {
    while (filled_ < code_bits_) {
      if (place_ >= data_->size()) {
        return -1;
      }
      bits_ |= static_cast<unsigned>(static_cast<unsigned char>((*data_)[place_++])) << filled_;
      filled_ += 8;
    }
    const int code = static_cast<int>(bits_ & ((1U << code_bits_) - 1));
    bits_ >>= code_bits_;
    filled_ -= code_bits_;
    return code;
  }

  const std::string* data_;
  std::size_t place_ = 0;
  unsigned root_bits_;
  unsigned code_bits_ = 0;
  unsigned bits_ = 0;
  unsigned filled_ = 0;
  std::size_t next_code_ = 0;
  std::array<unsigned char, kMaxCodes> values_{};
  std::array<int, kMaxCodes> links_{};
  std::array<std::uint16_t, kMaxCodes> lengths_{};
};

// Where the rows of an interlaced picture go, in the order in which they are stored.
std::vector<std::uint32_t> RowOrder(std::uint32_t height, bool is_interlaced) {
  std::vector<std::uint32_t> order;
  if (!is_interlaced) {
    for (std::uint32_t y = 0; y < height; ++y) {
      order.push_back(y);
    }
    return order;
  }
  for (const auto& [start, step] : {std::pair{0U, 8U}, {4U, 8U}, {2U, 4U}, {1U, 2U}}) {
    for (std::uint32_t y = start; y < height; y += step) {
      order.push_back(y);
    }
  }
  return order;
}

}  // namespace

bool GifFile::Recognises(ByteReader& reader) {
  return reader.View(0, 6) == "GIF87a" || reader.View(0, 6) == "GIF89a";
}

GifFile::GifFile(pdf::ByteSource& source) : reader_(source) {
  const auto order = ByteOrder::kLittle;
  frame_.width = reader_.Number16(6, order);
  frame_.height = reader_.Number16(8, order);
  const unsigned flags = reader_.Byte(10);
  std::uint64_t place = 13;
  if ((flags & kHasPalette) != 0) {
    palette_ = ReadPalette(place, flags);
    place += std::uint64_t{3} << ((flags & 7) + 1);
  }
  ReadBlocks(place);
  if (data_ == 0) {
    throw ImageError(ImageErrorCode::kDamaged, "the GIF data ends before a picture starts");
  }
  // A screen that says nothing is as large as its picture.
  frame_.width = std::max(frame_.width, left_ + width_);
  frame_.height = std::max(frame_.height, top_ + height_);
  AddFrame(frame_);
}

std::string GifFile::ReadPalette(std::uint64_t place, unsigned flags) {
  std::string palette = reader_.Read(place, std::size_t{3} << ((flags & 7) + 1));
  palette.resize(palette.size() / 3 * 3);
  return palette;
}

void GifFile::ReadBlocks(std::uint64_t place) {
  for (std::size_t parts = 0; parts < limits::kMaxParts && reader_.Has(place, 1); ++parts) {
    const std::uint8_t kind = reader_.Byte(place);
    if (kind == '!') {
      place = ReadExtension(place + 1);
    } else if (kind == ',') {
      ReadPicture(place + 1);
      return;
    } else if (kind == ';') {
      return;
    } else {
      ++place;
    }
  }
}

// Returns the place after it.
std::uint64_t GifFile::ReadExtension(std::uint64_t place) {
  if (reader_.Byte(place) == 0xF9 && reader_.Byte(place + 1) >= 4 &&
      (reader_.Byte(place + 2) & 1) != 0) {
    transparent_ = reader_.Byte(place + 5);
  }
  ++place;
  while (reader_.Has(place, 1) && reader_.Byte(place) != 0) {
    place += 1 + std::uint64_t{reader_.Byte(place)};
  }
  return place + 1;
}

void GifFile::ReadPicture(std::uint64_t place) {
  const auto order = ByteOrder::kLittle;
  if (!reader_.Has(place, 10)) {
    return;
  }
  left_ = reader_.Number16(place, order);
  top_ = reader_.Number16(place + 2, order);
  width_ = reader_.Number16(place + 4, order);
  height_ = reader_.Number16(place + 6, order);
  const unsigned flags = reader_.Byte(place + 8);
  is_interlaced_ = (flags & kIsInterlaced) != 0;
  place += 9;
  if ((flags & kHasPalette) != 0) {
    palette_ = ReadPalette(place, flags);
    place += std::uint64_t{3} << ((flags & 7) + 1);
  }
  const unsigned root_bits = reader_.Byte(place);
  if (width_ != 0 && height_ != 0 && !palette_.empty() && root_bits >= 1 && root_bits <= 8) {
    data_ = place;
  }
}

std::string GifFile::ReadSubBlocks(std::uint64_t place) {
  std::string data;
  while (reader_.Has(place, 1) && reader_.Byte(place) != 0) {
    const std::size_t length = reader_.Byte(place);
    data += reader_.View(place + 1, length);
    place += 1 + length;
    if (data.size() > limits::kMaxHeldFileBytes) {
      throw ImageError(ImageErrorCode::kLimit, "the picture is too large to be decoded");
    }
  }
  return data;
}

bool GifFile::CoversScreen() const {
  return left_ == 0 && top_ == 0 && width_ == frame_.width && height_ == frame_.height;
}

// Indices on the whole screen. Beside the picture nothing is painted.
Plane GifFile::Decode() {
  Plane screen(frame_.width, frame_.height, 1, 8);
  screen.Fill(static_cast<unsigned char>(std::max(transparent_, 0)));
  std::vector<unsigned char> indices(std::size_t{width_} * height_,
                                     static_cast<unsigned char>(std::max(transparent_, 0)));
  const std::string data = ReadSubBlocks(data_ + 1);
  if (!LzwReader(data, reader_.Byte(data_)).Decode(indices)) {
    NoteCut();
  }
  const std::vector<std::uint32_t> order = RowOrder(height_, is_interlaced_);
  for (std::uint32_t y = 0; y < height_; ++y) {
    std::memcpy(screen.row(top_ + order[y]) + left_, indices.data() + std::size_t{y} * width_,
                width_);
  }
  return screen;
}

EncodedImage GifFile::Embed(std::size_t) {
  if (!CoversScreen() && transparent_ < 0) {
    if (palette_.size() < std::size_t{3} * 256) {
      transparent_ = static_cast<int>(palette_.size() / 3);
      palette_.append(3, '\0');
    }
  }
  Raster raster;
  ApplyPalette(raster, Decode(), palette_, transparent_);
  return EncodeRaster(std::move(raster));
}

}  // namespace TarnixTools::engines
