// What the encoder writes, with all decoders at hand as judges.
#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/CcittEncoder.h"
#include "engines/support/codecs/Jbig2Coder.h"
#include "engines/support/codecs/Jbig2Encoder.h"
#include "engines/support/codecs/jbig2/AdaptivePixel.h"
#include "engines/support/codecs/jbig2/GenericRegionEncoder.h"
#include "engines/support/drawing/DrawnPages.h"
#include "support/PageViews.h"
#include "support/Readers.h"
#include "support/TempDir.h"

namespace TarnixTools::engines {
namespace {

using testing::jbig2::Decoded;
using testing::jbig2::DecodedByPoppler;
using testing::jbig2::DocumentOf;
using testing::jbig2::Painted;
using testing::jbig2::Picture;

// A picture as rows of bits.
struct Bits {
  explicit Bits(const Picture& source, int black = 0, std::size_t bytes_behind = 0)
      : stride((source[0].size() + 7) / 8 + bytes_behind),
        bytes(stride * source.size(), black == 0 ? 0xFF : 0),
        picture{.rows = bytes.data(),
                .stride = stride,
                .width = static_cast<std::uint32_t>(source[0].size()),
                .height = static_cast<std::uint32_t>(source.size()),
                .black = black} {
    for (std::size_t y = 0; y < source.size(); ++y) {
      for (std::size_t x = 0; x < source[y].size(); ++x) {
        if (source[y][x] == '#') {
          bytes[y * stride + x / 8] ^= static_cast<std::uint8_t>(0x80U >> x % 8);
        }
      }
    }
  }

  Bits(const Bits&) = delete;
  Bits& operator=(const Bits&) = delete;

