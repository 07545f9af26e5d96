// Which images are taken as they are stored, and which are drawn, in how many pixels.
#include <atomic>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/office/pages/DocumentPictures.h"
#include "engines/office/pages/DocumentReader.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::office {
namespace {

using testing::TestPdf;

class DocumentPicturesTest : public ::testing::Test {
 protected:
  // A page that paints the image, of 40 by 40 pixels, by these operators.
  std::string Write(const std::string& content, const std::string& more = "") {
    const std::string samples(1600, '\x40');
    return TestPdf()
        .Page()
        .Size(400, 400)
        .Object("image",
                "<</Type/XObject/Subtype/Image/Width 40/Height 40/BitsPerComponent 8"
                "/ColorSpace/DeviceGray" +
                    more + "/Length 1600>>stream\n" + samples + "\nendstream")
        .PageEntry("/Resources<</XObject<</I {{image}}>>>>")
        .Content(content)
        .Write(directory_.Path("a.pdf"));
  }

  // The pixels of the picture that the image on the page makes.
  std::string PictureOf(const std::string& content, const std::string& more = "") {
    const platform::WidePath path(Write(content, more));
    const PageModel page = DocumentReader::Open(path, "")->Read(0);
    DocumentPictures pictures(path, "", is_cancelled_);
    std::string text;
    for (const ImagePlace& image : page.images) {
      text += Shown(pictures.PictureOf(0, {&image, 1}, image.box));
    }
    return text;
  }

  static std::string Shown(const std::optional<OfficePicture>& picture) {
    return picture ? std::to_string(picture->width) + " x " + std::to_string(picture->height)
                   : "none";
  }

  testing::TempDir directory_;
  std::atomic<bool> is_cancelled_ = false;
};

constexpr const char* kStored = "40 x 40";

TEST_F(DocumentPicturesTest, AreAsTheyAreStoredWhereTheyStandUpright) {
  EXPECT_EQ(PictureOf("100 0 0 100 20 50 cm /I Do"), kStored);
  EXPECT_EQ(PictureOf("100 0 0 20 20 50 cm /I Do"), kStored);
  EXPECT_EQ(PictureOf("-100 0 0 100 120 50 cm /I Do"), "278 x 278");
  EXPECT_EQ(PictureOf("100 0 0 -100 20 150 cm /I Do"), "278 x 278");
  EXPECT_EQ(PictureOf("0 100 -100 0 120 50 cm /I Do"), "278 x 278");
}

TEST_F(DocumentPicturesTest, AreDrawnWhereTheyAreTurned) {
  EXPECT_EQ(PictureOf("100 1 0 100 20 50 cm /I Do"), kStored);
  EXPECT_EQ(PictureOf("100 1.9 0 100 20 50 cm /I Do"), kStored);
  EXPECT_NE(PictureOf("100 2.1 0 100 20 50 cm /I Do"), kStored);
  EXPECT_EQ(PictureOf("100 0.9 -0.9 100 20 50 cm /I Do"), kStored);
  EXPECT_NE(PictureOf("100 1.1 -1.1 100 20 50 cm /I Do"), kStored);
  EXPECT_NE(PictureOf("100 1.1 1.1 100 20 50 cm /I Do"), kStored);
  EXPECT_NE(PictureOf("100 0 2.1 100 20 50 cm /I Do"), kStored);
}

TEST_F(DocumentPicturesTest, AreDrawnWhereTheyAreCut) {
  EXPECT_EQ(PictureOf("20 50 98 100 re W n 100 0 0 100 20 50 cm /I Do"), kStored);
  EXPECT_NE(PictureOf("20 50 96 100 re W n 100 0 0 100 20 50 cm /I Do"), kStored);
  EXPECT_EQ(PictureOf("20 50 100 98 re W n 100 0 0 100 20 50 cm /I Do"), kStored);
  EXPECT_NE(PictureOf("20 50 100 96 re W n 100 0 0 100 20 50 cm /I Do"), kStored);
  EXPECT_EQ(PictureOf("20 50 50 25 re W n 100 0 0 100 20 50 cm /I Do"), "139 x 69");
}

TEST_F(DocumentPicturesTest, HaveNoMorePixelsThanPrintersShow) {
  EXPECT_EQ(PictureOf("9.6 0 0 9.6 20 50 cm /I Do"), kStored);
  EXPECT_EQ(PictureOf("4.5 0 0 4.5 20 50 cm /I Do"), "19 x 19");
  EXPECT_EQ(PictureOf("2 0 0 2 20 50 cm /I Do"), "16 x 16");
}

TEST_F(DocumentPicturesTest, AreDrawnWhereTheyCannotBeRead) {
  EXPECT_EQ(PictureOf("100 0 0 100 20 50 cm /I Do", "/Filter/DCTDecode"), "278 x 278");
}

TEST_F(DocumentPicturesTest, OfSeveralImagesAreDrawn) {
  const platform::WidePath path(
      Write("q 100 0 0 100 20 50 cm /I Do Q q 50 0 0 50 120 50 cm /I Do Q"));
  const PageModel page = DocumentReader::Open(path, "")->Read(0);
  ASSERT_EQ(page.images.size(), 2U);
  DocumentPictures pictures(path, "", is_cancelled_);
  EXPECT_EQ(Shown(pictures.PictureOf(0, page.images, {20, 250, 170, 350})), "417 x 278");
  std::vector<ImagePlace> inside = {page.images[0]};
  inside[0].number = 0;
  EXPECT_EQ(Shown(pictures.PictureOf(0, inside, inside[0].box)), "278 x 278");
}

TEST_F(DocumentPicturesTest, AreDrawnOfPagesThatCameOutSmaller) {
  const platform::WidePath path(Write("100 0 0 100 20 50 cm /I Do"));
  DocumentPictures pictures(path, "", is_cancelled_);
  EXPECT_EQ(Shown(pictures.DrawingOf(0, {20, 250, 120, 300})), "278 x 139");
  EXPECT_EQ(Shown(pictures.DrawingOf(0, {20, 250, 20, 300})), "none");
  pictures.SetScale(0, 0.5);
  const auto drawing = pictures.DrawingOf(0, {10, 125, 60, 150});
  EXPECT_EQ(Shown(drawing), "139 x 69");
  const platform::WidePath same(Write("100 0 0 100 20 50 cm /I Do"));
  DocumentPictures whole(same, "", is_cancelled_);
  whole.SetScale(1, 0.5);
  EXPECT_EQ(Shown(whole.DrawingOf(0, {20, 250, 120, 300})), "278 x 139");
  EXPECT_EQ(Shown(whole.DrawingOf(7, {20, 250, 120, 300})), "none");
}

}  // namespace
}  // namespace TarnixTools::engines::office
