// How many pixels an image has, and where its page lies in it.
#include <string>

#include <gtest/gtest.h>

#include "engines/rasteriser/ErrorCodes.h"
#include "engines/rasteriser/ImageGeometry.h"
#include "engines/rasteriser/Pdf2ImgFailure.h"

namespace TarnixTools::engines::rasteriser {
namespace {

// "WIDTHxHEIGHT: LEFT,TOP WIDTHxHEIGHT", of the image and of the page in it.
std::string Geometry(const ImageSettings& settings, double width, double height) {
  try {
    const ImageGeometry geometry = GeometryOf(settings, width, height);
    const auto by = [](int a, int b) { return std::to_string(a) + "x" + std::to_string(b); };
    return by(geometry.image_width, geometry.image_height) + ": " +
           std::to_string(geometry.page.left) + "," + std::to_string(geometry.page.top) + " " +
           by(geometry.page.width, geometry.page.height);
  } catch (const Pdf2ImgFailure& failure) {
    return failure.code() == kPdf2ImgImageSizeError ? "too large" : "fails";
  }
}

TEST(ImageGeometry, IsThatOfThePage) {
  EXPECT_EQ(Geometry({.dpi = 72}, 100, 50), "100x50: 0,0 100x50");
  EXPECT_EQ(Geometry({.dpi = 100}, 72, 36), "100x50: 0,0 100x50");
  EXPECT_EQ(Geometry({}, 612, 792), "850x1100: 0,0 850x1100");
  EXPECT_EQ(Geometry({.dpi = 72}, 100.4, 50.6), "100x51: 0,0 100x51");
  EXPECT_EQ(Geometry({.dpi = 72}, 0.4, 0.001), "1x1: 0,0 1x1");
  // Neither a size without a unit nor the wish to fit changes that.
  EXPECT_EQ(Geometry({.dpi = 72, .width = 7, .height = 8, .fits_page = true}, 100, 50),
            "100x50: 0,0 100x50");
}

TEST(ImageGeometry, IsOfTheGivenPixelsAtAnyResolution) {
  ImageSettings settings{.dpi = 144, .size_kind = SizeKind::kPixels, .width = 200, .height = 100};
  EXPECT_EQ(Geometry(settings, 50, 25), "200x100: 50,25 100x50");
  EXPECT_EQ(Geometry(settings, 200, 100), "200x100: -100,-50 400x200");
  EXPECT_EQ(Geometry(settings, 50.5, 25), "200x100: 49,25 101x50");
  settings.fits_page = true;
  EXPECT_EQ(Geometry(settings, 50, 25), "200x100: 0,0 200x100");
  EXPECT_EQ(Geometry(settings, 50, 50), "200x100: 50,0 100x100");
  EXPECT_EQ(Geometry(settings, 100, 25), "200x100: 0,25 200x50");
  EXPECT_EQ(Geometry(settings, 1000, 1), "200x100: 0,49 200x1");
}

TEST(ImageGeometry, IsOfTheGivenPoints) {
  ImageSettings settings{.dpi = 36, .size_kind = SizeKind::kPoints, .width = 200, .height = 100};
  EXPECT_EQ(Geometry(settings, 100, 60), "100x50: 25,10 50x30");
  settings.fits_page = true;
  EXPECT_EQ(Geometry(settings, 100, 60), "100x50: 8,0 83x50");
}

TEST(ImageGeometry, HasNoMoreThanTheFormatTakes) {
  EXPECT_EQ(Geometry({.dpi = 72}, 65'500, 1), "65500x1: 0,0 65500x1");
  EXPECT_EQ(Geometry({.dpi = 72}, 1, 65'500), "1x65500: 0,0 1x65500");
  EXPECT_EQ(Geometry({.dpi = 72}, 65'500.1, 1), "too large");
  EXPECT_EQ(Geometry({.dpi = 72}, 1, 65'500.1), "too large");
  ImageSettings settings{
      .dpi = 72, .size_kind = SizeKind::kPixels, .width = 65'500, .height = 65'500};
  EXPECT_EQ(Geometry(settings, 10, 10), "65500x65500: 32745,32745 10x10");
  settings.width = 65'501;
  EXPECT_EQ(Geometry(settings, 10, 10), "too large");
  settings = {.dpi = 72, .size_kind = SizeKind::kPixels, .width = 10, .height = 10};
  EXPECT_EQ(Geometry(settings, 1'000'000, 10), "10x10: -499995,0 1000000x10");
  EXPECT_EQ(Geometry(settings, 1'000'001, 10), "too large");
  EXPECT_EQ(Geometry(settings, 10, 1'000'001), "too large");
}

}  // namespace
}  // namespace TarnixTools::engines::rasteriser
