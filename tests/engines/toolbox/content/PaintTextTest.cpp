#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/toolbox/content/Painted.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using TarnixTools::testing::ProgramResult;
using TarnixTools::testing::QpdfComplaints;
using TarnixTools::testing::RunProgram;
using TarnixTools::testing::TestPdf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

// A word's box, by pdftotext: from the upper left.
struct WordBox {
  double left = 0, top = 0, right = 0, bottom = 0;
};

WordBox BoxOfWord(const std::string& path, const std::string& word) {
  const std::string boxes = RunProgram({"pdftotext", "-bbox", path, "-"}).output;
  const std::size_t end = boxes.find(">" + word + "</word>");
  WordBox box;
  if (end != std::string::npos) {
    const std::size_t start = boxes.rfind("<word", end);
    EXPECT_EQ(std::sscanf(boxes.c_str() + start,
                          "<word xMin=\"%lf\" yMin=\"%lf\" xMax=\"%lf\" yMax=\"%lf\"", &box.left,
                          &box.top, &box.right, &box.bottom),
              4);
  }
  return box;
}

class PaintText : public ::testing::Test {
 protected:
  void SetUp() override {
    TARNIX_NEED_PROGRAM("pdftotext");
    TARNIX_NEED_PROGRAM("qpdf");
    TARNIX_NEED_FONT("Liberation Sans");
  }
};

TEST_F(PaintText, ComesOntoThePage) {
  Painted painted(TestPdf().Pages(2).Bytes());
  painted.Paint([](Canvas& page) { EXPECT_EQ(page.Text(U"Number"), 1); });
  EXPECT_EQ(QpdfComplaints(painted.path()), "");
  for (const std::string& text : painted.Texts()) {
    EXPECT_THAT(text, HasSubstr("Page"));
    EXPECT_THAT(text, HasSubstr("Number"));
  }
}

TEST_F(PaintText, StartsWhereItIsToldAndIsAsWideAsMeasured) {
  Painted painted(TestPdf().Page("").Bytes());
  double wide = 0;
  double narrow = 0;
  painted.Paint([&](Canvas& page) {
    TPdfFont* font = PdfDocumentCreateSystemFontA(page.target(), "Liberation Sans", "", 1);
    TPdfText* text = PdfDocumentCreateText(page.target());
    TPdfTextGenerator* generator = PdfNewTextGenerator(text, font, 20, 0);
    wide = PdfTextGeneratorGetWidthW(generator, L"AVATAR");
    narrow = PdfTextGeneratorGetWidthA(generator, "AVATAR");
    PdfClose(generator);
    PdfClose(text);
    PdfClose(font);
    page.Text(U"AVATAR", {.size = 20, .x = 100, .y = 300});
  });
  const WordBox box = BoxOfWord(painted.path(), "AVATAR");
  EXPECT_NEAR(box.left, 100, 0.05);
  EXPECT_NEAR(box.right, 100 + wide, 0.05);
  EXPECT_GT(box.bottom, 792 - 300);
  EXPECT_LT(box.top, 792 - 300 - 12);
  EXPECT_EQ(wide, narrow);
  EXPECT_LT(wide, 20 * 4.2);  // kerned: the letters' own widths sum up to more
}

TEST_F(PaintText, TellsMetricsOfTheFontForSizeOne) {
  Painted painted(TestPdf().Page("").Bytes());
  painted.Paint([](Canvas& page) {
    TPdfFont* font = PdfDocumentCreateSystemFontA(page.target(), "Liberation Sans", "", 1);
    EXPECT_NEAR(PdfFontGetAscent(font), 0.905, 0.001);
    EXPECT_NEAR(PdfFontGetDescent(font), -0.212, 0.001);
    PdfClose(font);
  });
  EXPECT_EQ(PdfFontGetAscent(nullptr), 0);
  EXPECT_EQ(PdfFontGetDescent(nullptr), 0);
}

