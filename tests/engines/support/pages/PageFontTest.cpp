#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/pages/PageFont.h"
#include "pdf/file/ByteSource.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines {
namespace {

// The advance of "i" and of "W" in a font with these entries.
struct Advances {
  double of_i = 0;
  double of_w = 0;
};

Advances AdvancesOf(const std::string& entries) {
  testing::RawPdf raw;
  raw.Pages(1, "").Object(9, "<</Type/Font/Subtype/Type1" + entries + ">>");
  const std::string bytes = raw.Table();
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  pdf::Arena arena;
  PageFont font(*document, document->Load({9, 0}, arena));
  return {font.AdvanceOf('i'), font.AdvanceOf('W')};
}

TEST(PageFont, TakesAdvancesOfTheStandardFontsFromInstalledFaces) {
  const Advances advances = AdvancesOf("/BaseFont/Helvetica/Encoding/WinAnsiEncoding");
  EXPECT_NEAR(advances.of_i, 0.222, 0.002);
  EXPECT_NEAR(advances.of_w, 0.944, 0.002);
}

TEST(PageFont, BelievesWidthsThatAreThere) {
  const Advances advances =
      AdvancesOf("/BaseFont/Helvetica/Encoding/WinAnsiEncoding/FirstChar 105/Widths[500]");
  EXPECT_NEAR(advances.of_i, 0.5, 1e-9);
}

// The em of a Type 3 font with this box, whose only glyph has this width.
double Type3EmOf(const std::string& box, const std::string& width) {
  testing::RawPdf raw;
  raw.Pages(1, "").Object(9,
                          "<</Type/Font/Subtype/Type3/FontMatrix[0.012 0 0 0.012 0 0]/CharProcs<<>>"
                          "/Encoding<<>>/FirstChar 65/Widths[" +
                              width + "]/FontBBox[" + box + "]>>");
  const std::string bytes = raw.Table();
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  pdf::Arena arena;
  return PageFont(*document, document->Load({9, 0}, arena)).em();
}

TEST(PageFont, IsAsLargeAsTheBoxOfItsGlyphs) {
  EXPECT_EQ(Type3EmOf("0 -20 83 71", "83"), 1);
  EXPECT_NEAR(Type3EmOf("0 0 800 1100", "800"), 12, 1e-9);
}

TEST(PageFont, DoesNotBelieveABoxThatIsFarFromItsGlyphs) {
  EXPECT_EQ(Type3EmOf("0 0 1000 1000", "83"), 1);
  EXPECT_NEAR(Type3EmOf("0 0 10000 10000", "1000"), 12, 1e-9);
  EXPECT_NEAR(Type3EmOf("0 0 0.5 4", "0.5"), 0.006, 1e-9);
  EXPECT_NEAR(Type3EmOf("0 0 0.5 3", "0.5"), 3 / 1.1 * 0.012, 1e-9);
  EXPECT_NEAR(Type3EmOf("0 0 10 10", "(none)"), 10 / 1.1 * 0.012, 1e-9);
  EXPECT_NEAR(Type3EmOf("0 0 10 10", "0"), 10 / 1.1 * 0.012, 1e-9);
  EXPECT_NEAR(Type3EmOf("0 0 10 10", "-1.5"), 1.5 * 0.012, 1e-9);
}

}  // namespace
}  // namespace TarnixTools::engines
