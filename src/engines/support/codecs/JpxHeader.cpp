#include "engines/support/codecs/JpxHeader.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "engines/support/codecs/CodecLimits.h"
#include "engines/support/pictures/Units.h"

namespace TarnixTools::engines {
namespace {

constexpr std::string_view kCodeStreamStart{"\xFF\x4F\xFF\x51", 4};  // SOC, SIZ
constexpr std::string_view kFileStart{"\0\0\0\x0CjP  \r\n\x87\n", 12};

// Methods and colour spaces of a box that tells the colour space (I.5.3.3).
constexpr int kByNumber = 1;
constexpr int kByRestrictedProfile = 2;
constexpr std::uint32_t kCmyk = 12;
constexpr std::uint32_t kSrgb = 16;
constexpr std::uint32_t kGray = 17;
constexpr std::uint32_t kSycc = 18;

constexpr std::uint32_t Type(const char (&name)[5]) {
  return static_cast<std::uint32_t>(name[0]) << 24 | static_cast<std::uint32_t>(name[1]) << 16 |
         static_cast<std::uint32_t>(name[2]) << 8 | static_cast<std::uint32_t>(name[3]);
}

struct Box {
  std::uint32_t type = 0;
  std::uint64_t start = 0;  // of the content
  std::uint64_t end = 0;

  std::uint64_t size() const { return end - start; }
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
  if (length < header || limit - place < header) {
    return {};
  }
  // One that was cut counts as far as it goes.
  return {reader.Number32(place + 4), place + header,
          length > limit - place ? limit : place + length};
}

class HeaderReader {
 public:
  explicit HeaderReader(ByteReader& reader) : reader_(&reader) {}

  std::optional<JpxHeader> Read() {
    header_.has_boxes = reader_->View(0, kCodeStreamStart.size()) != kCodeStreamStart;
    if (header_.has_boxes) {
      ForEachBox(0, reader_->size(), [this](const Box& box) { ReadFileBox(box); });
    } else {
      ReadCodeStream(0, reader_->size());
    }
    return header_.components.empty() ? std::nullopt : std::optional(std::move(header_));
  }

 private:
  template <typename Visit>
  void ForEachBox(std::uint64_t start, std::uint64_t end, const Visit& visit) {
    for (std::size_t parts = 0; parts < limits::kMaxParts; ++parts) {
      const Box box = BoxAt(*reader_, start, end);
      if (box.type == 0) {
        return;
      }
      visit(box);
      start = box.end;
    }
  }

  void ReadFileBox(const Box& box) {
    if (box.type == Type("jp2h")) {
      ForEachBox(box.start, box.end, [this](const Box& inner) { ReadHeaderBox(inner); });
    } else if (box.type == Type("jp2c") && header_.components.empty()) {
      ReadCodeStream(box.start, box.end);
    }
  }

  void ReadHeaderBox(const Box& box) {
    if (box.type == Type("colr")) {
      ReadColor(box);
    } else if (box.type == Type("cdef")) {
      ReadChannels(box);
    } else if (box.type == Type("pclr") && box.size() >= 3) {
      header_.palette_columns = reader_->Byte(box.start + 2);
    } else if (box.type == Type("res ")) {
      ForEachBox(box.start, box.end, [this](const Box& inner) { ReadResolution(inner); });
    }
  }

  void ReadColor(const Box& box) {
    if (box.size() < 3 || header_.colors.size() >= limits::kMaxJpxColors) {
      return;
    }
    JpxColor color;
    color.method = reader_->Byte(box.start);
    color.approximation = reader_->Byte(box.start + 2);
    if (color.method == kByNumber && box.size() >= 7) {
      color.space = reader_->Number32(box.start + 3);
    }
    header_.colors.push_back(color);
  }

  // Of each: the number, what it is, what it belongs to (I.5.3.6).
  void ReadChannels(const Box& box) {
    const unsigned count = reader_->Number16(box.start);
    for (unsigned i = 0; i < count && 2 + 6 * (i + 1ULL) <= box.size(); ++i) {
      if (header_.channels.size() < limits::kMaxJpxChannels) {
        header_.channels.push_back(JpxChannelKind{reader_->Number16(box.start + 4 + 6ULL * i)});
      }
    }
  }