TEST_F(PaintText, EmbedsOneSubsetForAllPages) {
  Painted painted(TestPdf().Pages(20).Bytes());
  painted.Paint([](Canvas& page) {
    page.Text(U"Stamp " + std::u32string(1, U'A' + static_cast<char32_t>(page.index())));
  });
  const std::string fonts = RunProgram({"pdffonts", painted.path()}).output;
  EXPECT_EQ(CountOf(fonts, "+LiberationSans"), 1U) << fonts;
  EXPECT_THAT(fonts, HasSubstr("CID TrueType      Identity-H       yes yes yes"));
  EXPECT_THAT(painted.Texts()[19], HasSubstr("Stamp T"));
}

TEST_F(PaintText, GivesTheSameBytesAgain) {
  const std::string source = TestPdf().Pages(3).Bytes();
  const auto paint = [](Canvas& page) {
    page.Text(U"Page", {.alpha = 0.5});
    page.Text(U"Ελληνικά", {.font = "Arial", .style = "Bold", .y = 100});
  };
  Painted first(source);
  first.Paint(paint);
  Painted second(source);
  second.Paint(paint);
  EXPECT_EQ(first.bytes(), second.bytes());
}

TEST_F(PaintText, AddsLittleToEachPage) {
  TestPdf source;
  source.Pages(500);
  Painted plain(source.Bytes());
  plain.Paint([](Canvas&) {});
  Painted painted(source.Bytes());
  painted.Paint([](Canvas& page) {
    const std::string number = "Page " + std::to_string(page.index() + 1) + " of 500";
    page.Text(std::u32string(number.begin(), number.end()));
  });
  constexpr std::size_t kSubset = 25'000;
  EXPECT_LT(painted.bytes().size(), plain.bytes().size() + kSubset + 500 * 250);
}

