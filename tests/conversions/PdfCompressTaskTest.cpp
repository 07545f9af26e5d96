#include <filesystem>
#include <random>

#include "PdfCompressTask.h"
#include "support/DocumentTest.h"
#include "support/FileSizeLimit.h"
#include "support/NoThreads.h"
#include "support/RawPdf.h"
#include "support/TestFont.h"
#include "support/TestPackets.h"
#include "support/TestScene.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::Exists;
using testing::Failure;
using testing::FailureOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using testing::QpdfComplaints;
using testing::RawPdf;
using testing::ReadBytes;
using testing::TestPdf;
using testing::WriteBytes;

constexpr auto kEngineError = PdfExceptionCode::EngineError;

class PdfCompressTaskTest : public testing::DocumentTest {
 protected:
  PdfCompressTask TaskFor(const std::string& name, const std::string& password = "") const {
    PdfCompressTask task(Doc(name, password));
    task.SetOutputPath(directory_.MakeDir("out"));
    return task;
  }

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

  float PercentOf(const std::string& input, const std::string& output) const {
    return static_cast<float>(ReadBytes(Path(output)).size()) /
           static_cast<float>(ReadBytes(Path(input)).size()) * 100;
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

// A form that is drawn twice as two objects, one that is not drawn, and a font with more than it shows.
TEST_F(PdfCompressTaskTest, LeavesOutWhatNobodySeesAtEveryLevel) {
  const std::string program = testing::TestFont().Bytes();
  RawPdf file;
  file.Pages(1,
             "/Contents 10 0 R/Resources<</XObject<</A 11 0 R/B 12 0 R/C 13 0 R>>"
             "/Font<</F 14 0 R>>>>")
      .Stream(10, "", "/A Do /B Do BT /F 9 Tf ( ) Tj ET")
      .Stream(11, "/Subtype/Form/BBox[0 0 9 9]/Drawn 1", "0 0 9 9 re f")
      .Stream(12, "/Subtype/Form/BBox[0 0 9 9]/Drawn 1", "0 0 9 9 re f")
      .Stream(13, "/Subtype/Form/BBox[0 0 9 9]/Unused 1", "1 1 9 9 re f")
      .Object(14,
              "<</Type/Font/Subtype/TrueType/BaseFont/Own/Encoding/WinAnsiEncoding"
              "/FontDescriptor 15 0 R>>")
      .Object(15, "<</Type/FontDescriptor/FontName/Own/Flags 32/FontFile2 16 0 R>>")
      .Stream(16, "/Length1 " + std::to_string(program.size()), program)
      .Stream(17, "", std::string(100'000, 'x'));
  WriteBytes(Path("a.pdf"), file.Table());
  for (const auto level :
       {PdfCompressLevel::Low, PdfCompressLevel::Recommended, PdfCompressLevel::Extreme}) {
    PdfCompressTask task = TaskFor("a.pdf");
    task.SetCompressLevel(level);
    task.Execute();
    const std::string bytes = ReadBytes(Path("out/compressed_a.pdf"));
    const std::size_t drawn = bytes.find("/Drawn");
    ASSERT_NE(drawn, std::string::npos);
    EXPECT_EQ(bytes.find("/Drawn", drawn + 1), std::string::npos);
    EXPECT_EQ(bytes.find("/Unused"), std::string::npos);
    EXPECT_EQ(task.GetFonts().count, 1);
    EXPECT_EQ(task.GetFonts().merged, 0);
    EXPECT_EQ(task.GetFonts().removed, 0);
    EXPECT_LT(task.GetFonts().bytes_after, task.GetFonts().bytes_before);
    EXPECT_GT(task.GetFonts().bytes_after, 0);
  }
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

TEST_F(PdfCompressTaskTest, NeedsTheDocumentsPassword) {
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

TEST_F(PdfCompressTaskTest, TellsWhyADocumentDoesNotOpen) {
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

TEST_F(PdfCompressTaskTest, TellsThatTheOutputCannotBeMade) {
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

TEST_F(PdfCompressTaskTest, TellsThatTheDiskIsFull) {
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
TEST_F(PdfCompressTaskTest, LeavesNothingOnAFullDisk) {
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

TEST_F(PdfCompressTaskTest, EndsWithTheFirstFailure) {
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

TEST_F(PdfCompressTaskTest, PutsDamagedDocumentsRightAndSaysSo) {
  TARNIX_NEED_PROGRAM("qpdf");
  const std::string sound = TestPdf().Pages(40).Bytes();
  WriteBytes(Path("a.pdf"), sound.substr(0, sound.size() / 2));
  PdfCompressTask task = TaskFor("a.pdf");
  task.Execute();
  EXPECT_EQ(QpdfComplaints(Path("out/compressed_a.pdf")), "");
  ASSERT_THAT(task.GetReport().GetEntries(), Not(IsEmpty()));
  EXPECT_EQ(task.GetReport().GetEntries()[0].kind, PdfReportKind::Damage);
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

// What it was before a failure, it is after it.
TEST_F(PdfCompressTaskTest, KeepsItsRatioWhenADocumentFails) {
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

TEST_F(PdfCompressTaskTest, ReportsClaimsAndSignatures) {
  const std::string packet = testing::TestPacket(testing::ClaimOf("2"));
  TestPdf()
      .Pages(30)
      .Object("packet", "<</Type/Metadata/Length " + std::to_string(packet.size()) +
                            ">>\nstream\n" + packet + "\nendstream")
      .Object("signature", "<</Type/Sig/Contents<00>>>")
      .Object("field", "<</FT/Sig/T(s)/V {{signature}}>>")
      .CatalogEntry("/Metadata {{packet}}/AcroForm<</Fields[{{field}}]/SigFlags 3>>")
      .Write(Path("a.pdf"));
  PdfCompressTask task = TaskFor("a.pdf");
  task.Execute();
  const std::vector<PdfReportEntry> expected = {
      {PdfReportKind::Signature, PdfReportOutcome::Dropped, 1, 0, "does not hold in another file"},
      {PdfReportKind::PdfAClaim, PdfReportOutcome::Dropped, 1, 0,
       "does not hold for what is written"}};
  EXPECT_EQ(task.GetReport().GetEntries(), expected);
  task.Execute();
  EXPECT_EQ(task.GetReport().GetEntries(), expected);
}

TEST_F(PdfCompressTaskTest, ReportsTagsThatItsLevelLeavesOut) {
  TestPdf()
      .Pages(30)
      .Object("element", "<</Type/StructElem/S/Document/P {{root}}>>")
      .Object("root", "<</Type/StructTreeRoot/K {{element}}>>")
      .CatalogEntry("/StructTreeRoot {{root}}")
      .Write(Path("a.pdf"));
  PdfCompressTask task = TaskFor("a.pdf");
  task.Execute();
  EXPECT_THAT(task.GetReport().GetEntries(), IsEmpty());
  task.SetCompressLevel(PdfCompressLevel::Extreme);
  task.Execute();
  const std::vector<PdfReportEntry> expected = {
      {PdfReportKind::StructureElement, PdfReportOutcome::Dropped, 1, 0, "left out at this level"}};
  EXPECT_EQ(task.GetReport().GetEntries(), expected);
}

// Of two documents: photographs, drawings in few colours, one bit a pixel, transparency, and what
// stays as it was.
TEST_F(PdfCompressTaskTest, CountsImagesAndFontsOfAllDocuments) {
  const testing::SceneSize size{120, 160};
  const std::string sides = "/Width 120/Height 160/BitsPerComponent ";
  const std::string program = testing::TestFont().Bytes();
  std::string flat;
  for (int i = 0; i < 120 * 160; ++i) {
    flat += i / 600 % 2 == 0 ? "\xF0\x10\x10" : "\x20\x80\xF0";
  }
  const auto draw = [](const char* const name) {
    return std::string("q 60 0 0 80 9 9 cm ") + name + " Do Q ";
  };
  const std::string content = draw("/A") + draw("/B") + draw("/C") + draw("/D") + draw("/E");
  const std::string photograph = testing::SceneSamples(size, 3, 8);
  const std::string image = "/Type/XObject/Subtype/Image/ColorSpace/DeviceRGB";
  for (const char* const name : {"a.pdf", "b.pdf"}) {
    RawPdf file;
    file.Pages(1,
               "/MediaBox[0 0 99 99]/Contents 9 0 R/Resources<</XObject<</A 10 0 R/B 11 0 R"
               "/C 12 0 R/D 13 0 R/E 14 0 R>>/Font<</F 16 0 R/G 19 0 R/H 22 0 R>>>>")
        .Stream(9, "", content + "BT /F 9 Tf ( ) Tj /G 9 Tf ( ) Tj /H 9 Tf ( ) Tj ET")
        .Stream(10, image + "/SMask 15 0 R" + sides + "8", photograph)
        .Stream(11, image + sides + "8", flat)
        .Stream(12, "/Type/XObject/Subtype/Image/ColorSpace/DeviceGray" + sides + "1",
                testing::SceneStrokes(size))
        .Stream(13, image + sides + "8/Filter/DCTDecode", "torn")
        .Stream(14, "/Type/XObject/Subtype/Image/ColorSpace[/Pattern]" + sides + "8", "other")
        .Stream(15, "/Type/XObject/Subtype/Image/ColorSpace/DeviceGray" + sides + "8",
                testing::SceneSamples(size, 1, 8));
    // One, the same again, and one that is none.
    for (int font = 16; font <= 22; font += 3) {
      const std::string number = std::to_string(font + 1);
      file.Object(font,
                  "<</Type/Font/Subtype/TrueType/BaseFont/Own/Encoding/WinAnsiEncoding"
                  "/FontDescriptor " +
                      number + " 0 R>>")
          .Object(font + 1, "<</Type/FontDescriptor/FontName/Own/Flags 32/FontFile2 " +
                                std::to_string(font + 2) + " 0 R>>")
          .Stream(font + 2, "", font < 22 ? program : "no font");
    }
    WriteBytes(Path(name), file.Table());
  }
  PdfCompressTask task({Doc("a.pdf")}, PdfCompressLevel::Low);
  task.SetOutputPath(directory_.MakeDir("out"));
  task.Execute();
  const std::vector<PdfCompressedImages> of_one = task.GetImages();
  ASSERT_EQ(of_one.size(), 4U);
  const auto after = [&](std::size_t i) { return of_one.at(i).bytes_after; };
  EXPECT_THAT(
      of_one,
      ElementsAre(PdfCompressedImages{PdfImageClass::Photograph, 3, 57'609, after(0), 0, 1, 1},
                  PdfCompressedImages{PdfImageClass::FlatArt, 1, 57'600, after(1), 0, 0, 0},
                  PdfCompressedImages{PdfImageClass::Bitonal, 1, 2400, after(2), 0, 0, 0},
                  PdfCompressedImages{PdfImageClass::SoftMask, 1, 19'200, after(3), 0, 0, 0}));
  for (const PdfCompressedImages& images : of_one) {
    EXPECT_LT(images.bytes_after, images.bytes_before / 4);
    EXPECT_GT(images.bytes_after, 0);
  }
  const PdfCompressedFonts fonts = task.GetFonts();
  EXPECT_EQ(fonts,
            (PdfCompressedFonts{.count = 3,
                                .merged = 1,
                                .bytes_before = static_cast<std::int64_t>(2 * program.size() + 7),
                                .bytes_after = fonts.bytes_after,
                                .left_unreadable = 1}));
  EXPECT_LT(fonts.bytes_after, fonts.bytes_before / 2);
  task.SetPdfDocs({Doc("a.pdf"), Doc("b.pdf")});
  task.Execute();
  EXPECT_EQ(task.GetFonts(), (PdfCompressedFonts{.count = 6,
                                                 .merged = 2,
                                                 .bytes_before = 2 * fonts.bytes_before,
                                                 .bytes_after = 2 * fonts.bytes_after,
                                                 .left_unreadable = 2}));
  ASSERT_EQ(task.GetImages().size(), 4U);
  for (std::size_t i = 0; i < of_one.size(); ++i) {
    const PdfCompressedImages& one = of_one[i];
    EXPECT_EQ(task.GetImages()[i],
              (PdfCompressedImages{one.image_class, 2 * one.count, 2 * one.bytes_before,
                                   2 * one.bytes_after, 2 * one.left_smallest,
                                   2 * one.left_unreadable, 2 * one.left_unhandled}));
  }
}

TEST_F(PdfCompressTaskTest, NamesClassesOfImages) {
  EXPECT_STREQ(PdfCompressTask::GetImageClassName(PdfImageClass::Photograph), "photograph");
  EXPECT_STREQ(PdfCompressTask::GetImageClassName(PdfImageClass::FlatArt), "flat art");
  EXPECT_STREQ(PdfCompressTask::GetImageClassName(PdfImageClass::TextScan), "text scan");
  EXPECT_STREQ(PdfCompressTask::GetImageClassName(PdfImageClass::Bitonal), "bitonal image");
  EXPECT_STREQ(PdfCompressTask::GetImageClassName(PdfImageClass::SoftMask), "soft mask");
  EXPECT_STREQ(PdfCompressTask::GetImageClassName(static_cast<PdfImageClass>(9)), "image");
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
