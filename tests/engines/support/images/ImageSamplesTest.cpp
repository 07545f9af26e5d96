#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/codecs/CcittEncoder.h"
#include "engines/support/images/ImageLimits.h"
#include "engines/support/images/ImageSamples.h"
#include "engines/support/images/ImagesInDocument.h"
#include "pdf/filters/Filters.h"
#include "support/Readers.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"
#include "support/TestImages.h"
#include "support/TestJbig2.h"
#include "support/TestJpx.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ImageSamples, AreWhatTheFiltersGive) {
  ImagesInDocument images;
  images.Add(5, "/Width 2/Height 2/ColorSpace/DeviceRGB/BitsPerComponent 8/Decode[1 0 1 0 1 0]",
             "010203 0405FF 070809 0A0B0C");
  auto samples = images.Samples(5);
  ASSERT_TRUE(samples);
  EXPECT_EQ(samples->space.kind, ColorKind::kRgb);
  EXPECT_THAT(samples->decode, ElementsAre(1, 0, 1, 0, 1, 0));
  EXPECT_THAT(RowsOf(*samples), ElementsAre(Bytes{1, 2, 3, 4, 5, 255}, Bytes{7, 8, 9, 10, 11, 12}));
  EXPECT_TRUE(samples->is_complete);
}

TEST(ImageSamples, KeepTheirDepth) {
  ImagesInDocument images;
  int number = 5;
  for (const int bits : {1, 2, 4, 16}) {
    images.Add(number++,
               "/Width 3/Height 1/ColorSpace/DeviceGray/BitsPerComponent " + std::to_string(bits),
               "A1B2C3D4E5F6");
  }
  const std::vector<Bytes> expected = {
      {0xA1}, {0xA1}, {0xA1, 0xB2}, {0xA1, 0xB2, 0xC3, 0xD4, 0xE5, 0xF6}};
  for (std::uint32_t i = 0; i < 4; ++i) {
    auto samples = images.Samples(5 + i);
    EXPECT_EQ(RowsOf(*samples)[0], expected[i]);
  }
}

TEST(ImageSamples, AreThoseOfColorSpacesThatAreNotComputed) {
  ImagesInDocument images;
  const std::string function = "<</FunctionType 2/Domain[0 1]/N 1>>";
  images
      .Add(5,
           "/Width 1/Height 1/BitsPerComponent 8/ColorSpace[/DeviceN[/A/B/C/D/E]/DeviceCMYK" +
               function + "]",
           "0102030405")
      .Add(6,
           "/Width 2/Height 1/BitsPerComponent 8/ColorSpace[/Indexed[/Separation/A/DeviceGray" +
               function + "]1<00FF>]",
           "0001")
      .Add(7, "/Width 1/Height 1/BitsPerComponent 8/ColorSpace/Pattern", "00");
  auto inks = images.Samples(5);
  ASSERT_TRUE(inks);
  EXPECT_FALSE(inks->space.is_computed());
  EXPECT_THAT(RowsOf(*inks), ElementsAre(Bytes{1, 2, 3, 4, 5}));
  auto indexed = images.Samples(6);
  ASSERT_TRUE(indexed);
  EXPECT_EQ(indexed->space.kind, ColorKind::kIndexed);
  EXPECT_FALSE(indexed->space.is_computed());
  EXPECT_THAT(RowsOf(*indexed), ElementsAre(Bytes{0, 1}));
  EXPECT_FALSE(images.Samples(7));
}

TEST(ImageSamples, EndWhereTheDataEnds) {
  ImagesInDocument images;
  images.Add(5, "/Width 2/Height 3/ColorSpace/DeviceGray/BitsPerComponent 8", "010203");
  EXPECT_THAT(RowsOf(*images.Samples(5)), ElementsAre(Bytes{1, 2}, Bytes{3}, IsEmpty()));
}

TEST(ImageSamples, AreNotClaimedFarBeyondTheData) {
  ImagesInDocument images;
  images.Add(5, "/Width 1000000/Height 1000000/ColorSpace/DeviceGray/BitsPerComponent 8", "00");
  EXPECT_EQ(images.Samples(5)->rows->format().height, limits::kMaxPixelsWithoutData / 1'000'000);
}

