#include <cmath>

#include "engines/pdfa/convert/ConversionTest.h"
#include "engines/pdfa/convert/fonts/Fonts.h"
#include "engines/pdfa/convert/fonts/PictureEncodings.h"
#include "engines/pdfa/convert/fonts/SfntFile.h"
#include "engines/pdfa/convert/fonts/SubstituteFace.h"
#include "engines/support/fonts/FontProgram.h"
#include "support/Readers.h"

namespace TarnixTools::engines::pdfa {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using testing::PageTexts;
using testing::QpdfDocument;
using testing::RawPdf;

using Json = QpdfDocument::Json;

class FontsTest : public ConversionTest {
 protected:
  // The font (5) of a page that shows this in it.
  Json FontOf(RawPdf file, const std::string& content, Level level = Level::k2b) {
    file.Stream(4, "", content);
    written_.emplace(Run(file, level, &MendFonts));
    return written_->Follow(written_->Follow(written_->Page(1))["/Resources"]["/Font"]["/F"]);
  }

  static RawPdf PageWithFont(const std::string& font, const std::string& catalog = "") {
    RawPdf file = OnePage("/Contents 4 0 R/Resources<</Font<</F 5 0 R>>>>", catalog);
    file.Object(5, font);
    return file;
  }

  std::optional<QpdfDocument> written_;
};

constexpr const char* kHelvetica =
    "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>";
constexpr const char* kShowsText = "BT /F 12 Tf 10 10 Td (Gr\\374n) Tj ET";

TEST_F(FontsTest, AreEmbedded) {
  const Json font = FontOf(PageWithFont(kHelvetica), kShowsText);
  EXPECT_EQ(font["/Subtype"], "/Type0");
  const Json descendant = written_->Follow(font["/DescendantFonts"][0]);
  const Json descriptor = written_->Follow(descendant["/FontDescriptor"]);
  EXPECT_TRUE(descriptor.contains("/FontFile2") || descriptor.contains("/FontFile3"));
  EXPECT_THAT(PageTexts(Path("out.pdf")), ElementsAre("Gr\u00FCn"));
  EXPECT_THAT(Report(), HasSubstr("changed: font Helvetica, which was not embedded"));
}

TEST_F(FontsTest, KeepTheAdvancesOfTheDocument) {
  const Json font =
      FontOf(PageWithFont("<</Type/Font/Subtype/TrueType/BaseFont/Arial/Encoding/WinAnsiEncoding"
                          "/FirstChar 65/LastChar 66/Widths[700 300]>>"),
             "BT /F 12 Tf (AB) Tj ET");
  const Json widths = written_->Follow(font["/DescendantFonts"][0])["/W"];
  ASSERT_EQ(widths.size(), 2U);
  EXPECT_EQ(widths[0], 65);
  EXPECT_EQ(widths[1], (Json{700, 300}));
  const Json descriptor =
      written_->Follow(written_->Follow(font["/DescendantFonts"][0])["/FontDescriptor"]);
  ASSERT_TRUE(descriptor.contains("/FontFile2"));
  const std::string reference = descriptor["/FontFile2"].get<std::string>();
  const std::string bytes =
      testing::RunProgram({"qpdf", "--show-object=" + reference.substr(0, reference.find(' ')),
                           "--filtered-stream-data", Path("out.pdf")})
          .output;
  const auto program = fonts::FontProgram::Open(bytes);
  ASSERT_NE(program, nullptr);
  std::vector<double> advances;
  for (std::uint32_t glyph = 1; glyph < program->glyph_count(); ++glyph) {
    advances.push_back(std::round(program->AdvanceOf(glyph).value_or(0)));
  }
  EXPECT_THAT(advances, ::testing::IsSupersetOf({700.0, 300.0}));
}

TEST_F(FontsTest, AreReplacedByOnesOfTheSameStyle) {
  for (const char* font : {"<</Type/Font/Subtype/Type1/BaseFont/Unheard/FontDescriptor 6 0 R>>",
                           "<</Type/Font/Subtype/Type0/BaseFont/Unheard/Encoding/Identity-H"
                           "/DescendantFonts[<</Type/Font/Subtype/CIDFontType2/BaseFont/Unheard"
                           "/FontDescriptor 6 0 R>>]>>"}) {
    RawPdf file = PageWithFont(font);
    file.Object(6, "<</Type/FontDescriptor/FontName/Unheard/Flags 33>>");
    EXPECT_THAT(FontOf(file, "BT /F 12 Tf (iM) Tj ET")["/BaseFont"].get<std::string>(),
                HasSubstr("Mono"));
  }
}

TEST_F(FontsTest, StayWhereTheirTextIsNotSeen) {
  EXPECT_EQ(FontOf(PageWithFont(kHelvetica), "BT 3 Tr /F 12 Tf (A) Tj ET")["/Subtype"], "/Type1");
  EXPECT_EQ(Report(), "");
}

TEST_F(FontsTest, StayForFillingInForms) {
  RawPdf file = PageWithFont(kHelvetica, "/AcroForm 6 0 R");
  file.Object(6, "<</Fields[]/DR<</Font<</F 5 0 R>>>>>>");
  EXPECT_EQ(FontOf(file, kShowsText)["/Subtype"], "/Type0");
  const Json form = written_->Follow(written_->Catalog()["/AcroForm"]);
  EXPECT_EQ(written_->Follow(form["/DR"]["/Font"]["/F"])["/Subtype"], "/Type1");
}

// Wherever the form has them: in objects of their own, or in place in something that is one. Others than
// those that are replaced stay what they are.
TEST_F(FontsTest, StayForFillingInFormsWhereverTheyAre) {
  const std::string fonts = "<</F 5 0 R/G 9 0 R/H 5 0 R>>";
  for (const auto& [form, resources] :
       {std::pair("/DR 7 0 R", std::string("<</Font 8 0 R>>")),
        std::pair("/DR<</Font 8 0 R>>", std::string("null")),
        std::pair("/DR 7 0 R", "<</ProcSet[/PDF]/Font" + fonts + ">>")}) {
    RawPdf file = PageWithFont(kHelvetica, "/AcroForm 6 0 R");
    file.Object(6, "<</Fields[]" + std::string(form) + ">>");
    file.Object(7, resources).Object(8, fonts);
    file.Object(9, "<</Type/Font/Subtype/Type1/BaseFont/Courier>>");
    EXPECT_EQ(FontOf(file, kShowsText)["/Subtype"], "/Type0");
    const Json written_form = written_->Follow(written_->Catalog()["/AcroForm"]);
    const Json kept = written_->Follow(written_->Follow(written_form["/DR"])["/Font"]);
    ASSERT_EQ(kept.size(), 3U) << form << resources;
    EXPECT_EQ(written_->Follow(kept["/F"])["/BaseFont"], "/Helvetica");
    EXPECT_EQ(written_->Follow(kept["/G"])["/BaseFont"], "/Courier");
    EXPECT_EQ(written_->Follow(kept["/H"])["/Subtype"], "/Type1");
  }
}

// Codes whose map nobody has are not known, and so are not the characters.
TEST_F(FontsTest, StayWhereTheirCodesAreNotKnown) {
  const Json font = FontOf(PageWithFont("<</Type/Font/Subtype/Type0/BaseFont/Boxes/Encoding/Odd"
                                        "/DescendantFonts[<</Subtype/CIDFontType2>>]>>"),
                           "BT /F 12 Tf (AB) Tj ET");
  EXPECT_EQ(font["/BaseFont"], "/Boxes");
  EXPECT_EQ(Report(),
            "not mended: font Boxes is not embedded, and no installed font can stand in for it\n");
}

TEST_F(FontsTest, OfPicturesKeepTheirCharacters) {
  FontOf(PageWithFont("<</Type/Font/Subtype/Type1/BaseFont/Symbol>>"), "BT /F 12 Tf (a) Tj ET");
  EXPECT_THAT(PageTexts(Path("out.pdf")), ElementsAre("\u03B1"));
}

TEST_F(FontsTest, OfType3HaveAGlyphForEveryCode) {
  RawPdf file = PageWithFont(
      "<</Type/Font/Subtype/Type3/FontBBox[0 0 1 1]/FontMatrix[1 0 0 1 0 0]/FirstChar 65/LastChar "
      "65"
      "/Widths[1]/CharProcs<</a 6 0 R>>/Encoding<</Differences[65/a]>>>>");
  file.Stream(6, "", "1 0 d0");
  const Json font = FontOf(file, "BT /F 12 Tf (AB) Tj ET");
  EXPECT_EQ(font["/CharProcs"].size(), 2U);
  EXPECT_EQ(font["/Encoding"]["/Differences"].size(), 4U);
}

TEST_F(FontsTest, TellTheirTextAtLevelU) {
  RawPdf file = PageWithFont(
      "<</Type/Font/Subtype/Type3/FontBBox[0 0 1 1]/FontMatrix[1 0 0 1 0 0]/FirstChar 65/LastChar "
      "65"
      "/Widths[1]/CharProcs<</a 6 0 R>>/Encoding<</Differences[65/a]>>>>");
  file.Stream(6, "", "1 0 d0");
  EXPECT_FALSE(FontOf(file, "BT /F 12 Tf (A) Tj ET").contains("/ToUnicode"));
  EXPECT_TRUE(FontOf(file, "BT /F 12 Tf (A) Tj ET", Level::k2u).contains("/ToUnicode"));
}

TEST(PictureEncodings, FollowTheStandard) {
  EXPECT_EQ(PictureOf("Symbol", 0x61), U'\u03B1');
  EXPECT_EQ(PictureOf("Symbol", 0x7E), U'\u223C');
  EXPECT_EQ(PictureOf("Symbol", 0xA5), U'\u221E');
  EXPECT_EQ(PictureOf("Symbol", 0xE5), U'\u2211');
  EXPECT_EQ(PictureOf("Symbol", 0xFE), U'\u23AD');
  EXPECT_EQ(PictureOf("ABCDEF+ZapfDingbats", 0x34), U'\u2714');
  EXPECT_EQ(PictureOf("ZapfDingbats", 0x6C), U'\u25CF');
  EXPECT_EQ(PictureOf("ZapfDingbats", 0xFE), U'\u27BE');
  EXPECT_EQ(PictureOf("Helvetica", 0x34), 0U);
}

// The characters of all codes that have one, in their order (ISO 32000-2, annex D.5 and D.6).
std::u32string PicturesOf(std::string_view font_name) {
  std::u32string pictures;
  for (unsigned code = 0; code < 256; ++code) {
    const char32_t picture = PictureOf(font_name, static_cast<std::uint8_t>(code));
    if (picture != 0) {
      pictures += picture;
    }
  }
  return pictures;
}

TEST(PictureEncodings, HaveTheseCharacters) {
  EXPECT_EQ(
      PicturesOf("Symbol"),
      U" !∀#∃%&∋()∗+,−./0123456789:;<=>?≅ΑΒΧΔΕΦΓΗΙϑΚΛΜΝΟΠΘΡΣΤΥςΩΞΨΖ[∴]⊥_‾αβχδεφγηιϕκλμνοπθρστυϖω"
      U"ξψζ{|}∼€ϒ′≤⁄∞ƒ♣♦♥♠↔←↑→↓°±″≥×∝∂•÷≠≡≈…⏐⎯↵ℵℑℜ℘⊗⊕∅∩∪⊃⊇⊄⊂⊆∈∉∠∇®©™∏√⋅¬∧∨⇔⇐⇑⇒⇓◊〈®©™∑⎛⎜⎝"
      U"⎡⎢⎣⎧⎨⎩⎪ 〉∫⌠⎮⌡⎞⎟⎠⎤⎥⎦⎫⎬⎭");
  EXPECT_EQ(
      PicturesOf("ZapfDingbats"),
      U" ✁✂✃✄☎✆✇✈✉☛☞✌✍✎✏✐✑✒✓✔✕✖✗✘✙✚✛✜✝✞✟✠✡✢✣✤✥✦✧★✩✪✫✬✭✮✯✰✱✲✳✴✵✶✷✸✹✺✻✼✽✾✿❀❁❂❃❄❅❆❇❈❉❊❋●❍■❏❐❑❒▲▼◆"
      U"❖◗❘❙❚❛❜❝❞❡❢❣❤❥❦❧♣♦♥♠①②③④⑤⑥⑦⑧⑨⑩❶❷❸❹❺❻❼❽❾❿➀➁➂➃➄➅➆➇➈➉➊➋➌➍➎➏➐➑➒➓➔→↔↕➘➙➚➛➜➝➞➟➠➡➢➣➤➥➦➧➨➩➪➫➬➭➮➯"
      U"➱➲➳➴➵➶➷➸➹➺➻➼➽➾");
  for (const unsigned code : {0x00U, 0x1FU, 0x7FU, 0x9FU, 0xFFU}) {
    EXPECT_EQ(PictureOf("Symbol", static_cast<std::uint8_t>(code)), 0U) << code;
    EXPECT_EQ(PictureOf("Dingbats", static_cast<std::uint8_t>(code)), 0U) << code;
  }
  EXPECT_EQ(PictureOf("ZapfDingbats", 0xA0), 0U);
  EXPECT_TRUE(HasPictures("ABCDEF+SymbolMT"));
  EXPECT_TRUE(HasPictures("Dingbats"));
  EXPECT_FALSE(HasPictures("SymbolBold"));
}

// A program with the letter A, cut from an installed face.
std::string ProgramOf(const fonts::FontFace& face) {
  return face.Subset({face.GlyphOf(U'A')});
}

TEST(SfntFile, SetsAdvancesAndMaps) {
  const auto face = FindSubstitute({.name = "Arial", .language = "", .characters = {{U'A', -1}}});
  ASSERT_NE(face, nullptr);
  const std::uint32_t glyph = face->GlyphOf(U'A');
  auto file = SfntFile::Read(ProgramOf(*face));
  ASSERT_TRUE(file.has_value());
  ASSERT_TRUE(file->SetAdvances({{glyph, 321}}));
  file->SetSymbolMap({{7, static_cast<std::uint16_t>(glyph)}, {9, 1}});
  const std::string bytes = file->Bytes();
  const auto program = fonts::FontProgram::Open(bytes);
  ASSERT_NE(program, nullptr);
  EXPECT_NEAR(*program->AdvanceOf(glyph), 321 * 1000.0 / face->units_per_em(), 0.1);
  ASSERT_EQ(program->maps().size(), 1U);
  EXPECT_TRUE(program->maps()[0].is_symbol());
  EXPECT_EQ(program->GlyphOf(0, 0xF007), glyph);
}

TEST(SfntFile, RefusesWhatIsNoneOrIsCut) {
  EXPECT_FALSE(SfntFile::Read("").has_value());
  EXPECT_FALSE(SfntFile::Read("%!PS").has_value());
  const auto face = FindSubstitute({.name = "Arial", .language = "", .characters = {{U'A', -1}}});
  ASSERT_NE(face, nullptr);
  const std::string bytes = ProgramOf(*face);
  EXPECT_FALSE(SfntFile::Read(bytes.substr(0, bytes.size() / 2)).has_value());
}

TEST(SubstituteFace, GoesByStyle) {
  const auto bold = FindSubstitute({.name = "Helvetica-Bold", .language = "", .characters = {}});
  ASSERT_NE(bold, nullptr);
  EXPECT_GE(bold->weight_class(), 600);
  const auto fixed = FindSubstitute(
      {.name = "NoSuchFont", .is_fixed_pitch = true, .language = "", .characters = {{U'A', 600}}});
  ASSERT_NE(fixed, nullptr);
  EXPECT_TRUE(fixed->is_fixed_pitch());
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
