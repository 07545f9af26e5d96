// PdfDoc::Transform: what is looked at first, what is not looked at, and a document that goes on
// after a failure.
#include <functional>
#include <limits>

#include "document/DecorationTest.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using ::testing::IsEmpty;

class DecorationFailuresTest : public DecorationTest {
 protected:
  DecorationFailuresTest() { MakePdf("doc.pdf", 2); }

  template <typename Transformation>
  Failure FailureToWrite(const std::string& output, Transformation& transformation,
                         const std::string& input = "doc.pdf") {
    return FailureOf([&] {
      PdfDoc document(Path(input), "", false);
      document.Transform(transformation, Path(output), "");
    });
  }

  Failure NoImage() const {
    return {PdfExceptionCode::FileNotFound, "Unable to open image file [" + Path("no.png") + "]"};
  }
};

TEST_F(DecorationFailuresTest, TellTheDocumentBeforeTheOutputAndThatBeforeTheImage) {
  image_.SetInputImage(Path("no.png"));
  std::vector<PdfTransformation> several = {image_};
  const Failure no_document(PdfExceptionCode::FileNotFound,
                            "Unable to open file " + Backslashes(Path("missing.pdf")));
  EXPECT_EQ(FailureToWrite("nowhere/out.pdf", image_, "missing.pdf"), no_document);
  EXPECT_EQ(FailureToWrite("nowhere/out.pdf", several, "missing.pdf"), no_document);
  const Failure no_output(PdfExceptionCode::FileNotFound, "Unable to create new file [" +
                                                              Backslashes(Path("nowhere/out.pdf")) +
                                                              "] (No such file or directory)");
  EXPECT_EQ(FailureToWrite("nowhere/out.pdf", image_), no_output);
  EXPECT_EQ(FailureToWrite("nowhere/out.pdf", several), no_output);
  EXPECT_EQ(FailureToWrite("out.pdf", image_), NoImage());
  EXPECT_EQ(FailureToWrite("out.pdf", several), NoImage());
}

// One decoration has its image opened in any case, one of several when it is to be painted.
TEST_F(DecorationFailuresTest, TellOfAnImageThatNoPageShows) {
  image_.SetInputImage(Path("no.png"));
  image_.AddTargetPage(3);
  EXPECT_EQ(FailureToDecorate(image_), NoImage());
  std::vector<PdfTransformation> several = {text_, image_};
  EXPECT_THAT(Decorate(several).GetEntries(), ElementsAre(Added(PdfReportKind::TextStamp, 2)));
}

TEST_F(DecorationFailuresTest, AreOnlyThoseOfWhatIsDrawn) {
  text_.SetFontSize(0);
  image_.SetPixelsPerPoint(0);
  PdfTransformation conversion(PdfTransformType::PdfA);
  for (PdfTransformation* none : {&text_, &image_, &conversion}) {
    none->AddTargetPage(3);
  }
  EXPECT_THAT(Decorate(text_).GetEntries(), IsEmpty());
  EXPECT_THAT(Decorate(image_).GetEntries(), IsEmpty());
  std::vector<PdfTransformation> several = {text_, image_, conversion};
  EXPECT_THAT(Decorate(several).GetEntries(), IsEmpty());
}

// The first of several that fails is the one that is told, page by page.
TEST_F(DecorationFailuresTest, AreToldInTheOrderOfPagesAndThenOfDecorations) {
  text_.SetFontSize(0);
  image_.SetInputImage(Path("no.png"));
  const Failure no_size(PdfExceptionCode::InvalidParameter, "Invalid pdf text font size [0]");
  std::vector<PdfTransformation> several = {text_, image_};
  EXPECT_EQ(FailureToDecorate(several), no_size);
  several = {image_, text_};
  EXPECT_EQ(FailureToDecorate(several), NoImage());
  several[0].AddTargetPage(2);
  EXPECT_EQ(FailureToDecorate(several), no_size);
}

TEST_F(DecorationFailuresTest, LeaveTheDocumentForTheNextDecoration) {
  PdfDoc document = Doc("doc.pdf");
  image_.SetInputImage(Path("no.png"));
  PdfTransformation sizeless = number_;
  sizeless.SetFontSize(0);
  PdfTransformation unturned = text_;
  unturned.SetRotation(std::numeric_limits<double>::infinity());
  std::vector<PdfTransformation> several = {text_, image_};
  const auto expect_goes_on = [&](const std::function<void()>& failing) {
    EXPECT_NE(FailureOf(failing), Failure());
    EXPECT_FALSE(testing::Exists(Path("out.pdf")));
    EXPECT_EQ(document.GetPagesNum(), 2);
    document.Transform(text_, Path("out.pdf"), "");
    EXPECT_THAT(document.GetReport().GetEntries(), ElementsAre(Added(PdfReportKind::TextStamp, 2)));
    PdfDoc output = Doc("out.pdf");
    PdfDoc::Delete(output);
  };
  for (PdfTransformation* failing : {&image_, &sizeless, &unturned}) {
    expect_goes_on([&] { document.Transform(*failing, Path("out.pdf"), ""); });
  }
  expect_goes_on([&] { document.Transform(several, Path("out.pdf"), ""); });
  expect_goes_on([&] { document.Transform(text_, Path("nowhere/out.pdf"), ""); });
  several = {text_};
  for (int run = 0; run < 2; ++run) {
    document.Transform(several, Path("out.pdf"), "");
    EXPECT_THAT(document.GetReport().GetEntries(), ElementsAre(Added(PdfReportKind::TextStamp, 2)));
  }
}

// Colours that a host has put in directly; of several decorations, all are told as page numbers are.
TEST_F(DecorationFailuresTest, AreColoursThatAreNone) {
  const Failure of_number(PdfExceptionCode::EngineError,
                          "Unable to get colors for document page number", 11);
  const Failure of_text(PdfExceptionCode::EngineError, "Unable to get colors for text stamp", 11);
  for (const double color : {1.01, -0.01, std::numeric_limits<double>::quiet_NaN()}) {
    number_.GetColors()[0] = color;
    text_.GetColors()[2] = color;
    EXPECT_EQ(FailureToDecorate(number_), of_number);
    EXPECT_EQ(FailureToDecorate(text_), of_text);
    std::vector<PdfTransformation> several = {text_};
    EXPECT_EQ(FailureToDecorate(several), of_number);
  }
}

TEST_F(DecorationFailuresTest, FindNoneInNamesOfOtherScripts) {
  const std::string path = Path("Bild \u00E4 \u6F22.png");
  testing::WriteBytes(path, testing::ReadBytes(Path("magenta.png")));
  image_.SetInputImage(path);
  EXPECT_THAT(Decorate(image_).GetEntries(), ElementsAre(Added(PdfReportKind::ImageStamp, 2)));
  image_.SetInputImage(testing::Backslashes(path));
  EXPECT_THAT(Decorate(image_).GetEntries(), ElementsAre(Added(PdfReportKind::ImageStamp, 2)));
}

}  // namespace
}  // namespace TarnixTools
