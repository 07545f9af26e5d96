// The tasks for page numbers, text stamps and image stamps.
#include "PdfPageNumberTask.h"
#include "PdfStampImageTask.h"
#include "PdfStampTextTask.h"
#include "support/DocumentTest.h"
#include "support/TestImage.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using ::testing::HasSubstr;

class DecorationTasksTest : public testing::DocumentTest {
 protected:
  DecorationTasksTest() {
    MakePdf("doc.pdf", 12);
    directory_.MakeDir("out");
    testing::WriteBytes(Path("image.png"), testing::PngOf(20, 10, {0, 0, 255}));
  }

  // The pages of a written document on which the text is.
  std::vector<int> PagesWith(const std::string& name, const std::string& text) const {
    std::vector<int> pages;
    int page = 0;
    for (const std::string& page_text : Texts(name)) {
      ++page;
      if (page_text.find(text) != std::string::npos) {
        pages.push_back(page);
      }
    }
    return pages;
  }

  static Failure NotOneDocument(int count) {
    return {
        PdfExceptionCode::InvalidParameter,
        "Unexpected PDF docs number [" + std::to_string(count) + "], expected single doc at task"};
  }

  template <typename Task>
  void ExpectNeedsOneDocument() {
    Task task(Doc("doc.pdf"));
    task.AddPdfDoc(Doc("doc.pdf"));
    EXPECT_EQ(FailureOf([&] { task.Execute(); }), NotOneDocument(2));
    EXPECT_EQ(FailureOf([&] { task.TargetAllPages(); }), NotOneDocument(2));
    task.ClearPdfDocs();
    EXPECT_EQ(FailureOf([&] { task.Execute(); }), NotOneDocument(0));
    EXPECT_EQ(task.GetTargetPagesNum(), 12);
  }

  template <typename Task>
  void ExpectTargets() {
    Task task(Doc("doc.pdf"));
    EXPECT_EQ(task.GetTargetPagesNum(), 12);
    task.AddTargetPage(3);
    EXPECT_EQ(task.GetTargetPagesNum(), 1);
    task.AddTargetPattern("5-6");
    EXPECT_EQ(task.GetTargetPagesNum(), 3);
    task.AddTargetRange(PdfPageRange(6, 7));
    EXPECT_EQ(task.GetTargetPagesNum(), 4);
    task.TargetAllPages();
    EXPECT_EQ(task.GetTargetPagesNum(), 12);
    task.ClearTargetPages();
    EXPECT_EQ(task.GetTargetPagesNum(), 0);
    task.AddTargetPage(2);
    EXPECT_EQ(task.GetTargetPagesNum(), 1);
    Task all(Doc("doc.pdf"));
    all.TargetAllPages();  // is a choice: what is chosen then comes along
    all.AddTargetPage(13);
    EXPECT_EQ(all.GetTargetPagesNum(), 13);
    Task cleared(Doc("doc.pdf"));
    cleared.ClearTargetPages();
    EXPECT_EQ(cleared.GetTargetPagesNum(), 0);
    cleared.AddTargetPage(3);
    cleared.AddTargetPage(4);
    EXPECT_EQ(cleared.GetTargetPagesNum(), 2);
    Task patterns(Doc("doc.pdf"));
    EXPECT_EQ(FailureOf([&] { patterns.AddTargetPattern("1,,2"); }).message,
              "Invalid target pages pattern [1,,2]");
    EXPECT_EQ(patterns.GetTargetPagesNum(), 1);  // the items before the bad one
    patterns.AddTargetPage(4);
    EXPECT_EQ(patterns.GetTargetPagesNum(), 2);
    EXPECT_EQ(FailureOf([&] { patterns.AddTargetPage(0); }).code,
              PdfExceptionCode::InvalidParameter);
    EXPECT_EQ(patterns.GetTargetPagesNum(), 2);
  }

