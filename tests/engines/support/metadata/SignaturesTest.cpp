#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/metadata/Signatures.h"
#include "support/QpdfDocument.h"
#include "support/RawPdf.h"
#include "support/TempDir.h"

namespace TarnixTools::engines {
namespace {

using testing::QpdfDocument;
using testing::RawPdf;

class SignaturesTest : public ::testing::Test {
 protected:
  // Writes the document without its signatures; returns how many there were.
  std::uint64_t Drop(const std::string& file) {
    const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(file), "");
    pdf::DocumentRewriter rewriter(*document);
    const std::uint64_t count = DropSignatures(*document, rewriter);
    pdf::StringSink sink;
    rewriter.Write(sink);
    testing::WriteBytes(Path(), sink.bytes());
    return count;
  }

  std::string Path() const { return directory_.Path("out.pdf"); }

  testing::TempDir directory_;
};

// A document with this catalog entry, and a signature 9.
RawPdf Signed(const std::string& entries) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R" + entries + ">>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Annots[6 0 R]>>");
  file.Object(9, "<</Type/Sig/Filter/Adobe.PPKLite/Contents<00>/ByteRange[0 1 2 3]>>");
  return file;
}

constexpr const char* kWidget = "/Subtype/Widget/Rect[0 0 0 0]/T(s)";

TEST_F(SignaturesTest, GoAndLeaveTheirFields) {
  RawPdf file = Signed("/AcroForm 5 0 R/Perms<</DocMDP 9 0 R>>/DSS<<>>");
  file.Object(5, "<</Fields[6 0 R]/SigFlags 3>>");
  file.Object(6, "<</FT/Sig/V 9 0 R/Lock<</Action/All>>" + std::string(kWidget) + ">>");
  EXPECT_EQ(Drop(file.Table()), 1U);
  const QpdfDocument written(Path());
  const auto catalog = written.Catalog();
  EXPECT_FALSE(catalog.contains("/Perms"));
  EXPECT_FALSE(catalog.contains("/DSS"));
  const auto form = written.Follow(catalog["/AcroForm"]);
  EXPECT_EQ(form["/SigFlags"], 1);
  const auto field = written.Follow(form["/Fields"][0]);
  EXPECT_EQ(field["/T"], "u:s");
  EXPECT_TRUE(field.contains("/Lock"));
  EXPECT_FALSE(field.contains("/V"));
}

TEST_F(SignaturesTest, GoFromFormsInTheCatalog) {
  RawPdf file = Signed("/AcroForm<</Fields[6 0 R]/SigFlags 3/NeedAppearances true>>");
  file.Object(6, "<</FT/Sig/V 9 0 R" + std::string(kWidget) + ">>");
  EXPECT_EQ(Drop(file.Table()), 1U);
  const auto form = QpdfDocument(Path()).Catalog()["/AcroForm"];
  EXPECT_EQ(form["/SigFlags"], 1);
  EXPECT_EQ(form["/NeedAppearances"], true);
}

TEST_F(SignaturesTest, AreFoundBelowOtherFields) {
  RawPdf file = Signed("/AcroForm 5 0 R");
  file.Object(5, "<</Fields[7 0 R 8 0 R 7 0 R]>>");
  file.Object(7, "<</FT/Sig/T(a)/Kids[6 0 R 7 0 R]>>");  // leads back to itself
  file.Object(6, "<</Parent 7 0 R/V 9 0 R" + std::string(kWidget) + ">>");
  file.Object(8, "<</FT/Tx/T(b)/V(text)/Kids[10 0 R]>>");
  file.Object(10, "<</Parent 8 0 R/V 9 0 R/T(c)>>");  // no signature field
  EXPECT_EQ(Drop(file.Table()), 1U);
}

// Whatever numbers they have; what is written in place is no field that others can change.
TEST_F(SignaturesTest, GoFromTheFirstObject) {
  RawPdf file;
  file.Object(1, "<</FT/Sig/V 9 0 R" + std::string(kWidget) + ">>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Annots[1 0 R]>>");
  file.Object(7, "<</Type/Catalog/Pages 2 0 R/AcroForm<</Fields[1 0 R<</FT/Sig/V 9 0 R>>]>>>>");
  file.Object(9, "<</Type/Sig/Filter/Adobe.PPKLite/Contents<00>/ByteRange[0 1 2 3]>>");
  EXPECT_EQ(Drop(file.Table("/Root 7 0 R")), 1U);
}

TEST_F(SignaturesTest, ThatGrantRightsGo) {
  RawPdf file = Signed("/Perms<</UR3 9 0 R>>");
  file.Object(6, "<<" + std::string(kWidget) + ">>");
  EXPECT_EQ(Drop(file.Table()), 1U);
  EXPECT_FALSE(QpdfDocument(Path()).Catalog().contains("/Perms"));
}

TEST_F(SignaturesTest, LeaveFormsWithoutThemAlone) {
  RawPdf file = Signed("/AcroForm 5 0 R/Perms<<>>");
  file.Object(5, "<</Fields[6 0 R]/SigFlags 3>>");
  file.Object(6, "<</FT/Sig" + std::string(kWidget) + ">>");
  EXPECT_EQ(Drop(file.Table()), 0U);
  const QpdfDocument written(Path());
  EXPECT_EQ(written.Follow(written.Catalog()["/AcroForm"])["/SigFlags"], 3);
  EXPECT_TRUE(written.Catalog().contains("/Perms"));
}

}  // namespace
}  // namespace TarnixTools::engines
