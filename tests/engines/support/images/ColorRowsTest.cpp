#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/images/ColorRows.h"
#include "engines/support/images/ImagesInDocument.h"
#include "support/Readers.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;

const std::string kSize = "/Width 2/Height 1/BitsPerComponent 8";

// Object 5 in colours.
std::unique_ptr<ColorRows> ColorsOf(ImagesInDocument& images) {
  return std::make_unique<ColorRows>(*images.Samples(5));
}

Bytes FirstRow(const std::string& entries, const std::string& hex) {
  ImagesInDocument images;
  images.Add(5, entries, hex);
  return RowsOf(*ColorsOf(images))[0];
}

TEST(ColorRows, AreGrayOrRgb) {
  EXPECT_EQ(FirstRow(kSize + "/ColorSpace/DeviceGray", "0180"), Bytes({0x01, 0x80}));
  EXPECT_EQ(FirstRow(kSize + "/ColorSpace/DeviceRGB", "010203040506"), Bytes({1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(FirstRow(kSize + "/ColorSpace/DeviceCMYK", "00000000000000FF"),
            Bytes({255, 255, 255, 35, 31, 32}));
}

TEST(ColorRows, ApplyDecode) {
  EXPECT_EQ(FirstRow(kSize + "/ColorSpace/DeviceGray/Decode[1 0]", "0180"), Bytes({0xFE, 0x7F}));
  EXPECT_EQ(FirstRow(kSize + "/ColorSpace/DeviceGray/Decode[0 .5]", "00FF"), Bytes({0, 128}));
  // One that is too short counts as none.
  EXPECT_EQ(FirstRow(kSize + "/ColorSpace/DeviceRGB/Decode[1 0]", "010203040506"),
            Bytes({1, 2, 3, 4, 5, 6}));
}

TEST(ColorRows, LookPalettesUp) {
  const std::string entries = "/Width 4/Height 1/BitsPerComponent 2/ColorSpace[/Indexed";
  EXPECT_EQ(FirstRow(entries + "/DeviceRGB 2<FF000000FF000000FF>]", "1B"),
            Bytes({255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 255}));
  EXPECT_EQ(FirstRow(entries + "/DeviceGray 3<10203040>]/Decode[3 0]", "1B"),
            Bytes({0x40, 0x30, 0x20, 0x10}));
}

TEST(ColorRows, ScaleEveryDepth) {
  const std::string gray = "/Width 2/Height 1/ColorSpace/DeviceGray/BitsPerComponent ";
  EXPECT_EQ(FirstRow(gray + "1", "40"), Bytes({0, 255}));
  EXPECT_EQ(FirstRow(gray + "2", "60"), Bytes({85, 170}));
  EXPECT_EQ(FirstRow(gray + "4", "1E"), Bytes({17, 238}));
  EXPECT_EQ(FirstRow(gray + "16", "0180FF00"), Bytes({1, 255}));
}

TEST(ColorRows, OfLabHaveTheRangeOfTheirSpace) {
  const std::string lab = "/ColorSpace[/Lab<</WhitePoint[.95 1 1.09]/Range[-128 127 -128 127]>>]";
  EXPECT_EQ(FirstRow(kSize + lab, "FF8080008080"), Bytes({255, 255, 255, 0, 0, 0}));
}

TEST(ColorRows, OfBlackAndWhiteComeAsBits) {
  ImagesInDocument images;
  images.Add(5, "/Width 12/Height 2/BitsPerComponent 1/ColorSpace/DeviceGray/Decode[1 0]",
             "F0F00F");
  const auto colors = ColorsOf(images);
  ASSERT_TRUE(colors->is_bilevel());
  Bytes bits(2);
  EXPECT_TRUE(colors->ReadBits(bits.data()));
  EXPECT_EQ(bits, Bytes({0x0F, 0x0F}));
  EXPECT_FALSE(colors->ReadBits(bits.data()));
  EXPECT_EQ(bits, Bytes({0xFF, 0xFF}));
}

TEST(ColorRows, AreWhiteWhereThereIsNoData) {
  ImagesInDocument images;
  images.Add(5, "/Width 2/Height 3/BitsPerComponent 8/ColorSpace/DeviceRGB",
             "000000000000 01020304");
  const auto colors = ColorsOf(images);
  Bytes row(6);
  EXPECT_TRUE(colors->ReadRow(row.data()));
  EXPECT_FALSE(colors->ReadRow(row.data()));
  EXPECT_EQ(row, Bytes({1, 2, 3, 255, 255, 255}));
  EXPECT_EQ(colors->last_samples().size(), 4U);
  EXPECT_FALSE(colors->ReadRow(row.data()));
  EXPECT_EQ(row, Bytes(6, 255));
}

// The pixels of a PPM or PBM file of eight bits.
struct Pnm {
  explicit Pnm(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string kind;
    int most = 0;
    file >> kind >> width >> height >> most;
    file.get();
    pixels.resize(kind == "P6" ? std::size_t{3} * width * height : 0);
    file.read(reinterpret_cast<char*>(pixels.data()), static_cast<std::streamsize>(pixels.size()));
  }

  std::uint32_t width = 0;
  std::uint32_t height = 0;
  Bytes pixels;
};

// Poppler's tool for images leaves masks and profiles alone too.
class RealColors : public ::testing::TestWithParam<const char*> {};

TEST_P(RealColors, AreWhatPdfimagesWrites) {
  TARNIX_NEED_PROGRAM("pdfimages");
  TARNIX_NEED_CORPUS("compress");
  const std::string path = testing::CorpusDir() + "/compress/" + GetParam();
  const testing::TempDir directory;
  testing::RunProgram({"pdfimages", "-f", "1", "-l", "1", path, directory.Path("i")});
  const Pnm expected(directory.Path("i-000.ppm"));
  ASSERT_GT(expected.pixels.size(), 0U);
  const std::string bytes = testing::ReadBytes(path);
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  int alike = 0;
  for (std::uint32_t number = 1; number < document->object_limit(); ++number) {
    pdf::Arena arena;
    const DocumentImage image = ImageObjectOf(*document, number, arena);
    const ImageFacts facts = FactsOf(image, arena);
    if (!image.dictionary.Get("Subtype").IsName("Image") || facts.width != expected.width ||
        facts.height != expected.height) {
      continue;
    }
    ColorRows colors(*OpenSamples(image, facts));
    const std::size_t bytes_of_pixel = BytesPerPixel(colors.layout());
    std::size_t different = 0;
    std::size_t at = 0;
    for (const Bytes& row : RowsOf(colors)) {
      for (std::size_t i = 0; i < 3 * std::size_t{expected.width}; ++i, ++at) {
        const int value = row[bytes_of_pixel == 3 ? i : i / 3];
        different += std::abs(value - expected.pixels[at]) > 1 ? 1 : 0;
      }
    }
    alike += different == 0 ? 1 : 0;
  }
  EXPECT_GE(alike, 1);
}

INSTANTIATE_TEST_SUITE_P(ColorRows, RealColors,
                         ::testing::Values("indexed--photo-indexed.pdf", "photo--photo-gray.pdf",
                                           "photo--photo-jpeg.pdf", "smask--photo-smask.pdf"));

}  // namespace
}  // namespace TarnixTools::engines