  // A choice that fails is one: the pages of a new task are gone.
  template <typename Task>
  void ExpectChoiceByFailure() {
    Task page(Doc("doc.pdf"));
    EXPECT_EQ(FailureOf([&] { page.AddTargetPage(0); }),
              Failure(PdfExceptionCode::InvalidParameter,
                      "Invalid PDF page range start value [0], expected positive integer"));
    EXPECT_EQ(page.GetTargetPagesNum(), 0);
    Task pattern(Doc("doc.pdf"));
    EXPECT_EQ(FailureOf([&] { pattern.AddTargetPattern("a"); }),
              Failure(PdfExceptionCode::InvalidParameter, "Invalid target pages pattern [a]"));
    EXPECT_EQ(pattern.GetTargetPagesNum(), 0);
    Task empty(Doc("doc.pdf"));
    empty.AddTargetPattern("");
    EXPECT_EQ(empty.GetTargetPagesNum(), 0);
    Task range(Doc("doc.pdf"));
    range.AddTargetRange(PdfPageRange(4, 2));
    EXPECT_EQ(range.GetTargetPagesNum(), 3);
  }

  template <typename Task>
  void ExpectName(const std::string& name) {
    EXPECT_EQ(Task(Doc("doc.pdf")).GetOutName(), name);
    EXPECT_EQ(Task(Doc("doc.pdf"), "").GetOutName(), name);
    Task task(Doc("doc.pdf"), "x.pdf");
    EXPECT_EQ(task.GetOutName(), "x.pdf");
    task.SetOutName("");
    EXPECT_EQ(task.GetOutName(), "x.pdf");
    EXPECT_EQ(FailureOf([] { Task missing(PdfDoc("no.pdf", "", false)); }).code,
              PdfExceptionCode::FileNotFound);
  }

  // The settings that all three have.
  template <typename Task>
  void ExpectForwarding() {
    Task task(Doc("doc.pdf"));
    EXPECT_EQ(task.GetFontName(), "Arial");
    EXPECT_EQ(task.GetFontColor(), "#000000");
    EXPECT_EQ(task.GetFontStyle(), "");
    EXPECT_EQ(task.GetFontSize(), 24.0);
    EXPECT_EQ(task.GetLayerPosition(), PdfTransformLayerPos::Over);
    task.SetFontName("Courier");
    task.SetFontStyle("Bold");
    task.SetFontColor("#102030");
    task.SetFontSize(9);
    task.SetHorizontalPosition(PdfTransformHorizontalPos::Left);
    task.SetHorizontalAdjustment(3);
    task.SetVerticalPosition(PdfTransformVerticalPos::Top);
    task.SetVerticalAdjustment(-4);
    task.SetLayerPosition(PdfTransformLayerPos::Under);
    task.SetOutName("named.pdf");
    task.SetOutputPath("/out");
    Task copy(task);
    Task assigned(Doc("doc.pdf"));
    assigned = copy;
    Task moved(std::move(task));
    Task move_assigned(Doc("doc.pdf"));
    move_assigned = Task(copy);
    for (Task* same : {&copy, &assigned, &moved, &move_assigned}) {
      EXPECT_EQ(same->GetOutName(), "named.pdf");
      EXPECT_EQ(same->GetOutputPath(), "\\out\\");
      EXPECT_EQ(same->GetPdfDocsNum(), 1);
      EXPECT_EQ(same->GetFontName(), "Courier");
      EXPECT_EQ(same->GetFontStyle(), "Bold");
      EXPECT_EQ(same->GetFontColor(), "#102030");
      EXPECT_EQ(same->GetFontSize(), 9.0);
      EXPECT_EQ(same->GetHorizontalPosition(), PdfTransformHorizontalPos::Left);
      EXPECT_EQ(same->GetHorizontalAdjustment(), 3);
      EXPECT_EQ(same->GetVerticalPosition(), PdfTransformVerticalPos::Top);
      EXPECT_EQ(same->GetVerticalAdjustment(), -4);
      EXPECT_EQ(same->GetLayerPosition(), PdfTransformLayerPos::Under);
      EXPECT_EQ(same->GetTargetPagesNum(), 12);
      same->AddTargetPage(2);  // the first choice in each of them
      EXPECT_EQ(same->GetTargetPagesNum(), 1);
    }
    Task chosen(copy);
    chosen.AddTargetPage(3);
    EXPECT_EQ(chosen.GetTargetPagesNum(), 2);
    EXPECT_EQ(FailureOf([&] { copy.SetFontColor("red"); }).message,
              "Invalid RGB font color pattern [red]");
  }

