// What is kept of images that have been stored, in case they are drawn again: their files are not made
// a second time.
#include <string>

#include <gtest/gtest.h>

#include "engines/parser/ExpaFailure.h"
#include "engines/parser/ImageStore.h"
#include "engines/parser/Limits.h"
#include "engines/support/images/ImageInDocument.h"
#include "support/ByteText.h"
#include "support/JpegImage.h"
#include "support/TempDir.h"

namespace TarnixTools::engines::parser {
namespace {

using testing::DecodeJpeg;
using testing::ReadBytes;

constexpr const char* kGray = "/Width 8/Height 8/BitsPerComponent 8/ColorSpace/DeviceGray";

class ImageStoreTest : public ::testing::Test {
 protected:
  PreparedImage Prepared(const DocumentImage& image, const ImageFacts& facts, int orientation = 1) {
    auto prepared = store_.Prepare(image, facts, orientation);
    EXPECT_TRUE(prepared.has_value());
    return prepared ? std::move(*prepared) : PreparedImage();
  }

  std::string Store(PreparedImage& prepared,
                    ImageStore::Outcome outcome = ImageStore::Outcome::kComplete) {
    EXPECT_EQ(store_.Store(prepared, platform::WidePath(Path())), outcome);
    return ReadBytes(Path());
  }

  std::string Path() const { return directory_.Path("a.jpg"); }

  // Whether the image has been kept, so that it is not decoded again.
  bool IsKept(const DocumentImage& image, const ImageFacts& facts, int orientation = 1) {
    const PreparedImage prepared = Prepared(image, facts, orientation);
    return !prepared.is_ready_jpeg && prepared.picture == nullptr;
  }

