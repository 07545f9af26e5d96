#include <random>

#include "conversions/CompressFixture.h"
#include "support/NoThreads.h"
#include "support/RawPdf.h"
#include "support/TestScene.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::QpdfComplaints;
using testing::RawPdf;
using testing::ReadBytes;
using testing::TestPdf;
using testing::WriteBytes;

class PdfCompressTaskTest : public CompressFixture {
 protected:
  // A document with so many bytes that nothing refers to, and some that cannot be made fewer.
  static std::string Padded(std::size_t padding) {
    std::mt19937 random(1);
    std::string data(20'000, '\0');
    for (char& byte : data) {
      byte = static_cast<char>(random());
    }
    RawPdf file;
    file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
    file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
    file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Data 4 0 R>>");
    file.Stream(4, "", data);
    file.Stream(5, "", std::string(padding, 'x'));
    return file.Table();
  }

  // A document that becomes smaller to this percentage.
  void MakeOfRatio(const std::string& name, std::size_t percent) const {
    WriteBytes(Path("sample.pdf"), Padded(100'000));
    PdfCompressTask task(Doc("sample.pdf"));
    task.SetOutputPath(directory_.MakeDir("samples"));
    task.Execute();
    const std::size_t size = ReadBytes(Path("samples/compressed_sample.pdf")).size();
    const std::size_t wanted = size * 100 / percent;
    std::size_t padding = 1000;
    for (int i = 0; i < 3; ++i) {  // its length has digits, too
      padding = wanted - (Padded(padding).size() - padding);
    }
    WriteBytes(Path(name), Padded(padding));
  }
};

TEST_F(PdfCompressTaskTest, HasDefaults) {
  MakePdf("a.pdf", 1);
  PdfCompressTask task(Doc("a.pdf"));
  EXPECT_EQ(task.GetPdfDocsNum(), 1);
  EXPECT_EQ(task.GetCompressLevel(), PdfCompressLevel::Recommended);
  EXPECT_EQ(task.GetOutPrefix(), "compressed");
  EXPECT_EQ(task.GetOutPdfName(), "");
  EXPECT_EQ(task.GetCompressRatio(), 0.0F);
  EXPECT_EQ(task.GetLastError(), 0);
  EXPECT_THAT(task.GetImages(), IsEmpty());
  EXPECT_EQ(PdfCompressTask({Doc("a.pdf")}, PdfCompressLevel::Extreme).GetCompressLevel(),
            PdfCompressLevel::Extreme);
  EXPECT_EQ(PdfCompressTask({Doc("a.pdf")}, PdfCompressLevel::Extreme).GetOutPrefix(),
            "compressed");
  EXPECT_EQ(PdfCompressTask().GetCompressLevel(), PdfCompressLevel::Recommended);
  EXPECT_EQ(PdfCompressTask().GetOutPrefix(), "compressed");
  PdfCompressTask of_two(std::list<PdfDoc>{Doc("a.pdf"), Doc("a.pdf")});
  EXPECT_EQ(of_two.GetCompressLevel(), PdfCompressLevel::Recommended);
  EXPECT_EQ(of_two.GetOutPrefix(), "compressed");
  EXPECT_EQ(of_two.GetPdfDocsNum(), 2);
}

TEST_F(PdfCompressTaskTest, NeedsADocument) {
  EXPECT_EQ(FailureOf([] { PdfCompressTask().Execute(); }),
            (Failure{PdfExceptionCode::InvalidParameter, "None file defined at compression task"}));
}

TEST_F(PdfCompressTaskTest, RejectsUnknownLevels) {
  PdfCompressTask task;
  task.SetCompressLevel(PdfCompressLevel::Low);
  const auto failure_of = [](int level) {
    return Failure{PdfExceptionCode::InvalidParameter, "Invalid compression level requested [" +
                                                           std::to_string(level) +
                                                           "] (expected range [0-2])"};
  };
  for (const int level : {3, -1}) {
    const auto value = static_cast<PdfCompressLevel>(level);
    EXPECT_EQ(FailureOf([&] { task.SetCompressLevel(value); }), failure_of(level));
    EXPECT_EQ(FailureOf([&] { PdfCompressTask({}, value); }), failure_of(level));
    EXPECT_EQ(task.GetCompressLevel(), PdfCompressLevel::Low);
  }
}

TEST_F(PdfCompressTaskTest, WritesASmallerDocumentAtEveryLevel) {
  TARNIX_NEED_PROGRAM("qpdf");
  TARNIX_NEED_PROGRAM("pdftotext");
  MakePdf("a.pdf", 30);
  for (const auto level :
       {PdfCompressLevel::Low, PdfCompressLevel::Recommended, PdfCompressLevel::Extreme}) {
    PdfCompressTask task = TaskFor("a.pdf");
    task.SetCompressLevel(level);
    task.Execute();
    EXPECT_EQ(task.GetLastError(), 0);
    EXPECT_LT(task.GetCompressRatio(), 90);
    EXPECT_EQ(QpdfComplaints(Path("out/compressed_a.pdf")), "");
    EXPECT_EQ(Texts("out/compressed_a.pdf"), Labels(1, 30));
    EXPECT_THAT(task.GetReport().GetEntries(), IsEmpty());
  }
  EXPECT_THAT(directory_.Names("out"), ElementsAre("compressed_a.pdf"));
}

TEST_F(PdfCompressTaskTest, WritesBesideTheFirstDocument) {
  directory_.MakeDir("x");
  directory_.MakeDir("y");
  MakePdf("x/a.pdf", 1);
  MakePdf("y/b.pdf", 2);
  PdfCompressTask task({Doc("x/a.pdf"), Doc("y/b.pdf")});
  task.Execute();
  EXPECT_THAT(directory_.Names("x"), ElementsAre("a.pdf", "compressed_a.pdf", "compressed_b.pdf"));
  EXPECT_THAT(directory_.Names("y"), ElementsAre("b.pdf"));
  EXPECT_EQ(task.GetOutputPath(), Backslashes(Path("x/")));
}

TEST_F(PdfCompressTaskTest, NamesEveryOutputAlike) {
  MakePdf("a.pdf", 1);
  MakePdf("b.pdf", 2);
  PdfCompressTask task({Doc("a.pdf"), Doc("b.pdf")});
  task.SetOutputPath(directory_.MakeDir("out"));
  task.SetOutPdfName("same");
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("same"));
  EXPECT_EQ(Doc("out/same").GetPagesNum(), 2);
}

TEST_F(PdfCompressTaskTest, NamesOutputsByTheirPrefix) {
  MakePdf("a.b.PDF", 1);
  PdfCompressTask task = TaskFor("a.b.PDF");
  task.SetOutPrefix("");
  EXPECT_EQ(task.GetOutPrefix(), "compressed");
  task.SetOutPdfName("named");
  task.SetOutPdfName("");
  task.Execute();
  task.SetOutPrefix("p");
  task.Execute();
  task.GetOutPrefix().clear();
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("a.b.PDF", "compressed_a.b.PDF", "p_a.b.PDF"));
}

TEST_F(PdfCompressTaskTest, KeepsARunningRatio) {
  MakeOfRatio("40.pdf", 40);
  MakeOfRatio("60.pdf", 60);
  MakeOfRatio("80.pdf", 80);
  PdfCompressTask task = TaskFor("40.pdf");
  task.Execute();
  EXPECT_NEAR(task.GetCompressRatio(), 40, 0.01);
  task.SetPdfDocs({Doc("60.pdf")});
  task.Execute();
  EXPECT_NEAR(task.GetCompressRatio(), 50, 0.01);
  PdfCompressTask copy = task;
  copy.SetPdfDocs({Doc("80.pdf")});
  copy.Execute();
  EXPECT_NEAR(copy.GetCompressRatio(), 65, 0.01);
  PdfCompressTask of_all({Doc("40.pdf"), Doc("60.pdf"), Doc("80.pdf")});
  of_all.SetOutputPath(Path("out"));
  of_all.Execute();
  EXPECT_EQ(of_all.GetCompressRatio(), copy.GetCompressRatio());
}

TEST_F(PdfCompressTaskTest, ProtectsWithTheOutputPassword) {
  TARNIX_NEED_PROGRAM("qpdf");
  MakePdf("plain.pdf", 3);
  PdfDoc(Path("plain.pdf"), "", true).Lock("in", Path("a.pdf"));
  PdfCompressTask task = TaskFor("a.pdf", "in");
  task.SetOutPassword("\xC3\xB6ut");
  task.Execute();
  EXPECT_FALSE(PdfDoc::IsValidPassword(Path("out/compressed_a.pdf"), "in"));
  const std::string encryption =
      testing::QpdfEncryption(Path("out/compressed_a.pdf"), "\xC3\xB6ut");
  EXPECT_THAT(encryption, HasSubstr("P = -1\n"));
  EXPECT_THAT(encryption, HasSubstr("Supplied password is owner password"));
  EXPECT_THAT(encryption, HasSubstr("Supplied password is user password"));
  EXPECT_EQ(QpdfComplaints(Path("out/compressed_a.pdf"), "\xC3\xB6ut"), "");
  EXPECT_EQ(Doc("out/compressed_a.pdf", "\xC3\xB6ut").GetPagesNum(), 3);
}

TEST_F(PdfCompressTaskTest, WritesOverItsInput) {
  TARNIX_NEED_PROGRAM("qpdf");
  MakePdf("a.pdf", 30);
  const std::size_t before = ReadBytes(Path("a.pdf")).size();
  PdfCompressTask task(Doc("a.pdf"));
  task.SetOutPdfName("a.pdf");
  task.Execute();
  EXPECT_THAT(directory_.Names(), ElementsAre("a.pdf"));
  const std::size_t after = ReadBytes(Path("a.pdf")).size();
  EXPECT_LT(after, before);
  EXPECT_NEAR(task.GetCompressRatio(),
              100.0 * static_cast<double>(after) / static_cast<double>(before), 0.01);
  EXPECT_EQ(QpdfComplaints(Path("a.pdf")), "");
}

TEST_F(PdfCompressTaskTest, KeepsADocumentThatCannotBecomeSmaller) {
  WriteBytes(Path("a.pdf"), RawPdf("%PDF-1.4\n").Pages(1).Table());
  PdfCompressTask task = TaskFor("a.pdf");
  task.Execute();
  EXPECT_EQ(ReadBytes(Path("out/compressed_a.pdf")), ReadBytes(Path("a.pdf")));
  EXPECT_EQ(task.GetCompressRatio(), 100.0F);
}

TEST_F(PdfCompressTaskTest, TellsThatAnOutputHasGrown) {
  MakePdf("a.pdf", 1);
  PdfCompressTask task = TaskFor("a.pdf");
  task.SetOutPassword("pw");
  task.Execute();
  EXPECT_GT(task.GetCompressRatio(), 100);
  EXPECT_FLOAT_EQ(task.GetCompressRatio(), PercentOf("a.pdf", "out/compressed_a.pdf"));
}

TEST_F(PdfCompressTaskTest, FindsNothingMoreToDoInItsOutput) {
  MakePdf("a.pdf", 30);
  PdfCompressTask task = TaskFor("a.pdf");
  task.Execute();
  TaskFor("out/compressed_a.pdf").Execute();
  EXPECT_EQ(ReadBytes(Path("out/compressed_compressed_a.pdf")),
            ReadBytes(Path("out/compressed_a.pdf")));
}

TEST_F(PdfCompressTaskTest, WritesTheSameWithoutAThread) {
  WriteBytes(Path("a.pdf"),
             RawPdf()
                 .Pages(1, "/MediaBox[0 0 99 99]/Contents 9 0 R/Resources<</XObject<</I 10 0 R>>>>")
                 .Stream(9, "", "99 0 0 99 0 0 cm /I Do")
                 .Stream(10,
                         "/Type/XObject/Subtype/Image/ColorSpace/DeviceRGB/BitsPerComponent 8"
                         "/Width 100/Height 100",
                         testing::SceneSamples({100, 100}, 3, 8))
                 .Table());
  PdfCompressTask task = TaskFor("a.pdf");
  task.Execute();
  task.SetOutPdfName("b.pdf");
  const testing::NoThreads none;
  task.Execute();
  EXPECT_TRUE(ReadBytes(Path("out/b.pdf")) == ReadBytes(Path("out/compressed_a.pdf")));
}

TEST_F(PdfCompressTaskTest, KeepsWhatTheDocumentSaysOfItself) {
  TestPdf().Pages(30).InfoEntry("/Author (Ada)").Write(Path("a.pdf"));
  TaskFor("a.pdf").Execute();
  EXPECT_EQ(Doc("out/compressed_a.pdf").GetMetaData(PdfMetadataParam::Author), "Ada");
}

TEST_F(PdfCompressTaskTest, IsAValue) {
  PdfCompressTask task;
  task.SetCompressLevel(PdfCompressLevel::Extreme);
  task.SetOutPdfName("x");
  PdfCompressTask copy = task;
  PdfCompressTask other;
  other = copy;
  EXPECT_EQ(other.GetCompressLevel(), PdfCompressLevel::Extreme);
  const PdfCompressTask moved(std::move(copy));
  EXPECT_EQ(moved.GetCompressLevel(), PdfCompressLevel::Extreme);
  other = PdfCompressTask();
  EXPECT_EQ(other.GetOutPdfName(), "");
}

TEST_F(PdfCompressTaskTest, HasItsResultsAndNamesInCopiesToo) {
  MakePdf("a.pdf", 1);
  PdfCompressTask task = TaskFor("a.pdf");
  task.Execute();
  task.SetPdfDocs({PdfDoc(Path("missing.pdf"), "", false)});
  EXPECT_THROW(task.Execute(), PdfException);
  task.SetOutPrefix("p");
  task.SetOutPdfName("n");
  const auto expect_alike = [&](PdfCompressTask copy) {
    EXPECT_EQ(copy.GetLastError(), 13);
    EXPECT_EQ(copy.GetCompressRatio(), task.GetCompressRatio());
    EXPECT_EQ(copy.GetOutPrefix(), "p");
    EXPECT_EQ(copy.GetOutPdfName(), "n");
    EXPECT_EQ(copy.GetOutputPath(), task.GetOutputPath());
    EXPECT_EQ(copy.GetPdfDocsNum(), 1);
  };
  PdfCompressTask other;
  other = task;
  expect_alike(task);
  expect_alike(other);
  other = PdfCompressTask();
  other = PdfCompressTask(task);
  expect_alike(other);
  expect_alike(PdfCompressTask(PdfCompressTask(task)));
}

}  // namespace
}  // namespace TarnixTools
