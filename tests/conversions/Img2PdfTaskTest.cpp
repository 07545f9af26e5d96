#include <filesystem>
#include <limits>

#include "conversions/Img2PdfFixture.h"
#include "support/JpegImage.h"
#include "support/PageViews.h"
#include "support/Readers.h"
#include "support/TestImages.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using testing::ExifJpegSegment;
using testing::Exists;
using testing::Failure;
using testing::FailureOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::QpdfComplaints;
using testing::TestJpeg;
using testing::WriteBytes;

class Img2PdfTaskTest : public Img2PdfFixture {};

TEST_F(Img2PdfTaskTest, HasDefaults) {
  Img2PdfTask task;
  EXPECT_EQ(task.GetPageSize(), Img2PdfPageSize::Img2PdfPageFit);
  EXPECT_EQ(task.GetOrientation(), Img2PdfOrientation::Img2PdfPortrait);
  EXPECT_EQ(task.GetImgRotation(), Img2PdfImgRotation::Img2PdfRotNone);
  EXPECT_EQ(task.GetMargin(), 0.0F);
  EXPECT_EQ(task.GetOutPrefix(), "");
  EXPECT_EQ(task.GetOutPdfName(), "");
  EXPECT_EQ(task.GetOutputPath(), "");
  EXPECT_EQ(task.GetImagesNum(), 0);
  EXPECT_THAT(task.GetInputImages(), IsEmpty());
}

TEST_F(Img2PdfTaskTest, NeedsAnImage) {
  Img2PdfTask task;
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            (Failure{PdfExceptionCode::InvalidParameter, "None image defined to convert to PDF"}));
}

TEST_F(Img2PdfTaskTest, RejectsMissingImages) {
  const std::string path = Path("missing.jpg");
  const Failure missing = {PdfExceptionCode::FileNotFound, "File not found: " + path};
  Img2PdfTask task;
  EXPECT_EQ(FailureOf([&] { task.AddInputImage(path); }), missing);
  EXPECT_EQ(FailureOf([&] { Img2PdfTask{path}; }), missing);
  EXPECT_EQ(task.GetImagesNum(), 0);
  EXPECT_EQ(FailureOf([&] { task.AddInputImage(""); }),
            (Failure{PdfExceptionCode::FileNotFound, "File not found: "}));
}

TEST_F(Img2PdfTaskTest, ComparesPathsAsTheyAreGiven) {
  const std::string path = MakeImage("a.jpg");
  Img2PdfTask task;
  task.AddInputImage(path);
  task.AddInputImage(path);  // with slashes, no duplicate of what is stored with backslashes
  EXPECT_EQ(task.GetImagesNum(), 2);
  EXPECT_THAT(task.GetInputImages(), ElementsAre(Stored(path), Stored(path)));
  EXPECT_EQ(
      FailureOf([&] { task.AddInputImage(Stored(path)); }),
      (Failure{PdfExceptionCode::InvalidParameter, "Duplicated file in task: " + Stored(path)}));
  EXPECT_EQ(task.GetImagesNum(), 2);
}

TEST_F(Img2PdfTaskTest, ComparesPathsLetterByLetter) {
  MakeImage("a.jpg");
  MakeImage("A.jpg");
  Img2PdfTask task;
  task.AddInputImage(Stored(Path("a.jpg")));
  task.AddInputImage(Stored(Path("A.jpg")));
  EXPECT_EQ(task.GetImagesNum(), 2);
}

TEST_F(Img2PdfTaskTest, FindsADuplicateOfEachImage) {
  Img2PdfTask task;
  for (const char* const name : {"a.jpg", "b.jpg", "c.jpg"}) {
    task.AddInputImage(MakeImage(name));
  }
  for (const char* const name : {"a.jpg", "b.jpg", "c.jpg"}) {
    const std::string path = Stored(Path(name));
    EXPECT_EQ(FailureOf([&] { task.AddInputImage(path); }),
              (Failure{PdfExceptionCode::InvalidParameter, "Duplicated file in task: " + path}));
    EXPECT_EQ(FailureOf([&] {
                task.SetInputImages({path, path});
              }),
              Failure(PdfExceptionCode::InvalidParameter, "Duplicated file in task: " + path));
    task.SetInputImages({Path("a.jpg"), Path("b.jpg"), Path("c.jpg")});
  }
}

