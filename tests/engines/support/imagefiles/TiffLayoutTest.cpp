// TIFF pictures in strips and tiles, with samples side by side and in planes of their own, of every
// whole number of bytes: each sample comes to its place.
#include <algorithm>
#include <cstdint>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/imagefiles/ImageFileText.h"
#include "engines/support/imagefiles/OpenedImage.h"
#include "support/TestTiff.h"

namespace TarnixTools::engines {
namespace {

using testing::OpenedImage;
using testing::TestTiff;

constexpr std::uint32_t kWidth = 37;
constexpr std::uint32_t kHeight = 21;

// 0 beyond the picture: tiles may reach there.
unsigned SampleAt(std::uint32_t x, std::uint32_t y, unsigned channel) {
  return x < kWidth && y < kHeight ? (x * 769 + y * 12'347 + channel * 40'503 + x * y) % 65'536 : 0;
}

void Append(std::string& bytes, unsigned value, int bits, bool is_big) {
  if (bits == 8) {
    bytes += static_cast<char>(value >> 8);
  } else {
    bytes += is_big ? testing::Big16(value) : testing::Little16(value);
  }
}

struct Layout {
  unsigned channels = 1;
  int bits = 8;
  bool is_separate = false;
  std::uint32_t part_width = kWidth;  // of a strip or a tile
  std::uint32_t part_height = kHeight;
};

// The samples of a rectangle; channel: the only one, or -1 for all.
std::string PartOf(const Layout& layout, std::uint32_t left, std::uint32_t top, int channel) {
  std::string part;
  const bool is_tile = layout.part_width != kWidth;
  const std::uint32_t bottom =
      is_tile ? top + layout.part_height : std::min(kHeight, top + layout.part_height);
  for (std::uint32_t y = top; y < bottom; ++y) {
    for (std::uint32_t x = left; x < left + layout.part_width; ++x) {
      for (unsigned c = 0; c < layout.channels; ++c) {
        if (channel < 0 || static_cast<unsigned>(channel) == c) {
          Append(part, SampleAt(x, y, c), layout.bits, false);
        }
      }
    }
  }
  return part;
}

std::string FileOf(const Layout& layout) {
  std::vector<std::string> parts;
  for (int plane = 0; plane < (layout.is_separate ? static_cast<int>(layout.channels) : 1);
       ++plane) {
    for (std::uint32_t y = 0; y < kHeight; y += layout.part_height) {
      for (std::uint32_t x = 0; x < kWidth; x += layout.part_width) {
        parts.push_back(PartOf(layout, x, y, layout.is_separate ? plane : -1));
      }
    }
  }
  const bool is_tiled = layout.part_width != kWidth;
  TestTiff tiff;
  tiff.Sides(kWidth, kHeight)
      .Set(258, std::vector<std::uint32_t>(layout.channels, static_cast<unsigned>(layout.bits)))
      .Set(259, {1})
      .Set(262, {layout.channels == 1   ? 1U
                 : layout.channels == 3 ? 2U
                                        : 5U})
      .Set(277, {layout.channels})
      .Set(284, {layout.is_separate ? 2U : 1U});
  if (is_tiled) {
    tiff.Set(322, {layout.part_width}).Set(323, {layout.part_height});
  } else {
    tiff.Set(278, {layout.part_height});
  }
  return tiff.Data(parts, is_tiled).Bytes();
}

TEST(TiffLayout, PutsEachSampleInItsPlace) {
  for (const unsigned channels : {1U, 3U, 4U}) {
    std::string wide;
    std::string narrow;
    for (std::uint32_t y = 0; y < kHeight; ++y) {
      for (std::uint32_t x = 0; x < kWidth; ++x) {
        for (unsigned c = 0; c < channels; ++c) {
          Append(wide, SampleAt(x, y, c), 16, true);
          Append(narrow, SampleAt(x, y, c), 8, true);
        }
      }
    }
    for (const int bits : {8, 16}) {
      for (const bool is_separate : {false, true}) {
        for (const auto& [part_width, part_height] : {std::pair(kWidth, kHeight),
                                                      {kWidth, 1U},
                                                      {kWidth, 4U},
                                                      {kWidth, 20U},
                                                      {16U, 16U},
                                                      {32U, 16U},
                                                      {48U, 32U}}) {
          const std::string file = FileOf({channels, bits, is_separate, part_width, part_height});
          OpenedImage image(file);
          EXPECT_EQ(testing::ShortBytes(image.SamplesOf(image.Embed().image)),
                    testing::ShortBytes(bits == 8 ? narrow : wide))
              << channels << " " << bits << " " << is_separate << " " << part_width << " "
              << part_height;
        }
      }
    }
  }
}

// The rest of a picture whose data is cut is empty.
TEST(TiffLayout, GivesTheStripsThatAreThere) {
  const std::string file = FileOf({3, 8, false, kWidth, 4});
  constexpr std::size_t kRow = std::size_t{3} * kWidth;
  for (const std::size_t cut : {std::size_t{1}, kRow, kRow + 1, 4 * kRow, 4 * kRow + 1, 9 * kRow}) {
    OpenedImage image(file.substr(0, file.size() - cut));
    const std::string samples = image.SamplesOf(image.Embed().image);
    EXPECT_EQ(samples.size(), kRow * kHeight);
    EXPECT_EQ(samples.find_last_not_of('\0') + 1, kRow * kHeight - cut) << cut;
  }
}

}  // namespace
}  // namespace TarnixTools::engines
