// What compressing says, and what it leaves, when a document does not open or an output cannot be made.
#include <filesystem>

#include "conversions/CompressFixture.h"
#include "support/FileSizeLimit.h"
#include "support/RawPdf.h"
#include "support/TestScene.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::Exists;
using testing::Failure;
using testing::FailureOf;
using ::testing::IsEmpty;
using testing::RawPdf;
using testing::ReadBytes;
using testing::TestPdf;
using testing::WriteBytes;

constexpr auto kEngineError = PdfExceptionCode::EngineError;

using CompressFailuresTest = CompressFixture;

TEST_F(CompressFailuresTest, NeedsTheDocumentsPassword) {
  MakePdf("plain.pdf", 1);
  PdfDoc(Path("plain.pdf"), "", true).Lock("pw", Path("a.pdf"));
  for (const char* const password : {"", "wrong"}) {
    PdfCompressTask task = TaskFor("a.pdf", password);
    EXPECT_EQ(FailureOf([&] { task.Execute(); }),
              (Failure{kEngineError,
                       "Could not compress document [" + Backslashes(Path("a.pdf")) +
                           "], error [0x00000011]",
                       17}));
    EXPECT_EQ(task.GetLastError(), 17);
    EXPECT_EQ(task.GetCompressRatio(), 0.0F);
  }
  EXPECT_THAT(directory_.Names("out"), IsEmpty());
  TaskFor("a.pdf", "pw").Execute();
  EXPECT_FALSE(Doc("out/compressed_a.pdf").IsEncrypted());
}

TEST_F(CompressFailuresTest, TellsWhyADocumentDoesNotOpen) {
  WriteBytes(Path("a.pdf"), "no document");
  const auto text = [&](const char* code) {
    return "Could not compress document [" + Backslashes(Path("a.pdf")) + "], error [" + code + "]";
  };
  PdfCompressTask task = TaskFor("a.pdf");
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), (Failure{kEngineError, text("0x00000004"), 4}));
  std::filesystem::remove(Path("a.pdf"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), (Failure{kEngineError, text("0x0000000D"), 13}));
  EXPECT_EQ(task.GetLastError(), 13);
}

TEST_F(CompressFailuresTest, TellsThatTheOutputCannotBeMade) {
  MakePdf("a.pdf", 1);
  PdfCompressTask task = TaskFor("a.pdf");
  task.SetOutputPath(Path("missing"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            (Failure{kEngineError,
                     "Could not save compressed document [" + Backslashes(Path("missing//")) +
                         "compressed_a.pdf], error [0x0000000E]",
                     14}));
  EXPECT_EQ(task.GetLastError(), 14);
  EXPECT_EQ(task.GetCompressRatio(), 0.0F);
  task.SetOutputPath(Path("out"));
  task.Execute();
  EXPECT_EQ(task.GetLastError(), 0);
}

TEST_F(CompressFailuresTest, TellsThatTheDiskIsFull) {
  if (!Exists("/dev/full")) {
    GTEST_SKIP();
  }
  MakePdf("a.pdf", 1);
  PdfCompressTask task = TaskFor("a.pdf");
  task.SetOutputPath("/dev/");
  task.SetOutPdfName("full");
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            (Failure{kEngineError,
                     "Could not save compressed document [\\dev\\\\full], error [0x00000003]", 3}));
}

// With an image, whose data is written at length.
TEST_F(CompressFailuresTest, LeavesNothingOnAFullDisk) {
  const std::string samples = testing::SceneSamples({400, 400}, 3, 8);
  WriteBytes(Path("a.pdf"),
             RawPdf()
                 .Pages(1, "/MediaBox[0 0 99 99]/Contents 9 0 R/Resources<</XObject<</I 10 0 R>>>>")
                 .Stream(9, "", "99 0 0 99 0 0 cm /I Do")
                 .Stream(10,
                         "/Type/XObject/Subtype/Image/ColorSpace/DeviceRGB/BitsPerComponent 8"
                         "/Width 400/Height 400",
                         samples)
                 .Table());
  PdfCompressTask task = TaskFor("a.pdf");
  {
    const testing::FileSizeLimit limit(2000);
    EXPECT_EQ(FailureOf([&] { task.Execute(); }).engine_code, 3);
  }
  EXPECT_THAT(directory_.Names("out"), IsEmpty());
  EXPECT_THAT(task.GetImages(), IsEmpty());
  task.Execute();
  EXPECT_GT(ReadBytes(Path("out/compressed_a.pdf")).size(), 2000U);
}

TEST_F(CompressFailuresTest, EndsWithTheFirstFailure) {
  const std::string sound = TestPdf().Pages(40).Bytes();
  WriteBytes(Path("a.pdf"), sound.substr(0, sound.size() - 60));  // reported
  WriteBytes(Path("b.pdf"), "no document");
  MakePdf("c.pdf", 1);
  PdfCompressTask task({Doc("a.pdf"), Doc("b.pdf"), Doc("c.pdf")});
  task.SetOutputPath(directory_.MakeDir("out"));
  EXPECT_THROW(task.Execute(), PdfException);
  EXPECT_THAT(directory_.Names("out"), ElementsAre("compressed_a.pdf"));
  EXPECT_EQ(task.GetLastError(), 4);
  EXPECT_FLOAT_EQ(task.GetCompressRatio(), PercentOf("a.pdf", "out/compressed_a.pdf"));
  EXPECT_THAT(task.GetReport().GetEntries(), IsEmpty());
}

// What it was before a failure, it is after it.
TEST_F(CompressFailuresTest, KeepsItsRatioWhenADocumentFails) {
  MakePdf("a.pdf", 3);
  PdfCompressTask task = TaskFor("a.pdf");
  task.Execute();
  const float ratio = task.GetCompressRatio();
  EXPECT_FLOAT_EQ(ratio, PercentOf("a.pdf", "out/compressed_a.pdf"));
  task.SetOutputPath(Path("missing"));
  EXPECT_THROW(task.Execute(), PdfException);
  EXPECT_EQ(task.GetLastError(), 14);
  task.SetPdfDocs({PdfDoc(Path("missing.pdf"), "", false)});
  EXPECT_THROW(task.Execute(), PdfException);
  EXPECT_EQ(task.GetLastError(), 13);
  EXPECT_EQ(task.GetCompressRatio(), ratio);
}

}  // namespace
}  // namespace TarnixTools
