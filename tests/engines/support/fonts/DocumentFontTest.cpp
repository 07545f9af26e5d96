#include <string>

#include <gtest/gtest.h>

#include "engines/support/fonts/DocumentFont.h"
#include "pdf/write/RewriteFixture.h"

namespace TarnixTools::engines::fonts {
namespace {

using testing::RawPdf;

// The font that is object 5, with the other objects beside it.
DocumentFont FontIn(RawPdf pdf) {
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>").Object(2, "<</Type/Pages/Kids[]/Count 0>>");
  const std::string bytes = pdf.Table();
  const auto document = testing::OpenBytes(bytes);
  return {*document, pdf::Object::Ref({5, 0})};
}

TEST(DocumentFont, TellsWhatASimpleFontSays) {
  const DocumentFont font =
      FontIn(RawPdf()
                 .Object(5,
                         "<</Type/Font/Subtype/TrueType/BaseFont/ABCDEF+Some#20Font/FirstChar 65"
                         "/Widths[500 6 0 R]/FontDescriptor 7 0 R/ToUnicode 9 0 R"
                         "/Encoding<</BaseEncoding/WinAnsiEncoding/Differences[66/alpha]>>>>")
                 .Object(6, "612.5")
                 .Object(7, "<</Flags 4/FontFile2 8 0 R/CharSet(/A)>>")
                 .Stream(8, "", "program"));
  EXPECT_EQ(font.number(), 5U);
  EXPECT_EQ(font.kind(), FontKind::kTrueType);
  EXPECT_EQ(font.name(), "ABCDEF+Some Font");
  EXPECT_EQ(font.WidthOf('A'), 500);
  EXPECT_EQ(font.WidthOf('B'), 612.5);
  EXPECT_EQ(font.WidthOf('C'), std::nullopt);
  EXPECT_EQ(font.GlyphNameOf('B'), "alpha");
  EXPECT_EQ(font.GlyphNameOf(0x80), "Euro");
  EXPECT_TRUE(font.has_to_unicode());
  EXPECT_EQ(font.codes()->code_bytes(), 1);
  EXPECT_EQ(font.descriptor().number, 7U);
  EXPECT_EQ(font.descriptor().program, 8U);
  EXPECT_EQ(font.descriptor().entry, ProgramEntry::kFontFile2);
  EXPECT_TRUE(font.descriptor().is_symbolic);
  EXPECT_TRUE(font.descriptor().lists_glyphs);
}

TEST(DocumentFont, WithoutAnEncodingNamesNothing) {
  const DocumentFont font = FontIn(
      RawPdf().Object(5, "<</Subtype/Type1/BaseFont/Helvetica/FontDescriptor<</Flags 32>>>>"));
  EXPECT_EQ(font.kind(), FontKind::kType1);
  EXPECT_FALSE(font.has_encoding());
  EXPECT_EQ(font.GlyphNameOf('A'), "");
  EXPECT_FALSE(font.descriptor().is_symbolic);
  EXPECT_EQ(font.descriptor().program, 0U);
  EXPECT_FALSE(FontIn(RawPdf().Object(5, "<</Subtype/Type1/Encoding/MacExpertEncoding>>"))
                   .is_encoding_known());
}

TEST(DocumentFont, MapsIdentifiersOfACompositeFont) {
  const DocumentFont font =
      FontIn(RawPdf()
                 .Object(5, "<</Subtype/Type0/Encoding/Identity-H/DescendantFonts[6 0 R]>>")
                 .Object(6, "<</Subtype/CIDFontType2/CIDToGIDMap 7 0 R/FontDescriptor 8 0 R>>")
                 .Stream(7, "", std::string("\0\0\0\5\1\2", 6))
                 .Object(8, "<</FontFile3 9 0 R>>")
                 .Stream(9, "/Subtype/OpenType", "program"));
  EXPECT_EQ(font.kind(), FontKind::kCidType2);
  EXPECT_EQ(font.codes()->code_bytes(), 2);
  EXPECT_EQ(font.MappedGlyphOf(font.CidOf(1)), 5U);
  EXPECT_EQ(font.MappedGlyphOf(2), 0x102U);
  EXPECT_EQ(font.MappedGlyphOf(3), 0U);
  EXPECT_EQ(font.descriptor().program_subtype, "OpenType");
}

TEST(DocumentFont, ReadsAnEmbeddedMapOfCodes) {
  const std::string descendant = "<</Subtype/CIDFontType0/CIDToGIDMap/Identity>>";
  const DocumentFont font = FontIn(
      RawPdf()
          .Object(5, "<</Subtype/Type0/Encoding 6 0 R/DescendantFonts[7 0 R]>>")
          .Stream(6, "/Type/CMap",
                  "1 begincodespacerange<00><FF>endcodespacerange 1 begincidchar<41>77 endcidchar")
          .Object(7, descendant));
  ASSERT_NE(font.codes(), nullptr);
  EXPECT_EQ(font.codes()->code_bytes(), 1);
  EXPECT_EQ(font.CidOf('A'), 77U);
  EXPECT_EQ(font.MappedGlyphOf(77), 77U);
  for (const char* encoding : {"/UniJIS-UTF16-H", "null", "8 0 R"}) {
    RawPdf pdf;
    pdf.Object(5,
               std::string("<</Subtype/Type0/DescendantFonts[7 0 R]/Encoding ") + encoding + ">>");
    pdf.Object(7, descendant).Stream(8, "/UseCMap/Identity-H", "");
    EXPECT_EQ(FontIn(pdf).codes(), nullptr) << encoding;
  }
}

TEST(DocumentFont, TellsTheWidthsOfIdentifiers) {
  const DocumentFont font =
      FontIn(RawPdf()
                 .Object(5, "<</Subtype/Type0/Encoding/Identity-H/DescendantFonts[6 0 R]>>")
                 .Object(6,
                         "<</Subtype/CIDFontType2/DW 750/W[3[400 7 0 R]9 11 350 20]"
                         "/FontDescriptor<</MissingWidth 77>>>>")
                 .Object(7, "612.5"));
  EXPECT_EQ(font.WidthOfCid(3), 400);
  EXPECT_EQ(font.WidthOfCid(4), 612.5);
  EXPECT_EQ(font.WidthOfCid(5), 750);
  EXPECT_EQ(font.WidthOfCid(9), 350);
  EXPECT_EQ(font.WidthOfCid(11), 350);
  EXPECT_EQ(font.WidthOfCid(12), 750);
  EXPECT_EQ(font.descriptor().missing_width, 77);
}

TEST(DocumentFont, OfDamagedObjectsKnowsNothing) {
  for (const char* object : {"null", "5 0 R", "[]", "<<>>", "<</Subtype/Type0>>",
                             "<</Subtype/Type0/DescendantFonts[5 0 R]>>",
                             "<</Subtype/Type0/DescendantFonts 5 0 R/Encoding/Identity-H>>"}) {
    const DocumentFont font = FontIn(RawPdf().Object(5, object));
    EXPECT_EQ(font.kind(), FontKind::kUnknown) << object;
    EXPECT_EQ(font.codes(), nullptr) << object;
  }
  const DocumentFont font = FontIn(RawPdf().Object(
      5, "<</Subtype/Type1/Widths 5/FirstChar -1/Encoding 7/FontDescriptor[/FontFile 5 0 R]>>"));
  EXPECT_EQ(font.WidthOf(0), std::nullopt);
  EXPECT_EQ(font.descriptor().program, 0U);
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
