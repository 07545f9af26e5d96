#include <gtest/gtest.h>

#include "engines/support/pages/TypefaceNames.h"

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

}  // namespace
}  // namespace TarnixTools::engines