  testing::TempDir directory_;
  ImageStore store_;
};

TEST_F(ImageStoreTest, KeepsWhatItHasStoredInEachOrientation) {
  ImageInDocument gray(kGray, testing::NoiseBytes(64));
  const DocumentImage image = gray.Image();
  const ImageFacts facts = gray.Facts();
  EXPECT_FALSE(IsKept(image, facts));
  PreparedImage upright = Prepared(image, facts);
  const std::string first = Store(upright);
  EXPECT_TRUE(IsKept(image, facts));
  EXPECT_FALSE(IsKept(image, facts, 2));
  EXPECT_EQ(Store(upright), first);  // though its rows are gone
  PreparedImage again = Prepared(image, facts);
  EXPECT_EQ(Store(again), first);
  PreparedImage mirrored = Prepared(image, facts, 2);
  EXPECT_NE(Store(mirrored), first);
  EXPECT_TRUE(IsKept(image, facts, 2));
  EXPECT_TRUE(IsKept(image, facts));
  EXPECT_EQ(Store(again), first);
}

TEST_F(ImageStoreTest, KeepsThatAPartWasMissing) {
  ImageInDocument gray(kGray, testing::NoiseBytes(60));
  ImageInDocument bits("/Width 8/Height 8/BitsPerComponent 1/ColorSpace/DeviceGray", "1234567");
  for (ImageInDocument* cut : {&gray, &bits}) {
    store_ = ImageStore();
    const DocumentImage image = cut->Image();
    const ImageFacts facts = cut->Facts();
    for (int i = 0; i < 2; ++i) {
      PreparedImage prepared = Prepared(image, facts);
      Store(prepared, ImageStore::Outcome::kPartial);
    }
    EXPECT_TRUE(IsKept(image, facts));
  }
}

// Of an inline image nobody can tell whether it comes again, and what default colour spaces mean is
// up to the page.
TEST_F(ImageStoreTest, KeepsNothingOfWhatMayBeAnotherImageNextTime) {
  ImageInDocument gray(kGray, testing::NoiseBytes(64));
  const std::string data = testing::NoiseBytes(64, 256, 2);
  DocumentImage of_line = gray.Image();
  of_line.number = 0;
  of_line.data = data;
  const ImageFacts facts = gray.Facts();
  ImageFacts of_page = facts;
  of_page.has_default_space = true;
  PreparedImage of_line_prepared = Prepared(of_line, facts);
  const std::string first = Store(of_line_prepared);
  EXPECT_FALSE(IsKept(of_line, facts));
  PreparedImage of_page_prepared = Prepared(gray.Image(), of_page);
  EXPECT_NE(Store(of_page_prepared), first);
  EXPECT_FALSE(IsKept(gray.Image(), of_page));
  EXPECT_FALSE(IsKept(gray.Image(), facts));
  PreparedImage kept = Prepared(gray.Image(), facts);
  Store(kept);
  EXPECT_TRUE(IsKept(gray.Image(), facts));
  EXPECT_FALSE(IsKept(gray.Image(), of_page));
  EXPECT_THROW(Store(of_line_prepared), ExpaFailure);  // its rows are gone
}

TEST_F(ImageStoreTest, CopiesAJpegFileEachTime) {
  const std::string jpeg = testing::MakeJpeg(8, 8, {90});
  ImageInDocument gray(std::string(kGray) + "/Filter/DCTDecode", jpeg);
  const DocumentImage image = gray.Image();
  const ImageFacts facts = gray.Facts();
  for (int i = 0; i < 3; ++i) {
    PreparedImage prepared = Prepared(image, facts);
    EXPECT_TRUE(prepared.is_ready_jpeg);
    EXPECT_TRUE(Store(prepared) == jpeg);
  }
  PreparedImage turned = Prepared(image, facts, 3);
  EXPECT_FALSE(turned.is_ready_jpeg);
  EXPECT_NE(turned.picture, nullptr);
}

// A large file is kept when the image comes the second time.
TEST_F(ImageStoreTest, KeepsALargeFileWhenTheImageComesAgain) {
  ImageInDocument noise("/Width 600/Height 600/BitsPerComponent 8/ColorSpace/DeviceGray",
                        testing::NoiseBytes(360'000));
  const DocumentImage image = noise.Image();
  const ImageFacts facts = noise.Facts();
  PreparedImage first = Prepared(image, facts);
  const std::string bytes = Store(first);
  EXPECT_GT(bytes.size(), limits::kMaxKeptOnce);
  EXPECT_FALSE(IsKept(image, facts));
  PreparedImage second = Prepared(image, facts);
  EXPECT_TRUE(Store(second) == bytes);
  EXPECT_TRUE(IsKept(image, facts));
}

// A row more than are encoded at once, and so many pixels that a row of bits ends in a byte's middle.
TEST_F(ImageStoreTest, StoresEveryRow) {
  for (const int height : {16, 17}) {
    const std::string sides = "/Width 9/Height " + std::to_string(height);
    std::string lines;
    for (int y = 0; y < height; ++y) {
      lines += std::string(9, y == height - 1 ? '\x00' : '\xFF');
    }
    ImageInDocument gray(sides + "/BitsPerComponent 8/ColorSpace/DeviceGray", lines);
    ImageInDocument bits(
        sides + "/BitsPerComponent 1/ColorSpace/DeviceGray",
        std::string(static_cast<std::size_t>(height) * 2 - 2, '\xFF') + std::string(2, '\0'));
    for (ImageInDocument* image : {&gray, &bits}) {
      store_ = ImageStore();
      const ImageFacts facts = image->Facts();
      PreparedImage prepared = Prepared(image->Image(), facts);
      const testing::JpegImage stored = DecodeJpeg(Store(prepared));
      EXPECT_EQ(stored.width, 9);
      EXPECT_EQ(stored.height, height);
      for (const int x : {0, 8}) {
        EXPECT_TRUE(stored.IsNear(x, 0, {255, 255, 255}));
        EXPECT_TRUE(stored.IsNear(x, height - 2, {255, 255, 255}));
        EXPECT_TRUE(stored.IsNear(x, height - 1, {0, 0, 0}));
      }
    }
  }
}

}  // namespace
}  // namespace TarnixTools::engines::parser