TEST(ImageSamples, AreDeflatedRowByRowWhenTheyAreMany) {
  const std::uint32_t width = 4096;
  const std::uint32_t height = limits::kMaxSamplesAtOnce / width + 2;
  std::string all;
  for (std::uint32_t y = 0; y < height; ++y) {
    all.append(width, static_cast<char>(y));
  }
  all.resize(all.size() - 1);
  std::string deflated;
  pdf::DeflateTo(deflated, all, 1);
  ImagesInDocument images;
  images.AddStream(5,
                   "/Width 4096/Height " + std::to_string(height) +
                       "/ColorSpace/DeviceGray/BitsPerComponent 8/Filter/FlateDecode",
                   deflated);
  auto samples = images.Samples(5);
  EXPECT_LT(samples->rows->held_bytes(), all.size() / 2);
  for (std::uint32_t y = 0; y + 1 < height; ++y) {
    const auto row = samples->rows->ReadRow();
    ASSERT_EQ(Bytes(row.begin(), row.end()), Bytes(width, static_cast<std::uint8_t>(y)));
  }
  EXPECT_EQ(samples->rows->ReadRow().size(), width - 1);
  EXPECT_THAT(samples->rows->ReadRow(), IsEmpty());
}

TEST(ImageSamples, OfFaxDataArePackedBits) {
  CcittEncoder encoder(16);
  const Bytes row = {0xF0, 0x3C};
  encoder.AddRow(row.data(), 0);
  encoder.Finish();
  ImagesInDocument images;
  const std::string entries = "/Width 12/Height 2/ColorSpace/DeviceGray/BitsPerComponent 1";
  const std::string fax = "/Filter/CCITTFaxDecode/DecodeParms<</K -1/Columns 16";
  images.AddStream(5, entries + fax + ">>", std::string(encoder.data()))
      .AddStream(6, entries + fax + "/BlackIs1 true>>", std::string(encoder.data()))
      .AddStream(7, entries + "/Filter/CCITTFaxDecode/DecodeParms<</Columns 2000000>>", "x");
  EXPECT_THAT(RowsOf(*images.Samples(5)), ElementsAre(Bytes{0xF0, 0x3C}, IsEmpty()));
  EXPECT_THAT(RowsOf(*images.Samples(6)), ElementsAre(Bytes{0x0F, 0xC3}, IsEmpty()));
  EXPECT_FALSE(images.Samples(7));
}

TEST(ImageSamples, OfFaxDataAreReadAsTheirParametersSay) {
  ImagesInDocument images;
  const std::string entries =
      "/Width 8/Height 2/ColorSpace/DeviceGray/BitsPerComponent 1/Filter/CCITTFaxDecode";
  // Two rows of eight white pixels (10011) in one dimension: with ends of lines before each, and each
  // in bytes of its own.
  images
      .AddStream(5, entries + "/DecodeParms<</Columns 8/EndOfLine true>>",
                 std::string("\x00\x19\x80\x0C\xC0", 5))
      .AddStream(6, entries + "/DecodeParms<</Columns 8/EncodedByteAlign true>>", "\x98\x98")
      .AddStream(7, entries + "/DecodeParms<</Columns 8>>", "\x9C\xC0");
  for (const std::uint32_t number : {5U, 6U, 7U}) {
    auto samples = images.Samples(number);
    ASSERT_TRUE(samples);
    EXPECT_THAT(RowsOf(*samples), ElementsAre(Bytes{0xFF}, Bytes{0xFF})) << number;
  }
}

TEST(ImageSamples, OfJbig2DataArePackedBits) {
  ImagesInDocument images;
  const std::string entries = "/Width 120/Height 12/ColorSpace/DeviceGray/BitsPerComponent 1";
  images.Add(5, entries, testing::kRefinedJbig2, "JBIG2Decode")
      .Add(6, entries, std::string(testing::kRefinedJbig2) + "00000009270001000000050000000000",
           "JBIG2Decode")
      .Add(7, entries, "00", "JBIG2Decode");
  auto samples = images.Samples(5);
  ASSERT_TRUE(samples);
  EXPECT_TRUE(samples->is_complete);
  const std::vector<Bytes> rows = RowsOf(*samples);
  ASSERT_EQ(rows.size(), 12U);
  EXPECT_EQ(rows[0], Bytes(15, 0xFF));
  EXPECT_NE(rows[4], Bytes(15, 0xFF));  // the arms of the crosses
  auto damaged = images.Samples(6);
  ASSERT_TRUE(damaged);
  EXPECT_FALSE(damaged->is_complete);
}

TEST(ImageSamples, OfJpegDataHaveTheComponentsOfTheData) {
  ImagesInDocument images;
  const std::string entries = "/Width 16/Height 8/BitsPerComponent 8/Filter/DCTDecode";
  images.AddStream(5, entries + "/ColorSpace/DeviceRGB", testing::TestJpeg(4))
      .AddStream(6, entries + "/ColorSpace[/Separation/A/DeviceGray 9 0 R]", testing::TestJpeg(1))
      .AddStream(7, entries + "/ColorSpace[/Separation/A/DeviceGray 9 0 R]", testing::TestJpeg(3))
      .AddStream(8, entries + "/ColorSpace/DeviceRGB", "no JPEG file");
  EXPECT_EQ(images.Samples(5)->space.kind, ColorKind::kCmyk);
  EXPECT_EQ(images.Samples(5)->rows->format().row_bytes(), 64U);
  EXPECT_EQ(images.Samples(6)->space.kind, ColorKind::kInks);
  EXPECT_EQ(images.Samples(7)->space.kind, ColorKind::kInks);
  EXPECT_EQ(images.Samples(7)->space.components, 3);
  EXPECT_FALSE(images.Samples(8));
}

