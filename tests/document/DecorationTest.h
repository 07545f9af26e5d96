// What tests of decorations share: one of each kind, applied to doc.pdf, and a look at what was added.
#ifndef TARNIX_TESTS_DOCUMENT_DECORATION_TEST_H_
#define TARNIX_TESTS_DOCUMENT_DECORATION_TEST_H_

#include <optional>
#include <string>
#include <vector>

#include "PdfTransformation.h"
#include "support/DocumentTest.h"
#include "support/PageViews.h"
#include "support/TestImage.h"

namespace TarnixTools {

class DecorationTest : public testing::DocumentTest {
 protected:
  static constexpr int kDpi = 72;

  DecorationTest() {
    number_.SetFontSize(12);
    text_.SetInputText("Draft");
    testing::WriteBytes(Path("magenta.png"), testing::PngOf(100, 50, {255, 0, 255}));
    image_.SetInputImage(Path("magenta.png"));
    image_.SetPixelsPerPoint(1);
  }

  void SetUp() override {
    TARNIX_NEED_PROGRAM("pdftotext");
    TARNIX_NEED_PROGRAM("pdftoppm");
    TARNIX_NEED_PROGRAM("qpdf");
  }

  // Applies the transformation, or the vector of them, to doc.pdf and checks the output's
  // structure.
  template <typename Transformation>
  PdfReport Decorate(Transformation& transformation) {
    PdfDoc document = Doc("doc.pdf");
    document.Transform(transformation, Path("out.pdf"), "");
    EXPECT_EQ(testing::QpdfComplaints(Path("out.pdf")), "");
    return document.GetReport();
  }

  template <typename Transformation>
  testing::Failure FailureToDecorate(Transformation& transformation) {
    const testing::Failure failure = testing::FailureOf([&] {
      PdfDoc document = Doc("doc.pdf");
      document.Transform(transformation, Path("out.pdf"), "");
    });
    EXPECT_FALSE(testing::Exists(Path("out.pdf")));
    return failure;
  }

  // What was added to each page, by page number, in points.
  std::vector<std::optional<testing::Box>> Differences() const {
    const std::vector<testing::Picture> before = testing::Pictures(Path("doc.pdf"), kDpi);
    const std::vector<testing::Picture> after = testing::Pictures(Path("out.pdf"), kDpi);
    EXPECT_EQ(before.size(), after.size());
    std::vector<std::optional<testing::Box>> differences;
    for (std::size_t i = 0; i < before.size() && i < after.size(); ++i) {
      differences.push_back(testing::DifferenceOf(before[i], after[i], kDpi));
    }
    return differences;
  }

  static PdfReportEntry Added(PdfReportKind kind, std::int64_t count, std::int32_t page = 1) {
    return {kind, PdfReportOutcome::Added, count, page, ""};
  }

  PdfTransformation number_{PdfTransformType::AddPageNumber};
  PdfTransformation text_{PdfTransformType::StampText};
  PdfTransformation image_{PdfTransformType::StampImage};
};

}  // namespace TarnixTools

#endif  // TARNIX_TESTS_DOCUMENT_DECORATION_TEST_H_
