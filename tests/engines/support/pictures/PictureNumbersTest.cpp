// What becomes of pictures in memory, number by number: sizes, alpha on white, turns, profiles. The sums
// of small ones were worked out by the definitions (means of areas, mixes of neighbours, EXIF's turns).
#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/pictures/DrawnOrientation.h"
#include "engines/support/pictures/EnlargedPicture.h"
#include "engines/support/pictures/GivenRows.h"
#include "engines/support/pictures/IccProfile.h"
#include "engines/support/pictures/IccTransform.h"
#include "engines/support/pictures/Orientation.h"
#include "engines/support/pictures/PictureOnWhite.h"
#include "engines/support/pictures/ReducedPicture.h"
#include "engines/support/pictures/StandardProfiles.h"
#include "engines/support/pictures/UprightPicture.h"
#include "support/ByteText.h"
#include "support/Damage.h"
#include "support/Expected.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using testing::GivenRows;
using testing::HexOf;
using testing::IsAsExpected;
using testing::NoiseBytes;
using testing::ShortBytes;
using testing::ShortBytesOf;

// Noise; there may be fewer rows than the picture should have.
RowSourcePtr PictureOf(std::uint32_t width, std::uint32_t height, PixelLayout layout,
                       std::uint32_t rows_there) {
  const std::size_t row_bytes = width * BytesPerPixel(layout);
  const std::string noise = NoiseBytes(row_bytes * rows_there, 256, width * height);
  std::vector<testing::Bytes> rows;
  for (std::uint32_t y = 0; y < rows_there; ++y) {
    rows.emplace_back(noise.begin() + static_cast<std::ptrdiff_t>(y * row_bytes),
                      noise.begin() + static_cast<std::ptrdiff_t>((y + 1) * row_bytes));
  }
  return std::make_unique<GivenRows>(width, height, layout, rows);
}

RowSourcePtr PictureOf(std::uint32_t width, std::uint32_t height, PixelLayout layout) {
  return PictureOf(width, height, layout, height);
}

std::string TextOf(RowSource& picture) {
  std::string bytes;
  std::string there;
  std::string row(picture.row_bytes(), '\0');
  for (std::uint32_t y = 0; y < picture.height(); ++y) {
    there += picture.ReadRow(reinterpret_cast<std::uint8_t*>(row.data())) ? '1' : '0';
    bytes += row;
  }
  return std::to_string(picture.width()) + " x " + std::to_string(picture.height()) + " x " +
         std::to_string(BytesPerPixel(picture.layout())) + " " + ShortBytes(bytes, 40) + " rows " +
         (there.size() > 12 ? ShortBytes(there) : there) + " held " +
         std::to_string(picture.held_bytes());
}

constexpr std::array kLayouts = {PixelLayout::kGray, PixelLayout::kRgb, PixelLayout::kBgrx};

TEST(PictureNumbers, OfReducedPictures) {
  std::string text;
  for (const PixelLayout layout : kLayouts) {
    for (const auto& [width, height] :
         {std::pair(1U, 1U), {2U, 2U}, {3U, 5U}, {7U, 4U}, {40U, 9U}, {300U, 2U}, {2U, 300U}}) {
      for (const std::uint32_t divisor : {1U, 2U, 3U, 1000U}) {
        const auto less = [&](std::uint32_t side) { return std::max(1U, side - side / divisor); };
        const auto part = [&](std::uint32_t side) { return std::max(1U, side / divisor); };
        text += TextOf(*ReducePicture(PictureOf(width, height, layout), less(width), part(height)));
        text += "\n";
        text += TextOf(*ReducePicture(PictureOf(width, height, layout, height / 2), part(width),
                                      less(height)));
        text += "\n";
      }
    }
  }
  EXPECT_TRUE(IsAsExpected("pictures/reduced.txt", text));
}

