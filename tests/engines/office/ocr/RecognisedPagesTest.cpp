// A page that is but a picture of text, which lies on its side: what is recognised stands where it was.
#include <atomic>
#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include "engines/office/ocr/ScannedPage.h"
#include "engines/office/ocr/TesseractApi.h"
#include "engines/office/pages/DocumentReader.h"
#include "engines/office/sdk/Conversion.h"
#include "engines/office/writers/WriterDocuments.h"
#include "engines/support/drawing/PageBitmap.h"
#include "engines/support/layout/text/Characters.h"
#include "engines/support/pages/Cancellation.h"
#include "foundation/Utf8.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::office {
namespace {

using testing::TestPdf;

constexpr double kWidth = 330;
constexpr double kHeight = 110;
constexpr const char* kLine = "The quick brown fox jumps over the lazy dog";

// Five lines of 12 points, from 20 points on, 18 points from line to line.
TestPdf TextPage() {
  std::string content;
  for (int i = 0; i < 5; ++i) {
    content += "BT /F1 12 Tf 20 " + std::to_string(90 - 18 * i) + " Td (" + kLine + ") Tj ET ";
  }
  TestPdf pdf;
  pdf.Page().Size(kWidth, kHeight).Content(content);
  return pdf;
}

// The page as a picture, which is turned to the right.
TestPdf Scan(const std::string& path, int degrees) {
  DrawnDocument drawn(platform::WidePath(path), "");
  const PageBitmap bitmap = DrawPage(drawn, 0, 200);
  GrayPicture gray{bitmap.width, bitmap.height, {}};
  for (int y = 0; y < bitmap.height; ++y) {
    for (int x = 0; x < bitmap.width; ++x) {
      gray.pixels.push_back(bitmap.Row(y)[4 * x]);
    }
  }
  gray = gray.Turned(degrees);
  const std::string data(gray.pixels.begin(), gray.pixels.end());
  TestPdf pdf;
  pdf.Page().Size(kHeight, kWidth).Content("q 110 0 0 330 0 0 cm /Scan Do Q");
  pdf.PageEntry("/Resources<</XObject<</Scan {{scan}}>>>>");
  pdf.Object("scan",
             "<</Type/XObject/Subtype/Image/BitsPerComponent 8/ColorSpace/DeviceGray/Width " +
                 std::to_string(gray.width) + "/Height " + std::to_string(gray.height) +
                 "/Length " + std::to_string(data.size()) + ">>stream\n" + data + "\nendstream");
  return pdf;
}

TEST(RecognisedPages, HaveTheirTextWhereItWas) {
  if (LoadTesseract() == nullptr) {
    GTEST_SKIP() << "needs Tesseract";
  }
  const testing::TempDir directory;
  const std::string text = TextPage().Write(directory.Path("text.pdf"));
  const platform::WidePath path(Scan(text, 90).Write(directory.Path("scan.pdf")));
  const auto reader = DocumentReader::Open(path, "");
  ASSERT_TRUE(reader->IsScanned(0));
  PageModel page = reader->Read(0);
  EXPECT_EQ(page.images.size(), 1U);
  std::atomic<bool> is_cancelled = false;
  ScannedPages pages(path, "", is_cancelled);
  pages.AddText(page);
  std::string expected;
  for (int i = 0; i < 5; ++i) {
    expected += kLine;
  }
  std::erase(expected, ' ');
  EXPECT_EQ(ToUtf8(page.text), expected);
  EXPECT_TRUE(page.images.empty());
  ASSERT_EQ(page.glyphs.size(), expected.size());
  const Glyph& first = page.glyphs.front();
  const TextStyle& style = page.styles[first.style];
  EXPECT_NEAR(style.size, 12, 1);
  EXPECT_NEAR(style.direction_x, 0, 1e-9);
  EXPECT_NEAR(style.direction_y, 1, 1e-9);  // downwards
  EXPECT_EQ(style.face->family, "Times New Roman");
  // The first line is at the right now, 20 points behind the edge.
  EXPECT_NEAR(first.x, 90, 2);
  EXPECT_NEAR(first.y, 20, 2);
  EXPECT_NEAR(page.glyphs.back().x, 18, 2);
  EXPECT_NEAR(first.advance, 7, 2);
  is_cancelled = true;
  EXPECT_THROW(pages.AddText(page), Cancelled);
}

class NoEvents : public ConversionSdk::ConversionEvents {
 public:
  void Progress(std::int32_t /*page*/, std::int32_t /*page_count*/) override {}

  void Warning(std::int32_t /*page*/, const std::wstring& /*text*/) override {}
};

TEST(RecognisedPages, ArePicturesWhereNothingIsToBeRecognised) {
  const testing::TempDir directory;
  const std::string text = TextPage().Write(directory.Path("text.pdf"));
  ConversionSdk::ConversionRequest request;
  request.source_files = {Utf8ToWide(Scan(text, 90).Write(directory.Path("scan.pdf")))};
  request.output_file = Utf8ToWide(directory.Path("out.docx"));
  request.output_type = static_cast<std::int32_t>(ConversionSdk::WordOutputType::Docx);
  request.text_recovery_engine = ConversionSdk::TextRecoveryEngine::Never;
  ConversionSdk::ConversionState state;
  NoEvents events;
  ConversionLog log;
  ASSERT_EQ(Convert(request, state, events, log), ConversionSdk::kConversionDone);
  const Parts parts = PartsOf(testing::ReadBytes(directory.Path("out.docx")));
  EXPECT_TRUE(parts.contains("word/media/image1.png"));
  EXPECT_EQ(parts.at("word/document.xml").find("<w:t "), std::string::npos);
}

}  // namespace
}  // namespace TarnixTools::engines::office
