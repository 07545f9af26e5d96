#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/JpegEncoder.h"
#include "engines/support/codecs/JpegMarkers.h"
#include "engines/support/codecs/JpegSamples.h"
#include "engines/support/codecs/JpegTables.h"
#include "engines/support/codecs/JpegWriter.h"
#include "engines/support/drawing/DrawnPages.h"
#include "pdf/Error.h"
#include "support/PageViews.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/TempDir.h"

namespace TarnixTools::engines {
namespace {

using testing::PixelsOf;

// Waves of every length with a little noise, other ones for each component.
std::vector<std::uint8_t> Waves(std::uint32_t width, std::uint32_t height, int components) {
  std::vector<std::uint8_t> samples;
  unsigned state = 1;
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      for (int i = 0; i < components; ++i) {
        state = state * 1664525U + 1013904223U;
        const double place = x / 9.0 + y / 14.0 + i + x * y / 3000.0;
        samples.push_back(
            static_cast<std::uint8_t>(125 + 90 * std::sin(place) + (state >> 24U) / 16.0));
      }
    }
  }
  return samples;
}

std::string Encoded(const JpegEncoding& encoding, const std::vector<std::uint8_t>& samples) {
  JpegEncoder encoder(encoding);
  const std::size_t row_bytes =
      std::size_t{encoding.width} * static_cast<std::size_t>(encoding.components);
  for (std::size_t at = 0; at < samples.size(); at += row_bytes) {
    encoder.AddRow(samples.data() + at);
  }
  return encoder.Finish();
}

double MeanDifference(const std::vector<std::uint8_t>& a, const std::vector<std::uint8_t>& b) {
  if (a.size() != b.size()) {
    return 255;
  }
  double sum = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    sum += std::abs(a[i] - b[i]);
  }
  return sum / static_cast<double>(a.size());
}

TEST(JpegEncoder, WhatItCodesIsDecoded) {
  for (const int components : {1, 3, 4}) {
    for (const auto& [width, height] : {std::pair(1U, 1U), std::pair(7U, 9U), std::pair(16U, 16U),
                                        std::pair(40U, 17U), std::pair(133U, 64U)}) {
      for (const bool is_progressive : {false, true}) {
        const auto samples = Waves(width, height, components);
        const std::string jpeg = Encoded({.width = width,
                                          .height = height,
                                          .components = components,
                                          .quality = 97,
                                          .is_subsampled = false,
                                          .is_progressive = is_progressive},
                                         samples);
        EXPECT_LT(MeanDifference(PixelsOf(jpeg), samples), 2.5)
            << components << ' ' << width << ' ' << height;
      }
    }
  }
}

TEST(JpegEncoder, CodesTheSamePictureInAnyNumberOfScans) {
  const auto samples = Waves(300, 200, 3);
  JpegEncoding encoding{.width = 300, .height = 200};
  const std::string several = Encoded(encoding, samples);
  encoding.is_progressive = false;
  const std::string one = Encoded(encoding, samples);
  EXPECT_TRUE(ReadJpegHeader(several)->is_progressive);
  EXPECT_FALSE(ReadJpegHeader(one)->is_progressive);
  EXPECT_LT(several.size(), one.size());
  EXPECT_EQ(PixelsOf(several), PixelsOf(one));
}

TEST(JpegEncoder, SubsamplesColorsOnly) {
  for (const int components : {1, 3, 4}) {
    const auto samples = std::vector<std::uint8_t>(std::size_t{40} * 30 * 4, 77);
    JpegEncoding encoding{.width = 40, .height = 30, .components = components};
    const auto header = ReadJpegHeader(Encoded(encoding, samples));
    ASSERT_TRUE(header);
    EXPECT_EQ(header->IsSubsampled(), components > 1);
    EXPECT_EQ(header->component[3].across, components == 4 ? 2 : 0);
    encoding.is_subsampled = false;
    EXPECT_FALSE(ReadJpegHeader(Encoded(encoding, samples))->IsSubsampled());
  }
}

TEST(JpegEncoder, WritesNoMarkerThatDocumentsDoWithout) {
  const auto markers = [](int components) {
    const std::string jpeg =
        Encoded({.width = 8, .height = 8, .components = components}, Waves(8, 8, components));
    std::string found;
    for (std::size_t i = 0; i + 1 < jpeg.size(); ++i) {
      if (jpeg[i] == '\xFF' && static_cast<unsigned char>(jpeg[i + 1]) >= 0xE0) {
        found += jpeg[i + 1];
      }
    }
    return found;
  };
  EXPECT_EQ(markers(1), "");
  EXPECT_EQ(markers(3), "");
  EXPECT_EQ(markers(4), "\xEE");
}

TEST(JpegEncoder, TakesFewerBytesThanLibjpegForAPictureThatIsNoWorse) {
  constexpr std::uint32_t kSide = 256;
  const auto samples = Waves(kSide, kSide, 3);
  for (const int quality : {50, 75}) {
    pdf::StringSink sink;
    JpegWriter writer(sink, {.width = kSide, .height = kSide, .quality = quality});
    writer.WriteRows(samples.data(), std::size_t{3} * kSide, kSide);
    writer.Finish();
    const std::string other = sink.Take();
    std::string ours;
    int needed = quality - 10;
    do {
      ours = Encoded({.width = kSide, .height = kSide, .quality = ++needed}, samples);
    } while (MeanDifference(PixelsOf(ours), samples) > MeanDifference(PixelsOf(other), samples));
    EXPECT_LT(ours.size(), other.size() * 9 / 10) << needed << " for " << quality;
  }
}

