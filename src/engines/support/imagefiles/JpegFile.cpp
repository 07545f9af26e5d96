#include "engines/support/imagefiles/JpegFile.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "engines/support/codecs/CodecLimits.h"
#include "engines/support/codecs/JpegTranscoder.h"
#include "engines/support/imagefiles/ImageFileLimits.h"
#include "engines/support/pictures/IccProfile.h"
#include "engines/support/pictures/ImageError.h"
#include "engines/support/pictures/PictureLimits.h"
#include "engines/support/pictures/Units.h"

namespace TarnixTools::engines {

namespace {

constexpr std::uint8_t kSoi = 0xD8;
constexpr std::uint8_t kEoi = 0xD9;
constexpr std::uint8_t kSos = 0xDA;
constexpr std::uint8_t kApp0 = 0xE0;
constexpr std::uint8_t kApp1 = 0xE1;
constexpr std::uint8_t kApp2 = 0xE2;
constexpr std::uint8_t kApp14 = 0xEE;
constexpr std::string_view kProfilePrefix{"ICC_PROFILE\0", 12};
constexpr std::string_view kEndOfImage{"\xFF\xD9", 2};

// SOF0 to SOF15 without DHT, JPG and DAC, which lie between them.
constexpr bool IsFrameHeader(std::uint8_t marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

// Markers without a segment: TEM, RSTn, SOI.
constexpr bool StandsAlone(std::uint8_t marker) {
  return marker == 0x01 || (marker >= 0xD0 && marker <= kSoi);
}

// What every viewer's decoder of /DCTDecode knows: baseline, extended and progressive Huffman
// coding.
constexpr bool IsCommon(int frame_marker) {
  return frame_marker >= 0xC0 && frame_marker <= 0xC2;
}

// Extended and progressive arithmetic coding.
constexpr bool IsArithmetic(int frame_marker) {
  return frame_marker == 0xC9 || frame_marker == 0xCA;
}

}  // namespace

bool JpegFile::Recognises(ByteReader& reader) {
  return reader.View(0, 3) == "\xFF\xD8\xFF";
}

JpegFile::JpegFile(pdf::ByteSource& source) : reader_(source) {
  ReadSegments();
  if (frame_marker_ == 0 || scan_start_ == 0) {
    throw ImageError(ImageErrorCode::kDamaged, "the JPEG data ends before the picture starts");
  }
  frame_.dpi_x = jfif_dpi_x_ > 0 ? jfif_dpi_x_ : exif_.dpi_x;
  frame_.dpi_y = jfif_dpi_y_ > 0 ? jfif_dpi_y_ : exif_.dpi_y;
  frame_.orientation = exif_.orientation;
  AddFrame(frame_);
}

void JpegFile::ReadSegments() {
  std::uint64_t place = 2;
  for (std::size_t parts = 0; parts < limits::kMaxParts && reader_.Has(place, 4); ++parts) {
    if (reader_.Byte(place) != 0xFF) {
      ++place;  // bytes that do not belong there are passed over, as decoders do
      continue;
    }
    const std::uint8_t marker = reader_.Byte(place + 1);
    if (marker == 0xFF) {
      ++place;
      continue;
    }
    if (marker == 0 || StandsAlone(marker)) {
      place += 2;
      continue;
    }
    if (marker == kEoi) {
      return;
    }
    if (marker == kSos) {
      scan_start_ = place;
      return;
    }
    const std::size_t length = reader_.Number16(place + 2);
    if (length < 2 || !reader_.Has(place + 2, length)) {
      return;
    }
    ReadSegment(marker, place + 4, length - 2);
    place += 2 + length;
  }
}

void JpegFile::ReadSegment(std::uint8_t marker, std::uint64_t start, std::size_t length) {
  if (IsFrameHeader(marker)) {
    ReadFrameHeader(marker, start, length);
  } else if (marker >= kApp0 && marker <= 0xEF) {
    ReadApplicationData(marker, start, length);
  }
}

void JpegFile::ReadFrameHeader(std::uint8_t marker, std::uint64_t start, std::size_t length) {
  if (frame_marker_ != 0) {
    return;
  }
  const int precision = reader_.Byte(start);
  components_ = reader_.Byte(start + 5);
  if (length < 6 + std::size_t{3} * static_cast<std::size_t>(components_)) {
    throw ImageError(ImageErrorCode::kDamaged, "the JPEG frame header is too short");
  }
  if (!(IsCommon(marker) || IsArithmetic(marker)) || precision != 8 ||
      (components_ != 1 && components_ != 3 && components_ != 4)) {
    throw ImageError(ImageErrorCode::kUnsupported, "a kind of JPEG that PDF does not have");
  }
  frame_marker_ = marker;
  frame_.height = reader_.Number16(start + 1);
  frame_.width = reader_.Number16(start + 3);
  for (int i = 0; i < components_; ++i) {
    component_ids_[static_cast<std::size_t>(i)] =
        reader_.Byte(start + 6 + 3 * static_cast<std::uint64_t>(i));
  }
}

void JpegFile::ReadApplicationData(std::uint8_t marker, std::uint64_t start, std::size_t length) {
  const std::string_view head = reader_.View(start, std::min<std::size_t>(length, 16));
  if (marker == kApp0 && head.starts_with(std::string_view("JFIF\0", 5)) && length >= 12) {
    has_jfif_ = true;
    const int unit = reader_.Byte(start + 7);
    const double factor = unit == 1 ? 1 : unit == 2 ? kCentimetresPerInch : 0;
    jfif_dpi_x_ = factor * reader_.Number16(start + 8);
    jfif_dpi_y_ = factor * reader_.Number16(start + 10);
  } else if (marker == kApp1 && head.starts_with(std::string_view("Exif\0\0", 6))) {
    exif_ = ReadExif(reader_.Read(start, length));
  } else if (marker == kApp2 && head.starts_with(kProfilePrefix) && length > 14) {
    profile_parts_.push_back({start + 14, length - 14, reader_.Byte(start + 12)});
  } else if (marker == kApp2 && head.starts_with(std::string_view("MPF\0", 4))) {
    has_more_pictures_ = true;
  } else if (marker == kApp14 && head.starts_with("Adobe") && length >= 12) {
    has_adobe_ = true;
  }
}

std::string JpegFile::Profile() {
  std::stable_sort(profile_parts_.begin(), profile_parts_.end(),
                   [](const ProfilePart& a, const ProfilePart& b) { return a.number < b.number; });
  std::string profile;
  for (const ProfilePart& part : profile_parts_) {
    if (profile.size() + part.length > limits::kMaxProfileBytes) {
      return {};
    }
    profile += reader_.Read(part.offset, part.length);
  }
  return UsableProfile(profile, components_);
}

EncodedImage JpegFile::Embed(std::size_t) {
  EncodedImage result;
  ImageStream& image = result.image;
  image.width = frame_.width;
  image.height = frame_.height;
  image.space = components_ == 1   ? PictureSpace::kGray
                : components_ == 3 ? PictureSpace::kRgb
                                   : PictureSpace::kCmyk;
  image.filter = "DCTDecode";
  image.profile = Profile();
  if (components_ == 4 && has_adobe_) {
    image.decode = "1 0 1 0 1 0 1 0";  // programs that write this marker store the complement
  }
  const bool is_named_rgb =
      component_ids_[0] == 'R' && component_ids_[1] == 'G' && component_ids_[2] == 'B';
  if (components_ == 3 && is_named_rgb && !has_jfif_ && !has_adobe_) {
    image.parameters = "/ColorTransform 0";
  }
  image.data = IsArithmetic(frame_marker_) ? RecodedData() : Data();
  return result;
}

std::vector<DataPiece> JpegFile::RecodedData() {
  if (reader_.size() > limits::kMaxHeldFileBytes) {
    throw ImageError(ImageErrorCode::kLimit, "the JPEG file is too large to be coded anew");
  }
  const std::optional<std::string> recoded =
      CodeByHuffman(reader_.Read(0, static_cast<std::size_t>(reader_.size())));
  if (!recoded) {
    throw ImageError(ImageErrorCode::kUnsupported, "a kind of JPEG that PDF does not have");
  }
  std::vector<DataPiece> pieces;
  pieces.push_back(Hold(*recoded));
  return pieces;
}

// The file, but for what follows the end of the picture. Data that was cut gets the end it lacks.
std::vector<DataPiece> JpegFile::Data() {
  std::vector<DataPiece> pieces;
  const std::uint64_t size = reader_.size();
  const bool ends_well = size >= 4 && reader_.View(size - 2, 2) == kEndOfImage;
  const std::uint64_t end = ends_well && !has_more_pictures_ ? size : FindEnd();
  if (end != 0) {
    pieces.push_back({0, end, {}});
  } else {
    pieces.push_back({0, size, {}});
    pieces.push_back(Hold(kEndOfImage));
  }
  return pieces;
}

// The place after the end of the picture, or 0 when it has none.
std::uint64_t JpegFile::FindEnd() {
  std::uint64_t place = scan_start_;
  while (reader_.Has(place, 2)) {
    const std::string_view view = reader_.Available(place);
    if (view.empty()) {
      break;
    }
    const void* found = std::memchr(view.data(), 0xFF, view.size());
    if (found == nullptr) {
      place += view.size();
      continue;
    }
    place += static_cast<std::uint64_t>(static_cast<const char*>(found) - view.data());
    const std::uint8_t marker = reader_.Byte(place + 1);
    if (marker == kEoi) {
      return place + 2;
    }
    if (marker == 0xFF) {
      place += 1;
    } else if (marker == 0 || StandsAlone(marker)) {
      place += 2;
    } else {
      place += 2 + std::max<std::uint64_t>(reader_.Number16(place + 2), 2);
    }
  }
  return 0;
}

}  // namespace TarnixTools::engines
