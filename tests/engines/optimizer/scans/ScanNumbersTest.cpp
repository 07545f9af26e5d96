// All that is measured of small pages, number by number: levels, shapes, layers, and what is coded.
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <sstream>

#include <gtest/gtest.h>

#include "engines/optimizer/images/ScenePicture.h"
#include "engines/optimizer/images/Similarity.h"
#include "engines/optimizer/scans/InkLevels.h"
#include "engines/optimizer/scans/InkShapes.h"
#include "engines/optimizer/scans/PaperFill.h"
#include "engines/optimizer/scans/ScanCoder.h"
#include "engines/optimizer/scans/ScanLayers.h"
#include "support/Expected.h"

namespace TarnixTools::engines::optimizer {
namespace {

// No multiples of the sides of cells and squares.
constexpr std::uint32_t kWidth = 203;
constexpr std::uint32_t kHeight = 117;

using Color = std::array<int, 3>;

// A page with what scans have: light that falls off, letters of four inks up to its borders, blurred
// and faint ones, specks, and a line through letters in another colour.
class TestPage {
 public:
  explicit TestPage(int components) : components_(components) {
    page_ = PictureOf(kWidth, kHeight, components, [](int, int, int) { return 0.0; });
    for (int y = 0; y < static_cast<int>(kHeight); ++y) {
      for (int x = 0; x < static_cast<int>(kWidth); ++x) {
        const int light = 250 - x / 9 - y / 20 - (x * 7 + y * 13) % 5;
        Put(x, y, {light, light - 3, light - 9});
      }
    }
    Letters();
    Fill(20, 60, 6, 6, {200, 198, 190}, true);  // faint
    Fill(150, 60, 14, 14, {40, 60, 50}, true);  // blurred
    Fill(180, 62, 1, 1, {20, 20, 20}, false);   // a speck
    Fill(190, 62, 2, 1, {20, 20, 20}, false);
    Fill(0, 95, 60, 2, {200, 20, 30}, false);  // through letters
    Fill(21, 11, 1, 1, {20, 40, 170}, false);  // beside letters
    Fill(33, 10, 1, 1, {190, 25, 30}, false);
    Fill(50, 12, 1, 2, {190, 25, 30}, false);
    Fill(199, 100, 4, 17, {15, 15, 15}, false);  // in the corner
  }

  const SamplePicture& picture() const { return page_; }

 private:
  void Put(int x, int y, const Color& color) {
    const std::size_t at = (static_cast<std::size_t>(y) * kWidth + static_cast<std::size_t>(x)) *
                           static_cast<std::size_t>(components_);
    for (std::size_t i = 0; i < static_cast<std::size_t>(components_); ++i) {
      page_.samples[at + i] = static_cast<std::uint8_t>(color.at(components_ == 1 ? 1 : i));
    }
  }

  void Letters() {
    constexpr std::array<Color, 4> kInks = {
        {{30, 32, 35}, {190, 25, 30}, {20, 40, 170}, {25, 130, 45}}};
    for (int line = 0; line < 6; ++line) {
      for (int letter = 0; letter < 12; ++letter) {
        if (line == 3) {
          continue;
        }
        const Color& ink = kInks.at(static_cast<std::size_t>(line == 0 ? letter % 4 : line % 4));
        const int left = letter * 17;
        const int top = line * 20 + letter % 3;
        Fill(left, top, 4, 12, ink, false);
        Fill(left + 4, top + (letter * 5 + line) % 9, 6, 3, ink, false);
      }
    }
  }

  void Fill(int left, int top, int width, int height, const Color& color, bool is_soft) {
    for (int y = top; y < std::min<int>(top + height, kHeight); ++y) {
      for (int x = left; x < std::min<int>(left + width, kWidth); ++x) {
        const int border =
            std::min({x - left, left + width - 1 - x, y - top, top + height - 1 - y});
        const int lighter = is_soft ? std::max(0, 5 - border) * 30 : 0;
        Put(x, y,
            {std::min(color[0] + lighter, 230), std::min(color[1] + lighter, 230),
             std::min(color[2] + lighter, 230)});
      }
    }
  }

