#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/fonts/GlyphFinder.h"
#include "engines/support/fonts/ProgramFixture.h"
#include "pdf/write/RewriteFixture.h"
#include "support/TestFont.h"

namespace TarnixTools::engines::fonts {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A font that is object 5, whose descriptor is object 6 and descendant object 7.
DocumentFont FontOf(const std::string& font, const std::string& flags = "32",
                    const std::string& descendant = "null") {
  const std::string bytes = testing::RawPdf()
                                .Object(1, "<</Type/Catalog/Pages 2 0 R>>")
                                .Object(2, "<</Type/Pages/Kids[]/Count 0>>")
                                .Object(5, font)
                                .Object(6, "<</Flags " + flags + ">>")
                                .Object(7, descendant)
                                .Table();
  const auto document = testing::OpenBytes(bytes);
  return {*document, pdf::Object::Ref({5, 0})};
}

std::vector<std::uint32_t> GlyphsOf(const DocumentFont& font, const std::string& bytes,
                                    std::uint32_t code) {
  const auto program = FontProgram::Open(bytes);
  return program == nullptr ? std::vector<std::uint32_t>{99}
                            : GlyphFinder(font, *program).GlyphsOf(code);
}

std::uint32_t StandardGlyphOf(const DocumentFont& font, const std::string& bytes,
                              std::uint32_t code) {
  const auto program = FontProgram::Open(bytes);
  return program == nullptr ? 99 : GlyphFinder(font, *program).StandardGlyphOf(code);
}

const std::string kBoxes = testing::TestFont().Bytes();  // the "A" is 1, the space 2

TEST(GlyphFinder, GoesByTheCharacterOfAName) {
  const DocumentFont font = FontOf(
      "<</Subtype/TrueType/FontDescriptor 6 0 R/Encoding<</BaseEncoding/WinAnsiEncoding"
      "/Differences[7/A 8/uni0041 9/nonsense]>>>>");
  EXPECT_THAT(GlyphsOf(font, kBoxes, 'A'), ElementsAre(1U));
  EXPECT_THAT(GlyphsOf(font, kBoxes, ' '), ElementsAre(2U));
  EXPECT_THAT(GlyphsOf(font, kBoxes, 7), ElementsAre(1U));
  EXPECT_THAT(GlyphsOf(font, kBoxes, 8), ElementsAre(1U));
  EXPECT_THAT(GlyphsOf(font, kBoxes, 9), IsEmpty());
  EXPECT_THAT(GlyphsOf(font, kBoxes, 'B'), IsEmpty());
}

TEST(GlyphFinder, GoesByTheNamesOfTheFirstAndTheLastCode) {
  const DocumentFont font = FontOf(
      "<</Subtype/TrueType/FontDescriptor 6 0 R/Encoding<</Differences[0/uni0041 255/u0041]>>>>");
  EXPECT_THAT(GlyphsOf(font, kBoxes, 0), ElementsAre(1U));
  EXPECT_THAT(GlyphsOf(font, kBoxes, 255), ElementsAre(1U));
}

TEST(GlyphFinder, GoesByTheCodeOfASymbolicFont) {
  const DocumentFont font =
      FontOf("<</Subtype/TrueType/FontDescriptor 6 0 R/Encoding<</Differences[65/space]>>>>", "4");
  EXPECT_THAT(GlyphsOf(font, kBoxes, 'A'), ElementsAre(1U, 2U));
  const DocumentFont bare = FontOf("<</Subtype/TrueType/FontDescriptor 6 0 R>>", "4");
  EXPECT_THAT(GlyphsOf(bare, kBoxes, 'A'), ElementsAre(1U));
}

TEST(GlyphFinder, GoesByNamesInType1AndCff) {
  const DocumentFont font =
      FontOf("<</Subtype/Type1/FontDescriptor 6 0 R/Encoding<</Differences[1/odd]>>>>");
  for (const std::string& bytes :
       {testing::CffProgram({"A", "odd"}), testing::Type1ProgramText({"A", "odd"})}) {
    const auto program = FontProgram::Open(bytes);
    EXPECT_THAT(GlyphsOf(font, bytes, 1), ElementsAre(program->GlyphNamed("odd")));
    EXPECT_THAT(GlyphsOf(font, bytes, 'A'), ElementsAre(program->GlyphNamed("A")));
    EXPECT_THAT(GlyphsOf(font, bytes, 2), IsEmpty());
  }
}

TEST(GlyphFinder, GoesByIdentifiersInCompositeFonts) {
  const std::string type0 = "<</Subtype/Type0/Encoding/Identity-H/DescendantFonts[7 0 R]>>";
  const DocumentFont cff = FontOf(type0, "4", "<</Subtype/CIDFontType0>>");
  EXPECT_EQ(GlyphsOf(cff, testing::CidProgram({7, 3, 500}), 500).front(), 3U);
  EXPECT_THAT(GlyphsOf(cff, testing::CidProgram({7, 3, 500}), 501), IsEmpty());
  EXPECT_THAT(GlyphsOf(cff, testing::CffProgram({"A", "B"}), 2), ElementsAre(2U));
  const DocumentFont true_type = FontOf(type0, "4", "<</Subtype/CIDFontType2>>");
  EXPECT_THAT(GlyphsOf(true_type, kBoxes, 2), ElementsAre(2U));
  EXPECT_THAT(GlyphsOf(true_type, kBoxes, 3), IsEmpty());
}

TEST(GlyphFinder, TellsTheGlyphThatTheStandardSays) {
  const DocumentFont encoded = FontOf(
      "<</Subtype/TrueType/FontDescriptor 6 0 R/Encoding<</BaseEncoding/WinAnsiEncoding"
      "/Differences[7/A 8/nonsense]>>>>");
  EXPECT_EQ(StandardGlyphOf(encoded, kBoxes, 7), 1U);
  EXPECT_EQ(StandardGlyphOf(encoded, kBoxes, 8), 0U);
  EXPECT_EQ(StandardGlyphOf(encoded, kBoxes, 300), 0U);
  const DocumentFont bare = FontOf("<</Subtype/TrueType/FontDescriptor 6 0 R/Encoding<<>>>>");
  EXPECT_EQ(StandardGlyphOf(bare, kBoxes, 'A'), 1U);
  const DocumentFont symbolic = FontOf("<</Subtype/TrueType/FontDescriptor 6 0 R>>", "4");
  EXPECT_EQ(StandardGlyphOf(symbolic, kBoxes, 'A'), 1U);
  EXPECT_EQ(StandardGlyphOf(symbolic, kBoxes, 'B'), 0U);
}

TEST(GlyphFinder, GoesByTheProgramsOwnEncodingOnlyWithoutAnother) {
  const std::string bytes = testing::Type1ProgramText({"A", "odd"});
  const auto program = FontProgram::Open(bytes);
  const DocumentFont bare = FontOf("<</Subtype/Type1/FontDescriptor 6 0 R>>");
  EXPECT_EQ(StandardGlyphOf(bare, bytes, 'A'), program->GlyphNamed("A"));
  const DocumentFont encoded =
      FontOf("<</Subtype/Type1/FontDescriptor 6 0 R/Encoding/WinAnsiEncoding>>");
  EXPECT_EQ(StandardGlyphOf(encoded, bytes, 'A'), program->GlyphNamed("A"));
  EXPECT_EQ(StandardGlyphOf(encoded, bytes, 1), 0U);
}

TEST(GlyphFinder, TakesNoOtherGlyphForAnIdentifier) {
  const std::string type0 = "<</Subtype/Type0/Encoding/Identity-H/DescendantFonts[7 0 R]>>";
  const DocumentFont cff = FontOf(type0, "4", "<</Subtype/CIDFontType0>>");
  EXPECT_EQ(StandardGlyphOf(cff, testing::CidProgram({7, 3, 500}), 500), 3U);
  EXPECT_EQ(StandardGlyphOf(cff, testing::CidProgram({7, 3, 500}), 2), 0U);
  const DocumentFont true_type = FontOf(type0, "4", "<</Subtype/CIDFontType2>>");
  EXPECT_EQ(StandardGlyphOf(true_type, kBoxes, 2), 2U);
  EXPECT_EQ(StandardGlyphOf(true_type, kBoxes, 3), 0U);
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
