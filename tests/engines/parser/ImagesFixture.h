// What the tests of the content parser share: documents with images, and the images that come out
// of them, through the parser's contract.
#ifndef TARNIX_TESTS_ENGINES_PARSER_IMAGESFIXTURE_H_
#define TARNIX_TESTS_ENGINES_PARSER_IMAGESFIXTURE_H_

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/parser/ErrorCodes.h"
#include "engines/parser/Parser.h"
#include "engines/support/pdfium/PdfiumSession.h"
#include "foundation/Platform.h"
#include "support/JpegImage.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::parser {

using platform::WidePath;
using testing::JpegImage;
using testing::ReadJpeg;
using testing::Rgb;
using testing::TestPdf;

inline constexpr Rgb kRed = {255, 0, 0};
inline constexpr Rgb kGreen = {0, 255, 0};
inline constexpr Rgb kBlue = {0, 0, 255};
inline constexpr Rgb kWhite = {255, 255, 255};
inline constexpr Rgb kBlack = {0, 0, 0};

// An object with stream data.
inline std::string Stream(const std::string& entries, const std::string& data) {
  return "<<" + entries + "/Length " + std::to_string(data.size()) + ">>\nstream\n" + data +
         "\nendstream";
}

// An image XObject; the data in hexadecimal.
inline std::string HexImage(int width, int height, const std::string& entries,
                            const std::string& hex) {
  return Stream("/Type/XObject/Subtype/Image/Filter/ASCIIHexDecode/Width " + std::to_string(width) +
                    "/Height " + std::to_string(height) + entries,
                hex + ">");
}

inline std::string JpegImageObject(const std::string& jpeg, const std::string& entries,
                                   const std::string& size = "/Width 16/Height 8") {
  return Stream("/Type/XObject/Subtype/Image/Filter/DCTDecode/BitsPerComponent 8" + size + entries,
                jpeg);
}

// One byte each, `count` times.
inline std::string Repeat(const std::string& hex, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) {
    all += hex;
  }
  return all;
}

// Two pixels: red, then blue; repeated so that each is a block of its own.
inline std::string RedBlue(const std::string& entries = "") {
  const std::string row = Repeat("FF0000", 8) + Repeat("0000FF", 8);
  return HexImage(16, 8, "/ColorSpace/DeviceRGB/BitsPerComponent 8" + entries, Repeat(row, 8));
}

class Images : public ::testing::Test {
 protected:
  Images() : document_(ExpaDocCreateObject()) {
    ExpaDocSetReport(
        document_,
        [](void* handle, std::int32_t page, TExpaTrouble trouble) {
          static_cast<Images*>(handle)->troubles_.emplace_back(page, trouble);
        },
        this);
  }

  ~Images() override { ExpaDocDestroyObject(document_); }

  std::string Path(const std::string& name) const { return directory_.Path(name); }

  bool Open(const TestPdf& file, const std::wstring& password = L"") {
    return ExpaDocOpenW(document_, WidePath(file.Write(Path("in.pdf"))), password) != 0;
  }

  // Stores all images of a page, upright; returns their files.
  std::vector<std::string> Extract(int page_number = 1, int with_forms = 1) {
    std::vector<std::string> files;
    EXPECT_EQ(ExpaDocSetPageNo(document_, page_number), 1);
    TExpaContent* content = ExpaPageGetContent(ExpaDocGetPage(document_));
    EXPECT_EQ(ExpaContentResetContent(content, with_forms), 1);
    orientations_.clear();
    while (ExpaContentGetNextImage(content) != 0) {
      TExpaImage* image = ExpaContentGetImage(content);
      const TExpaMatrix* matrix = ExpaGSGetCTM(ExpaContentGetGraphicsState(content));
      orientations_.push_back(matrix->orientation);
      ExpaImageChangeOrientation(image, matrix->orientation);
      files.push_back(Path(std::to_string(files.size()) + ".jpg"));
      EXPECT_EQ(ExpaImageStoreW(image, WidePath(files.back()), kExpaJpeg), 1)
          << ExpaDocGetLastError(document_);
    }
    return files;
  }

  // The only image of a page that draws the object I this way.
  JpegImage ExtractOne(const TestPdf& file) {
    EXPECT_TRUE(Open(file));
    const std::vector<std::string> files = Extract();
    EXPECT_EQ(files.size(), 1U);
    return files.size() == 1 ? ReadJpeg(files[0]) : JpegImage();
  }

  static TestPdf Page(const std::string& image, const std::string& content = "/I Do") {
    TestPdf file;
    file.Page()
        .Size(100, 100)
        .Content(content)
        .Object("image", image)
        .PageEntry("/Resources <</XObject <</I {{image}}>>>>");
    return file;
  }

  JpegImage ExtractImage(const std::string& image) { return ExtractOne(Page(image)); }

  bool HasPdfium() const { return PdfiumLock().is_available(); }

  testing::TempDir directory_;
  TExpaDoc* document_;
  std::vector<int> orientations_;
  std::vector<std::pair<int, int>> troubles_;
};

}  // namespace TarnixTools::engines::parser

#endif  // TARNIX_TESTS_ENGINES_PARSER_IMAGESFIXTURE_H_
