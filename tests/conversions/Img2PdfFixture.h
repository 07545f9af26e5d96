// What the tests of turning images into PDF share: images, the documents that come of them, and a look
// at these.
#ifndef TARNIX_TESTS_CONVERSIONS_IMG2PDFFIXTURE_H_
#define TARNIX_TESTS_CONVERSIONS_IMG2PDFFIXTURE_H_

#include <algorithm>
#include <string>
#include <vector>

#include "Img2PdfTask.h"
#include "support/DocumentTest.h"
#include "support/TestImages.h"

namespace TarnixTools {

class Img2PdfFixture : public testing::DocumentTest {
 protected:
  // 16 x 8 pixels, of 12 x 6 points at 96 pixels per inch.
  std::string MakeImage(const std::string& name, int components = 3,
                        const std::string& segments = {}) const {
    testing::WriteBytes(Path(name), testing::TestJpeg(components, segments));
    return Path(name);
  }

  static std::string Stored(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
  }

  std::vector<double> SizeOf(const std::string& name, int page = 1) const {
    const PdfSize size = Doc(name).GetPageSize(page, PdfSizeUnits::Points, 72, 1);
    return {size.GetWidth(), size.GetHeight()};
  }

  int PagesOf(const std::string& name, const std::string& password = "") const {
    return Doc(name, password).GetPagesNum();
  }

  // A task of one image that writes out/a.pdf.
  Img2PdfTask TaskFor(const std::string& image) const {
    Img2PdfTask task(image);
    task.SetOutputPath(directory_.MakeDir("out"));
    task.SetMergeAfter(false);
    return task;
  }
};

}  // namespace TarnixTools

#endif  // TARNIX_TESTS_CONVERSIONS_IMG2PDFFIXTURE_H_