TEST_F(Img2PdfTaskTest, LooksForAFileBeforeItsDuplicate) {
  const std::string path = Stored(MakeImage("a.jpg"));
  Img2PdfTask task(path);
  std::filesystem::remove(Path("a.jpg"));
  EXPECT_EQ(FailureOf([&] { task.AddInputImage(path); }),
            (Failure{PdfExceptionCode::FileNotFound, "File not found: " + path}));
  EXPECT_EQ(task.GetImagesNum(), 1);
}

TEST_F(Img2PdfTaskTest, SettingAnImageThatIsMissingLeavesNone) {
  Img2PdfTask task(MakeImage("a.jpg"));
  EXPECT_THROW(task.SetInputImage(Path("missing.jpg")), PdfException);
  EXPECT_EQ(task.GetImagesNum(), 0);
  EXPECT_THAT(task.GetInputImages(), IsEmpty());
}

TEST_F(Img2PdfTaskTest, SettingImagesReplacesThem) {
  const std::string a = MakeImage("a.jpg");
  const std::string b = MakeImage("b.jpg");
  Img2PdfTask task(std::list<std::string>{a, b});
  EXPECT_EQ(task.GetImagesNum(), 2);
  task.SetInputImage(b);
  EXPECT_THAT(task.GetInputImages(), ElementsAre(Stored(b)));
  EXPECT_THROW(task.SetInputImages({a, Path("missing"), b}), PdfException);
  EXPECT_THAT(task.GetInputImages(), ElementsAre(Stored(a)));
  task.SetInputImages(task.GetInputImages());
  EXPECT_THAT(task.GetInputImages(), ElementsAre(Stored(a)));
}

TEST_F(Img2PdfTaskTest, NamesTheDocumentsOfTheImages) {
  Img2PdfTask task(MakeImage("photo.jpeg"));
  task.SetMergeAfter(false);
  task.Execute();
  EXPECT_TRUE(Exists(Path("photo.jpeg.pdf")));
  task.SetInputImages({Path("photo.jpeg"), MakeImage("archive.tar.gz"), MakeImage("bare")});
  task.SetOutputPath(directory_.MakeDir("out"));
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("archive.tar.pdf", "bare.pdf", "photo.pdf"));
  directory_.MakeDir("x.y");
  task.SetInputImage(MakeImage("x.y/plain"));  // the dot is of its directory
  task.SetOutputPath(directory_.MakeDir("other"));
  task.Execute();
  task.SetInputImage(MakeImage("x.y/.jpg"));  // nothing stands before its extension
  task.Execute();
  EXPECT_THAT(directory_.Names("other"), ElementsAre(".pdf", "plain.pdf"));
}

TEST_F(Img2PdfTaskTest, NamesTheDocumentsOfTheImagesByAPattern) {
  Img2PdfTask task(std::list<std::string>{MakeImage("a.jpg"), MakeImage("b.v2.jpg")});
  EXPECT_EQ(task.GetNamePattern(), "");
  task.SetMergeAfter(false);
  task.SetNamePattern("{n}-{stem}-{n}.pdf");
  task.Execute();  // beside the images
  EXPECT_TRUE(Exists(Path("0001-a-0001.pdf")));
  EXPECT_TRUE(Exists(Path("0002-b.v2-0002.pdf")));
  task.SetOutputPath(directory_.MakeDir("out"));
  task.SetNamePattern("same");
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("same", "same-2"));
  EXPECT_THAT(task.GetWrittenFiles(),
              ElementsAre(Stored(Path("out/same")), Stored(Path("out/same-2"))));
  task.SetNamePattern("{stem}.pdf");
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("a.pdf", "b.v2.pdf", "same", "same-2"));
}

// The image's name is taken as it is, whatever stands in it.
TEST_F(Img2PdfTaskTest, NamesByAPatternTakeTheStemAsItIs) {
  Img2PdfTask task = TaskFor(MakeImage("{n}{stem}.jpg"));
  task.SetNamePattern("{stem}.pdf");
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("{n}{stem}.pdf"));
}