TEST(PictureNumbers, OfEnlargedPictures) {
  std::string text;
  for (const PixelLayout layout : kLayouts) {
    for (const auto& [width, height] : {std::pair(1U, 1U), {2U, 2U}, {3U, 5U}, {7U, 4U}}) {
      for (const auto& [more_x, more_y] : {std::pair(0U, 0U),
                                           {1U, 0U},
                                           {0U, 1U},
                                           {5U, 2U},
                                           {width, height},
                                           {3 * width, 7 * height}}) {
        text += TextOf(*EnlargePicture(PictureOf(width, height, layout), width + more_x,
                                       height + more_y)) +
                "\n";
        if (more_x + more_y > 0) {
          text += TextOf(*EnlargePicture(PictureOf(width, height, layout, height / 2),
                                         width + more_x, height + more_y)) +
                  "\n";
        }
      }
    }
  }
  EXPECT_TRUE(IsAsExpected("pictures/enlarged.txt", text));
}

TEST(PictureNumbers, OfTurnedPictures) {
  std::string text;
  for (const PixelLayout layout : kLayouts) {
    for (int orientation = -1; orientation <= 9; ++orientation) {
      text += std::to_string(orientation) + " " +
              TextOf(*MakeUpright(PictureOf(3, 2, layout), orientation)) + "\n" +
              TextOf(*MakeUpright(PictureOf(3, 2, layout, 1), orientation)) + "\n";
    }
  }
  for (int inner = -1; inner <= 9; ++inner) {
    for (int outer = 0; outer <= 9; ++outer) {
      text += std::to_string(Compose(inner, outer));
    }
    const pdf::Matrix matrix = OrientationMatrix(inner);
    for (const double value : {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f}) {
      text += " " + std::to_string(static_cast<int>(value));
    }
    text += SwapsSides(inner) ? " swaps\n" : "\n";
  }
  EXPECT_TRUE(IsAsExpected("pictures/turned.txt", text));
}

// The orientation that each of many matrices stands for, with a line where it is skewed.
TEST(PictureNumbers, OfMatrices) {
  std::string text;
  for (const double a : {-2.0, -0.001, 0.0, 0.001, 1.0}) {
    for (const double d : {-1.0, -0.5, 0.0, 0.0011, 2.0}) {
      for (const double b : {-1.0, -0.001, 0.0, 0.0021, 3.0}) {
        for (const double c : {-2.0, -0.0011, 0.0, 0.003, 1.0}) {
          const pdf::Matrix matrix{a, b, c, d, 5, 6};
          text += std::to_string(OrientationOf(matrix)) + (IsSkewed(matrix) ? "|" : " ");
        }
      }
      text += "\n";
    }
  }
  EXPECT_TRUE(IsAsExpected("pictures/matrices.txt", text));
}

TEST(PictureNumbers, OfAlphaOnWhite) {
  std::string text;
  std::vector<std::optional<Rgb>> mattes = {std::nullopt, Rgb{0, 0, 0}, Rgb{255, 255, 255},
                                            Rgb{10, 128, 200}};
  for (const auto& matte : mattes) {
    for (const PixelLayout layout : {PixelLayout::kGray, PixelLayout::kRgb}) {
      std::string all;
      for (unsigned alpha = 0; alpha < 256; ++alpha) {
        std::string pixels = NoiseBytes(7 * BytesPerPixel(layout), 256, alpha + 1);
        const std::string alphas(7, static_cast<char>(alpha));
        PutOnWhite(reinterpret_cast<std::uint8_t*>(pixels.data()), layout,
                   reinterpret_cast<const std::uint8_t*>(alphas.data()), 6, matte);
        all += pixels;
      }
      text += ShortBytes(all) + " " + HexOf(all.substr(128 * 7 * BytesPerPixel(layout), 40)) + "\n";
    }
    for (const auto& [width, height] :
         {std::pair(1U, 1U), {4U, 3U}, {3U, 7U}, {9U, 1U}, {2U, 2U}, {8U, 6U}}) {
      text += TextOf(*PictureOnWhite(PictureOf(4, 3, PixelLayout::kRgb, 2),
                                     PictureOf(width, height, PixelLayout::kGray), matte)) +
              "\n";
    }
  }
  EXPECT_TRUE(IsAsExpected("pictures/on_white.txt", text));
}

