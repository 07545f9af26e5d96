#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/optimizer/Limits.h"
#include "engines/optimizer/images/ImageDocuments.h"
#include "engines/optimizer/images/ImagePass.h"
#include "pdf/write/RewriteFixture.h"
#include "support/RawPdf.h"
#include "support/TestImage.h"
#include "support/TestScene.h"

namespace TarnixTools::engines::optimizer {
namespace {

using testing::Deflated;
using testing::RawPdf;
using testing::RewriteCase;
using testing::SceneSamples;
using testing::SceneSize;

using Figures = std::array<ClassFigures, kImageClassCount>;

struct Outcome {
  std::string bytes;
  Figures figures;
};

//   most_held - bytes of results in memory
Outcome RunOn(unsigned threads, const std::string& bytes,
              std::uint64_t most_held = limits::kMaxHeldResults,
              const OptimizerSettings& settings = *ProfileSettings(kImageProfile)) {
  RewriteCase test(bytes);
  const pdf::PageTree pages(test.source());
  const DocumentSurvey survey(test.source(), pages);
  ImagePass pass(test.source(), survey, settings);
  WorkPool pool(threads);
  DataStore store(most_held);
  pass.Run(test.rewriter(), pool, store);
  pass.Apply(test.rewriter());
  test.Write();
  return {test.bytes(), pass.Figures()};
}

const ClassFigures& Of(const Figures& figures, ImageClass kind) {
  return figures.at(static_cast<std::size_t>(kind));
}

// Images of different sizes, each of which is larger than it needs to be.
std::string ManyImages() {
  RawPdf file;
  std::string names;
  std::string content;
  for (int i = 0; i < 12; ++i) {
    const SceneSize size = {80 + 37 * i, 300 - 13 * i};
    const int components = i % 2 == 0 ? 3 : 1;
    file.Stream(10 + i,
                "/Type/XObject/Subtype/Image/BitsPerComponent 8/Filter/FlateDecode/Width " +
                    std::to_string(size.width) + "/Height " + std::to_string(size.height) +
                    "/ColorSpace" + (components == 3 ? "/DeviceRGB" : "/DeviceGray"),
                Deflated(SceneSamples(size, components, 8)));
    const std::string name = "/I" + std::to_string(i);
    names += name + " " + std::to_string(10 + i) + " 0 R";
    content += "q 50 0 0 50 0 0 cm " + name + " Do Q ";
  }
  return file.Pages(1, "/MediaBox[0 0 99 99]/Contents 9 0 R/Resources<</XObject<<" + names + ">>>>")
      .Stream(9, "", content)
      .Table();
}

std::string DocumentNamed(const std::string& name) {
  for (const ImageDocument& document : ImageDocuments()) {
    if (document.name == name) {
      return document.make();
    }
  }
  ADD_FAILURE() << "no document " << name;
  return "";
}

TEST(ImagePass, GivesTheSameOnOneThreadAndOnFour) {
  const std::string bytes = ManyImages();
  const Outcome one = RunOn(1, bytes);
  const Outcome four = RunOn(4, bytes);
  EXPECT_TRUE(one.bytes == four.bytes);
  EXPECT_LT(one.bytes.size(), bytes.size() / 4);
}

TEST(ImagePass, GivesTheSameWhereResultsWaitInAFile) {
  const std::string images = ManyImages();
  const Outcome held = RunOn(2, images);
  const Outcome waiting = RunOn(2, images, 1000);
  EXPECT_EQ(waiting.bytes, held.bytes);
  EXPECT_EQ(Of(waiting.figures, ImageClass::kPhotograph).bytes_after,
            Of(held.figures, ImageClass::kPhotograph).bytes_after);
}

TEST(ImagePass, CountsWhatBecameOfImages) {
  const Figures figures = RunOn(0, ManyImages()).figures;
  const ClassFigures& photographs = Of(figures, ImageClass::kPhotograph);
  EXPECT_EQ(photographs.images, 12U);
  EXPECT_GT(photographs.bytes_after, 0U);
  EXPECT_LT(photographs.bytes_after, photographs.bytes_before / 4);
  EXPECT_EQ(photographs.left_alone, (decltype(photographs.left_alone){}));
  EXPECT_EQ(Of(figures, ImageClass::kBitonal).images, 0U);
}

TEST(ImagePass, CountsSoftMasksBesideTheirImages) {
  const Figures figures = RunOn(0, DocumentNamed("SoftMask")).figures;
  EXPECT_EQ(Of(figures, ImageClass::kPhotograph).images, 1U);
  EXPECT_EQ(Of(figures, ImageClass::kSoftMask).images, 1U);
}

TEST(ImagePass, CountsImagesInBlackAndWhite) {
  const ClassFigures bitonal = Of(RunOn(0, DocumentNamed("FaxG3")).figures, ImageClass::kBitonal);
  EXPECT_EQ(bitonal.images, 1U);
  EXPECT_LT(bitonal.bytes_after, bitonal.bytes_before);
}

TEST(ImagePass, TellsWhyImagesAreLeftAlone) {
  const auto left_alone = [](const std::string& name, LeftAlone reason) {
    std::size_t count = 0;
    for (const ClassFigures& figures : RunOn(0, DocumentNamed(name)).figures) {
      count += figures.left_alone.at(static_cast<std::size_t>(reason));
    }
    return count;
  };
  EXPECT_EQ(left_alone("DeviceRgb", LeftAlone::kUnreadable), 0U);
  for (const char* const name : {"Truncated", "TruncatedJpeg"}) {
    EXPECT_EQ(left_alone(name, LeftAlone::kUnreadable), 1U) << name;
  }
  EXPECT_EQ(left_alone("DeviceN", LeftAlone::kUnhandled), 0U);
  EXPECT_EQ(left_alone("OnePixel", LeftAlone::kSmallest), 1U);
}

TEST(ImagePass, TellsThatBitsAreMissing) {
  const std::string bits(100, '\x5A');  // 40 rows of 5 bytes would be 200
  const Figures figures =
      RunOn(0, RawPdf()
                   .Pages(1, "/Contents 9 0 R/Resources<</XObject<</I 10 0 R>>>>")
                   .Stream(9, "", "40 0 0 40 0 0 cm /I Do")
                   .Stream(10,
                           "/Type/XObject/Subtype/Image/ColorSpace/DeviceGray/BitsPerComponent 1"
                           "/Width 40/Height 40/Filter/FlateDecode",
                           Deflated(bits))
                   .Table())
          .figures;
  const ClassFigures& bitonal = Of(figures, ImageClass::kBitonal);
  EXPECT_EQ(bitonal.images, 1U);
  EXPECT_EQ(bitonal.left_alone.at(static_cast<std::size_t>(LeftAlone::kUnreadable)), 1U);
}

TEST(ImagePass, TakesScannedPagesApart) {
  const std::string bytes = DocumentNamed("ScannedPage");
  const Outcome apart = RunOn(0, bytes);
  const ClassFigures& scans = Of(apart.figures, ImageClass::kTextScan);
  EXPECT_EQ(scans.images, 1U);
  EXPECT_EQ(scans.left_alone, (decltype(scans.left_alone){}));
  EXPECT_THAT(apart.bytes, ::testing::HasSubstr("/ImageMask true"));
  EXPECT_THAT(apart.bytes, ::testing::HasSubstr("/JBIG2Decode"));
  EXPECT_EQ(RunOn(1, bytes).bytes, apart.bytes);
}

TEST(ImagePass, TakesPagesApartWhereColorsMayBecomeSimpler) {
  OptimizerSettings settings = *ProfileSettings(kImageProfile);
  settings.reduces_color_complexity = false;
  const Outcome whole = RunOn(0, DocumentNamed("ScannedPage"), limits::kMaxHeldResults, settings);
  EXPECT_EQ(Of(whole.figures, ImageClass::kTextScan).images, 0U);
  EXPECT_THAT(whole.bytes, ::testing::Not(::testing::HasSubstr("/ImageMask")));
}

// An image is resampled for the largest of its uses.
TEST(ImagePass, LooksAtAllUsesOfAnImage) {
  const auto bytes_after = [](const std::string& name) {
    return Of(RunOn(0, DocumentNamed(name)).figures, ImageClass::kPhotograph).bytes_after;
  };
  EXPECT_EQ(bytes_after("DrawnTwice"), bytes_after("DeviceRgb"));
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