TEST_F(Img2PdfTaskTest, ImagesOfOneStemDoNotTakeEachOthersPlace) {
  directory_.MakeDir("more");
  MakeImage("a.jpg");
  MakeImage("a.jpeg", 1);
  MakeImage("more/a.jpg", 3, ExifJpegSegment(6));
  Img2PdfTask task(std::list<std::string>{Path("a.jpg"), Path("a.jpeg"), Path("more/a.jpg")});
  task.SetOutputPath(directory_.MakeDir("out"));
  task.SetMergeAfter(false);
  task.SetMakeUpright(true);
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("a-2.pdf", "a-3.pdf", "a.pdf"));
  EXPECT_EQ(task.GetWrittenDocuments().size(), 3U);
  EXPECT_THAT(SizeOf("out/a-3.pdf"), ElementsAre(6, 12));
  Img2PdfTask merging(std::list<std::string>{Path("a.jpg"), Path("more/a.jpg")});
  merging.SetOutputPath(directory_.MakeDir("merged"));
  merging.SetMakeUpright(true);
  merging.Execute();
  EXPECT_THAT(directory_.Names("merged"), ElementsAre("_merged_images.pdf"));
  EXPECT_THAT(SizeOf("merged/_merged_images.pdf", 1), ElementsAre(12, 6));
  EXPECT_THAT(SizeOf("merged/_merged_images.pdf", 2), ElementsAre(6, 12));
}

TEST_F(Img2PdfTaskTest, AnImageThatComesAgainKeepsItsDocument) {
  const std::string image = MakeImage("a.jpg");
  Img2PdfTask task(std::list<std::string>{image, image});
  task.SetOutputPath(directory_.MakeDir("out"));
  task.SetMergeAfter(false);
  task.Execute();
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("a.pdf"));
}

TEST_F(Img2PdfTaskTest, NumberedNamesDoNotTakeThePlaceOfOthersEither) {
  directory_.MakeDir("more");
  Img2PdfTask task(std::list<std::string>{MakeImage("a.jpg"), MakeImage("more/a.jpg"),
                                          MakeImage("a-2.jpg"), MakeImage("a-3.jpg"),
                                          MakeImage("a.jpeg")});
  task.SetOutputPath(directory_.MakeDir("out"));
  task.SetMergeAfter(false);
  task.Execute();
  const std::string out = Stored(Path("out")) + "\\";
  EXPECT_THAT(task.GetWrittenFiles(), ElementsAre(out + "a.pdf", out + "a-2.pdf", out + "a-2-2.pdf",
                                                  out + "a-3.pdf", out + "a-4.pdf"));
}

TEST_F(Img2PdfTaskTest, PagesTakeTheSizeOfTheImage) {
  Img2PdfTask task = TaskFor(MakeImage("a.jpg"));
  task.SetOrientation(Img2PdfOrientation::Img2PdfLandscape);  // of no effect
  task.Execute();
  EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(12, 6));
}

TEST_F(Img2PdfTaskTest, PagesHaveFixedSizes) {
  Img2PdfTask task = TaskFor(MakeImage("a.jpg"));
  task.SetPageSize(Img2PdfPageSize::Img2PdfPageA4);
  task.Execute();
  EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(595, 842));
  task.SetPageSize(Img2PdfPageSize::Img2PdfPageLetter);
  task.Execute();
  EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(612, 792));
}

TEST_F(Img2PdfTaskTest, LandscapeIsA4Landscape) {
  Img2PdfTask task = TaskFor(MakeImage("a.jpg"));
  task.SetOrientation(Img2PdfOrientation::Img2PdfLandscape);
  for (const auto size : {Img2PdfPageSize::Img2PdfPageA4, Img2PdfPageSize::Img2PdfPageLetter}) {
    task.SetPageSize(size);
    task.Execute();
    EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(842, 595));
  }
}

TEST_F(Img2PdfTaskTest, UnknownPageSizeLeavesTheEnginesOwn) {
  Img2PdfTask task = TaskFor(MakeImage("a.jpg"));
  task.SetPageSize(static_cast<Img2PdfPageSize>(7));
  EXPECT_EQ(task.GetPageSize(), static_cast<Img2PdfPageSize>(7));
  task.Execute();
  EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(595, 842));
}

TEST_F(Img2PdfTaskTest, LandscapeHoldsForAnUnknownPageSizeToo) {
  Img2PdfTask task = TaskFor(MakeImage("a.jpg"));
  task.SetPageSize(static_cast<Img2PdfPageSize>(7));
  task.SetOrientation(Img2PdfOrientation::Img2PdfLandscape);
  task.Execute();
  EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(842, 595));
}

