#include "engines/support/imagefiles/Jpeg2000File.h"

#include <cmath>
#include <string_view>

#include "engines/support/codecs/CodecLimits.h"
#include "engines/support/pictures/ImageError.h"
#include "engines/support/pictures/Units.h"

namespace TarnixTools::engines {

namespace {

constexpr std::string_view kCodeStreamStart{"\xFF\x4F\xFF\x51", 4};

constexpr std::uint32_t Type(const char (&name)[5]) {
  return static_cast<std::uint32_t>(name[0]) << 24 | static_cast<std::uint32_t>(name[1]) << 16 |
         static_cast<std::uint32_t>(name[2]) << 8 | static_cast<std::uint32_t>(name[3]);
}

struct Box {
  std::uint32_t type = 0;
  std::uint64_t start = 0;  // of the content
  std::uint64_t end = 0;
};

// The box at that place; one of type 0 when there is none.
Box BoxAt(ByteReader& reader, std::uint64_t place, std::uint64_t limit) {
  if (place > limit || limit - place < 8) {
    return {};
  }
  std::uint64_t length = reader.Number32(place);
  std::uint64_t header = 8;
  if (length == 1) {
    length = reader.Number64(place + 8);
    header = 16;
  } else if (length == 0) {
    length = limit - place;
  }
  if (length < header) {
    return {};
  }
  // One that was cut counts as far as it goes.
  return {reader.Number32(place + 4), place + header,
          length > limit - place ? limit : place + length};
}

}  // namespace

bool Jpeg2000File::Recognises(ByteReader& reader) {
  return reader.View(0, 4) == kCodeStreamStart ||
         reader.View(0, 12) == std::string_view("\0\0\0\x0CjP  \r\n\x87\n", 12);
}

Jpeg2000File::Jpeg2000File(pdf::ByteSource& source) : reader_(source) {
  is_code_stream_ = reader_.View(0, 4) == kCodeStreamStart;
  if (is_code_stream_) {
    ReadCodeStream(0);
  } else {
    ReadBoxes(0, reader_.size());
  }
  if (components_ == 0) {
    throw ImageError(ImageErrorCode::kDamaged, "the JPEG 2000 data ends before the picture starts");
  }
  AddFrame(frame_);
}

void Jpeg2000File::ReadBoxes(std::uint64_t start, std::uint64_t end) {
  for (std::size_t parts = 0; parts < limits::kMaxParts; ++parts) {
    const Box box = BoxAt(reader_, start, end);
    if (box.type == 0) {
      return;
    }
    if (box.type == Type("jp2h")) {
      ReadHeader(box.start, box.end);
    } else if (box.type == Type("jp2c") && components_ == 0) {
      ReadCodeStream(box.start);
    }
    start = box.end;
  }
}

void Jpeg2000File::ReadHeader(std::uint64_t start, std::uint64_t end) {
  for (std::size_t parts = 0; parts < limits::kMaxParts; ++parts) {
    const Box box = BoxAt(reader_, start, end);
    if (box.type == 0) {
      return;
    }
    if (box.type == Type("res ")) {
      ReadResolution(box.start, box.end);
    } else if (box.type == Type("cdef")) {
      const unsigned count = reader_.Number16(box.start);
      for (unsigned i = 0; i < count && box.start + 2 + 6 * (i + 1ULL) <= box.end; ++i) {
        const unsigned kind = reader_.Number16(box.start + 2 + 6ULL * i + 2);
        has_alpha_ |= kind == 1 || kind == 2;
        is_premultiplied_ |= kind == 2;
      }
    }
    start = box.end;
  }
}

// Pixels per metre, as a ratio and a power of ten each; how it was captured goes before how it is
// meant to be shown.
void Jpeg2000File::ReadResolution(std::uint64_t start, std::uint64_t end) {
  for (std::size_t parts = 0; parts < 16; ++parts) {
    const Box box = BoxAt(reader_, start, end);
    if (box.type == 0) {
      return;
    }
    const bool is_captured = box.type == Type("resc");
    if ((is_captured || box.type == Type("resd")) && box.end - box.start >= 10 &&
        !has_captured_resolution_) {
      const auto dpi = [&](std::uint64_t ratio, std::uint64_t exponent) {
        const double denominator = reader_.Number16(ratio + 2);
        return denominator == 0
                   ? 0
                   : reader_.Number16(ratio) / denominator *
                         std::pow(10, static_cast<signed char>(reader_.Byte(exponent))) *
                         kMetresPerInch;
      };
      frame_.dpi_y = dpi(box.start, box.start + 8);
      frame_.dpi_x = dpi(box.start + 4, box.start + 9);
      has_captured_resolution_ = is_captured;
    }
    start = box.end;
  }
}

void Jpeg2000File::ReadCodeStream(std::uint64_t start) {
  if (reader_.View(start, 4) != kCodeStreamStart || !reader_.Has(start, 42)) {
    return;
  }
  const std::uint64_t size = start + 4;
  const std::uint32_t right = reader_.Number32(size + 4);
  const std::uint32_t bottom = reader_.Number32(size + 8);
  const std::uint32_t left = reader_.Number32(size + 12);
  const std::uint32_t top = reader_.Number32(size + 16);
  if (right <= left || bottom <= top) {
    throw ImageError(ImageErrorCode::kDamaged, "the picture has no pixels");
  }
  frame_.width = right - left;
  frame_.height = bottom - top;
  components_ = reader_.Number16(size + 36);
}

EncodedImage Jpeg2000File::Embed(std::size_t) {
  EncodedImage result;
  ImageStream& image = result.image;
  image.width = frame_.width;
  image.height = frame_.height;
  image.bits = 0;
  image.space = PictureSpace::kNone;
  image.filter = "JPXDecode";
  if (is_code_stream_) {  // which does not say what its components are
    image.space = components_ <= 2   ? PictureSpace::kGray
                  : components_ == 3 ? PictureSpace::kRgb
                                     : PictureSpace::kCmyk;
  }
  if (has_alpha_) {
    image.entries = is_premultiplied_ ? "/SMaskInData 2" : "/SMaskInData 1";
  }
  image.data.push_back({0, reader_.size(), {}});
  return result;
}

}  // namespace TarnixTools::engines
