// PdfDoc::Transform: images that are stamped, and what goes wrong with them.
#include <limits>

#include "document/DecorationTest.h"
#include "support/OpenFilesLimit.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using testing::Failure;
using testing::Picture;
using testing::TestPdf;

constexpr long kArgumentError = 11;  // of the engine

class ImageStampsTest : public DecorationTest {};

TEST_F(ImageStampsTest, PaintsImagesOpaqueWhateverTheirOpacity) {
  MakePdf("doc.pdf", 1);
  Decorate(image_);
  const std::string opaque = testing::ReadBytes(Path("out.pdf"));
  image_.SetOpacity(10);
  Decorate(image_);
  EXPECT_EQ(testing::ReadBytes(Path("out.pdf")), opaque);
}

TEST_F(ImageStampsTest, PaintsImagesWithTheirOpacityWhereItIsApplied) {
  TestPdf().Page("").Write(Path("doc.pdf"));
  for (const double angle : {0.0, 90.0}) {
    image_.SetRotation(angle);
    image_.SetOpacity(50);
    image_.SetApplyOpacity(true);
    Decorate(image_);
    const Picture page = testing::Pictures(Path("out.pdf"), kDpi).at(0);
    const testing::Pixel middle = page.At(306, 396);
    EXPECT_EQ(middle[0], 255);
    EXPECT_NEAR(middle[1], 128, 2);
    EXPECT_EQ(middle[2], 255);
  }
}

TEST_F(ImageStampsTest, MakesImagesAsWideAsIsSet) {
  TestPdf().Page("").Write(Path("doc.pdf"));
  const auto expect_size = [&](double width, double height) {
    Decorate(image_);
    const auto box = Differences().at(0);
    ASSERT_TRUE(box.has_value());
    EXPECT_NEAR(box->right - box->left, width, 1);
    EXPECT_NEAR(box->top - box->bottom, height, 1);
  };
  image_.SetPixelsPerPoint(0);
  image_.SetImageWidth(200);
  expect_size(200, 100);
  image_.SetImageWidth(50, PdfTransformWidthUnit::PercentOfPage);
  expect_size(306, 153);
  image_.SetImageWidth(0.25, PdfTransformWidthUnit::PercentOfPage);
  EXPECT_THAT(Decorate(image_).GetEntries(), ElementsAre(Added(PdfReportKind::ImageStamp, 1)));
}

TEST_F(ImageStampsTest, PlacesImages) {
  TestPdf().Page("").Write(Path("doc.pdf"));
  const auto expect_at = [&](double left, double bottom, double width = 100, double height = 50) {
    Decorate(image_);
    const auto box = Differences().at(0);
    ASSERT_TRUE(box.has_value());
    EXPECT_NEAR(box->left, left, 1);
    EXPECT_NEAR(box->bottom, bottom, 1);
    EXPECT_NEAR(box->right, left + width, 1);
    EXPECT_NEAR(box->top, bottom + height, 1);
  };
  expect_at(256, 371);
  image_.SetVerticalPosition(static_cast<PdfTransformVerticalPos>(4));
  image_.SetHorizontalPosition(static_cast<PdfTransformHorizontalPos>(-1));
  expect_at(256, 371);
  image_.SetVerticalPosition(PdfTransformVerticalPos::Top);
  image_.SetHorizontalPosition(PdfTransformHorizontalPos::Left);
  expect_at(15, 792 - 15 - 50);
  image_.SetVerticalPosition(PdfTransformVerticalPos::Bottom);
  image_.SetHorizontalPosition(PdfTransformHorizontalPos::Right);
  image_.SetMarginX(20);
  image_.SetMarginY(30);
  image_.SetVerticalAdjustment(7);
  image_.SetHorizontalAdjustment(-9);
  expect_at(612 - 20 - 100 - 9, 30 + 7);
  image_.SetPixelsPerPoint(2);
  expect_at(612 - 20 - 50 - 9, 30 + 7, 50, 25);
  image_.SetPixelsPerPoint(1);
  image_.SetAbsolutePosition(PdfPagePoint(300, 100));  // crosswise, and no margins
  expect_at(100 - 9, 300 + 7);
  image_.SetRotation(90);  // about its centre
  expect_at(100 - 9 + 25, 300 + 7 - 25, 50, 100);
}

TEST_F(ImageStampsTest, PlacesAMosaicOfImages) {
  TestPdf().Page("").Size(400, 300).Write(Path("doc.pdf"));
  image_.SetMosaic(true);
  image_.SetVerticalAdjustment(5);
  image_.SetHorizontalAdjustment(-6);
  EXPECT_THAT(Decorate(image_).GetEntries(), ElementsAre(Added(PdfReportKind::ImageStamp, 1)));
  const Picture page = testing::Pictures(Path("out.pdf"), kDpi).at(0);
  int filled = 0;
  for (const int x : {20, 200, 380}) {
    for (const int y : {20, 150, 280}) {
      filled += page.At(x, y) == testing::Pixel{255, 0, 255} ? 1 : 0;
      EXPECT_EQ(page.At(x, y == 150 ? 200 : 90), (testing::Pixel{255, 255, 255}));
    }
  }
  EXPECT_EQ(filled, 9);
  EXPECT_EQ(image_.GetVerticalPosition(), PdfTransformVerticalPos::Middle);
  EXPECT_EQ(image_.GetHorizontalPosition(), PdfTransformHorizontalPos::Right);
  EXPECT_EQ(image_.GetBaseHorizontalPosition(), PdfTransformHorizontalPos::Right);
  EXPECT_EQ(image_.GetVerticalAdjustment(), 0);
  EXPECT_EQ(image_.GetHorizontalAdjustment(), 0);
  EXPECT_EQ(image_.GetBaseHorizontalAdjustment(), 0);
}