  std::size_t stride;
  std::vector<std::uint8_t> bytes;
  BitPicture picture;
};

std::string Encoded(const Picture& source, int black = 0, std::size_t bytes_behind = 0) {
  return EncodeJbig2(Bits(source, black, bytes_behind).picture).value_or("nothing");
}

// Pixels that look random, so many of 256 black.
std::function<bool(int, int)> Noise(unsigned blacks_in_256) {
  return [state = 1U, blacks_in_256](int, int) mutable {
    state = state * 1664525U + 1013904223U;
    return state >> 24U < blacks_in_256;
  };
}

// Strokes of letters in lines.
bool IsInText(int x, int y) {
  const int line = y % 40;
  const int letter = x / 22 * 7 + y / 40 * 3;
  const int u = x % 22;
  return x > 30 && line > 8 && line < 30 && letter % 5 != 0 &&
         (u / 3 == letter % 3 || (line / 3 == 4 + letter % 4 && u < 16) ||
          (u + line + letter % 9) % 19 < 2);
}

// A screen of dots, eight pixels apart, that grow to the right.
bool IsInScreen(int x, int y) {
  const int u = x % 8 - 4;
  const int v = y % 8 - 4;
  return u * u + v * v < x / 12;
}

// Another that stands on its corner.
bool IsInTurnedScreen(int x, int y) {
  return IsInScreen(x + y, 1000 + x - y);
}

std::vector<Picture> Pictures() {
  const auto white = [](int, int) { return false; };
  const auto black = [](int, int) { return true; };
  const auto checks = [](int x, int y) { return (x + y) % 2 == 0; };
  const auto bars = [](int x, int y) { return y / 6 % 2 == 1 && x % 9 < 4; };
  return {Painted(1, 1, white),          Painted(1, 1, black),
          Painted(7, 3, checks),         Painted(8, 8, black),
          Painted(33, 9, Noise(128)),    Painted(64, 20, Noise(9)),
          Painted(65, 70, Noise(250)),   Painted(1, 90, Noise(60)),
          Painted(400, 1, Noise(60)),    Painted(70, 40, bars),
          Painted(500, 300, IsInText),   Painted(200, 100, white),
          Painted(300, 200, IsInScreen), Painted(300, 200, IsInTurnedScreen),
          Painted(97, 130, checks)};
}

int WidthOf(const Picture& picture) {
  return static_cast<int>(picture[0].size());
}

int HeightOf(const Picture& picture) {
  return static_cast<int>(picture.size());
}

// The path of a document with the encoded picture.
std::string Written(const testing::TempDir& directory, const Picture& picture) {
  return testing::WriteBytes(directory.Path("page.pdf"),
                             DocumentOf(Encoded(picture), WidthOf(picture), HeightOf(picture)));
}

TEST(Jbig2Encoder, WhatItCodesIsDecoded) {
  for (const Picture& picture : Pictures()) {
    EXPECT_EQ(Decoded(Encoded(picture), WidthOf(picture), HeightOf(picture)), picture);
  }
}

TEST(Jbig2Encoder, WhatItCodesIsDecodedByPoppler) {
  TARNIX_NEED_PROGRAM("pdfimages");
  for (const Picture& picture : Pictures()) {
    EXPECT_EQ(DecodedByPoppler(Encoded(picture), WidthOf(picture), HeightOf(picture)), picture);
  }
}

TEST(Jbig2Encoder, WhatItCodesIsDrawnByMupdf) {
  TARNIX_NEED_PROGRAM("mutool");
  const testing::TempDir directory;
  for (const Picture& picture : Pictures()) {
    const testing::Picture page = testing::PicturesByMupdf(Written(directory, picture), 72).at(0);
    EXPECT_EQ(
        Painted(page.width, page.height, [&](int x, int y) { return page.At(x, y)[0] < 128; }),
        picture);
  }
}

using Jbig2EncoderByPdfium = DrawingTest;

TEST_F(Jbig2EncoderByPdfium, WhatItCodesIsDrawn) {
  const testing::TempDir directory;
  for (const Picture& picture : Pictures()) {
    const PageBitmap page = DrawnAt72(Written(directory, picture));
    EXPECT_EQ(Painted(page.width, page.height,
                      [&](int x, int y) { return ColorAt(page, x, y)[0] < 128; }),
              picture);
  }
}

TEST(Jbig2Encoder, TakesEitherValueForBlackAndRowsOfAnyLength) {
  for (const int width : {30, 32, 129}) {
    const Picture picture = Painted(width, 40, Noise(70));
    EXPECT_EQ(Encoded(picture, 1), Encoded(picture, 0));
    EXPECT_EQ(Encoded(picture, 0, 5), Encoded(picture, 0));
  }
}

TEST(Jbig2Encoder, LeavesOutWhatIsBehindTheLastColumn) {
  const Picture picture = Painted(37, 20, Noise(70));
  Bits bits(picture);
  for (std::size_t y = 0; y < picture.size(); ++y) {
    bits.bytes[y * bits.stride + 4] &= 0xF8;
  }
  EXPECT_EQ(EncodeJbig2(bits.picture), Encoded(picture));
}

TEST(Jbig2Encoder, TakesFewBytesWhereThereIsLittle) {
  EXPECT_LT(Encoded(Painted(2480, 3508, [](int, int) { return false; })).size(), 90U);
  const Picture text = Painted(1200, 800, IsInText);
  const Bits bits(text);
  CcittEncoder fax(1200);
  for (std::uint32_t y = 0; y < 800; ++y) {
    fax.AddRow(bits.picture.row(y), 0);
  }
  fax.Finish();
  EXPECT_LT(Encoded(text).size(), fax.data().size() * 3 / 4);
}

TEST(Jbig2Encoder, FindsTheDistanceOfDots) {
  for (const auto& is_black : {IsInScreen, IsInTurnedScreen}) {
    const Bits bits(Painted(300, 400, is_black));
    jbig2::GenericRegionEncoder nominal(bits.picture, jbig2::kNominalPixels[0]);
    nominal.EncodeRows();
    EXPECT_LT(EncodeJbig2(bits.picture)->size(), nominal.Finish().size() * 2 / 3);
  }
  const Bits text(Painted(300, 400, IsInText));
  EXPECT_EQ(jbig2::ChooseAdaptivePixel(text.picture).x, 3);
  const Bits narrow(Painted(90, 400, IsInScreen));
  EXPECT_EQ(jbig2::ChooseAdaptivePixel(narrow.picture).x, 3);
}

TEST(Jbig2Encoder, RefusesWhatIsNotDecoded) {
  const std::vector<std::uint8_t> row(9000);
  const auto encoded = [&](std::uint32_t width, std::uint32_t height) {
    return EncodeJbig2(
        {.rows = row.data(), .stride = 0, .width = width, .height = height, .black = 1});
  };
  EXPECT_FALSE(encoded(0, 5));
  EXPECT_FALSE(encoded(5, 0));
  EXPECT_FALSE(encoded(65'536, 1));
  EXPECT_FALSE(encoded(1, 65'536));
  EXPECT_FALSE(encoded(60'000, 60'000));
  EXPECT_TRUE(encoded(65'535, 1));
  EXPECT_TRUE(encoded(1, 65'535));
}

TEST(Jbig2Encoder, SeveralThreadsEncodeAtOnce) {
  const Picture picture = Painted(300, 200, Noise(40));
  const std::string expected = Encoded(picture);
  std::vector<std::string> results(4);
  std::vector<std::thread> threads;
  for (std::string& result : results) {
    threads.emplace_back([&] { result = Encoded(picture); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (const std::string& result : results) {
    EXPECT_EQ(result, expected);
  }
}

}  // namespace
}  // namespace TarnixTools::engines
