#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/pages/TypefaceNames.h"
#include "pdf/write/RewriteFixture.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines {
namespace {

struct Row {
  const char* name;
  const char* family;
  bool is_bold;
  bool is_italic;
};

TEST(TypefaceNames, KnowsFamiliesAndStyles) {
  constexpr Row kRows[] = {
      {"ABCDEF+TimesNewRomanPS-BoldItalicMT", "Times New Roman", true, true},
      {"Helvetica-Oblique", "Helvetica", false, true},
      {"ArialNarrow,Bold", "Arial Narrow", true, false},
      {"OpenSans-Light", "Open Sans", false, false},
      {"PHGXPC+CMBX12", "CMBX12", true, false},
      {"HQSLLD+HelveticaNeueLTStd-BdCn", "Helvetica Neue", true, false},
      {"HelveticaNeueLTStd-HvIt", "Helvetica Neue", true, true},
      {"HelveticaNeueLTStd-MdIt", "Helvetica Neue", false, true},
      {"HelveticaNeueLTStd-Medium", "Helvetica Neue", false, false},
      {"NimbusRomNo9L-MediItal", "Times New Roman", true, true},
      {"NimbusRomNo9L-ReguItal", "Times New Roman", false, true},
      {"LMRomanSlant10-Regular", "LMRoman Slant10", false, true},
  };
  for (const Row& row : kRows) {
    const Typeface face = TypefaceNamed(row.name);
    EXPECT_EQ(face.family, row.family);
    EXPECT_EQ(face.is_bold, row.is_bold) << row.name;
    EXPECT_EQ(face.is_italic, row.is_italic) << row.name;
  }
}

// A font's name, the family that goes with it, and what its letters are like.
struct FamilyRow {
  const char* name;
  const char* family;
  bool is_serif = false;
  bool is_fixed_pitch = false;
};

TEST(TypefaceNames, TellsWhatTheLettersOfKnownFamiliesAreLike) {
  constexpr FamilyRow kRows[] = {
      {"TimesNewRomanPSMT", "Times New Roman", true},
      {"Times-Roman", "Times New Roman", true},
      {"NimbusRomNo9L-Regu", "Times New Roman", true},
      {"ArialNarrow", "Arial Narrow"},
      {"Arial-Black", "Arial Black"},
      {"ArialUnicodeMS", "Arial Unicode MS"},
      {"ArialMT", "Arial"},
      {"HelveticaNeue-Light", "Helvetica Neue"},
      {"Helvetica", "Helvetica"},
      {"NimbusSanL-Regu", "Helvetica"},
      {"CourierNewPSMT", "Courier New", true, true},
      {"Courier", "Courier New", true, true},
      {"NimbusMonL-Regu", "Courier New", true, true},
      {"LucidaConsole", "Lucida Console", false, true},
      {"Consolas", "Consolas", false, true},
      {"Calibri", "Calibri"},
      {"Carlito", "Carlito"},
      {"CambriaMath", "Cambria Math", true},
      {"Cambria", "Cambria", true},
      {"Caladea-Regular", "Caladea", true},
      {"Georgia", "Georgia", true},
      {"Garamond", "Garamond", true},
      {"PalatinoLinotype-Roman", "Palatino Linotype", true},
      {"BookAntiqua", "Book Antiqua", true},
      {"LiberationSerif", "Liberation Serif", true},
      {"LiberationSans", "Liberation Sans"},
      {"LiberationMono", "Liberation Mono", false, true},
      {"DejaVuSansMono", "DejaVu Sans Mono", false, true},
      {"DejaVuSans", "DejaVu Sans"},
      {"DejaVuSerif", "DejaVu Serif", true},
      {"SegoeUI", "Segoe UI"},
      {"TrebuchetMS", "Trebuchet MS"},
      {"ComicSansMS", "Comic Sans MS"},
      {"Verdana", "Verdana"},
      {"Tahoma", "Tahoma"},
      {"CMTT10", "CMTT10", true, true},
      {"CMSS10", "CMSS10"},
      {"CMR10", "CMR10", true},
      {"Own Sans_Mono", "Own Sans_Mono", false, true},
      {"OwnTypewriter", "Own Typewriter", false, true},
      {"ZConsole", "ZConsole", false, true},
      {"Own-Regular", "Own"},
  };
  for (const FamilyRow& row : kRows) {
    const Typeface face = TypefaceNamed(row.name);
    EXPECT_EQ(face.family, row.family);
    EXPECT_EQ(face.is_serif, row.is_serif) << row.name;
    EXPECT_EQ(face.is_fixed_pitch, row.is_fixed_pitch) << row.name;
    EXPECT_FALSE(face.is_italic) << row.name;
  }
  // Names of these families that are not written as words need the table; of others they stay.
  for (const FamilyRow& row : kRows) {
    std::string name = row.name;
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    const bool is_own = name.starts_with("CM") || name.starts_with("OWN") || name.starts_with("ZC");
    EXPECT_EQ(TypefaceNamed(name).family, is_own ? name.substr(0, name.find('-')) : row.family);
  }
}

TEST(TypefaceNames, KnowsEveryWordForBoldAndItalic) {
  for (const char* name :
       {"Own-Bold", "Own-Black", "OwnHeavy", "Own SemiBold", "Own-DemiX", "CMBX10", "CMSSBX10",
        "SFBX1000", "Own-Bd", "Own-Blk", "Own-Medi", "OWN-BOLD"}) {
    EXPECT_TRUE(TypefaceNamed(name).is_bold) << name;
    EXPECT_FALSE(TypefaceNamed(name).is_italic) << name;
  }
  for (const char* name :
       {"Own-Italic", "Own-Oblique", "CMTI10", "CMMI10", "CMSL10", "OwnKursiv", "OwnSlanted",
        "SFTI1000", "Own-It", "Own-Ital", "Own-Obl", "OWN-ITALIC"}) {
    EXPECT_TRUE(TypefaceNamed(name).is_italic) << name;
    EXPECT_FALSE(TypefaceNamed(name).is_bold) << name;
  }
  EXPECT_FALSE(TypefaceNamed("Own-Itx").is_italic);
  EXPECT_FALSE(TypefaceNamed("OwnIt").is_italic);
}

// An object that is a font with this descriptor, named Own.
Typeface DescribedAs(const std::string& descriptor) {
  const std::string bytes =
      testing::RawPdf()
          .Object(1, "<</Type/Catalog/Pages<</Kids[]>>>>")
          .Object(5, "<</Type/Font/Subtype/TrueType/BaseFont/Own/FontDescriptor<<" + descriptor +
                         ">>>>")
          .Table();
  const auto document = testing::OpenBytes(bytes);
  return TypefaceOf({*document, pdf::Object::Ref({5, 0})}, nullptr);
}

TEST(TypefaceNames, AreLikeTheirDescriptorsSay) {
  const Typeface plain = DescribedAs("/Flags 32");
  EXPECT_FALSE(plain.is_bold || plain.is_italic || plain.is_serif || plain.is_fixed_pitch);
  EXPECT_EQ(plain.family, "Own");
  EXPECT_TRUE(DescribedAs("/Flags 33").is_fixed_pitch);
  EXPECT_TRUE(DescribedAs("/Flags 34").is_serif);
  EXPECT_TRUE(DescribedAs("/Flags 96").is_italic);
  EXPECT_TRUE(DescribedAs("/Flags 262176").is_bold);
}

}  // namespace
}  // namespace TarnixTools::engines