  // Those of the type, where nothing was set.
  template <typename Task>
  void ExpectPlace(PdfTransformVerticalPos vertical) {
    Task task(Doc("doc.pdf"));
    EXPECT_EQ(task.GetVerticalPosition(), vertical);
    EXPECT_EQ(task.GetHorizontalPosition(), PdfTransformHorizontalPos::Center);
    EXPECT_EQ(task.GetVerticalAdjustment(), 0);
    EXPECT_EQ(task.GetHorizontalAdjustment(), 0);
  }

  template <typename Task>
  void ExpectTextSettings() {
    Task task(Doc("doc.pdf"));
    task.SetAbsolutePosition(PdfPagePoint(1, 2));
    EXPECT_EQ(task.GetVerticalPosition(), PdfTransformVerticalPos::Absolute);
    EXPECT_EQ(task.GetAbsolutePosition().GetX(), 1);
    task.SetAbsolutePositionX(3);
    task.SetAbsolutePositionY(4);
    EXPECT_EQ(task.GetAbsolutePositionX(), 3);
    EXPECT_EQ(task.GetAbsolutePositionY(), 4);
    task.SetTextAlignment(PdfTransformTextAlignment::Right);
    EXPECT_EQ(task.GetTextAlignment(), PdfTransformTextAlignment::Right);
    task.SetTextOpacity(40);
    EXPECT_EQ(task.GetTextOpacity(), 40);
    EXPECT_EQ(FailureOf([&] { task.SetTextOpacity(0); }).message,
              "Invalid text opacity value [0] (expected [1-100] value)");
  }

  template <typename Task>
  void ExpectStampSettings() {
    Task task(Doc("doc.pdf"));
    EXPECT_EQ(task.GetMarginX(), 15);
    EXPECT_EQ(task.GetMarginY(), 15);
    EXPECT_FALSE(task.GetMosaic());
    EXPECT_EQ(task.GetRotation(), 0.0);
    task.SetMarginX(1);
    task.SetMarginY(2);
    task.SetMosaic(true);
    task.SetRotation(12.5);
    EXPECT_EQ(task.GetMarginX(), 1);
    EXPECT_EQ(task.GetMarginY(), 2);
    EXPECT_TRUE(task.GetMosaic());
    EXPECT_EQ(task.GetRotation(), 12.5);
  }
};

TEST_F(DecorationTasksTest, NeedOneDocument) {
  ExpectNeedsOneDocument<PdfPageNumberTask>();
  ExpectNeedsOneDocument<PdfStampTextTask>();
  ExpectNeedsOneDocument<PdfStampImageTask>();
}

TEST_F(DecorationTasksTest, TargetAllPagesUntilOthersAreChosen) {
  ExpectTargets<PdfPageNumberTask>();
  ExpectTargets<PdfStampTextTask>();
  ExpectTargets<PdfStampImageTask>();
  ExpectChoiceByFailure<PdfPageNumberTask>();
  ExpectChoiceByFailure<PdfStampTextTask>();
  ExpectChoiceByFailure<PdfStampImageTask>();
}