TEST_F(PaintText, SharesWhatIsTheSameOnEveryPage) {
  TestPdf source;
  source.Pages(500);
  Painted plain(source.Bytes());
  plain.Paint([](Canvas&) {});
  Painted painted(source.Bytes());
  painted.Paint([](Canvas& page) { page.Text(U"CONFIDENTIAL", {.alpha = 0.3, .angle = 45}); });
  EXPECT_LT(painted.bytes().size(), plain.bytes().size() + 25'000 + 500 * 60);
}

TEST_F(PaintText, SetsOpacityOnceForEachValue) {
  Painted painted(TestPdf().Pages(3).Bytes());
  painted.Paint([](Canvas& page) {
    page.Text(U"half", {.alpha = 0.5});
    page.Text(U"full", {.alpha = 1});
  });
  const std::string objects =
      RunProgram({"qpdf", "--qdf", "--object-streams=disable", painted.path(), "-"}).output;
  EXPECT_EQ(CountOf(objects, "/Type /ExtGState"), 1U);
  EXPECT_THAT(objects, HasSubstr("/ca .5"));
}

TEST_F(PaintText, MarksWhatItPaintsAsArtifact) {
  Painted painted(TestPdf().Page("x").Bytes());
  painted.Paint([](Canvas& page) { page.Text(U"Over"); });
  const std::string content = painted.Content(1);
  EXPECT_THAT(content, HasSubstr("/Artifact<</Type/Pagination>>BDC"));
  EXPECT_EQ(CountOf(content, "BDC"), CountOf(content, "EMC"));
}

TEST_F(PaintText, LeavesPagesAloneThatNothingIsPaintedOnto) {
  const std::string source = TestPdf().Pages(2).Bytes();
  Painted plain(source);
  plain.Paint([](Canvas&) {});
  Painted touched(source);
  touched.Paint([](Canvas& page) {
    TPdfContent* content = PdfPageGetContent(page.page());
    TPdfContentGenerator* generator = PdfNewContentGenerator(content, false);
    EXPECT_EQ(PdfContentGeneratorSave(generator), 1);
    EXPECT_EQ(PdfClose(generator), 1);
    PdfClose(content);
  });
  EXPECT_EQ(plain.bytes(), touched.bytes());
}

TEST_F(PaintText, WorksInEncryptedDocuments) {
  const TPdfEncryption security{L"user", L"owner", 3900};
  Painted painted(TestPdf().Page("").Bytes());
  painted.Paint([](Canvas& page) { page.Text(U"Secret"); }, &security);
  EXPECT_EQ(QpdfComplaints(painted.path(), "user"), "");
  EXPECT_THAT(TarnixTools::testing::PageTexts(painted.path(), "user"), ElementsAre("Secret"));
}

TEST_F(PaintText, NamesACharacterThatNoFontHas) {
  Painted painted(TestPdf().Page("").Bytes());
  painted.Paint([](Canvas& page) {
    EXPECT_EQ(page.Text(U"ab\U0010FFFD"), 0);
    EXPECT_EQ(PdfGetLastError(), kToolboxCharacterError);
    EXPECT_EQ(PdfGetLastErrorCharacter(), 0x10FFFDU);
    EXPECT_EQ(page.Text(U"fine"), 1);
  });
  EXPECT_THAT(painted.Texts(), ElementsAre("fine"));
}

TEST_F(PaintText, RefusesFontsThatAreNotInstalled) {
  Painted painted(TestPdf().Page("").Bytes());
  painted.Paint([](Canvas& page) {
    for (const char* name : {"No Such Font", "", "Liberation Sans:bold", "Liberation Sans,Arial",
                             "Liberation Sans-12", "Liberation*"}) {
      EXPECT_EQ(PdfDocumentCreateSystemFontA(page.target(), name, "", 1), nullptr) << name;
      EXPECT_EQ(PdfGetLastError(), kToolboxFontNotFoundError);
    }
  });
}

TEST_F(PaintText, IgnoresControlCharacters) {
  Painted painted(TestPdf().Page("").Bytes());
  painted.Paint([](Canvas& page) {
    EXPECT_EQ(page.Text(U"one\ttwo\r"), 1);
    EXPECT_EQ(page.Text(U""), 1);
  });
  EXPECT_THAT(painted.Texts(), ElementsAre("one two"));
}

TEST_F(PaintText, RefusesWhatMakesNoSense) {
  Painted painted(TestPdf().Page("").Bytes());
  painted.Paint([](Canvas& page) {
    TPdfDocument* target = page.target();
    EXPECT_EQ(PdfDocumentCreateDeviceColorSpace(target, 1), nullptr);
    TPdfColorSpace* space = PdfDocumentCreateDeviceColorSpace(target, 2);
    const std::array<double, 3> bad = {0, 2, 0};
    EXPECT_EQ(PdfDocumentCreateAlphaPaint(target, space, 1, bad.data(), 3), nullptr);
    EXPECT_EQ(PdfDocumentCreateAlphaPaint(target, space, 1, bad.data(), 1), nullptr);
    TPdfFont* font = PdfDocumentCreateSystemFontA(target, "Liberation Sans", "", 1);
    TPdfText* text = PdfDocumentCreateText(target);
    EXPECT_EQ(PdfNewTextGenerator(text, font, 0, 0), nullptr);
    EXPECT_EQ(PdfNewTextGenerator(text, nullptr, 12, 0), nullptr);
    TPdfContent* content = PdfPageGetContent(page.page());
    TPdfContentGenerator* generator = PdfNewContentGenerator(content, false);
    EXPECT_EQ(PdfContentGeneratorRestore(generator), 0);
    EXPECT_EQ(PdfGetLastError(), kToolboxArgumentError);
    PdfClose(generator);
    PdfClose(content);
    PdfClose(text);
    PdfClose(font);
    PdfClose(space);
  });
}

// Text that a reader gets back as it was typed.
struct Script {
  const char* name;
  const char* font;  // that the test needs
  std::u32string text;
};

class PaintScript : public ::testing::TestWithParam<Script> {};

std::string Utf8Of(const std::u32string& text) {
  std::string out;
  for (const char32_t c : text) {
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (c < 0x800) {
      out += static_cast<char>(0xC0 | c >> 6);
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      out += static_cast<char>(0xE0 | c >> 12);
      out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      out += static_cast<char>(0xF0 | c >> 18);
      out += static_cast<char>(0x80 | (c >> 12 & 0x3F));
      out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return out;
}

// pdftotext puts characters around lines that are set from right to left.
std::string WithoutDirections(std::string text) {
  for (const char* mark : {"\u202A", "\u202B", "\u202C", "\u200E", "\u200F"}) {
    for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark)) {
      text.erase(at, 3);
    }
  }
  return text;
}

TEST_P(PaintScript, ComesBackAsTyped) {
  TARNIX_NEED_PROGRAM("pdftotext");
  TARNIX_NEED_FONT("Liberation Sans");
  TARNIX_NEED_FONT(GetParam().font);
  Painted painted(TestPdf().Page("").Bytes());
  painted.Paint([](Canvas& page) {
    EXPECT_EQ(page.Text(GetParam().text, {.size = 24}), 1) << PdfGetLastErrorCharacter();
  });
  EXPECT_EQ(WithoutDirections(painted.Texts()[0]), Utf8Of(GetParam().text));
  EXPECT_EQ(QpdfComplaints(painted.path()), "");
}

INSTANTIATE_TEST_SUITE_P(
    AllScripts, PaintScript,
    ::testing::Values(
        Script{"Latin", "Liberation Sans", U"office fluffy AVATAR"},
        Script{"Accents", "Liberation Sans", U"T\u00e9st na\u00efve \u0141\u00f3d\u017a"},
        Script{"CombiningMarks", "Noto Sans", U"e\u0301 a\u0308 q\u0323\u0307"},
        Script{"Greek", "Liberation Sans", U"\u0395\u03bb\u03bb\u03b7\u03bd\u03b9\u03ba\u03ac"},
        Script{"Cyrillic", "Liberation Sans", U"\u0420\u0443\u0441\u0441\u043a\u0438\u0439"},
        Script{"Vietnamese", "Noto Sans", U"Ti\u1ebfng Vi\u1ec7t"},
        Script{"Arabic", "DejaVu Sans",
               U"\u0627\u0644\u0633\u0644\u0627\u0645 \u0639\u0644\u064a\u0643\u0645"},
        Script{"ArabicLigatures", "DejaVu Sans",
               U"\u0644\u0627 \u0625\u0644\u0647 \u0625\u0644\u0627"},
        Script{"ArabicMarks", "DejaVu Sans", U"\u0645\u064f\u062d\u064e\u0645\u064e\u0651\u062f"},
        Script{"Persian", "DejaVu Sans", U"\u0633\u0644\u0627\u0645 \u062f\u0646\u06cc\u0627"},
        Script{"Hebrew", "DejaVu Sans", U"\u05e9\u05dc\u05d5\u05dd \u05e2\u05d5\u05dc\u05dd"},
        Script{"HebrewMarks", "DejaVu Sans", U"\u05e9\u05b8\u05c1\u05dc\u05d5\u05b9\u05dd"},
        Script{"Thai", "Noto Sans Thai",
               U"\u0e2a\u0e27\u0e31\u0e2a\u0e14\u0e35\u0e04\u0e23\u0e31\u0e1a "
               U"\u0e1c\u0e39\u0e49\u0e43\u0e2b\u0e0d\u0e48"},
        Script{"ThaiSaraAm", "Noto Sans Thai", U"\u0e19\u0e49\u0e33 \u0e17\u0e33"},
        Script{"Devanagari", "Noto Sans Devanagari",
               U"\u0928\u092e\u0938\u094d\u0924\u0947 \u0939\u093f\u0928\u094d\u0926\u0940 "
               U"\u0915\u094d\u0937\u0924\u094d\u0930\u093f\u092f"},
        Script{"Bengali", "Noto Sans Bengali", U"\u09ac\u09be\u0982\u09b2\u09be"},
        Script{"Tamil", "Noto Sans Tamil", U"\u0ba4\u0bae\u0bbf\u0bb4\u0bcd"},
        Script{"Khmer", "Noto Sans Khmer",
               U"\u1797\u17b6\u179f\u17b6\u1781\u17d2\u1798\u17c2\u179a"},
        Script{"Chinese", "Noto Sans CJK SC", U"\u4e2d\u6587\u6d4b\u8bd5"},
        Script{"Japanese", "Noto Sans CJK JP",
               U"\u65e5\u672c\u8a9e\u30c6\u30b9\u30c8 \u3072\u3089\u304c\u306a"},
        Script{"Korean", "Noto Sans CJK KR", U"\ud55c\uad6d\uc5b4 \uc2dc\ud5d8"},
        Script{"BeyondThePlane", "DejaVu Sans", U"ab\U00010330 \U00010348 \U0001D400 \U0001D401c"}),
    [](const auto& script) { return script.param.name; });

}  // namespace
}  // namespace TarnixTools::engines::toolbox