TEST_F(Img2PdfTaskTest, EveryOtherOrientationIsPortrait) {
  Img2PdfTask task = TaskFor(MakeImage("a.jpg"));
  task.SetPageSize(Img2PdfPageSize::Img2PdfPageA4);
  for (const int orientation : {-1, 2}) {
    task.SetOrientation(static_cast<Img2PdfOrientation>(orientation));
    EXPECT_EQ(static_cast<int>(task.GetOrientation()), orientation);
    task.Execute();
    EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(595, 842));
  }
}

// An image of twice its height in width takes the width of the page, in the middle of its height.
TEST_F(Img2PdfTaskTest, ImagesFillPagesOfAFixedSizeInTheirMiddle) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  Img2PdfTask task = TaskFor(MakeImage("a.jpg"));
  const auto expect_at = [&](const testing::Box& expected) {
    task.Execute();
    const testing::Picture page = testing::Pictures(Path("out/a.pdf"), 72).at(0);
    const auto box = testing::BoxOf(page, 72, [&](int x, int y) { return page.At(x, y)[0] < 250; });
    ASSERT_TRUE(box.has_value());
    EXPECT_NEAR(box->left, expected.left, 1);
    EXPECT_NEAR(box->right, expected.right, 1);
    EXPECT_NEAR(box->bottom, expected.bottom, 1);
    EXPECT_NEAR(box->top, expected.top, 1);
  };
  task.SetPageSize(Img2PdfPageSize::Img2PdfPageA4);
  expect_at({0, 421 - 148.75, 595, 421 + 148.75});
  task.SetMargin(50);
  expect_at({50, 421 - 123.75, 545, 421 + 123.75});
  task.SetImgRotation(Img2PdfImgRotation::Img2PdfRot90);
  expect_at({297.5 - 185.5, 50, 297.5 + 185.5, 792});
}

TEST_F(Img2PdfTaskTest, RotationTurnsPagesThatFit) {
  Img2PdfTask task = TaskFor(MakeImage("a.jpg"));
  task.SetImgRotation(Img2PdfImgRotation::Img2PdfRot180);
  task.Execute();
  EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(12, 6));
  for (const auto turn : {Img2PdfImgRotation::Img2PdfRot90, Img2PdfImgRotation::Img2PdfRot270}) {
    task.SetImgRotation(turn);
    EXPECT_EQ(task.GetImgRotation(), turn);
    task.Execute();
    EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(6, 12));
  }
}

// Of an image whose left half is black.
TEST_F(Img2PdfTaskTest, RotationTurnsTheImageWithItsPage) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  WriteBytes(Path("a.jpg"), testing::MakeJpeg(16, 8, {0, 0, 0}, {255, 255, 255}));
  Img2PdfTask task = TaskFor(Path("a.jpg"));
  const auto is_black = [this](bool right, bool bottom) {
    const testing::Picture page = testing::Pictures(Path("out/a.pdf"), 96).at(0);
    const int x = right ? page.width - 3 : 2;
    const int y = bottom ? page.height - 3 : 2;
    return page.At(x, y)[0] < 128;
  };
  // The corners that are black: upper left, upper right, lower left, lower right.
  const auto expect_black = [&](const std::vector<bool>& corners) {
    task.Execute();
    EXPECT_EQ((std::vector<bool>{is_black(false, false), is_black(true, false),
                                 is_black(false, true), is_black(true, true)}),
              corners);
  };
  expect_black({true, false, true, false});
  task.SetImgRotation(Img2PdfImgRotation::Img2PdfRot180);
  expect_black({false, true, false, true});
  task.SetImgRotation(Img2PdfImgRotation::Img2PdfRot90);
  expect_black({true, true, false, false});
  task.SetImgRotation(Img2PdfImgRotation::Img2PdfRot270);
  expect_black({false, false, true, true});
}

TEST_F(Img2PdfTaskTest, NoRotationCarriesTheOneBeforeOver) {
  Img2PdfTask task = TaskFor(MakeImage("a.jpg"));
  task.SetImgRotation(Img2PdfImgRotation::Img2PdfRot90);
  task.SetImgRotation(Img2PdfImgRotation::Img2PdfRotNone);
  EXPECT_EQ(task.GetImgRotation(), Img2PdfImgRotation::Img2PdfRotNone);
  task.Execute();
  EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(6, 12));
}

TEST_F(Img2PdfTaskTest, AnUnknownRotationCarriesTheOneBeforeOver) {
  Img2PdfTask task = TaskFor(MakeImage("a.jpg"));
  task.SetImgRotation(Img2PdfImgRotation::Img2PdfRot270);
  task.SetImgRotation(static_cast<Img2PdfImgRotation>(9));
  EXPECT_EQ(static_cast<int>(task.GetImgRotation()), 9);
  task.Execute();
  EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(6, 12));
}

