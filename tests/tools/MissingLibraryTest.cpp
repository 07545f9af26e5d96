// What jobs say when a library or a font that they need is not installed.
#include "support/Surroundings.h"
#include "support/TestImages.h"
#include "tools/EveryJob.h"

namespace TarnixTools::testing {
namespace {

using ::testing::EndsWith;

constexpr const char* kPdfium = "PDFium is not installed: libreoffice-core-nogui";
constexpr const char* kFontLibraries =
    "a library is not installed: libfontconfig1 libfreetype6 libharfbuzz0b libharfbuzz-subset0 "
    "libfribidi0";
constexpr const char* kArial = "neither the font nor Arial is installed: fonts-liberation";

class MissingLibraries : public CliTest {
 protected:
  MissingLibraries() {
    TestPdf()
        .Page()
        .Content("/G gs 1 0 0 rg 10 10 100 100 re f BT /F 12 Tf 50 50 Td (text) Tj ET")
        .PageEntry(
            "/Resources<</ExtGState<</G<</ca 0.5>>>>"
            "/Font<</F {{font}}>>>>")
        .Object("font", "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>")
        .Write(Path("doc.pdf"));
    WriteFile("marks.json", R"([{"type": "number"}])");
    WriteFile("fonts.conf", "<fontconfig><dir>/nowhere</dir></fontconfig>");
  }

  // The program finds no library with this in its name.
  RunResult RunWithout(const std::string& library, const std::vector<std::string>& words) const {
    return Run(words,
               {.environment = {{"LD_PRELOAD", FaultInjector()}, {"TARNIX_MISSING", library}}});
  }

  void ExpectTold(const RunResult& result, const std::string& cause, const std::string& job) const {
    EXPECT_EQ(result.status, 23) << job << ": " << result.err;
    EXPECT_THAT(result.err.substr(0, result.err.find('\n')), EndsWith(" (" + cause + ")")) << job;
    EXPECT_THAT(directory_.Names(), ::testing::ElementsAre("doc.pdf", "fonts.conf", "marks.json"));
  }
};

TEST_F(MissingLibraries, AreNamedWithTheirPackages) {
  TARNIX_NEED_FAULT_INJECTOR();

  struct Case {
    const char* library;
    std::vector<std::string> words;
    const char* cause;
  };

  const std::vector<Case> cases = {
      {"pdfium", {"pdf2img", "doc.pdf"}, kPdfium},
      {"pdfium", {"pdfa", "--level", "1b", "doc.pdf"}, kPdfium},
      {"fontconfig", {"number", "doc.pdf"}, kFontLibraries},
      {"fontconfig", {"stamp-text", "--text", "x", "doc.pdf"}, kFontLibraries},
      {"fontconfig", {"transform", "--recipe", "marks.json", "doc.pdf"}, kFontLibraries},
      {"fontconfig", {"pdfa", "doc.pdf"}, kFontLibraries},
      {"fontconfig", {"office", "doc.pdf"}, kFontLibraries},
      {"harfbuzz", {"number", "doc.pdf"}, kFontLibraries},
      {"harfbuzz", {"pdfa", "doc.pdf"}, kFontLibraries},
      {"harfbuzz", {"office", "doc.pdf"}, kFontLibraries},
      {"freetype", {"pdfa", "doc.pdf"}, kFontLibraries},
  };
  for (const Case& each : cases) {
    ExpectTold(RunWithout(each.library, each.words), each.cause, each.words[0]);
  }
}

TEST_F(MissingLibraries, ThatAJobDoesNotNeedAreNotMissed) {
  TARNIX_NEED_FAULT_INJECTOR();
  for (const std::vector<std::string>& words : {std::vector<std::string>{"rotate", "--angle", "90"},
                                                {"split"},
                                                {"repair"},
                                                {"compress"},
                                                {"metadata", "--author", "A"},
                                                {"unlock"},
                                                {"info"}}) {
    std::vector<std::string> all = words;
    all.emplace_back("doc.pdf");
    for (const std::string library : {"pdfium", "fontconfig", "tesseract"}) {
      EXPECT_EQ(RunWithout(library, all).status, 0) << words[0] << " without " << library;
    }
  }
}

TEST_F(MissingLibraries, OfficeIsNamedWhereItIsTheOne) {
  TARNIX_NEED_FAULT_INJECTOR();
  const RunResult result = RunWithout("tarnixoffice", {"office", "doc.pdf"});
  EXPECT_EQ(result.status, 17);
  EXPECT_THAT(result.err, EndsWith("libtarnixoffice.so.5 is not installed\n"));
}

// A scanned page is a picture then.
TEST_F(MissingLibraries, AreToldWhereAJobDoesWithout) {
  TARNIX_NEED_FAULT_INJECTOR();
  TestPdf()
      .Page("Text")
      .Page()
      .Content("q 612 0 0 792 0 0 cm BI /W 1 /H 1 /CS /G /BPC 8 /F /AHx ID 80> EI Q")
      .Write(Path("mixed.pdf"));
  const RunResult result = RunWithout("tesseract", {"office", "mixed.pdf"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.err, ::testing::HasSubstr("1 scanned text dropped: not recognised: Tesseract "
                                               "is not installed: libtesseract5\n"));
  EXPECT_TRUE(HasFile("mixed.docx"));
}

// The font of the program's own marks, where no font at all is installed.
TEST_F(MissingLibraries, AndMissingFontsAreToldApart) {
  const RunSetup no_fonts = {.environment = {{"FONTCONFIG_FILE", Path("fonts.conf")}}};
  for (const std::vector<std::string>& words : {std::vector<std::string>{"number"},
                                                {"stamp-text", "--text", "x"},
                                                {"transform", "--recipe", "marks.json"}}) {
    std::vector<std::string> all = words;
    all.emplace_back("doc.pdf");
    ExpectTold(Run(all, no_fonts), kArial, words[0]);
  }
}

}  // namespace
}  // namespace TarnixTools::testing