TEST_F(DecorationTasksTest, CountThePagesWhenTheyAreMade) {
  Doc("doc.pdf").Lock("pw", Path("locked.pdf"));
  const Failure wrong(PdfExceptionCode::PasswordError,
                      "Invalid password for PDF [" + testing::Backslashes(Path("locked.pdf")) + "]",
                      17);
  EXPECT_EQ(FailureOf([&] { PdfPageNumberTask(Doc("locked.pdf")); }), wrong);
  EXPECT_EQ(FailureOf([&] { PdfStampTextTask(Doc("locked.pdf"), "x.pdf"); }), wrong);
  EXPECT_EQ(PdfStampImageTask(Doc("locked.pdf", "pw")).GetTargetPagesNum(), 12);
  PdfDoc::Merge({}, Path("empty.pdf"), "");
  EXPECT_EQ(FailureOf([&] { PdfStampImageTask(Doc("empty.pdf")); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Invalid PDF page range end value [0], expected positive integer"));
}

TEST_F(DecorationTasksTest, NameTheirOutput) {
  ExpectName<PdfPageNumberTask>("document_with_page_numbers.pdf");
  ExpectName<PdfStampTextTask>("document_after_text_stamp.pdf");
  ExpectName<PdfStampImageTask>("document_after_image_stamp.pdf");
}

TEST_F(DecorationTasksTest, HandSettingsOn) {
  ExpectForwarding<PdfPageNumberTask>();
  ExpectForwarding<PdfStampTextTask>();
  ExpectForwarding<PdfStampImageTask>();
  ExpectTextSettings<PdfPageNumberTask>();
  ExpectTextSettings<PdfStampTextTask>();
  ExpectStampSettings<PdfStampTextTask>();
  ExpectStampSettings<PdfStampImageTask>();
}

TEST_F(DecorationTasksTest, StandWhereTheirTypeDoes) {
  ExpectPlace<PdfPageNumberTask>(PdfTransformVerticalPos::Bottom);
  ExpectPlace<PdfStampTextTask>(PdfTransformVerticalPos::Middle);
  ExpectPlace<PdfStampImageTask>(PdfTransformVerticalPos::Middle);
}

// Whether a file is there is looked at when the stamp is made, not before.
TEST_F(DecorationTasksTest, CheckOptionsWhenTheyAreExecuted) {
  PdfStampImageTask image(Doc("doc.pdf"));
  image.SetInputImage("missing.png");
  image.AddPdfDoc(Doc("doc.pdf"));
  EXPECT_EQ(FailureOf([&] { image.Execute(); }), NotOneDocument(2));
  image.GetPdfDocs().pop_back();
  EXPECT_EQ(FailureOf([&] { image.Execute(); }),
            Failure(PdfExceptionCode::FileNotFound, "Image file not found: missing.png"));
  PdfStampTextTask text(Doc("doc.pdf"));
  text.SetInputText("Draft");
  text.SetFontSize(-2);
  EXPECT_EQ(text.GetFontSize(), -2.0);
  EXPECT_EQ(FailureOf([&] { text.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter, "Invalid pdf text font size [-2]"));
  EXPECT_EQ(text.GetInputText(), "Draft");
  EXPECT_EQ(text.GetTargetPagesNum(), 12);
  text.SetFontSize(2);
  text.Execute();
  EXPECT_EQ(Doc("document_after_text_stamp.pdf").GetPagesNum(), 12);
}

TEST_F(DecorationTasksTest, TargetThePagesThatTheDocumentHadWhenTheyWereChosen) {
  TARNIX_NEED_PROGRAM("pdftotext");
  PdfPageNumberTask task(Doc("doc.pdf"));
  task.SetPageNumberTextTemplate("no. {n} of {p}");
  MakePdf("doc.pdf", 13);
  task.Execute();
  EXPECT_EQ(Texts("document_with_page_numbers.pdf").at(11), "Page 12\n\nno. 12 of 13");
  EXPECT_EQ(Texts("document_with_page_numbers.pdf").at(12), "Page 13");
  task.TargetAllPages();
  EXPECT_EQ(task.GetTargetPagesNum(), 13);
}

TEST_F(DecorationTasksTest, HaveSettingsOfTheirOwn) {
  PdfPageNumberTask number(Doc("doc.pdf"));
  EXPECT_EQ(number.GetTextAlignment(), PdfTransformTextAlignment::Center);
  EXPECT_EQ(number.GetPageNumberTextTemplate(), "{n}");
  number.SetPageNumberTextTemplate("x");
  number.SetStartingPageNum(7);
  number.SetDoFacingPages(true);
  number.SetFirstCoverPage(true);
  EXPECT_EQ(number.GetPageNumberTextTemplate(), "x");
  EXPECT_EQ(number.GetStartingPageNum(), 7);
  EXPECT_TRUE(number.GetDoFacingPages());
  EXPECT_TRUE(number.GetFirstCoverPage());
  PdfStampTextTask text(Doc("doc.pdf"));
  EXPECT_EQ(text.GetTextAlignment(), PdfTransformTextAlignment::Left);
  text.SetInputText("x");
  EXPECT_EQ(text.GetInputText(), "x");
  PdfStampImageTask image(Doc("doc.pdf"));
  EXPECT_EQ(image.GetPixelsPerPoint(), 1.33);
  EXPECT_EQ(image.GetOpacity(), 100);
  image.SetInputImage("x.png");
  image.SetOpacity(3);
  image.SetPixelsPerPoint(2);
  image.SetPageNumberTextTemplate("y");
  image.SetStartingPageNum(9);
  EXPECT_EQ(image.GetInputImage(), "x.png");
  EXPECT_EQ(image.GetOpacity(), 3);
  EXPECT_EQ(image.GetPixelsPerPoint(), 2);
  EXPECT_EQ(image.GetPageNumberTextTemplate(), "y");
  EXPECT_EQ(image.GetStartingPageNum(), 9);
}

TEST_F(DecorationTasksTest, NumberPages) {
  TARNIX_NEED_PROGRAM("pdftotext");
  PdfPageNumberTask task(Doc("doc.pdf"));
  task.SetPageNumberTextTemplate("no. {n}");
  task.SetOutputPath(Path("out"));
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("document_with_page_numbers.pdf"));
  EXPECT_EQ(PagesWith("out/document_with_page_numbers.pdf", "no. ").size(), 12U);
  task.AddTargetPage(3);
  task.Execute();
  EXPECT_THAT(PagesWith("out/document_with_page_numbers.pdf", "no. "), ElementsAre(3));
  EXPECT_THAT(PagesWith("out/document_with_page_numbers.pdf", "no. 3"), ElementsAre(3));
  task.AddTargetPattern("5-6");
  task.Execute();
  EXPECT_THAT(PagesWith("out/document_with_page_numbers.pdf", "no. "), ElementsAre(3, 5, 6));
  ASSERT_FALSE(task.GetReport().GetEntries().empty());
  EXPECT_EQ(PdfReport::GetText(task.GetReport().GetEntries().back()), "3 page numbers added");
}

TEST_F(DecorationTasksTest, WriteBesideTheDocument) {
  TARNIX_NEED_PROGRAM("pdftotext");
  PdfStampTextTask task(Doc("doc.pdf"));
  task.SetInputText("Draft");
  task.Execute();
  EXPECT_EQ(PagesWith("document_after_text_stamp.pdf", "Draft").size(), 12U);
  EXPECT_EQ(task.GetOutputPath(), testing::Backslashes(directory_.Path() + "/"));
}

TEST_F(DecorationTasksTest, ProtectTheirOutput) {
  PdfStampTextTask task(Doc("doc.pdf"), "x.pdf");
  task.SetInputText("Draft");
  task.SetOutputPath(Path("out"));
  task.SetOutPassword("pw");
  task.Execute();
  EXPECT_TRUE(PdfDoc::HasPassword(Path("out/x.pdf")));
  EXPECT_EQ(Doc("out/x.pdf", "pw").GetPagesNum(), 12);
}

TEST_F(DecorationTasksTest, NeedAText) {
  PdfStampTextTask task(Doc("doc.pdf"));
  const Failure missing(PdfExceptionCode::InvalidParameter, "Missing input text at task");
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), missing);
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf", "image.png", "out"));
}

TEST_F(DecorationTasksTest, NeedAnImage) {
  PdfStampImageTask task(Doc("doc.pdf"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter, "Missing input image path at task"));
  task.SetInputImage(Path("no.png"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::FileNotFound, "Image file not found: " + Path("no.png")));
  task.SetInputImage(Path("doc.pdf"));
  EXPECT_THAT(FailureOf([&] { task.Execute(); }).message,
              HasSubstr("Unable to create image object from file [" + Path("doc.pdf") + "]"));
  EXPECT_TRUE(task.GetReport().GetEntries().empty());
  task.SetInputImage(testing::Backslashes(Path("image.png")));
  task.Execute();
  EXPECT_EQ(Doc("document_after_image_stamp.pdf").GetPagesNum(), 12);
  EXPECT_EQ(PdfReport::GetText(task.GetReport().GetEntries().back()), "12 image stamps added");
}

TEST_F(DecorationTasksTest, KeepWhatAMosaicLeaves) {
  PdfStampTextTask task(Doc("doc.pdf"));
  task.SetInputText("Draft");
  task.SetMosaic(true);
  task.SetHorizontalAdjustment(4);
  task.Execute();
  EXPECT_EQ(task.GetVerticalPosition(), PdfTransformVerticalPos::Middle);
  EXPECT_EQ(task.GetHorizontalPosition(), PdfTransformHorizontalPos::Right);
  EXPECT_EQ(task.GetHorizontalAdjustment(), 0);
}

}  // namespace
}  // namespace TarnixTools