  int components_;
  SamplePicture page_;
};

std::string Sum(const std::vector<std::uint8_t>& bytes) {
  return testing::DataText({bytes.begin(), bytes.end()});
}

std::string ColorText(const std::array<double, 3>& color) {
  std::ostringstream text;
  text << std::fixed;
  text.precision(4);
  text << color[0] << ' ' << color[1] << ' ' << color[2];
  return text.str();
}

std::string LevelsText(const SamplePicture& lightness, double dpi) {
  const InkLevels levels(lightness, dpi);
  std::ostringstream text;
  text << dpi << " dpi, paper " << levels.paper() << '\n';
  std::vector<std::uint8_t> limits(lightness.width);
  std::vector<std::uint8_t> all;
  for (std::uint32_t y = 0; y < lightness.height; ++y) {
    levels.ReadRow(y, limits.data());
    all.insert(all.end(), limits.begin(), limits.end());
    if (y % 13 == 4 || y + 1 == lightness.height) {
      text << y << ": limits";
      for (std::uint32_t x = 0; x < lightness.width; x += 21) {
        text << ' ' << int{limits[x]};
      }
      text << " contrasts";
      for (std::uint32_t x = 0; x < lightness.width; x += 21) {
        text << ' ' << levels.ContrastAt(x, y);
      }
      text << '\n';
    }
  }
  text << "all limits: " << Sum(all) << '\n';
  return text.str();
}

TEST(ScanNumbers, OfLevels) {
  std::string text;
  for (const double dpi : {72.0, 102.0, 150.0, 300.0}) {
    text += LevelsText(TestPage(1).picture(), dpi);
  }
  for (const testing::SceneSize size :
       {testing::SceneSize{1, 1}, testing::SceneSize{3, 40}, testing::SceneSize{40, 3}}) {
    text += LevelsText(PictureOf(size.width, size.height, 1,
                                 [](int x, int y, int) { return (x + y) % 7 == 0 ? 0.1 : 0.8; }),
                       100);
  }
  EXPECT_TRUE(testing::IsAsExpected("optimizer/levels.txt", text));
}

std::string ShapesText(const SamplePicture& page, double dpi) {
  const InkShapes ink = FindInk(page, LightnessOf(page, false), dpi);
  std::ostringstream text;
  text << page.components << " components, " << dpi << " dpi\n";
  std::ostringstream runs;
  for (const InkRun& run : ink.runs) {
    runs << run.y << ' ' << run.left << ' ' << run.right << ' ' << run.shape << '\0';
  }
  text << ink.runs.size() << " runs, " << testing::DataText(runs.str()) << '\n';
  for (const InkShape& shape : ink.shapes) {
    text << shape.pixels << " pixels, core " << shape.core_pixels << ", edges " << shape.edges
         << ", soft " << shape.soft_edges << ", spread " << std::round(shape.spread * 1000) / 1000
         << ", color " << ColorText(shape.color) << (shape.IsPrinted(dpi) ? ", printed" : "")
         << (shape.IsSpeck(dpi) ? ", speck" : "") << '\n';
  }
  return text.str();
}

TEST(ScanNumbers, OfShapes) {
  EXPECT_TRUE(
      testing::IsAsExpected("optimizer/shapes.txt", ShapesText(TestPage(1).picture(), 150) +
                                                        ShapesText(TestPage(3).picture(), 150) +
                                                        ShapesText(TestPage(3).picture(), 72)));
}

std::string LayersText(const SamplePicture& page, double dpi, PictureSize size) {
  const std::optional<ScanLayers> layers = TakeApart(page, dpi, size);
  if (!layers) {
    return "none\n";
  }
  std::ostringstream text;
  text << layers->width << " x " << layers->height << ", stride " << layers->stride
       << ", background " << layers->background.width << " x " << layers->background.height << ' '
       << Sum(layers->background.samples) << '\n';
  for (const InkLayer& ink : layers->inks) {
    std::size_t pixels = 0;
    for (const std::uint8_t bits : ink.bits) {
      pixels += static_cast<std::size_t>(std::popcount(bits));
    }
    text << pixels << " pixels, " << Sum(ink.bits) << '\n';
  }
  return text.str();
}

TEST(ScanNumbers, OfLayers) {
  std::string text;
  for (const int components : {1, 3}) {
    const TestPage page(components);
    for (const double dpi : {100.0, 150.0, 300.0, 700.0}) {
      text += LayersText(page.picture(), dpi, {kWidth, kHeight});
    }
    text += LayersText(page.picture(), 150, {70, 50});
  }
  EXPECT_TRUE(testing::IsAsExpected("optimizer/layers.txt", text));
}

std::string FillText(int components, std::uint32_t halo) {
  const SamplePicture page = PictureOf(43, 37, components, [](int x, int y, int component) {
    return (40 + x * 3 + y * 2 + component * 20 - (x * 5 + y * 3) % 4) / 255.0;
  });
  PaperFill paper(page, halo);
  paper.Cover(0, 0, 3);
  paper.Cover(5, 40, 43);
  paper.Cover(36, 41, 43);
  for (std::uint32_t y = 8; y < 32; ++y) {
    paper.Cover(y, 7, 33);
  }
  const SamplePicture filled = paper.Fill({43, 37});
  std::ostringstream text;
  for (std::uint32_t y = 0; y < filled.height; y += 3) {
    for (std::uint32_t x = 0; x < filled.width; ++x) {
      text << int{filled.row(y)[x * static_cast<unsigned>(components)]}
           << (x + 1 < filled.width ? ' ' : '\n');
    }
  }
  return text.str() + Sum(filled.samples) + "\n" + Sum(paper.Fill({11, 9}).samples) + "\n";
}

TEST(ScanNumbers, OfPaper) {
  EXPECT_TRUE(testing::IsAsExpected("optimizer/paper.txt",
                                    FillText(1, 0) + FillText(1, 1) + FillText(3, 2)));
}

// With loss, too: the bytes that JPEG takes are not told, only what they look like.
std::string CodedText(int components, const std::vector<PictureSize>& sizes, std::uint32_t codecs) {
  const TestPage page(components);
  const std::optional<ScanLayers> layers = TakeApart(page.picture(), 150, sizes.back());
  if (!layers) {
    return "none\n";
  }
  OptimizerSettings settings = *ProfileSettings(kImageProfile);
  settings.bitonal_codecs = codecs;
  const CodedScan scan =
      CodeScan(*layers, Scaled(page.picture(), 101, 58), Look(page.picture(), false, 101, 58),
               sizes, GoalsOf(settings, false));
  std::ostringstream text;
  std::uint64_t stored = scan.background.data.size();
  text << scan.background.filter << ' ' << scan.background.width << " x " << scan.background.height
       << ", similarity " << std::round(scan.similarity * 1e4) / 1e4 << '\n';
  for (const CodedInk& ink : scan.inks) {
    text << ink.stencil.filter << ' ' << ink.stencil.parameters << ' ' << ink.stencil.width << " x "
         << ink.stencil.height << ", " << ink.stencil.data.size() << " bytes, " << ink.components
         << " components, color " << ColorText(ink.color) << '\n';
    stored += ink.stencil.data.size();
  }
  text << "other bytes: " << scan.bytes() - stored << '\n';
  return text.str();
}

TEST(ScanNumbers, OfCodedScans) {
  std::string text;
  for (const int components : {1, 3}) {
    text += CodedText(components, {{203, 117}}, kBitonalJbig2);
    text += CodedText(components, {{26, 15}, {51, 30}, {101, 58}}, 0);
    text += CodedText(components, {{101, 58}, {203, 117}}, kBitonalJbig2);
  }
  EXPECT_TRUE(testing::IsAsExpected("optimizer/coded_scans.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
