// What the entries of fields and annotations say, of their own and of what is above them.
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "engines/pdfa/convert/OpenedConversion.h"
#include "engines/pdfa/convert/annotations/FieldEntries.h"
#include "pdf/Limits.h"

namespace TarnixTools::engines::pdfa {
namespace {

testing::RawPdf FileWith(const std::string& entries, const std::string& form = "") {
  testing::RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R/AcroForm<<" + form + ">>>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]>>");
  return file.Object(4, "<<" + entries + ">>");
}

TEST(FieldEntries, KnowTheUsualNamesOfFonts) {
  OpenedConversion opened(
      FileWith("", "/DR<</Font<</Own 5 0 R/Helv<</BaseFont/Other>>/Odd<</BaseFont(x)>>>>>>")
          .Object(5, "<</BaseFont/Boxes>>"));
  FieldEntries entries(opened.document(), opened.Loaded(4));
  for (const auto& [resource, name] :
       {std::pair("Own", "Boxes"), std::pair("Helv", "Other"), std::pair("Odd", "Odd"),
        std::pair("", ""), std::pair("Unknown", "Unknown"), std::pair("HeBo", "Helvetica-Bold"),
        std::pair("HeOb", "Helvetica-Oblique"), std::pair("HeBO", "Helvetica-BoldOblique"),
        std::pair("TiRo", "Times-Roman"), std::pair("TiBo", "Times-Bold"),
        std::pair("TiIt", "Times-Italic"), std::pair("TiBI", "Times-BoldItalic"),
        std::pair("Cour", "Courier"), std::pair("CoBo", "Courier-Bold"),
        std::pair("CoOb", "Courier-Oblique"), std::pair("CoBO", "Courier-BoldOblique"),
        std::pair("ZaDb", "ZapfDingbats")}) {
    EXPECT_EQ(entries.FontName(resource), name) << resource;
  }
  OpenedConversion bare(FileWith(""));
  EXPECT_EQ(FieldEntries(bare.document(), bare.Loaded(4)).FontName("Helv"), "Helvetica");
}

TEST(FieldEntries, SayHowWideTheBorderIs) {
  for (const auto& [border, width] :
       {std::pair("", 7.0), std::pair("/BS<</W 3>>", 3.0), std::pair("/BS<</W 0>>", 0.0),
        std::pair("/BS<</W 2.5>>/Border[0 0 4]", 2.5), std::pair("/BS<<>>/Border[0 0 4]", 4.0),
        std::pair("/BS<</W/x>>/Border[0 0 4]", 4.0), std::pair("/Border[0 0]", 7.0),
        std::pair("/Border[0 0 0]", 0.0), std::pair("/Border[0 0/x]", 0.0),
        std::pair("/Border[5 6 1.5[1 2]]", 1.5), std::pair("/Border 5", 7.0)}) {
    OpenedConversion opened(FileWith(border));
    EXPECT_EQ(FieldEntries(opened.document(), opened.Loaded(4)).BorderWidth(7), width) << border;
  }
}

TEST(FieldEntries, SayWhereTheAnnotationIs) {
  for (const auto& [rectangle, box] :
       {std::pair("", pdf::Box{0, 0, 1, 1}), std::pair("/Rect[1 2 3]", pdf::Box{0, 0, 1, 1}),
        std::pair("/Rect[1 2 30 40]", pdf::Box{1, 2, 30, 40}),
        std::pair("/Rect[30 40 1 2]", pdf::Box{1, 2, 30, 40})}) {
    OpenedConversion opened(FileWith(rectangle));
    EXPECT_EQ(FieldEntries(opened.document(), opened.Loaded(4)).Rectangle(), box) << rectangle;
  }
}

// The nearest one above that says it; not from further than references are followed, nor around.
TEST(FieldEntries, AreInherited) {
  const int steps = static_cast<int>(pdf::limits::kMaxReferenceSteps);
  for (const int above : {0, 1, steps - 1, steps}) {
    testing::RawPdf file = FileWith("/Parent 5 0 R" + std::string(above == 0 ? "/FT/Tx" : ""));
    for (int i = 1; i <= above; ++i) {
      file.Object(4 + i, "<</Parent " + std::to_string(i == above ? 4 : 5 + i) + " 0 R" +
                             (i == above ? "/FT/Ch/Ff 4096" : "") + ">>");
    }
    OpenedConversion opened(file);
    FieldEntries entries(opened.document(), opened.Loaded(4));
    EXPECT_EQ(entries.Type(), above == 0 ? "Tx" : above < steps ? "Ch" : "") << above;
    EXPECT_EQ(entries.HasFlag(FieldEntries::kMultiline), above > 0 && above < steps) << above;
    EXPECT_FALSE(entries.HasFlag(FieldEntries::kPassword));
    EXPECT_TRUE(entries.Inherited("V").IsNull());
  }
}

TEST(FieldEntries, AreThoseOfTheFormAtLast) {
  OpenedConversion opened(FileWith("/Parent<</Q 1>>", "/DA(form)/Q 2"));
  FieldEntries entries(opened.document(), opened.Loaded(4));
  EXPECT_EQ(entries.Text(entries.OfForm("DA")), "form");
  EXPECT_EQ(entries.OfForm("Q").IntegerOr(0), 1);
  EXPECT_TRUE(entries.Inherited("DA").IsNull());
  EXPECT_EQ(entries.Text(pdf::Object::Name("x")), "");
  EXPECT_EQ(FieldEntries::kMultiline, 4096);
  EXPECT_EQ(FieldEntries::kPassword, 8192);
  EXPECT_EQ(FieldEntries::kRadio, 32768);
  EXPECT_EQ(FieldEntries::kPushButton, 65536);
  EXPECT_EQ(FieldEntries::kCombo, 131072);
  EXPECT_EQ(FieldEntries::kComb, 16777216);
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