TEST(ImageSamples, OfJpegDataMayBeFewer) {
  ImagesInDocument images;
  images.AddStream(5, "/Width 16/Height 8/ColorSpace/DeviceGray/Filter/DCTDecode",
                   testing::TestJpeg(1));
  const DocumentImage image = images.Image(5);
  const ImageFacts facts = images.Facts(5);
  const auto samples = OpenSamples(image, facts, SpaceOf(image, facts), {7, 4});
  EXPECT_EQ(samples->rows->format().width, 8U);
  EXPECT_EQ(samples->rows->format().height, 4U);
}

TEST(ImageSamples, OfJpeg2000DataHaveTheirAlphaApart) {
  ImagesInDocument images;
  images.Add(5, "/Width 16/Height 8/SMaskInData 1", testing::kGrayAlphaJpx, "JPXDecode")
      .Add(6, "/Width 16/Height 8", testing::kGrayAlphaJpx, "JPXDecode")
      .Add(7, "/Width 16/Height 8/ColorSpace/DeviceRGB/Decode[1 0 1 0 1 0]", testing::kRedBlueJpx,
           "JPXDecode");
  auto samples = images.Samples(5);
  if (!samples) {
    GTEST_SKIP() << "needs the library that decodes JPEG 2000";
  }
  EXPECT_EQ(samples->space.kind, ColorKind::kGray);
  EXPECT_EQ(RowsOf(*samples)[0].front(), 0);
  ASSERT_TRUE(samples->alpha);
  EXPECT_FALSE(samples->alpha->is_premultiplied);
  EXPECT_EQ(samples->alpha->samples.front(), 255);
  EXPECT_NEAR(samples->alpha->samples.back(), 128, 1);
  EXPECT_FALSE(images.Samples(6)->alpha);
  EXPECT_EQ(images.Samples(7)->space.kind, ColorKind::kRgb);
  EXPECT_THAT(images.Samples(7)->decode, IsEmpty());
}

// Object by object, what another program decodes of real documents.
class RealSamples : public ::testing::TestWithParam<const char*> {
 protected:
  // How many samples differ by more than rounding.
  static std::size_t CountDifferences(const ImageSamples& samples, const std::string& expected) {
    std::size_t different = 0;
    std::size_t at = 0;
    for (const Bytes& row : RowsOf(samples)) {
      for (std::size_t i = 0; i < row.size() && at + i < expected.size(); ++i) {
        const int other = static_cast<unsigned char>(expected[at + i]);
        different += std::abs(row[i] - other) > 1 ? 1 : 0;
      }
      at += samples.rows->format().row_bytes();
    }
    return different + (at > expected.size() ? at - expected.size() : 0);
  }
};

TEST_P(RealSamples, AreWhatMutoolDecodes) {
  TARNIX_NEED_PROGRAM("mutool");
  TARNIX_NEED_CORPUS("compress");
  const std::string path = testing::CorpusDir() + "/compress/" + GetParam();
  const std::string bytes = testing::ReadBytes(path);
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  int compared = 0;
  for (std::uint32_t number = 1; number < document->object_limit() && compared < 12; ++number) {
    pdf::Arena arena;
    const DocumentImage image = ImageObjectOf(*document, number, arena);
    if (!image.dictionary.Get("Subtype").IsName("Image")) {
      continue;
    }
    auto samples = OpenSamples(image, FactsOf(image, arena));
    ASSERT_TRUE(samples) << number;
    const std::string expected =
        testing::RunProgram({"mutool", "show", "-b", path, std::to_string(number)}).output;
    EXPECT_EQ(CountDifferences(*samples, expected), 0U) << number;
    ++compared;
  }
  EXPECT_GT(compared, 0);
}

INSTANTIATE_TEST_SUITE_P(ImageSamples, RealSamples,
                         ::testing::Values("cmyk--test_4466.pdf", "indexed--issue9940.pdf",
                                           "jbig2--linn.pdf", "mixed--TAMReview.pdf",
                                           "mixed--test_2634.pdf", "photo--photo-gray.pdf",
                                           "scan-bitonal--scan-bitonal-ccitt-300.pdf",
                                           "scan-bitonal--scan-bitonal-flate-600.pdf",
                                           "smask--photo-smask.pdf", "vector--VectorApple.pdf"));

}  // namespace
}  // namespace TarnixTools::engines