  // How it was captured goes before how it is meant to be shown.
  void ReadResolution(const Box& box) {
    const bool is_captured = box.type == Type("resc");
    if ((!is_captured && box.type != Type("resd")) || box.size() < 10 || has_captured_) {
      return;
    }
    header_.dpi_y = Dpi(box.start, box.start + 8);
    header_.dpi_x = Dpi(box.start + 4, box.start + 9);
    has_captured_ = is_captured;
  }

  // Of pixels per metre, as a ratio and a power of ten.
  double Dpi(std::uint64_t ratio, std::uint64_t exponent) {
    const double denominator = reader_->Number16(ratio + 2);
    return denominator == 0 ? 0
                            : reader_->Number16(ratio) / denominator *
                                  std::pow(10, static_cast<signed char>(reader_->Byte(exponent))) *
                                  kMetresPerInch;
  }

  void ReadCodeStream(std::uint64_t start, std::uint64_t end) {
    const std::uint64_t size = start + kCodeStreamStart.size();
    const std::size_t count = reader_->Number16(size + 36);
    if (reader_->View(start, kCodeStreamStart.size()) != kCodeStreamStart ||
        !reader_->Has(size, 38 + 3 * count)) {
      return;
    }
    header_.end = end;
    const std::uint32_t right = reader_->Number32(size + 4);
    const std::uint32_t bottom = reader_->Number32(size + 8);
    const std::uint32_t left = reader_->Number32(size + 12);
    const std::uint32_t top = reader_->Number32(size + 16);
    if (right > left && bottom > top) {
      header_.width = right - left;
      header_.height = bottom - top;
    }
    for (std::size_t i = 0; i < count; ++i) {
      const unsigned depth = reader_->Byte(size + 38 + 3 * i);
      header_.components.push_back(
          {.bits = static_cast<int>(depth & 0x7FU) + 1, .is_signed = (depth & 0x80U) != 0});
    }
  }

  ByteReader* reader_;
  JpxHeader header_;
  bool has_captured_ = false;
};

const JpxColor* FirstKnown(const std::vector<JpxColor>& colors) {
  const auto found = std::find_if(colors.begin(), colors.end(), [](const JpxColor& color) {
    return color.method == kByNumber || color.method == kByRestrictedProfile;
  });
  return found != colors.end() ? &*found : nullptr;
}

}  // namespace

bool JpxHeader::HasAlpha() const {
  return HasPremultipliedAlpha() ||
         std::find(channels.begin(), channels.end(), JpxChannelKind::kAlpha) != channels.end();
}

bool JpxHeader::HasPremultipliedAlpha() const {
  return std::find(channels.begin(), channels.end(), JpxChannelKind::kPremultipliedAlpha) !=
         channels.end();
}

std::size_t JpxHeader::CountColors() const {
  const JpxColor* color = FirstKnown(colors);
  switch (color != nullptr ? color->space : 0) {
    case kGray:
      return 1;
    case kSrgb:
    case kSycc:
      return 3;
    case kCmyk:
      return 4;
    default:
      return 0;
  }
}

bool JpxHeader::IsYcc() const {
  const JpxColor* color = FirstKnown(colors);
  return color != nullptr && color->space == kSycc;
}

bool IsJpx(ByteReader& reader) {
  return reader.View(0, kCodeStreamStart.size()) == kCodeStreamStart ||
         reader.View(0, kFileStart.size()) == kFileStart;
}

std::optional<JpxHeader> ReadJpxHeader(ByteReader& reader) {
  return HeaderReader(reader).Read();
}

std::optional<JpxHeader> ReadJpxHeader(std::string_view data) {
  pdf::MemorySource source(data);
  ByteReader reader(source);
  return ReadJpxHeader(reader);
}

}  // namespace TarnixTools::engines