// Whether readers of profiles understand them is what other tests tell.
TEST(PictureNumbers, OfStandardProfiles) {
  const std::string cmyk = CmykProfileOfVersion2([](const Cmyk& inks) {
    return Srgb{static_cast<std::uint8_t>(255 - std::max(inks[0], inks[3])),
                static_cast<std::uint8_t>(255 - std::max(inks[1], inks[3])),
                static_cast<std::uint8_t>(255 - inks[2] / 2 - inks[3] / 2)};
  });
  const std::string text = HexOf(SrgbProfile()) + "\n" + HexOf(GrayProfile()) + "\n" +
                           HexOf(SrgbProfileOfVersion2()) + "\n" + HexOf(cmyk.substr(0, 400)) +
                           "\n" + ShortBytes(cmyk) + "\n" + HexOf(cmyk.substr(1500, 300)) + "\n";
  EXPECT_TRUE(IsAsExpected("pictures/profiles.txt", text));
}

TEST(PictureNumbers, OfDamagedProfiles) {
  std::string text;
  for (const std::string& profile :
       {testing::TestRgbProfile(2.2), testing::TestProfile("GRAY"), testing::TestProfile("CMYK"),
        testing::TestProfile("Lab "), SrgbProfile() + "behind"}) {
    text += testing::DamageText(profile, [](const std::string& bytes) {
      std::string outcome = std::to_string(ComponentsOfProfile(bytes));
      for (int components = 0; components <= 4; ++components) {
        outcome += " " + std::to_string(UsableProfile(bytes, components).size());
      }
      return outcome + (IccTransform::IsSrgb(bytes) ? " srgb" : "");
    });
  }
  EXPECT_TRUE(IsAsExpected("pictures/damaged_profiles.txt", text));
}

// Devices, colour spaces, sizes and numbers of tags that profiles may have, on both sides of each bound.
TEST(PictureNumbers, OfProfilesThatMayBeUsed) {
  std::string text;
  const std::string profile = testing::TestRgbProfile(2.2);
  const auto add = [&](const std::string& what, const std::string& bytes) {
    text += what + " " + std::to_string(ComponentsOfProfile(bytes)) + " " +
            std::to_string(UsableProfile(bytes, 3).size()) + "\n";
  };
  const auto with = [&](std::size_t at, const std::string& bytes) {
    return std::string(profile).replace(at, bytes.size(), bytes);
  };
  for (const char* device : {"scnr", "mntr", "prtr", "spac", "link", "abst", "nmcl", "SCNR"}) {
    add(device, with(12, device));
  }
  for (const char* space : {"RGB ", "GRAY", "CMYK", "Lab ", "XYZ ", "rgb ", "3CLR"}) {
    add(space, with(16, space));
  }
  const auto size = static_cast<std::uint32_t>(profile.size());
  for (const std::uint32_t stated : {0U, 131U, 132U, 215U, 216U, size - 1, size, size + 1}) {
    add("size " + std::to_string(stated), with(0, testing::Big32(stated)));
  }
  for (const std::uint32_t tags : {0U, 1U, 7U, 8U, 1000U, 1001U}) {
    add("tags " + std::to_string(tags), with(128, testing::Big32(tags)));
  }
  std::string many = profile + std::string(13'000, '\0');
  many.replace(0, 4, testing::Big32(static_cast<std::uint32_t>(many.size())));
  many.replace(132, 12 * 1001, 12 * 1001, '\0');  // tags of no bytes
  for (const std::uint32_t tags : {999U, 1000U, 1001U}) {
    add("many " + std::to_string(tags), std::string(many).replace(128, 4, testing::Big32(tags)));
  }
  for (const std::uint32_t offset : {0U, size - 20, size - 19, size, size + 1, 0xFFFFFFF0U}) {
    add("offset " + std::to_string(offset), with(136, testing::Big32(offset)));
  }
  for (const std::uint32_t length : {0U, 20U, size - 216, size - 215, 0xFFFFFFFFU}) {
    add("length " + std::to_string(length), with(140, testing::Big32(length)));
  }
  add("short", profile.substr(0, 127));
  add("header", profile.substr(0, 128));
  EXPECT_TRUE(IsAsExpected("pictures/usable_profiles.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines
