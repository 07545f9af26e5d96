#include <cmath>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/fonts/CompositeFont.h"
#include "engines/support/fonts/FontCatalog.h"
#include "engines/support/fonts/FontProgram.h"

namespace TarnixTools::engines::fonts {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

// Keeps what it is given.
class KeptObjects : public FontObjects {
 public:
  std::uint32_t AddValue(const std::string& text) override { return Add(text); }

  std::uint32_t AddStream(const std::string& entries, std::string bytes) override {
    return Add("<<" + entries + ">>" + bytes);
  }

  // The first object that has this text.
  std::string With(const std::string& text) const {
    for (const auto& [number, object] : objects_) {
      if (object.find(text) != std::string::npos) {
        return object;
      }
    }
    return "";
  }

 private:
  std::uint32_t Add(std::string text) {
    const auto number = static_cast<std::uint32_t>(objects_.size() + 1);
    objects_[number] = std::move(text);
    return number;
  }

  std::map<std::uint32_t, std::string> objects_;
};

// Null where the family is not installed.
std::unique_ptr<FontFace> FaceOf(const char* family, const char* style = "") {
  const InstalledFace* installed = FontCatalog::Get().Find(family, style);
  return installed != nullptr ? FontFace::Load(installed->file, installed->index) : nullptr;
}

class CompositeFontTest : public ::testing::Test {
 protected:
  void SetUp() override {
    face_ = FaceOf("Liberation Sans");
    if (face_ == nullptr) {
      GTEST_SKIP() << "needs the fonts Liberation";
    }
    a_ = face_->GlyphOf(U'A');
    b_ = face_->GlyphOf(U'B');
    ASSERT_EQ(b_, a_ + 1);
  }

  std::string Written(const CompositeFont& font) {
    std::string program = font.Program();
    EXPECT_FALSE(program.empty());
    return font.Write(std::move(program), objects_);
  }

