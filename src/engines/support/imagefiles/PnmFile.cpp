#include "engines/support/imagefiles/PnmFile.h"

#include <algorithm>
#include <utility>

#include "engines/support/images/RasterEncoder.h"
#include "engines/support/pictures/ImageError.h"

namespace TarnixTools::engines {

namespace {

bool IsSpace(std::uint8_t c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

[[noreturn]] void ThrowBadHeader() {
  throw ImageError(ImageErrorCode::kDamaged, "the header of the portable map is damaged");
}

}  // namespace

bool PnmFile::Recognises(ByteReader& reader) {
  const std::uint8_t digit = reader.Byte(1);
  return reader.Byte(0) == 'P' && digit >= '1' && digit <= '7' && IsSpace(reader.Byte(2));
}

PnmFile::PnmFile(pdf::ByteSource& source) : reader_(source) {
  kind_ = reader_.Byte(1) - '0';
  if (kind_ == 7) {
    ReadMapHeader();
  } else {
    ReadHeader();
  }
  if (highest_ == 0 || highest_ > 65535 || channels_ < 1 || channels_ > 4) {
    ThrowBadHeader();
  }
  data_ = place_;
  AddFrame(frame_);
}

// A word of the header; comments are passed over.
std::string PnmFile::NextWord() {
  std::string word;
  while (reader_.Has(place_, 1) && word.size() < 32) {
    const std::uint8_t c = reader_.Byte(place_);
    if (c == '#') {
      while (reader_.Has(place_, 1) && reader_.Byte(place_) != '\n') {
        ++place_;
      }
    } else if (!IsSpace(c)) {
      word += static_cast<char>(c);
    } else if (!word.empty()) {
      break;
    }
    ++place_;
  }
  return word;
}

std::optional<std::uint32_t> PnmFile::NextNumber() {
  const std::string word = NextWord();
  if (word.empty() || word.size() > 9 ||
      !std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; })) {
    return std::nullopt;
  }
  return static_cast<std::uint32_t>(std::stoul(word));
}

void PnmFile::ReadHeader() {
  const auto width = NextNumber();
  const auto height = NextNumber();
  const auto highest = IsBitmap() ? std::optional<std::uint32_t>(1) : NextNumber();
  if (!width || !height || !highest) {
    ThrowBadHeader();
  }
  frame_.width = *width;
  frame_.height = *height;
  highest_ = *highest;
  channels_ = kind_ == 3 || kind_ == 6 ? 3 : 1;
  ++place_;  // one white-space character
}

void PnmFile::ReadMapHeader() {
  for (int words = 0; words < 64; ++words) {
    const std::string word = NextWord();
    if (word == "ENDHDR") {
      ++place_;
      return;
    }
    if (word == "TUPLTYPE") {
      NextWord();
      continue;
    }
    const auto number = NextNumber();
    if (!number) {
      break;
    }
    if (word == "WIDTH") {
      frame_.width = *number;
    } else if (word == "HEIGHT") {
      frame_.height = *number;
    } else if (word == "DEPTH") {
      channels_ = static_cast<int>(*number);
    } else if (word == "MAXVAL") {
      highest_ = *number;
    }
  }
  ThrowBadHeader();
}

// Values are spread over 8 or 16 bits; which they were can be told from what they become.
void PnmFile::PutSample(Plane& plane, std::uint32_t y, std::size_t index,
                        std::uint32_t value) const {
  value = std::min(value, highest_);
  unsigned char* row = plane.row(y);
  if (plane.bits() == 8) {
    row[index] = static_cast<unsigned char>((value * 255 + highest_ / 2) / highest_);
  } else {
    const auto wide =
        static_cast<std::uint32_t>((std::uint64_t{value} * 65535 + highest_ / 2) / highest_);
    row[2 * index] = static_cast<unsigned char>(wide >> 8);
    row[2 * index + 1] = static_cast<unsigned char>(wide);
  }
}

void PnmFile::DecodePlain(Plane& plane) {
  const std::size_t samples = std::size_t{frame_.width} * static_cast<unsigned>(channels_);
  for (std::uint32_t y = 0; y < frame_.height; ++y) {
    for (std::size_t i = 0; i < samples; ++i) {
      if (kind_ == 1) {  // digits need no space between them, and 1 is black
        while (reader_.Has(place_, 1) && reader_.Byte(place_) != '0' &&
               reader_.Byte(place_) != '1') {
          ++place_;
        }
        if (!reader_.Has(place_, 1)) {
          return;
        }
        PutSample(plane, y, i, reader_.Byte(place_++) == '0' ? 1 : 0);
        continue;
      }
      const auto value = NextNumber();
      if (!value) {
        return;
      }
      PutSample(plane, y, i, *value);
    }
  }
}

void PnmFile::DecodeRaw(Plane& plane) {
  const std::size_t samples = std::size_t{frame_.width} * static_cast<unsigned>(channels_);
  const std::size_t bytes = highest_ > 255 ? 2 : 1;
  std::string row(samples * bytes, '\0');
  for (std::uint32_t y = 0; y < frame_.height; ++y) {
    if (!reader_.Has(place_, row.size())) {
      NoteCut();
    }
    if (!reader_.Has(place_, 1)) {
      return;
    }
    auto* data = reinterpret_cast<unsigned char*>(row.data());
    const std::size_t count = reader_.ReadInto(place_, data, row.size()) / bytes;
    place_ += row.size();
    if (highest_ == 255 || highest_ == 65535) {
      std::copy_n(data, count * bytes, plane.row(y));
      continue;
    }
    for (std::size_t i = 0; i < count; ++i) {
      PutSample(plane, y, i, bytes == 1 ? data[i] : data[2 * i] << 8 | data[2 * i + 1]);
    }
  }
}

Plane PnmFile::DecodeBits() {
  Plane plane(frame_.width, frame_.height, 1, 1);
  plane.Fill(0);
  for (std::uint32_t y = 0; y < frame_.height; ++y) {
    const std::uint64_t place = place_ + std::uint64_t{plane.row_bytes()} * y;
    if (!reader_.Has(place, plane.row_bytes())) {
      NoteCut();
    }
    if (reader_.Has(place, 1)) {
      reader_.ReadInto(place, plane.row(y), plane.row_bytes());
    }
  }
  return plane;
}

EncodedImage PnmFile::Embed(std::size_t) {
  place_ = data_;
  Raster raster;
  if (kind_ == 4) {
    raster.is_inverted = true;
    raster.color = DecodeBits();
    return EncodeRaster(std::move(raster));
  }
  Plane plane(frame_.width, frame_.height, channels_, highest_ > 255 ? 16 : 8);
  plane.Fill(0);
  if (kind_ < 4) {
    DecodePlain(plane);
  } else {
    DecodeRaw(plane);
  }
  raster.space = channels_ <= 2 ? PictureSpace::kGray : PictureSpace::kRgb;
  if (channels_ % 2 == 0) {
    SplitAlpha(plane, raster);
  } else {
    raster.color = std::move(plane);
  }
  return EncodeRaster(std::move(raster));
}

}  // namespace TarnixTools::engines
