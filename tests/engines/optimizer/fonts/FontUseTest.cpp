#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/optimizer/fonts/FontFixture.h"

namespace TarnixTools::engines::optimizer {
namespace {

using testing::FontCase;
using testing::RawPdf;
using Codes = std::vector<std::uint32_t>;

const std::string kSimple = "<</Type/Font/Subtype/Type1/BaseFont/X/FontDescriptor 8 0 R>>";

TEST(FontUse, TakesDownCodesWhetherSeenOrNot) {
  FontCase test(
      RawPdf()
          .Object(5, kSimple)
          .Object(6, "<</Subtype/Type0/Encoding/Identity-H/DescendantFonts[7 0 R]>>")
          .Object(7, "<</Subtype/CIDFontType2>>")
          .Stream(4, "", "BT /F 9 Tf (AB) Tj [(A)-5(C)] TJ 3 Tr (\\377) Tj /G 9 Tf <0102> Tj ET"));
  EXPECT_EQ(test.use().fonts().at(5).codes.Codes(), (Codes{'A', 'B', 'C', 255}));
  EXPECT_EQ(test.use().fonts().at(6).codes.Codes(), (Codes{0x102}));
  EXPECT_FALSE(test.use().fonts().at(5).is_whole);
  EXPECT_FALSE(test.use().IsWholeProgram(0));
}

TEST(CodeSet, HasCodesOfAnySizeInOrder) {
  CodeSet codes;
  for (const std::uint32_t code : {0x10000U, 0xFFFFU, 256U, 255U, 0U, 0xFFFFFFFFU, 1U, 0x10000U}) {
    codes.Add(code);
  }
  EXPECT_EQ(codes.Codes(), (Codes{0, 1, 255, 256, 0xFFFF, 0x10000, 0xFFFFFFFF}));
  EXPECT_EQ(codes.LargeCount(), 2U);
  CodeSet few;
  few.Add(0);
  few.Add(255);
  EXPECT_EQ(few.Codes(), (Codes{0, 255}));
  EXPECT_EQ(CodeSet().Codes(), Codes());
}

TEST(FontUse, KnowsACompositeFontInPlaceByItsDescendants) {
  FontCase test(RawPdf()
                    .Object(5, kSimple)
                    .Object(7, "<</Subtype/CIDFontType2/FontDescriptor<</FontFile2 9 0 R>>>>")
                    .Object(8, "[7 0 R]")
                    .Stream(9, "", "program")
                    .Object(10, "<</Subtype/Type0/Encoding/Identity-H/DescendantFonts 8 0 R>>")
                    .Stream(4, "", ""));
  pdf::GraphicsState state;
  pdf::Arena arena;
  state.text.font = test.source().Load({10, 0}, arena);
  for (std::size_t i = 0; i < 2 * limits::kMaxFontsInPlace; ++i) {
    test.use().Note({.bytes = "xx", .state = state, .scope = {}});
  }
  EXPECT_TRUE(test.use().IsWholeProgram(9));
  EXPECT_FALSE(test.use().IsWholeProgram(11)) << "it was met again and again, and is but one";
}

TEST(FontUse, KeepsFontsWholeWhoseCodesAreNotSure) {
  FontCase test(RawPdf()
                    .Object(5, "<</Subtype/Type0/Encoding/GBK-EUC-H/DescendantFonts[7 0 R]>>")
                    .Object(6, "<</Subtype/Type0/Encoding/Identity-H/DescendantFonts[7 0 R]>>")
                    .Object(7, "<</Subtype/CIDFontType2>>")
                    .Stream(4, "", "BT /F 9 Tf (AB) Tj /G 9 Tf <010203> Tj ET"));
  EXPECT_TRUE(test.use().fonts().at(5).is_whole);
  EXPECT_TRUE(test.use().fonts().at(6).is_whole);
}

TEST(FontUse, KeepsProgramsOfFontsThatAreNoObjects) {
  const std::string in_place = "<</Subtype/Type1/FontDescriptor 8 0 R>>";
  FontCase test(RawPdf()
                    .Object(5, kSimple)
                    .Object(8, "<</FontFile 9 0 R>>")
                    .Stream(9, "", "program")
                    .Object(10, "<</Font " + in_place + ">>")
                    .Stream(11,
                            "/Type/XObject/Subtype/Form/BBox[0 0 9 9]/Resources<</Font<</H " +
                                in_place + ">>>>",
                            "BT /H 9 Tf (x) Tj (y) Tj ET")
                    .Stream(4, "", "/None Do"));
  EXPECT_FALSE(test.use().IsWholeProgram(9));
  pdf::GraphicsState state;
  pdf::Arena arena;
  state.text.font = test.source().Load({10, 0}, arena).Get("Font");
  test.use().Note({.bytes = "x", .state = state, .scope = {}});
  EXPECT_TRUE(test.use().IsWholeProgram(9));
  EXPECT_TRUE(test.use().fonts().empty());
}

TEST(FontUse, GivesUpOnTooManyFontsThatAreNoObjects) {
  FontCase test(RawPdf().Object(5, kSimple).Object(10, "<<>>").Stream(4, "", ""));
  pdf::GraphicsState state;
  pdf::Arena arena;
  state.text.font = test.source().Load({10, 0}, arena);
  for (std::size_t i = 0; i <= limits::kMaxFontsInPlace; ++i) {
    EXPECT_FALSE(test.use().IsWholeProgram(9));
    test.use().Note({.bytes = "x", .state = state, .scope = {}});
  }
  EXPECT_TRUE(test.use().IsWholeProgram(9));
}

TEST(FontUse, CountsNoFontWhereThereIsNone) {
  FontCase test(RawPdf().Object(5, kSimple).Stream(4, "", ""));
  pdf::GraphicsState state;
  for (std::size_t i = 0; i <= 2 * limits::kMaxFontsInPlace; ++i) {
    test.use().Note({.bytes = "x", .state = state, .scope = {}});
  }
  EXPECT_FALSE(test.use().IsWholeProgram(9));
}

TEST(FontUse, KeepsFontsInPlaceOfForms) {
  FontCase test(RawPdf()
                    .Object(4, "null")
                    .Object(5, kSimple)
                    .Object(8, "<</FontFile 9 0 R>>")
                    .Stream(9, "", "program")
                    .Object(12, "<</DR<</Font<</A<</Subtype/Type1/FontDescriptor 8 0 R>>>>>>>>"),
                "/AcroForm 12 0 R");
  EXPECT_FALSE(test.use().IsWholeProgram(9));
  test.use().KeepFormFonts();
  EXPECT_TRUE(test.use().IsWholeProgram(9));
}

TEST(FontUse, KeepsFontsOfForms) {
  FontCase test(RawPdf()
                    .Object(4, "null")
                    .Object(5, kSimple)
                    .Object(6, kSimple)
                    .Object(10, kSimple)
                    .Object(11, kSimple)
                    .Object(12, "<</DR<</Font<</A 5 0 R>>>>/Fields[13 0 R 13 0 R]>>")
                    .Object(13, "<</FT/Tx/Kids[14 0 R 13 0 R]/DR<</Font<</B 10 0 R>>>>>>")
                    .Object(14, "<</Subtype/Widget/AP<</N 15 0 R>>>>")
                    .Stream(15, "/Resources<</Font<</C 11 0 R>>>>", ""),
                "/AcroForm 12 0 R");
  test.use().KeepFormFonts();
  for (const std::uint32_t number : {5U, 10U, 11U}) {
    ASSERT_TRUE(test.use().fonts().contains(number)) << number;
    EXPECT_TRUE(test.use().fonts().at(number).is_whole) << number;
  }
  EXPECT_FALSE(test.use().fonts().contains(6));
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
