// Every class of images at every level of compression: what comes out is sound, looks as it did in
// viewers other than ours, and is not larger.
#include <array>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PdfCompressTask.h"
#include "engines/optimizer/images/ImageDocuments.h"
#include "support/DocumentTest.h"
#include "support/PageViews.h"

namespace TarnixTools::engines::optimizer {
namespace {

using testing::Picture;
using testing::QpdfComplaints;
using testing::ReadBytes;
using testing::WriteBytes;

constexpr int kDpi = 100;
// A second run may change so many bytes, beside a hundredth: what some entries of a dictionary take.
constexpr double kFewBytes = 240;

struct Level {
  const char* name;
  PdfCompressLevel level;
  // Mean of the differences of all components of a page's pixels, of 255, that its resolution and
  // quality of JPEG bring about.
  double tolerance;
  double tolerance_of_inks;  // where they are converted
};

constexpr std::array<Level, 3> kLevels = {{
    {"low", PdfCompressLevel::Low, 2.5, 2.5},
    {"recommended", PdfCompressLevel::Recommended, 3.5, 3.5},
    {"extreme", PdfCompressLevel::Extreme, 5, 13},
}};

// By each viewer that there is; without pixels where it draws no image that is damaged.
using Views = std::vector<Picture>;

Picture ViewBy(std::vector<Picture> (*viewer)(const std::string& path, int dpi),
               const std::string& path) {
  try {
    return viewer(path, kDpi).at(0);
  } catch (const std::runtime_error&) {
    return {};
  }
}

Views ViewsOf(const std::string& path) {
  Views views;
  if (testing::HasProgram("pdftoppm")) {
    views.push_back(ViewBy(&testing::Pictures, path));
  }
  if (testing::HasProgram("mutool")) {
    views.push_back(ViewBy(&testing::PicturesByMupdf, path));
  }
  return views;
}

double ToleranceOf(const Level& level, Keeps keeps) {
  return keeps == Keeps::kPixels ? 0
         : keeps == Keeps::kLook ? level.tolerance
                                 : level.tolerance_of_inks;
}

double DifferenceOf(const Picture& a, const Picture& b) {
  if (a == b) {
    return 0;
  }
  if (a.width != b.width || a.height != b.height || a.pixels.empty()) {
    return 255;
  }
  double sum = 0;
  for (std::size_t i = 0; i < a.pixels.size(); ++i) {
    sum +=
        std::abs(static_cast<unsigned char>(a.pixels[i]) - static_cast<unsigned char>(b.pixels[i]));
  }
  return sum / static_cast<double>(a.pixels.size());
}

class ImageClasses : public testing::DocumentTest,
                     public ::testing::WithParamInterface<ImageDocument> {
 protected:
  // Writes the file NAME of a file, and tells its bytes.
  std::string Compress(const std::string& from, const std::string& to, PdfCompressLevel level) {
    PdfCompressTask task({Doc(from)}, level);
    task.SetOutputPath(directory_.Path());
    task.SetOutPdfName(to);
    task.Execute();
    return ReadBytes(Path(to));
  }

  void ExpectAlike(const Views& before, const Views& after, double tolerance) {
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
      const double difference = DifferenceOf(before[i], after[i]);
      EXPECT_LE(difference, tolerance) << "viewer " << i;
    }
  }
};

TEST_P(ImageClasses, LookAsTheyDidInFewerBytes) {
  TARNIX_NEED_PROGRAM("qpdf");
  const std::string bytes = GetParam().make();
  WriteBytes(Path("in.pdf"), bytes);
  const Views before = ViewsOf(Path("in.pdf"));
  const std::string complaints = QpdfComplaints(Path("in.pdf"));
  for (const Level& level : kLevels) {
    SCOPED_TRACE(level.name);
    const std::string once = Compress("in.pdf", "once.pdf", level.level);
    EXPECT_LE(once.size(), bytes.size());
    if (complaints.empty()) {
      EXPECT_EQ(QpdfComplaints(Path("once.pdf")), "");
    }
    const Views after = ViewsOf(Path("once.pdf"));
    ExpectAlike(before, after, ToleranceOf(level, GetParam().keeps));
    EXPECT_TRUE(Compress("in.pdf", "again.pdf", level.level) == once) << "other bytes";
    const std::string twice = Compress("once.pdf", "twice.pdf", level.level);
    EXPECT_GE(static_cast<double>(twice.size()),
              0.99 * static_cast<double>(once.size()) - kFewBytes);
    EXPECT_LE(twice.size(), once.size());
    ExpectAlike(after, ViewsOf(Path("twice.pdf")), 0.5);
  }
}

std::string NameOf(const ::testing::TestParamInfo<ImageDocument>& row) {
  return row.param.name;
}

INSTANTIATE_TEST_SUITE_P(Images, ImageClasses, ::testing::ValuesIn(ImageDocuments()), NameOf);

}  // namespace
}  // namespace TarnixTools::engines::optimizer
