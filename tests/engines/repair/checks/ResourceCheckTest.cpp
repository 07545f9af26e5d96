#include "engines/repair/CheckTest.h"
#include "support/TestImages.h"

namespace TarnixTools::engines::repair {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::TestJpeg;

using Code = ProblemCode;

class ResourceCheckTest : public CheckTest {
 protected:
  static std::string WithFont(const std::string& font, const std::string& descriptor = "",
                              const std::string& program = "") {
    return OnePage("/Resources<</Font<</F 10 0 R>>>>")
        .Object(10, "<</Type/Font" + font + ">>")
        .Object(11, "<</Type/FontDescriptor" + descriptor + ">>")
        .Stream(12, "", program)
        .Table();
  }

  static std::string WithImage(const std::string& entries, const std::string& data) {
    return OnePage("/Resources<</XObject<</I 10 0 R>>>>")
        .Stream(10, "/Subtype/Image" + entries, data)
        .Object(11, "(no stream)")
        .Table();
  }
};

const std::string kGray = "/Width 4/Height 2/BitsPerComponent 8/ColorSpace/DeviceGray";

TEST_F(ResourceCheckTest, FindsCategoriesThatAreNone) {
  ExpectMended(OnePage("/Resources 10 0 R").Object(10, "<</Font[1]/ProcSet[/PDF]>>").Table(),
               {Code::kResourcesInvalid});
  ExpectMended(OnePage("/Resources 10 0 R").Object(10, "(none)").Table(),
               {Code::kResourcesInvalid});
  ExpectMended(OnePage("/Resources<</Font[1]/Pattern 1/ProcSet[/PDF]>>").Table(),
               {Code::kResourcesInvalid, Code::kResourcesInvalid});
  EXPECT_THAT(Held(), HasSubstr("/ProcSet"));
}

TEST_F(ResourceCheckTest, FindsNothingInSoundFonts) {
  Repair(WithFont("/Subtype/Type1/BaseFont/Helvetica"));
  EXPECT_THAT(Damage(), IsEmpty());
  EXPECT_THAT(Lint(), IsEmpty());
  Repair(WithFont("/Subtype/Type1/BaseFont/Garamond"));
  EXPECT_THAT(Damage(), IsEmpty());
  EXPECT_THAT(Lint(), Contains(Code::kFontProgramMissing));
}

TEST_F(ResourceCheckTest, FindsFontsOfNoKind) {
  Repair(WithFont("/Subtype/Odd"));
  EXPECT_EQ(Damage(), Codes{Code::kFontInvalid});
}

TEST_F(ResourceCheckTest, LeavesFontProgramsOutThatCannotBeRead) {
  ExpectMended(
      WithFont("/Subtype/TrueType/Widths[500]/FontDescriptor 11 0 R", "/FontFile2 12 0 R", "junk"),
      {Code::kFontProgramUnreadable});
  Repair(WithFont("/Subtype/TrueType/FontDescriptor 11 0 R", "/FontFile2 12 0 R", "junk"));
  EXPECT_THAT(Lint(), Contains(Code::kFontWidthsMissing));
}

TEST_F(ResourceCheckTest, LeavesCharacterMapsOutThatAreNone) {
  ExpectMended(WithFont("/Subtype/Type1/ToUnicode 12 0 R", "", "nothing of the kind"),
               {Code::kFontMapUnreadable});
  ExpectMended(WithFont("/Subtype/Type0/Encoding 12 0 R/DescendantFonts[<</Subtype/CIDFontType2>>]",
                        "", "nothing of the kind"),
               {Code::kFontMapUnreadable});
  Repair(WithFont("/Subtype/Type1/ToUnicode 12 0 R", "",
                  "begincmap 1 begincodespacerange <00><FF> endcodespacerange endcmap"));
  EXPECT_THAT(Damage(), IsEmpty());
}

TEST_F(ResourceCheckTest, FindsNothingInSoundImages) {
  Repair(WithImage(kGray + "/Mask[0 1]", "12345678"));
  EXPECT_THAT(Damage(), IsEmpty());
  Repair(WithImage("/Width 16/Height 8/ImageMask true", std::string(16, 'x')));
  EXPECT_THAT(Damage(), IsEmpty());
}

TEST_F(ResourceCheckTest, FillsUpMissingSamples) {
  Repair(WithImage(kGray, "123"));
  EXPECT_EQ(Damage(), Codes{Code::kImageDataShort});
  EXPECT_THAT(Output(), HasSubstr("123\xFF\xFF\xFF\xFF\xFF"));
  Repair(Output());
  EXPECT_THAT(Damage(), IsEmpty());
}

TEST_F(ResourceCheckTest, TakesTheSizeOfImagesFromTheirData) {
  const std::string entries =
      "/Filter/DCTDecode/BitsPerComponent 8/ColorSpace/DeviceRGB/Width 1/Height 1";
  ExpectMended(WithImage(entries, TestJpeg(3)), {Code::kImageSizeWrong});
  Repair(WithImage(entries, "no picture"));
  EXPECT_EQ(Damage(), Codes{Code::kImageDataDamaged});
  Repair(WithImage("/Width 0/Height 2/ColorSpace/DeviceGray", "x"));
  EXPECT_EQ(Damage(), Codes{Code::kImageInvalid});
}

TEST_F(ResourceCheckTest, FindsAColorSpaceForTheData) {
  const std::string size = "/Width 4/Height 2/BitsPerComponent 8";
  ExpectMended(WithImage(size + "/ColorSpace/Odd", std::string(24, 'x')),
               {Code::kImageColorSpaceInvalid});
  ExpectMended(WithImage(size, std::string(8, 'x')), {Code::kImageColorSpaceInvalid});
}

TEST_F(ResourceCheckTest, LeavesMasksOutThatAreNone) {
  ExpectMended(WithImage(kGray + "/SMask 11 0 R", "12345678"), {Code::kImageMaskInvalid});
}

}  // namespace
}  // namespace TarnixTools::engines::repair
