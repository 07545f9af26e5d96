// Documents whose pages were painted onto through the engine's contract, judged by other programs.
//
//   Painted painted(TestPdf().Page("x").Bytes());
//   painted.Paint([](Canvas& page) { page.Text("Page 1", {.x = 72, .y = 36}); });
//   EXPECT_EQ(PageTexts(painted.path()), ...);
#ifndef TARNIX_TESTS_ENGINES_TOOLBOX_CONTENT_PAINTED_H_
#define TARNIX_TESTS_ENGINES_TOOLBOX_CONTENT_PAINTED_H_

#include <algorithm>
#include <array>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/toolbox/ErrorCodes.h"
#include "engines/toolbox/Toolbox.h"
#include "support/MemoryFile.h"
#include "support/Readers.h"
#include "support/TempDir.h"

namespace TarnixTools::engines::toolbox {

inline std::wstring WideOf(const std::u32string& text) {
  return {text.begin(), text.end()};
}

struct TextOptions {
  std::string font = "Liberation Sans";
  std::string style;
  double size = 12;
  double x = 72;
  double y = 72;
  double alpha = 1;
  bool is_under = false;
  double angle = 0;
};

// One page on its way into a document.
class Canvas {
 public:
  Canvas(TPdfDocument* target, TPdfPage* page, int index)
      : target_(target), page_(page), index_(index) {}

  TPdfPage* page() { return page_; }

  TPdfDocument* target() { return target_; }

  int index() const { return index_; }

  // 1, or 0 as the engine's last error tells.
  int Text(const std::u32string& line, const TextOptions& options = {}) {
    TPdfFont* font =
        PdfDocumentCreateSystemFontA(target_, options.font.c_str(), options.style.c_str(), 1);
    TPdfColorSpace* space = PdfDocumentCreateDeviceColorSpace(target_, 2);
    const std::array<double, 3> black = {0, 0, 0};
    TPdfPaint* paint = PdfDocumentCreateAlphaPaint(target_, space, options.alpha, black.data(), 3);
    TPdfText* text = PdfDocumentCreateText(target_);
    TPdfTextGenerator* generator = PdfNewTextGenerator(text, font, options.size, 0);
    PdfTextGeneratorSetRendering(generator, paint, nullptr, 1);
    const TPdfPoint start{options.x, options.y};
    PdfTextGeneratorMoveTo(generator, &start);
    int result = PdfTextGeneratorShowW(generator, WideOf(line));
    PdfClose(generator);
    TPdfContent* content = PdfPageGetContent(page_);
    TPdfContentGenerator* painter = PdfNewContentGenerator(content, options.is_under);
    PdfContentGeneratorSave(painter);
    TPdfTransformation* turn = PdfNewTransformationIdentity();
    PdfTransformationTranslate(turn, options.x, options.y);
    PdfTransformationRotate(turn, options.angle);
    PdfTransformationTranslate(turn, -options.x, -options.y);
    PdfContentGeneratorTransform(painter, turn);
    PdfClose(turn);
    result = result != 0 ? PdfContentGeneratorPaintText(painter, text) : 0;
    PdfContentGeneratorRestore(painter);
    PdfClose(painter);
    PdfClose(content);
    PdfClose(text);
    PdfClose(paint);
    PdfClose(space);
    PdfClose(font);
    return result;
  }

  // file: an image file's bytes.
  int Image(const std::string& file, const TPdfRectangle& rectangle, bool is_under = false) {
    MemoryFile bytes{file};
    const TPdfStream stream = bytes.Descriptor();
    TPdfImage* image = PdfDocumentCreateImage(target_, &stream);
    TPdfContent* content = PdfPageGetContent(page_);
    TPdfContentGenerator* painter = PdfNewContentGenerator(content, is_under);
    const int result = PdfContentGeneratorPaintImage(painter, image, &rectangle);
    PdfClose(painter);
    PdfClose(content);
    PdfClose(image);
    EXPECT_EQ(bytes.releases, image == nullptr ? 0 : 1);
    return result;
  }

 private:
  TPdfDocument* target_;
  TPdfPage* page_;
  int index_;
};

class Painted {
 public:
  explicit Painted(std::string source) : source_{std::move(source)} {}

