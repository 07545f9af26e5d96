// What compressing tells of a document: what it put right and left out, and its images and fonts.
#include "conversions/CompressFixture.h"
#include "support/RawPdf.h"
#include "support/TestFont.h"
#include "support/TestPackets.h"
#include "support/TestScene.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using testing::QpdfComplaints;
using testing::RawPdf;
using testing::ReadBytes;
using testing::TestPdf;
using testing::WriteBytes;

using CompressReportTest = CompressFixture;

// A form that is drawn twice as two objects, one that is not drawn, and a font with more than it shows.
TEST_F(CompressReportTest, LeavesOutWhatNobodySeesAtEveryLevel) {
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

TEST_F(CompressReportTest, PutsDamagedDocumentsRightAndSaysSo) {
  TARNIX_NEED_PROGRAM("qpdf");
  const std::string sound = TestPdf().Pages(40).Bytes();
  WriteBytes(Path("a.pdf"), sound.substr(0, sound.size() / 2));
  PdfCompressTask task = TaskFor("a.pdf");
  task.Execute();
  EXPECT_EQ(QpdfComplaints(Path("out/compressed_a.pdf")), "");
  ASSERT_THAT(task.GetReport().GetEntries(), Not(IsEmpty()));
  EXPECT_EQ(task.GetReport().GetEntries()[0].kind, PdfReportKind::Damage);
}

TEST_F(CompressReportTest, ReportsClaimsAndSignatures) {
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

TEST_F(CompressReportTest, ReportsTagsThatItsLevelLeavesOut) {
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
TEST_F(CompressReportTest, CountsImagesAndFontsOfAllDocuments) {
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

TEST_F(CompressReportTest, NamesClassesOfImages) {
  EXPECT_STREQ(PdfCompressTask::GetImageClassName(PdfImageClass::Photograph), "photograph");
  EXPECT_STREQ(PdfCompressTask::GetImageClassName(PdfImageClass::FlatArt), "flat art");
  EXPECT_STREQ(PdfCompressTask::GetImageClassName(PdfImageClass::TextScan), "text scan");
  EXPECT_STREQ(PdfCompressTask::GetImageClassName(PdfImageClass::Bitonal), "bitonal image");
  EXPECT_STREQ(PdfCompressTask::GetImageClassName(PdfImageClass::SoftMask), "soft mask");
  EXPECT_STREQ(PdfCompressTask::GetImageClassName(static_cast<PdfImageClass>(9)), "image");
}

}  // namespace
}  // namespace TarnixTools
