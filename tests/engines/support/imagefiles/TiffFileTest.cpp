#include <cstring>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/codecs/CcittDecoder.h"
#include "engines/support/codecs/CcittEncoder.h"
#include "engines/support/codecs/TiffCodec.h"
#include "engines/support/imagefiles/OpenedImage.h"
#include "engines/support/pictures/ImageError.h"
#include "support/TestImages.h"
#include "support/TestTiff.h"

namespace TarnixTools::engines {

namespace {

using testing::Big16;
using testing::Big32;
using testing::ImageCodeOf;
using testing::Little16;
using testing::Little32;
using testing::OpenedImage;
using testing::TestTiff;

TestTiff Gray(std::uint32_t width, std::uint32_t height) {
  return TestTiff().Sides(width, height).Set(258, {8}).Set(259, {1}).Set(262, {1}).Set(277, {1});
}

// 18 different grays, so that no palette is made of them.
std::string Grays(int count) {
  std::string values;
  for (int i = 0; i < count; ++i) {
    values += static_cast<char>(i * 13 + 1);
  }
  return values;
}

TEST(TiffFile, DecodesStrips) {
  const std::string all = Grays(20);
  const std::string file =
      Gray(5, 4).Set(278, {2}).Data({all.substr(0, 10), all.substr(10)}).Bytes();
  OpenedImage image(file);
  EXPECT_EQ(image.frame().width, 5U);
  EXPECT_EQ(image.frame().height, 4U);
  EXPECT_EQ(image.SamplesOf(image.Embed().image), all);
}

TEST(TiffFile, DecodesTiles) {
  std::vector<std::string> tiles;
  for (int tile = 0; tile < 4; ++tile) {
    std::string samples;
    for (int y = 0; y < 16; ++y) {
      for (int x = 0; x < 16; ++x) {
        samples += static_cast<char>((tile / 2 * 16 + y) * 7 + tile % 2 * 16 + x);
      }
    }
    tiles.push_back(samples);
  }
  OpenedImage image(Gray(20, 18).Set(322, {16}).Set(323, {16}).Data(tiles, true).Bytes());
  std::string expected;
  for (int y = 0; y < 18; ++y) {
    for (int x = 0; x < 20; ++x) {
      expected += static_cast<char>(y * 7 + x);
    }
  }
  EXPECT_EQ(image.SamplesOf(image.Embed().image), expected);
}

TEST(TiffFile, PutsSeparatePlanesTogether) {
  TestTiff tiff;
  tiff.Sides(2, 1).Set(258, {8, 8, 8}).Set(259, {1}).Set(262, {2}).Set(277, {3});
  tiff.Set(278, {1}).Set(284, {2}).Data({"ad", "be", "cf"});
  OpenedImage image(tiff.Bytes());
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(embedded.image.space, PictureSpace::kIndexed);  // two colours
  EXPECT_EQ(embedded.image.palette, "abcdef");
}

TEST(TiffFile, KeepsSixteenBits) {
  TestTiff tiff = Gray(2, 1).Set(258, {16}).Data({std::string("\x01\x02\x03\x04", 4)});
  OpenedImage image(tiff.Bytes());
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(embedded.image.bits, 16);
  EXPECT_EQ(image.SamplesOf(embedded.image), "\x02\x01\x04\x03");  // high byte first
}

TEST(TiffFile, OddNumbersOfBitsAreWidened) {
  // 12 bits: 0x123, 0xFFF. 4 bits of RGB: 0x1, 0x2, 0xF.
  OpenedImage gray(Gray(2, 1).Set(258, {12}).Data({std::string("\x12\x3F\xFF", 3)}).Bytes());
  EXPECT_EQ(gray.Embed().image.bits, 16);
  EXPECT_EQ(gray.SamplesOf(gray.Embed().image), "\x12\x31\xFF\xFF");
  TestTiff color;
  color.Sides(1, 1).Set(258, {4, 4, 4}).Set(259, {1}).Set(262, {2}).Set(277, {3});
  OpenedImage image(color.Data({"\x12\xF0"}).Bytes());
  EXPECT_EQ(image.Embed().image.palette, "\x11\x22\xFF");
}

TEST(TiffFile, SignedNumbersKeepTheirOrder) {
  std::string values = Grays(20);
  for (char& value : values) {
    value = static_cast<char>(value ^ 0x80);
  }
  OpenedImage small(Gray(5, 4).Set(339, {2}).Data({values}).Bytes());
  EXPECT_EQ(small.SamplesOf(small.Embed().image), Grays(20));
  TestTiff tiff = Gray(2, 1).Set(258, {16}).Set(339, {2});
  OpenedImage large(tiff.Data({"\x34\x82\x56\x12"}).Bytes());
  EXPECT_EQ(large.SamplesOf(large.Embed().image), "\x02\x34\x92\x56");
}

TEST(TiffFile, APaletteMayHaveAnAlpha) {
  std::vector<std::uint32_t> map(768);
  for (std::size_t i = 0; i < map.size(); ++i) {
    map[i] = static_cast<std::uint32_t>(i % 256 * 257);
  }
  TestTiff tiff;
  tiff.Sides(2, 1).Set(258, {8, 8}).Set(259, {1}).Set(262, {3}).Set(277, {2}).Set(320, map);
  OpenedImage image(tiff.Set(338, {2}).Data({"\x05\x80\x09\xFF"}).Bytes());
  const EncodedImage embedded = image.Embed();
  ASSERT_TRUE(embedded.soft_mask);
  EXPECT_EQ(image.SamplesOf(*embedded.soft_mask), "\x80\xFF");
  EXPECT_EQ(embedded.image.space, PictureSpace::kIndexed);
  EXPECT_EQ(image.SamplesOf(embedded.image), "\x05\x09");
}

TEST(TiffFile, WhiteMayBeZero) {
  TestTiff tiff = Gray(5, 4).Set(262, {0}).Data({Grays(20)});
  OpenedImage image(tiff.Bytes());
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(embedded.image.decode, "1 0");
  EXPECT_EQ(image.SamplesOf(embedded.image), Grays(20));
}

TEST(TiffFile, AlphaIsAMaskAndMultipliedColorsHaveAMatte) {
  for (const std::uint32_t kind : {1U, 2U}) {
    TestTiff tiff;
    tiff.Sides(1, 1).Set(258, {8, 8, 8, 8}).Set(259, {1}).Set(262, {2}).Set(277, {4});
    OpenedImage image(tiff.Set(338, {kind}).Data({"abc\x80"}).Bytes());
    const EncodedImage embedded = image.Embed();
    ASSERT_TRUE(embedded.soft_mask);
    EXPECT_EQ(image.SamplesOf(*embedded.soft_mask), "\x80");
    EXPECT_EQ(embedded.soft_mask->entries, kind == 1 ? "/Matte[0 0 0]" : "");
  }
}

TEST(TiffFile, FaxDataOfOneStripIsPassedThrough) {
  TestTiff tiff;
  tiff.Sides(8, 2).Set(258, {1}).Set(259, {4}).Set(262, {0}).Set(277, {1}).Set(278, {2});
  tiff.Data({"\x26\xA0\x01"});
  OpenedImage image(tiff.Bytes());
  EXPECT_EQ(image.DataOf(image.Embed().image), "\x26\xA0\x01");
  EXPECT_EQ(image.Embed().image.parameters, "/K -1/Columns 8/Rows 2");
  OpenedImage black(tiff.Set(262, {1}).Bytes());
  EXPECT_EQ(black.Embed().image.parameters, "/K -1/Columns 8/Rows 2/BlackIs1 true");
  OpenedImage reversed(tiff.Set(266, {2}).Bytes());
  EXPECT_EQ(reversed.DataOf(reversed.Embed().image), "\x64\x05\x80");
}

// A page of 200 x 30 pixels with a frame of black on it; rows from `first` on, coded as a strip.
std::string FaxStrip(std::uint32_t first, std::uint32_t count, bool is_inverted = false) {
  CcittEncoder encoder(200);
  for (std::uint32_t y = first; y < first + count; ++y) {
    std::vector<std::uint32_t> changes;
    if (y >= 5 && y < 25) {
      changes = y < 7 || y >= 23 ? std::vector<std::uint32_t>{20, 180}
                                 : std::vector<std::uint32_t>{20, 22, 178, 180};
    }
    if (is_inverted) {
      changes.insert(changes.begin(), 0);
    }
    encoder.AddRow(changes);
  }
  encoder.Finish();
  return std::string(encoder.data());
}

TestTiff Fax(std::uint32_t compression, std::uint32_t photometric) {
  return TestTiff()
      .Sides(200, 30)
      .Set(258, {1})
      .Set(259, {compression})
      .Set(262, {photometric})
      .Set(277, {1});
}

TEST(TiffFile, FaxDataOfSeveralStripsIsJoined) {
  TestTiff tiff = Fax(4, 0).Set(278, {12});
  OpenedImage image(tiff.Data({FaxStrip(0, 12), FaxStrip(12, 12), FaxStrip(24, 6)}).Bytes());
  const EncodedImage joined = image.Embed();
  EXPECT_EQ(joined.image.filter, "CCITTFaxDecode");
  EXPECT_EQ(joined.image.parameters, "/K -1/Columns 200/Rows 30");
  EXPECT_EQ(joined.image.decode, "");
  EXPECT_EQ(image.DataOf(joined.image), FaxStrip(0, 30));
}

TEST(TiffFile, WhatIsCodedForFaxIsWhatLibtiffDecodes) {
  // Noise of several densities, whose rows are like those above.
  std::mt19937 random(3);
  for (const std::uint32_t width : {1U, 9U, 64U, 200U, 6000U}) {
    for (const unsigned share : {1U, 10U, 50U}) {
      Plane noise(width, 30, 1, 1);
      CcittEncoder encoder(width);
      for (std::uint32_t y = 0; y < 30; ++y) {
        for (std::size_t i = 0; i < noise.row_bytes(); ++i) {
          const unsigned above = y > 0 ? noise.row(y - 1)[i] : 0U;
          noise.row(y)[i] =
              static_cast<unsigned char>(random() % 100 < share ? random() & 0xFFU : above);
        }
        const unsigned unused = (8 - width % 8) % 8;
        noise.row(y)[noise.row_bytes() - 1] &= static_cast<unsigned char>(0xFFU << unused);
        encoder.AddRow(noise.row(y), 1);
      }
      encoder.Finish();
      TestTiff tiff = Fax(4, 0).Sides(width, 30).Set(278, {30});
      const std::string file = tiff.Data({std::string(encoder.data())}).Bytes();
      pdf::MemorySource source(file);
      TiffDecoder decoder(source, 8);
      Plane decoded(width, 30, 1, 1);
      ASSERT_TRUE(decoder.ReadSamples(decoded, false));
      for (std::uint32_t y = 0; y < 30; ++y) {
        EXPECT_EQ(std::memcmp(decoded.row(y), noise.row(y), noise.row_bytes()), 0)
            << width << " columns, row " << y;
      }
    }
  }
}

TEST(TiffFile, InvertedFaxDataIsJoinedTheRightWayRound) {
  TestTiff tiff = Fax(4, 1).Set(278, {20});
  OpenedImage image(tiff.Data({FaxStrip(0, 20, true), FaxStrip(20, 10, true)}).Bytes());
  EXPECT_EQ(image.DataOf(image.Embed().image), FaxStrip(0, 30));
  EXPECT_EQ(image.Embed().image.parameters, "/K -1/Columns 200/Rows 30");
}

TEST(TiffFile, FaxDataIsJoinedInFewerBytesOrNotAtAll) {
  // Rows that have nothing to do with each other take more room as fax data.
  std::vector<std::string> strips;
  for (int y = 0; y < 30; ++y) {
    CcittEncoder encoder(200);
    std::vector<std::uint32_t> changes;
    for (std::uint32_t x = static_cast<std::uint32_t>(y % 3); x < 200; x += 2) {
      changes.push_back(x);
    }
    encoder.AddRow(changes);
    encoder.Finish();
    strips.emplace_back(encoder.data());
  }
  OpenedImage image(Fax(4, 0).Set(278, {1}).Data(strips).Bytes());
  EXPECT_EQ(image.Embed().image.filter, "FlateDecode");
}

TEST(TiffFile, DamagedFaxDataGivesTheRowsBeforeTheDamage) {
  const std::string second = FaxStrip(15, 15);
  for (const std::string& damaged : {std::string("\0\0\0", 3), second.substr(0, 1)}) {
    OpenedImage image(Fax(4, 0).Set(278, {15}).Data({FaxStrip(0, 15), damaged}).Bytes());
    const std::string data = image.DataOf(image.Embed().image);
    CcittParameters parameters;
    parameters.k = -1;
    parameters.columns = 200;
    CcittDecoder decoder(data, parameters);
    std::vector<std::uint32_t> changes;
    for (int y = 0; y < 6; ++y) {
      ASSERT_TRUE(decoder.ReadChanges(changes));
    }
    EXPECT_EQ(changes, (std::vector<std::uint32_t>{20, 180}));
  }
}

TEST(TiffFile, FaxDataOfGroupThreeBecomesGroupFour) {
  // Rows of a white run of 16 columns, with and without bytes of their own and ends of line.
  const std::string row = "\xA8";  // 101010, the code, and filling
  TestTiff tiff;
  tiff.Sides(16, 40).Set(258, {1}).Set(262, {0}).Set(277, {1}).Set(278, {40});
  std::string rows;
  std::string lines;
  for (int y = 0; y < 40; ++y) {
    rows += row;
    lines += std::string("\x00\x01", 2) + row;
  }
  CcittEncoder encoder(16);
  for (int y = 0; y < 40; ++y) {
    encoder.AddRow(std::vector<std::uint32_t>{});
  }
  encoder.Finish();
  OpenedImage aligned(tiff.Set(259, {2}).Data({rows}).Bytes());
  EXPECT_EQ(aligned.DataOf(aligned.Embed().image), encoder.data());
  OpenedImage with_ends(tiff.Set(259, {3}).Data({lines}).Bytes());
  EXPECT_EQ(with_ends.DataOf(with_ends.Embed().image), encoder.data());
}

TestTiff JpegStrip(const std::string& strip) {
  TestTiff tiff;
  tiff.Sides(16, 8).Set(258, {8, 8, 8}).Set(259, {7}).Set(262, {6}).Set(277, {3}).Set(278, {8});
  return tiff.Data({strip});
}

TEST(TiffFile, JpegDataOfOneStripIsPassedThrough) {
  const std::string jpeg = testing::TestJpeg(3);
  OpenedImage image(JpegStrip(jpeg).Bytes());
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(embedded.image.filter, "DCTDecode");
  EXPECT_EQ(embedded.image.parameters, "/ColorTransform 1");
  EXPECT_EQ(embedded.image.space, PictureSpace::kRgb);
  EXPECT_EQ(embedded.image.width, 16);
  EXPECT_EQ(embedded.image.height, 8);
  EXPECT_EQ(image.DataOf(embedded.image), jpeg);
  OpenedImage rgb(JpegStrip(jpeg).Set(262, {2}).Bytes());
  EXPECT_EQ(rgb.Embed().image.parameters, "/ColorTransform 0");
}

TEST(TiffFile, JpegTablesThatStandOnceForAllStripsGoBeforeTheStrip) {
  const std::string jpeg = testing::TestJpeg(3);
  const std::size_t frame = jpeg.find("\xFF\xC0");
  ASSERT_NE(frame, std::string::npos);
  // Quantization tables once for all, the rest in the strip.
  const std::string strip = "\xFF\xD8" + jpeg.substr(frame);
  const std::string tables = jpeg.substr(0, frame) + "\xFF\xD9";
  OpenedImage image(JpegStrip(strip).SetBytes(347, tables).Bytes());
  EXPECT_EQ(image.DataOf(image.Embed().image), jpeg);
  // What is no table is left out.
  for (const std::string& other :
       {std::string("\xFF\xD8xxx"), std::string("xxx\xFF\xD9"), std::string("no tables")}) {
    OpenedImage alone(JpegStrip(strip).SetBytes(347, other).Bytes());
    EXPECT_EQ(alone.DataOf(alone.Embed().image), strip);
  }
}

TEST(TiffFile, EveryDirectoryIsAFrame) {
  const std::string file = TestTiff::Join({Gray(5, 4).Data({Grays(20)}).Set(274, {6}),
                                           Gray(4, 5).Data({Grays(20)}).Set(274, {0}),
                                           Gray(20, 1).Data({Grays(20)}).Set(274, {9})});
  OpenedImage image(file);
  ASSERT_EQ(image.file().frame_count(), 3U);
  EXPECT_EQ(image.frame(0).orientation, 6);
  EXPECT_EQ(image.frame(1).orientation, 1);
  EXPECT_EQ(image.frame(2).orientation, 1);
  EXPECT_EQ(image.frame(2).width, 20U);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(image.SamplesOf(image.Embed(i).image), Grays(20));
  }
}

TEST(TiffFile, DirectoriesInACircleEnd) {
  std::string file = Gray(5, 4).Data({Grays(20)}).Bytes();
  const std::size_t fields = static_cast<unsigned char>(file[8]);
  file.replace(8 + 2 + 12 * fields, 4, Little32(8));
  EXPECT_EQ(OpenedImage(file).file().frame_count(), 1U);
}

TEST(TiffFile, CutDataGivesWhatIsThere) {
  const std::string all = Grays(20);
  TestTiff tiff = Gray(10, 3).Set(278, {1});
  tiff.Data({all.substr(0, 10), all.substr(10), all.substr(0, 10)});
  const std::string file = tiff.Bytes();
  OpenedImage image(file.substr(0, file.size() - 10));
  EXPECT_EQ(image.SamplesOf(image.Embed().image), all + std::string(10, '\0'));
  EXPECT_EQ(ImageCodeOf(file.substr(0, file.size() - 30)), ImageErrorCode::kDamaged);
}

TEST(TiffFile, RejectsWhatHasNoPicture) {
  EXPECT_EQ(ImageCodeOf(std::string("II*\0\x08\0\0\0", 8)), ImageErrorCode::kDamaged);
  EXPECT_EQ(ImageCodeOf(std::string("MM\0*\0\0\0\0", 8)), ImageErrorCode::kDamaged);
  EXPECT_EQ(ImageCodeOf(Gray(0, 4).Data({"a"}).Bytes()), ImageErrorCode::kDamaged);
  EXPECT_EQ(ImageCodeOf(Gray(900'000, 900'000).Data({"a"}).Bytes()), ImageErrorCode::kLimit);
  EXPECT_EQ(ImageCodeOf(Gray(4, 4).Set(277, {1000}).Data({"a"}).Bytes()),
            ImageErrorCode::kUnsupported);
  EXPECT_EQ(ImageCodeOf(Gray(4, 4).Set(259, {12345}).Data({"a"}).Bytes()),
            ImageErrorCode::kUnsupported);
}

}  // namespace

}  // namespace TarnixTools::engines