TEST(JpegEncoder, IsCoarserWhereTheQualityIsLower) {
  const auto samples = Waves(100, 80, 3);
  std::size_t before = 0;
  for (int quality = 1; quality <= 100; quality += 9) {
    const std::string jpeg = Encoded({.width = 100, .height = 80, .quality = quality}, samples);
    EXPECT_GE(jpeg.size(), before) << quality;
    before = jpeg.size();
    const JpegHeader header = ReadJpegHeader(jpeg).value();
    EXPECT_TRUE(AreStepsAsCoarse(header, quality));
    EXPECT_FALSE(quality > 5 && AreStepsAsCoarse(header, quality - 4));
  }
}

// A page that the image covers, a point for each pixel.
std::string Page(const std::string& entries, const std::string& data, std::uint32_t side) {
  const std::string length = std::to_string(side);
  std::string page = "/MediaBox[0 0 " + length + ' ' + length + ']';
  page += "/Contents 9 0 R/Resources<</XObject<</I 10 0 R>>>>";
  return testing::RawPdf()
      .Pages(1, page)
      .Stream(9, "", length + " 0 0 " + length + " 0 0 cm /I Do")
      .Stream(10,
              "/Type/XObject/Subtype/Image/BitsPerComponent 8/Width " + length + "/Height " +
                  length + entries,
              data)
      .Table();
}

constexpr const char* kSpaces[] = {"", "/ColorSpace/DeviceGray", "", "/ColorSpace/DeviceRGB",
                                   "/ColorSpace/DeviceCMYK"};

// The path of a document with a picture, coded and as it is.
std::pair<std::string, std::string> Pages(const testing::TempDir& directory, int components) {
  constexpr std::uint32_t kSide = 96;
  const auto samples = Waves(kSide, kSide, components);
  const std::string space = kSpaces[components];
  return {testing::WriteBytes(directory.Path("coded.pdf"), Page(space + "/Filter/DCTDecode",
                                                                Encoded({.width = kSide,
                                                                         .height = kSide,
                                                                         .components = components,
                                                                         .quality = 95,
                                                                         .is_subsampled = false},
                                                                        samples),
                                                                kSide)),
          testing::WriteBytes(directory.Path("plain.pdf"),
                              Page(space, {samples.begin(), samples.end()}, kSide))};
}

double MeanDifference(const testing::Picture& a, const testing::Picture& b) {
  return MeanDifference({a.pixels.begin(), a.pixels.end()}, {b.pixels.begin(), b.pixels.end()});
}

TEST(JpegEncoder, IsDrawnInItsColorsByOtherPrograms) {
  const testing::TempDir directory;
  for (const int components : {1, 3, 4}) {
    const auto [coded, plain] = Pages(directory, components);
    if (testing::HasProgram("pdftoppm")) {
      EXPECT_LT(
          MeanDifference(testing::Pictures(coded, 72).at(0), testing::Pictures(plain, 72).at(0)), 3)
          << components << " by poppler";
    }
    if (testing::HasProgram("mutool")) {
      EXPECT_LT(MeanDifference(testing::PicturesByMupdf(coded, 72).at(0),
                               testing::PicturesByMupdf(plain, 72).at(0)),
                5)
          << components << " by MuPDF";
    }
  }
}

using JpegEncoderByPdfium = DrawingTest;

TEST_F(JpegEncoderByPdfium, IsDrawnInItsColors) {
  const testing::TempDir directory;
  for (const int components : {1, 3, 4}) {
    const auto [coded, plain] = Pages(directory, components);
    EXPECT_LT(DifferenceOf(DrawnAt72(coded), DrawnAt72(plain)), 5) << components;
  }
}

TEST(JpegEncoder, LeavesOutRowsBeyondTheHeight) {
  auto samples = Waves(40, 20, 1);
  const JpegEncoding encoding{.width = 40, .height = 20, .components = 1};
  const std::string expected = Encoded(encoding, samples);
  samples.resize(40 * 23);
  EXPECT_EQ(Encoded(encoding, samples), expected);
}

TEST(JpegEncoder, RefusesSidesOutOfRange) {
  for (const auto& [width, height] : {std::pair(0U, 5U), std::pair(5U, 0U), std::pair(65'501U, 5U),
                                      std::pair(5U, 65'501U), std::pair(65'500U, 65'500U)}) {
    try {
      JpegEncoder({.width = width, .height = height});
      ADD_FAILURE() << width << " " << height;
    } catch (const pdf::Error& error) {
      EXPECT_EQ(error.code(), pdf::ErrorCode::kLimitExceeded);
    }
  }
}

TEST(JpegEncoder, SeveralThreadsEncodeAtOnce) {
  const auto samples = Waves(200, 150, 3);
  const JpegEncoding encoding{.width = 200, .height = 150};
  const std::string expected = Encoded(encoding, samples);
  std::vector<std::string> results(4);
  std::vector<std::thread> threads;
  for (std::string& result : results) {
    threads.emplace_back([&] { result = Encoded(encoding, samples); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (const std::string& result : results) {
    EXPECT_EQ(result, expected);
  }
}

}  // namespace
}  // namespace TarnixTools::engines