  std::unique_ptr<FontFace> face_;
  std::uint32_t a_ = 0;
  std::uint32_t b_ = 0;
  KeptObjects objects_;
};

TEST_F(CompositeFontTest, NeedsNoMapsWhereCodesAreGlyphs) {
  CompositeFont font(*face_, {});
  font.Add(b_, b_, 667, U"B");
  font.Add(a_, a_, 666.5, U"A");
  const std::string dictionary = Written(font);
  EXPECT_THAT(dictionary, HasSubstr("/Encoding/Identity-H/"));
  const std::string descendant = objects_.With("/CIDFontType2");
  EXPECT_THAT(descendant, HasSubstr("/CIDToGIDMap/Identity/"));
  EXPECT_THAT(descendant, HasSubstr("/W[" + std::to_string(a_) + "[666.5 667]]"));
  EXPECT_THAT(objects_.With("beginbfchar"), HasSubstr("2 beginbfchar\n<0024><0041>\n<0025><0042>"));
  EXPECT_EQ(objects_.With("/CIDSet"), "");
}

TEST_F(CompositeFontTest, MapsOtherCodesToGlyphs) {
  CompositeFont font(*face_, {.code_bytes = 1});
  font.Add(1, b_, 600, U"fi");
  font.Add(3, a_, 500, U"A");
  EXPECT_THAT(Written(font), HasSubstr("/Encoding "));
  EXPECT_THAT(objects_.With("begincidchar"), HasSubstr("2 begincidchar\n<01> 1\n<03> 3\n"));
  EXPECT_THAT(objects_.With("beginbfchar"), HasSubstr("<01><00660069>\n<03><0041>\n"));
  EXPECT_THAT(objects_.With("/CIDFontType2"), HasSubstr("/W[1[600]3[500]]"));
  const std::string map{0, 0, 0, static_cast<char>(b_), 0, 0, 0, static_cast<char>(a_)};
  EXPECT_EQ(objects_.With(map), "<<>>" + map);
}

TEST_F(CompositeFontTest, WritesDownwardsWhereItIsAsked) {
  CompositeFont across(*face_, {});
  CompositeFont down(*face_, {.is_vertical = true});
  for (CompositeFont* font : {&across, &down}) {
    font->Add(a_, a_, 667, U"A");
  }
  EXPECT_THAT(Written(across), HasSubstr("/Identity-H"));
  EXPECT_THAT(Written(down), HasSubstr("/Identity-V"));
}

TEST_F(CompositeFontTest, ListsGlyphsWhereItIsAsked) {
  CompositeFont font(*face_, {.lists_glyphs = true});
  font.Add(2, 2, 300, U"x");
  Written(font);
  EXPECT_THAT(objects_.With("/FontDescriptor/FontName"), HasSubstr("/CIDSet"));
  EXPECT_EQ(objects_.With("\xA0"), "<<>>\xA0");
}

TEST_F(CompositeFontTest, TellsHowTheFaceLooks) {
  const auto bold = FaceOf("Liberation Mono", "Bold Italic");
  ASSERT_NE(bold, nullptr);
  CompositeFont plain(*face_, {});
  plain.Add(a_, a_, 667, U"A");
  Written(plain);
  EXPECT_THAT(objects_.With("/StemV"), HasSubstr("/Flags 4/"));
  EXPECT_THAT(objects_.With("/StemV"), HasSubstr("/StemV 87/"));
  objects_ = {};
  CompositeFont other(*bold, {});
  other.Add(bold->GlyphOf(U'A'), bold->GlyphOf(U'A'), 600, U"A");
  Written(other);
  EXPECT_THAT(objects_.With("/StemV"), HasSubstr("/Flags 69/"));
  EXPECT_THAT(objects_.With("/StemV"), HasSubstr("/StemV 165/"));
}

TEST_F(CompositeFontTest, TellsTheMeasuresOfTheFaceInThousandths) {
  CompositeFont font(*face_, {});
  font.Add(a_, a_, 667, U"A");
  std::string program = font.Program();
  const std::size_t size = program.size();
  font.Write(std::move(program), objects_);
  const auto scaled = [&](int units) {
    return std::to_string(std::lround(units * 1000.0 / face_->units_per_em()));
  };
  const FontFace::Box box = face_->bounds();
  const std::string descriptor = objects_.With("/FontDescriptor/FontName");
  EXPECT_THAT(descriptor,
              HasSubstr("/FontBBox[" + scaled(box.left) + ' ' + scaled(box.bottom) + ' ' +
                        scaled(box.right) + ' ' + scaled(box.top) + "]/ItalicAngle 0/Ascent " +
                        scaled(face_->ascent()) + "/Descent " + scaled(face_->descent()) +
                        "/CapHeight " + scaled(face_->cap_height()) + "/StemV 87/FontFile2 "));
  EXPECT_NE(objects_.With("<</Length1 " + std::to_string(size) + ">>"), "");
  EXPECT_THAT(objects_.With("/CIDFontType2"),
              HasSubstr("/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>"));
}

TEST_F(CompositeFontTest, OfCodesThatAreNotGlyphsIsVerticalByItsMap) {
  CompositeFont font(*face_, {.code_bytes = 1, .is_vertical = true});
  font.Add(1, b_, 600, U"B");
  font.Add(2, b_, 600, U"B");
  EXPECT_THAT(Written(font), HasSubstr("/Subtype/Type0/BaseFont/"));
  EXPECT_THAT(objects_.With("begincidchar"), HasSubstr("/WMode 1>>"));
  EXPECT_THAT(objects_.With("begincidchar"), HasSubstr("2 begincidchar\n<01> 1\n<02> 2\n"));
  EXPECT_THAT(objects_.With("/CIDFontType2"), HasSubstr("/W[1[600 600]]"));
}

TEST_F(CompositeFontTest, IsNamedByItsGlyphsAndCodes) {
  const auto name_of = [&](std::uint32_t code, std::uint32_t glyph) {
    CompositeFont font(*face_, {});
    font.Add(code, glyph, 667, U"A");
    const std::string text = Written(font);
    const std::size_t start = text.find("/BaseFont/") + 10;
    return text.substr(start, text.find('/', start) - start);
  };
  EXPECT_EQ(name_of(a_, a_), name_of(a_, a_));
  EXPECT_NE(name_of(a_, a_), name_of(b_, a_));
  EXPECT_NE(name_of(a_, a_), name_of(a_, b_));
  EXPECT_THAT(name_of(a_, a_), ::testing::MatchesRegex("[A-Z]{6}\\+LiberationSans"));
}

TEST(CompositeFont, OfPostScriptOutlinesSelectsByCharacterIdentifiers) {
  const auto face = FaceOf("Nimbus Sans");
  if (face == nullptr || face->outline_kind() != OutlineKind::kCff) {
    GTEST_SKIP() << "needs the OpenType fonts URW Base 35";
  }
  const std::uint32_t glyph = face->GlyphOf(U'A');
  KeptObjects objects;
  CompositeFont font(*face, {});
  font.Add(0x41, glyph, 667, U"A");
  EXPECT_THAT(font.Write(font.Program(), objects), HasSubstr("-TarnixCodes/Encoding "));
  EXPECT_THAT(objects.With("begincidchar"), HasSubstr("<0041> " + std::to_string(glyph)));
  EXPECT_THAT(objects.With("/CIDFontType0/"), Not(HasSubstr("/CIDToGIDMap")));
  EXPECT_THAT(objects.With("/StemV"), HasSubstr("/FontFile3"));
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
