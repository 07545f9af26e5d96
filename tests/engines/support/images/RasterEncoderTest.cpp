#include <algorithm>
#include <functional>
#include <utility>

#include <gtest/gtest.h>

#include "engines/support/images/RasterEncoder.h"
#include "engines/support/images/WrittenImage.h"

namespace TarnixTools::engines {
namespace {

using testing::Rgb;

// A plane whose samples are what the function says of column, row and channel.
using Samples = std::function<unsigned(unsigned x, unsigned y, unsigned channel)>;

Plane MakePlane(unsigned width, unsigned height, int channels, int bits, const Samples& sample) {
  Plane plane(width, height, channels, bits);
  for (unsigned y = 0; y < height; ++y) {
    unsigned char* row = plane.row(y);
    std::fill_n(row, plane.row_bytes(), static_cast<unsigned char>(0));
    for (unsigned i = 0; i < width * static_cast<unsigned>(channels); ++i) {
      const auto count = static_cast<unsigned>(channels);
      const unsigned value = sample(i / count, y, i % count);
      if (bits == 16) {
        row[2 * i] = static_cast<unsigned char>(value >> 8U);
        row[2 * i + 1] = static_cast<unsigned char>(value);
      } else {
        const unsigned bit = i * static_cast<unsigned>(bits);
        row[bit / 8] = static_cast<unsigned char>(
            row[bit / 8] | value << (8 - static_cast<unsigned>(bits) - bit % 8));
      }
    }
  }
  return plane;
}

Raster Rgb8(unsigned width, unsigned height, const Samples& sample) {
  Raster raster;
  raster.space = PictureSpace::kRgb;
  raster.color = MakePlane(width, height, 3, 8, sample);
  return raster;
}

Raster Gray(int bits, unsigned width, unsigned height, const Samples& sample) {
  Raster raster;
  raster.color = MakePlane(width, height, 1, bits, sample);
  return raster;
}

unsigned Noise(unsigned x, unsigned y, unsigned channel) {
  unsigned state = x * 2654435761U ^ y * 40503U ^ channel * 97U;
  state = state * 1664525U + 1013904223U;
  return state >> 24U;
}

// That the library and poppler see the samples in what is written.
void ExpectSamples(WrittenImage& image, unsigned width, unsigned height,
                   const std::function<Rgb(unsigned, unsigned)>& color) {
  const Pixels ours = image.Read(false);
  ASSERT_EQ(ours.width, width);
  ASSERT_EQ(ours.height, height);
  EXPECT_EQ(ours.rows_with_data, height);
  const testing::PnmImage theirs =
      testing::HasProgram("pdfimages") ? image.ReadByPoppler() : testing::PnmImage();
  for (unsigned y = 0; y < height; ++y) {
    for (unsigned x = 0; x < width; ++x) {
      ASSERT_EQ(ours.At(x, y), color(x, y)) << x << " " << y;
      if (theirs.width != 0) {
        ASSERT_EQ(theirs.At(static_cast<int>(x), static_cast<int>(y)), color(x, y));
      }
    }
  }
}

TEST(RasterEncoder, KeepsEverySampleOfColor) {
  const Samples gradient = [](unsigned x, unsigned y, unsigned c) {
    return (x * (3 + c) + y * 2) % 256;
  };
  for (const Samples& sample : {gradient, Samples(&Noise)}) {
    WrittenImage image(EncodeRaster(Rgb8(60, 50, sample)));
    EXPECT_EQ(image.Entry("ColorSpace"), "/DeviceRGB");
    ExpectSamples(image, 60, 50, [&](unsigned x, unsigned y) {
      return Rgb{static_cast<int>(sample(x, y, 0)), static_cast<int>(sample(x, y, 1)),
                 static_cast<int>(sample(x, y, 2))};
    });
  }
}

TEST(RasterEncoder, StoresColorlessPicturesAsGray) {
  WrittenImage image(
      EncodeRaster(Rgb8(40, 30, [](unsigned x, unsigned y, unsigned) { return x * 5 + y; })));
  EXPECT_EQ(image.Entry("ColorSpace"), "/DeviceGray");
  ExpectSamples(image, 40, 30, [](unsigned x, unsigned y) {
    const int value = static_cast<int>(x * 5 + y);
    return Rgb{value, value, value};
  });
}

TEST(RasterEncoder, StoresFewColorsAsPalette) {
  WrittenImage image(EncodeRaster(
      Rgb8(9, 5, [](unsigned x, unsigned, unsigned c) { return x % 3 == c ? 200U : 10U; })));
  EXPECT_EQ(image.Entry("BitsPerComponent"), "2");
  EXPECT_EQ(image.Entry("ColorSpace").substr(0, 20), "[/Indexed/DeviceRGB ");
  ExpectSamples(image, 9, 5, [](unsigned x, unsigned) {
    return Rgb{x % 3 == 0 ? 200 : 10, x % 3 == 1 ? 200 : 10, x % 3 == 2 ? 200 : 10};
  });
}

TEST(RasterEncoder, StoresTextAsFax) {
  const Samples text = [](unsigned x, unsigned y, unsigned) {
    return x > 20 && x < 30 && y % 9 == 0 ? 0U : 1U;
  };
  WrittenImage image(EncodeRaster(Gray(1, 200, 90, text)));
  EXPECT_EQ(image.Entry("Filter"), "/CCITTFaxDecode");
  ExpectSamples(image, 200, 90, [&](unsigned x, unsigned y) {
    const int value = text(x, y, 0) == 0 ? 0 : 255;
    return Rgb{value, value, value};
  });
}

TEST(RasterEncoder, StoresInvertedTextAsFaxToo) {
  Raster raster = Gray(1, 200, 90, [](unsigned x, unsigned, unsigned) { return x == 7 ? 1U : 0U; });
  raster.is_inverted = true;
  WrittenImage image(EncodeRaster(std::move(raster)));
  EXPECT_EQ(image.Entry("Filter"), "/CCITTFaxDecode");
  EXPECT_EQ(image.Entry("Decode"), "null");
  EXPECT_EQ(image.Read().At(7, 3), (Rgb{0, 0, 0}));
  EXPECT_EQ(image.Read().At(8, 3), (Rgb{255, 255, 255}));
}

// Halftones are larger as fax.
TEST(RasterEncoder, StoresHalftonesDeflated) {
  const Samples dots = [](unsigned x, unsigned y, unsigned) { return (x + y) % 2; };
  WrittenImage image(EncodeRaster(Gray(1, 160, 100, dots)));
  EXPECT_EQ(image.Entry("Filter"), "/FlateDecode");
  EXPECT_EQ(image.Read().At(1, 0), (Rgb{255, 255, 255}));
  EXPECT_EQ(image.Read().At(0, 0), (Rgb{0, 0, 0}));
}

// Between text and halftones the smaller of the two is taken.
TEST(RasterEncoder, TriesBothForDrawings) {
  const Samples drawing = [](unsigned x, unsigned y, unsigned) {
    return Noise(x / 12, y / 3, 0) < 128 ? 0U : 1U;
  };
  const EncodedImage encoded = EncodeRaster(Gray(1, 400, 300, drawing));
  WrittenImage image(encoded);
  ExpectSamples(image, 400, 300, [&](unsigned x, unsigned y) {
    const int value = drawing(x, y, 0) == 0 ? 0 : 255;
    return Rgb{value, value, value};
  });
}

TEST(RasterEncoder, StoresSixteenBitsThatSayNoMoreInEight) {
  WrittenImage image(
      EncodeRaster(Gray(16, 90, 4, [](unsigned x, unsigned, unsigned) { return x * 257; })));
  EXPECT_EQ(image.Entry("BitsPerComponent"), "8");
  EXPECT_EQ(image.Read().At(77, 2), (Rgb{77, 77, 77}));
  WrittenImage deep(
      EncodeRaster(Gray(16, 90, 4, [](unsigned x, unsigned, unsigned) { return x * 256; })));
  EXPECT_EQ(deep.Entry("BitsPerComponent"), "16");
  EXPECT_EQ(deep.Read().At(77, 2), (Rgb{77, 77, 77}));
}

TEST(RasterEncoder, StoresAlphaAsSoftMask) {
  Raster raster = Rgb8(20, 10, &Noise);
  raster.alpha = MakePlane(20, 10, 1, 8, [](unsigned x, unsigned, unsigned) { return 10 * x; });
  WrittenImage image(EncodeRaster(std::move(raster)));
  const int value = static_cast<int>(Noise(4, 4, 1));
  EXPECT_NEAR(image.Read().At(4, 4)[1], 255 - (255 - value) * 40 / 255, 1);
  EXPECT_EQ(image.Read(false).At(4, 4)[1], value);
  if (testing::HasProgram("pdfimages")) {
    EXPECT_EQ(image.ReadByPoppler(1).At(4, 4), (Rgb{40, 40, 40}));
  }
}

TEST(RasterEncoder, LeavesOutAlphaThatHidesNothing) {
  Raster raster = Rgb8(20, 10, &Noise);
  raster.alpha = MakePlane(20, 10, 1, 8, [](unsigned, unsigned, unsigned) { return 255; });
  EXPECT_FALSE(EncodeRaster(std::move(raster)).soft_mask);
}

TEST(RasterEncoder, SaysWhatColorsAreMixedWith) {
  for (const auto& [space, matte] :
       {std::pair(PictureSpace::kGray, "/Matte[0]"), std::pair(PictureSpace::kRgb, "/Matte[0 0 0]"),
        std::pair(PictureSpace::kCmyk, "/Matte[0 0 0 0]")}) {
    Raster raster;
    raster.space = space;
    raster.is_premultiplied = true;
    raster.color = MakePlane(4, 4,
                             space == PictureSpace::kGray  ? 1
                             : space == PictureSpace::kRgb ? 3
                                                           : 4,
                             8, [](unsigned, unsigned, unsigned) { return 0; });
    raster.alpha = MakePlane(4, 4, 1, 8, [](unsigned x, unsigned, unsigned) { return x; });
    const EncodedImage encoded = EncodeRaster(std::move(raster));
    EXPECT_EQ(encoded.soft_mask->entries, matte);
    // A matte is in the colours of the image, which stay what they are.
    EXPECT_EQ(encoded.image.space, space);
  }
}

TEST(RasterEncoder, SaysThatInksAreInverted) {
  Raster raster;
  raster.space = PictureSpace::kCmyk;
  raster.is_inverted = true;
  raster.color = MakePlane(3, 3, 4, 8, &Noise);
  EXPECT_EQ(EncodeRaster(std::move(raster)).image.decode, "1 0 1 0 1 0 1 0");
}

TEST(RasterEncoder, StoresMasksInFewBits) {
  const ImageStream mask = EncodeMask(
      MakePlane(30, 30, 1, 16, [](unsigned x, unsigned, unsigned) { return x < 9 ? 0 : 65535; }));
  EXPECT_EQ(mask.bits, 1);
}

TEST(RasterEncoder, TellsTextByTheBytesOfItsFaxData) {
  EXPECT_TRUE(IsBestAsFax(110, 80, 100));
  EXPECT_FALSE(IsBestAsFax(111, 80, 100));
}

TEST(RasterEncoder, LeavesOutWhatTakesMoreThanItSaves) {
  const auto encoded = [](unsigned side, Packing packing, const Samples& sample) {
    return EncodePlane(MakePlane(side, side, 3, 8, sample), PictureSpace::kRgb, packing);
  };
  const auto black = [](unsigned, unsigned, unsigned) { return 0U; };
  const auto slope = [](unsigned x, unsigned y, unsigned channel) {
    return (x * 3 + y * 2 + channel * 40 + Noise(x, y, channel) / 128) % 256;
  };
  const ImageStream pixel = encoded(1, Packing::kDense, Noise);
  EXPECT_EQ(pixel.filter, "");
  EXPECT_EQ(pixel.parameters, "");
  EXPECT_EQ(pixel.data.front().held.size, 3U);
  const ImageStream plain = encoded(30, Packing::kDense, black);
  EXPECT_EQ(plain.filter, "FlateDecode");
  EXPECT_EQ(plain.parameters, "");
  EXPECT_EQ(encoded(60, Packing::kDense, slope).parameters, "/Predictor 15/Colors 3/Columns 60");
  EXPECT_EQ(encoded(30, Packing::kQuick, black).parameters, "/Predictor 15/Colors 3/Columns 30");
}

}  // namespace
}  // namespace TarnixTools::engines