TEST_F(Img2PdfTaskTest, ImagesAreTakenAsTheyAreStored) {
  Img2PdfTask task = TaskFor(MakeImage("a.jpg", 3, ExifJpegSegment(6)));
  EXPECT_FALSE(task.GetMakeUpright());
  task.Execute();
  EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(12, 6));
  task.SetImgRotation(Img2PdfImgRotation::Img2PdfRot90);
  task.Execute();
  EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(6, 12));
}

TEST_F(Img2PdfTaskTest, RotationAddsToWhatTheFileNeeds) {
  Img2PdfTask task = TaskFor(MakeImage("a.jpg", 3, ExifJpegSegment(6)));
  task.SetMakeUpright(true);
  EXPECT_TRUE(task.GetMakeUpright());
  task.Execute();
  EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(6, 12));
  task.SetImgRotation(Img2PdfImgRotation::Img2PdfRot90);
  task.Execute();
  EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(12, 6));
}

TEST_F(Img2PdfTaskTest, MarginsSurroundTheImage) {
  Img2PdfTask task = TaskFor(MakeImage("a.jpg"));
  task.SetMargin(10.5F);
  EXPECT_EQ(task.GetMargin(), 10.5F);
  task.Execute();
  EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(33, 27));
  task.SetMargin(-1);
  task.Execute();
  EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(10, 4));
  task.SetMargin(std::numeric_limits<float>::quiet_NaN());  // the engine refuses it
  task.Execute();
  EXPECT_THAT(SizeOf("out/a.pdf"), ElementsAre(12, 6));
}

TEST_F(Img2PdfTaskTest, ProtectsWithThePassword) {
  Img2PdfTask task(std::list<std::string>{MakeImage("a.jpg"), MakeImage("b.jpg")});
  task.SetOutPassword("secret");
  task.Execute();
  EXPECT_TRUE(PdfDoc::HasPassword(Path("_merged_images.pdf")));
  EXPECT_EQ(PagesOf("_merged_images.pdf", "secret"), 2);
  task.SetMergeAfter(false);
  task.Execute();
  EXPECT_TRUE(PdfDoc::HasPassword(Path("a.jpg.pdf")));
}

TEST_F(Img2PdfTaskTest, TheOutputPasswordIsTheOwnersTooAndAllowsEverything) {
  TARNIX_NEED_PROGRAM("qpdf");
  Img2PdfTask task = TaskFor(MakeImage("a.jpg"));
  task.SetOutPassword("secret");
  task.Execute();
  const std::string encryption = testing::QpdfEncryption(Path("out/a.pdf"), "secret");
  EXPECT_THAT(encryption, HasSubstr("P = -1\n"));
  EXPECT_THAT(encryption, HasSubstr("Supplied password is owner password"));
  EXPECT_THAT(encryption, HasSubstr("Supplied password is user password"));
}

TEST_F(Img2PdfTaskTest, FirstFailureEndsIt) {
  const std::string a = MakeImage("a.jpg");
  const std::string text = Path("b.jpg");
  WriteBytes(text, "not an image at all");
  Img2PdfTask task(std::list<std::string>{a, text, MakeImage("c.jpg")});
  EXPECT_EQ(
      FailureOf([&] { task.Execute(); }),
      (Failure{PdfExceptionCode::EngineError,
               "Error 0x00000004 while creating PDF document from img [" + Stored(text) + "]", 4}));
  EXPECT_THAT(directory_.Names(), ElementsAre("a.jpg", "a.jpg.pdf", "b.jpg", "c.jpg"));
  try {
    task.SetInputImage(text);
    task.Execute();
    FAIL();
  } catch (PdfException& error) {
    EXPECT_EQ(error.GetErrorCode(), 4);
  }
}

TEST_F(Img2PdfTaskTest, FailsWithoutItsOutputDirectory) {
  const std::string image = MakeImage("a.jpg");
  Img2PdfTask task(image);
  task.SetOutputPath(Path("missing"));
  EXPECT_EQ(
      FailureOf([&] { task.Execute(); }),
      (Failure{PdfExceptionCode::EngineError,
               "Error 0x0000000E while creating PDF document from img [" + Stored(image) + "]",
               14}));
}

