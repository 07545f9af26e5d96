// Small TrueType fonts in code, for programs that know no others.
//
//   const TempDir fonts;
//   WriteBytes(fonts.Path("a.ttf"), TestFont{.family = "Boxes", .is_variable = true}.Bytes());
//   RunTarnix({...}, {.environment = {{"FONTCONFIG_FILE", FontConfiguration(fonts)}}});
#ifndef TARNIX_TESTS_SUPPORT_TEST_FONT_H_
#define TARNIX_TESTS_SUPPORT_TEST_FONT_H_

#include <string>

#include "support/TempDir.h"

namespace TarnixTools::testing {

// It has a space and an "A", which is a box as high as the em of 1000 units.
struct TestFont {
  std::string family = "Test";
  std::string style = "Regular";
  int width = 300;  // of the box; its advance is 100 more
  // With an axis of weight from 400 to 900, at the end of which the box is 500 wider, and the named
  // instance Bold at 700.
  bool is_variable = false;

  std::string Bytes() const;
};

// Writes a configuration by which the directory's fonts are all there are, and returns its path.
std::string FontConfiguration(const TempDir& fonts);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_TEST_FONT_H_