  // Copies all pages, each painted onto before it is appended.
  void Paint(const std::function<void(Canvas&)>& paint, const TPdfEncryption* security = nullptr,
             const std::vector<int>& indexes = {}) {
    output_ = {};
    MemoryFile input{source_.bytes};
    const TPdfStream input_stream = input.Descriptor();
    const TPdfStream output_stream = output_.Descriptor();
    TPdfDocument* source = PdfDocumentOpenA(&input_stream, "");
    TPdfDocument* target = PdfDocumentCreateW(&output_stream, 0, security);
    TPdfPageList* pages = PdfDocumentGetPages(source);
    TPdfPageList* copies = PdfDocumentGetPages(target);
    std::vector<int> wanted = indexes;
    for (int i = 0; indexes.empty() && i < PdfPageListGetCount(pages); ++i) {
      wanted.push_back(i);
    }
    for (const int index : wanted) {
      TPdfPage* page = PdfPageListGet(pages, index);
      TPdfPage* copy = PdfDocumentCopyPage(target, page, 15);
      Canvas canvas(target, copy, index);
      paint(canvas);
      EXPECT_EQ(PdfPageListAppend(copies, copy), 1);
      PdfClose(copy);
      PdfClose(page);
    }
    PdfClose(pages);
    PdfClose(copies);
    EXPECT_EQ(PdfClose(source), 1);
    EXPECT_EQ(PdfClose(target), 1);
    testing::WriteBytes(path(), output_.bytes);
  }

  std::string path() const { return directory_.Path("painted.pdf"); }

  const std::string& bytes() const { return output_.bytes; }

  std::vector<std::string> Texts() const { return testing::PageTexts(path()); }

  // A page's content streams, decoded and put together by qpdf.
  std::string Content(int page_number) const {
    const auto result = testing::RunProgram({"qpdf", "--qdf", "--static-id", "--coalesce-contents",
                                             "--object-streams=disable", "--pages", ".",
                                             std::to_string(page_number), "--", path(), "-"});
    const std::size_t start = result.output.find("%% Contents for page 1");
    return start == std::string::npos
               ? ""
               : result.output.substr(start, result.output.find("endstream", start) - start);
  }

 private:
  MemoryFile source_;
  MemoryFile output_;
  testing::TempDir directory_;
};

// Ends the test as skipped when a font is not installed.
inline bool HasFont(const std::string& name) {
  MemoryFile output;
  const TPdfStream stream = output.Descriptor();
  TPdfDocument* target = PdfDocumentCreateW(&stream, 0, nullptr);
  TPdfFont* font = PdfDocumentCreateSystemFontA(target, name.c_str(), "", 1);
  PdfClose(font);
  PdfDocumentDiscard(target);
  return font != nullptr;
}

#define TARNIX_NEED_FONT(name)                             \
  do {                                                     \
    if (!::TarnixTools::engines::toolbox::HasFont(name)) { \
      GTEST_SKIP() << "needs the font " << (name);         \
    }                                                      \
  } while (false)

// Where there is ink on a page, as a viewer shows it, in points from the lower left.
struct Ink {
  double left = 0, bottom = 0, right = 0, top = 0;
  bool is_there = false;
};

// Of the darkest pixels on a page, drawn by pdftoppm at four pixels to a point.
inline Ink DarkInk(const std::string& path, int page_number = 1) {
  constexpr int kPixelsPerPoint = 4;
  const auto drawn = testing::RunProgram(
      {"pdftoppm", "-r", std::to_string(72 * kPixelsPerPoint), "-gray", "-cropbox", "-aa", "no",
       "-f", std::to_string(page_number), "-l", std::to_string(page_number), path});
  std::istringstream header(drawn.output);
  std::string magic;
  int width = 0;
  int height = 0;
  int depth = 0;
  header >> magic >> width >> height >> depth;
  Ink ink;
  const std::size_t first = static_cast<std::size_t>(header.tellg()) + 1;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const std::size_t at = first + static_cast<std::size_t>(y) * width + x;
      if (at >= drawn.output.size() || static_cast<unsigned char>(drawn.output[at]) > 40) {
        continue;
      }
      const double left = static_cast<double>(x) / kPixelsPerPoint;
      const double bottom = static_cast<double>(height - 1 - y) / kPixelsPerPoint;
      const double size = 1.0 / kPixelsPerPoint;
      ink.left = ink.is_there ? std::min(ink.left, left) : left;
      ink.right = ink.is_there ? std::max(ink.right, left + size) : left + size;
      ink.bottom = ink.is_there ? std::min(ink.bottom, bottom) : bottom;
      ink.top = ink.is_there ? std::max(ink.top, bottom + size) : bottom + size;
      ink.is_there = true;
    }
  }
  return ink;
}

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_TESTS_ENGINES_TOOLBOX_CONTENT_PAINTED_H_