TEST_F(Img2PdfTaskTest, EmptyPathsFail) {
  Img2PdfTask task;
  task.GetInputImages().push_back("");
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            (Failure{PdfExceptionCode::FileNotFound,
                     "Could not convert image to PDF, empty image path"}));
}

TEST_F(Img2PdfTaskTest, ReplacesDocumentsOfTheSameName) {
  Img2PdfTask task = TaskFor(MakeImage("a.jpg"));
  WriteBytes(Path("out/a.pdf"), "old");
  task.Execute();
  EXPECT_EQ(QpdfComplaints(Path("out/a.pdf")), "");
}

TEST_F(Img2PdfTaskTest, TellsHowFarItIs) {
  const std::list<std::string> images = {MakeImage("a.jpg"), MakeImage("b.jpg")};
  for (const bool merges : {true, false}) {
    Img2PdfTask task(images);
    task.SetMergeAfter(merges);
    std::string told;
    task.SetProgress([&](const std::string& job, std::int64_t done, std::int64_t of) {
      told = job + " " + std::to_string(done) + "/" + std::to_string(of);
      return true;
    });
    task.Execute();
    EXPECT_EQ(told, "images to PDF 2/2");
  }
}

TEST_F(Img2PdfTaskTest, IsAValue) {
  Img2PdfTask task(MakeImage("a.jpg"));
  task.SetOutPrefix("x");
  task.SetMargin(2);
  task.SetOutPdfName("y.pdf");
  task.SetMergeAfter(false);
  task.SetPageSize(Img2PdfPageSize::Img2PdfPageLetter);
  task.SetOrientation(Img2PdfOrientation::Img2PdfLandscape);
  task.SetImgRotation(Img2PdfImgRotation::Img2PdfRot270);
  task.SetOutputPath(directory_.MakeDir("out"));
  task.SetOutPassword("pw");
  const auto expect_alike = [&](Img2PdfTask copy) {
    EXPECT_EQ(copy.GetInputImages(), task.GetInputImages());
    EXPECT_EQ(copy.GetImagesNum(), 1);
    EXPECT_EQ(copy.GetMargin(), 2);
    EXPECT_EQ(copy.GetOutPrefix(), "x");
    EXPECT_EQ(copy.GetOutPdfName(), "y.pdf");
    EXPECT_EQ(copy.GetPageSize(), Img2PdfPageSize::Img2PdfPageLetter);
    EXPECT_EQ(copy.GetOrientation(), Img2PdfOrientation::Img2PdfLandscape);
    EXPECT_EQ(copy.GetImgRotation(), Img2PdfImgRotation::Img2PdfRot270);
    EXPECT_EQ(copy.GetOutputPath(), task.GetOutputPath());
    copy.Execute();
    EXPECT_THAT(directory_.Names("out"), ElementsAre("a.pdf"));
    EXPECT_EQ(PagesOf("out/a.pdf", "pw"), 1);
    std::filesystem::remove(Path("out/a.pdf"));
  };
  Img2PdfTask other;
  other = task;
  expect_alike(task);
  expect_alike(other);
  other = Img2PdfTask();
  EXPECT_EQ(other.GetImagesNum(), 0);
  other = Img2PdfTask(task);
  expect_alike(other);
  const Img2PdfTask moved = std::move(other);
  expect_alike(moved);
}

TEST_F(Img2PdfTaskTest, TellsWhichFilesAreCut) {
  testing::WriteBytes(Path("whole.pgm"), "P5 2 2 255\nabcd");
  testing::WriteBytes(Path("cut.pgm"), "P5 2 2 255\nabc");
  for (const bool merge_after : {true, false}) {
    Img2PdfTask task(std::list<std::string>{Path("whole.pgm"), Path("cut.pgm")});
    task.SetMergeAfter(merge_after);
    task.Execute();
    ASSERT_EQ(task.GetReport().GetEntries().size(), 1U);
    const PdfReportEntry& entry = task.GetReport().GetEntries().front();
    EXPECT_EQ(entry.kind, PdfReportKind::Damage);
    EXPECT_EQ(entry.outcome, PdfReportOutcome::Dropped);
    EXPECT_EQ(entry.source, testing::Backslashes(Path("cut.pgm")));
    EXPECT_EQ(entry.reason, "part of a picture cannot be read and is empty");
    EXPECT_EQ(entry.count, 1);
    EXPECT_EQ(entry.page, 0);
  }
}

}  // namespace
}  // namespace TarnixTools
