#include <string>

#include <gtest/gtest.h>

#include "engines/optimizer/fonts/FontFixture.h"
#include "engines/optimizer/fonts/StandardFonts.h"
#include "engines/support/fonts/FontCatalog.h"
#include "engines/support/fonts/ProgramFixture.h"
#include "support/TempDir.h"

namespace TarnixTools::engines::optimizer {
namespace {

using testing::FontCase;
using testing::RawPdf;

// The file of a face, by default of the one with Helvetica's metrics; empty where it is not installed.
std::string FaceBytes(const std::string& family = "Liberation Sans",
                      const std::string& style = "Regular") {
  const fonts::InstalledFace* face = fonts::FontCatalog::Get().Find(family, style);
  return face != nullptr && face->family == family ? testing::ReadBytes(face->file) : std::string();
}

// A page that shows "AB" in a font with these entries, whose descriptor is object 8.
FontCase Showing(const std::string& entries, const std::string& program) {
  return FontCase(RawPdf()
                      .Stream(4, "", "BT /F 9 Tf (AB) Tj ET")
                      .Object(5, "<</Type/Font/Subtype/Type1/FontDescriptor 8 0 R" + entries + ">>")
                      .Object(6, "null")
                      .Object(8, "<</Type/FontDescriptor/Flags 32/FontFile2 9 0 R>>")
                      .Stream(9, "", program));
}

bool IsStandard(const std::string& entries, const std::string& program) {
  FontCase test = Showing(entries, program);
  FontReport report;
  pdf::DocumentRewriter rewriter(test.source());
  const auto jobs = PlanFonts(test.source(), test.use(), rewriter, {}, report);
  return jobs.size() == 1 && IsStandardProgram(program, jobs[0]);
}

TEST(StandardFonts, AreThoseThatTheInstalledFaceAgreesWith) {
  const std::string face = FaceBytes();
  if (face.empty()) {
    GTEST_SKIP() << "needs the fonts Liberation";
  }
  EXPECT_TRUE(IsStandard("/BaseFont/Helvetica/Encoding/WinAnsiEncoding", face));
  EXPECT_TRUE(IsStandard("/BaseFont/ABCDEF+Helvetica/FirstChar 65/Widths[667 667]", face));
  EXPECT_FALSE(IsStandard("/BaseFont/Helvetica/FirstChar 65/Widths[667 700]", face));
  EXPECT_FALSE(IsStandard("/BaseFont/Helvetica/Encoding<</Differences[66/nonsense]>>", face));
  EXPECT_FALSE(IsStandard("/BaseFont/Times-Roman", face));
  EXPECT_FALSE(IsStandard("/BaseFont/Arial", face));
  EXPECT_FALSE(IsStandard("/BaseFont/Symbol", face));
  EXPECT_FALSE(IsStandard("/BaseFont/Helvetica", testing::CffProgram({"A", "B"})));
  EXPECT_FALSE(IsStandard("/BaseFont/Helvetica", "no font"));
}

TEST(StandardFonts, HaveFacesInAllTheirStyles) {
  for (const auto& [name, family] : {std::pair<std::string, std::string>("Courier", "Mono"),
                                     {"Helvetica", "Sans"},
                                     {"Times", "Serif"}}) {
    for (const auto& [suffix, style] : {std::pair<std::string, std::string>("", "Regular"),
                                        {"-Bold", "Bold"},
                                        {"-Oblique", "Italic"},
                                        {"-BoldOblique", "Bold Italic"}}) {
      const std::string face = FaceBytes("Liberation " + family, style);
      if (face.empty()) {
        GTEST_SKIP() << "needs the fonts Liberation";
      }
      std::string font = name + suffix;
      if (name == "Times") {
        const std::size_t slant = font.find("Oblique");
        font = suffix.empty()               ? "Times-Roman"
               : slant == std::string::npos ? font
                                            : font.replace(slant, 7, "Italic");
      }
      EXPECT_TRUE(IsStandard("/Encoding/WinAnsiEncoding/BaseFont/" + font, face)) << font;
      EXPECT_FALSE(IsStandard("/Encoding/WinAnsiEncoding/BaseFont/X" + font, face)) << font;
    }
  }
}

TEST(StandardFonts, AreDroppedFromTheirDescriptors) {
  FontCase test = Showing("/BaseFont/Helvetica", "program");
  FontReport report;
  pdf::DocumentRewriter rewriter(test.source());
  const auto jobs = PlanFonts(test.source(), test.use(), rewriter, {}, report);
  ASSERT_EQ(jobs.size(), 1U);
  DropProgram(rewriter, jobs[0], report);
  pdf::StringSink sink;
  rewriter.Write(sink);
  EXPECT_EQ(report.dropped, 1U);
  EXPECT_EQ(sink.bytes().find("FontFile2"), std::string::npos);
  EXPECT_EQ(sink.bytes().find("program"), std::string::npos);
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