TEST_F(ImageStampsTest, TurnsEveryImageOfAMosaic) {
  TestPdf().Page("").Write(Path("doc.pdf"));
  image_.SetMosaic(true);
  image_.SetRotation(90);
  Decorate(image_);
  const Picture page = testing::Pictures(Path("out.pdf"), kDpi).at(0);
  for (const int x : {15 + 50, 306, 612 - 15 - 50}) {  // the middle of each image
    for (const int y : {15 + 25, 396, 792 - 15 - 25}) {
      EXPECT_EQ(page.At(x, y - 35), (testing::Pixel{255, 0, 255}));
      EXPECT_EQ(page.At(x, y + 35), (testing::Pixel{255, 0, 255}));
      EXPECT_EQ(page.At(x - 35, y), (testing::Pixel{255, 255, 255}));
      EXPECT_EQ(page.At(x + 35, y), (testing::Pixel{255, 255, 255}));
    }
  }
}

TEST_F(ImageStampsTest, TakesMoreImagesThanFilesMayBeOpen) {
  MakePdf("doc.pdf", 2);
  std::vector<PdfTransformation> many;
  for (int i = 0; i < 150; ++i) {
    const std::string path = Path("i" + std::to_string(i) + ".png");
    const auto shade = static_cast<std::uint8_t>(i);
    testing::WriteBytes(path, testing::PngOf(2, 2, {shade, 0, 0}));
    many.push_back(image_);
    many.back().SetInputImage(path);
  }
  const testing::OpenFilesLimit limit(90);
  const PdfReport report = Decorate(many);
  EXPECT_THAT(report.GetEntries(), ElementsAre(Added(PdfReportKind::ImageStamp, 300)));
}

TEST_F(ImageStampsTest, ReportsImagesThatAreTooLargeToPaint) {
  MakePdf("doc.pdf", 1);
  image_.SetPixelsPerPoint(1e-307);
  EXPECT_EQ(FailureToDecorate(image_),
            Failure(PdfExceptionCode::EngineError,
                    "Could not paint image on page without rotation. ERROR [11]", kArgumentError));
  image_.SetRotation(1);
  EXPECT_EQ(FailureToDecorate(image_),
            Failure(PdfExceptionCode::EngineError, "Could not paint rotated image. ERROR [11]",
                    kArgumentError));
}

TEST_F(ImageStampsTest, ReportsImagesThatCannotBeOpened) {
  MakePdf("doc.pdf", 1);
  for (const std::string& path : {Path("no.png"), Path(""), std::string()}) {
    image_.SetInputImage(path);
    const Failure expected(PdfExceptionCode::FileNotFound,
                           "Unable to open image file [" + path + "]");
    EXPECT_EQ(FailureToDecorate(image_), expected);
    std::vector<PdfTransformation> several = {text_, image_};
    EXPECT_EQ(FailureToDecorate(several), expected);
  }
}

TEST_F(ImageStampsTest, ReportsFilesThatAreNoImages) {
  MakePdf("doc.pdf", 1);
  const std::string header_only = testing::PngOf(200, 200, {1, 2, 3}).substr(0, 30);
  for (const std::string& bytes :
       {std::string(), std::string("not an image at all"), header_only}) {
    testing::WriteBytes(Path("bad.png"), bytes);
    image_.SetInputImage(Path("bad.png"));
    const Failure failure = FailureToDecorate(image_);
    EXPECT_EQ(failure.code, PdfExceptionCode::EngineError) << bytes.size();
    EXPECT_EQ(failure.message, "Unable to create image object from file [" + Path("bad.png") +
                                   "]. ERROR [" + std::to_string(failure.engine_code) + "]");
    EXPECT_EQ(failure.engine_code, 16);
  }
}

TEST_F(ImageStampsTest, PaintsACutImageAsFarAsItGoes) {
  TestPdf().Page("").Write(Path("doc.pdf"));
  const std::string png = testing::PngOf(100, 50, {255, 0, 255});
  testing::WriteBytes(Path("cut.png"), png.substr(0, png.size() - 40));
  image_.SetInputImage(Path("cut.png"));
  Decorate(image_);
  const auto box = Differences().at(0);
  ASSERT_TRUE(box.has_value());
  EXPECT_NEAR(box->top, 421, 1);
  EXPECT_NEAR(box->bottom, 371, 1);
}

TEST_F(ImageStampsTest, RejectsAResolutionThatGivesAnImageNoSize) {
  MakePdf("doc.pdf", 1);
  const double infinite = std::numeric_limits<double>::infinity();
  for (const auto& [pixels, shown] :
       {std::pair(0.0, "0"), std::pair(infinite, "inf"), std::pair(1e-310, "1e-310")}) {
    image_.SetPixelsPerPoint(pixels);
    EXPECT_EQ(FailureToDecorate(image_), Failure(PdfExceptionCode::InvalidParameter,
                                                 "Invalid image resolution [" + std::string(shown) +
                                                     "] (expected a number of pixels per point)"));
  }
}

}  // namespace
}  // namespace TarnixTools
