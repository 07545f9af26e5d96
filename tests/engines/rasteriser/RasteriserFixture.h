// What tests of the rasteriser share: a document, and images of its pages.
#ifndef TARNIX_TESTS_ENGINES_RASTERISER_RASTERISERFIXTURE_H_
#define TARNIX_TESTS_ENGINES_RASTERISER_RASTERISERFIXTURE_H_

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/rasteriser/Rasteriser.h"
#include "engines/support/pdfium/PdfiumSession.h"
#include "foundation/Platform.h"
#include "support/JpegImage.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::rasteriser {

class RasteriserFixture : public ::testing::Test {
 protected:
  RasteriserFixture() : object_(Pdf2ImgCreateObject()) {}

  ~RasteriserFixture() override { Pdf2ImgDestroyObject(object_); }

  void SetUp() override {
    const PdfiumLock pdfium;
    if (!pdfium.is_available()) {
      GTEST_SKIP() << "needs PDFium";
    }
  }

  std::string Path(const std::string& name) const { return directory_.Path(name); }

  bool Open(const std::string& path, const std::wstring& password = L"") {
    return Pdf2ImgOpenW(object_, platform::WidePath(path), password) != 0;
  }

  bool Open(const testing::TestPdf& document) { return Open(document.Write(Path("in.pdf"))); }

  // The image of one page; width 0 when there is none.
  testing::JpegImage Render(int page_number, const std::string& name = "page.jpg") {
    EXPECT_EQ(Pdf2ImgCreateImageW(object_, platform::WidePath(Path(name))), 1);
    Pdf2ImgRenderPage(object_, page_number);
    Pdf2ImgCloseImage(object_);
    EXPECT_EQ(Pdf2ImgClose(object_), 1);
    return testing::ReadJpeg(Path(name));
  }

  testing::JpegImage RenderOnly(const testing::TestPdf& document) {
    EXPECT_TRUE(Open(document));
    return Render(1);
  }

  // Notes what is reported.
  void Listen() {
    Pdf2ImgSetReport(
        object_,
        [](void* handle, std::int32_t page, std::uint32_t code) {
          static_cast<RasteriserFixture*>(handle)->reports_.emplace_back(page, code);
        },
        this);
  }

  std::uint32_t Error() const { return Pdf2ImgGetErrorCode(object_); }

  testing::TempDir directory_;
  TPdf2Img* object_;
  std::vector<std::pair<int, std::uint32_t>> reports_;
};

inline testing::TestPdf Painted(const std::string& content, double width = 144,
                                double height = 72) {
  testing::TestPdf document;
  document.Page().Size(width, height).Content(content);
  return document;
}

}  // namespace TarnixTools::engines::rasteriser

#endif  // TARNIX_TESTS_ENGINES_RASTERISER_RASTERISERFIXTURE_H_
