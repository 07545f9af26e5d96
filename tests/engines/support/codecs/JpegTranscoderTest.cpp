#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/CodecLimits.h"
#include "engines/support/codecs/JpegMarkers.h"
#include "engines/support/codecs/JpegSamples.h"
#include "engines/support/codecs/JpegTranscoder.h"
#include "engines/support/imagefiles/OpenedImage.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {

namespace {

using testing::Coding;
using testing::Encoded;
using testing::JpegSample;
using testing::PixelsOf;

TEST(JpegTranscoder, KeepsEveryPixelOfArithmeticCoding) {
  for (const J_COLOR_SPACE space : {JCS_GRAYSCALE, JCS_RGB, JCS_CMYK}) {
    const std::string huffman = Encoded({.space = space});
    ASSERT_FALSE(PixelsOf(huffman).empty());
    for (const Coding coding : {Coding::kArithmetic, Coding::kProgressiveArithmetic}) {
      const std::optional<RecodedJpeg> recoded =
          CodeByHuffman(Encoded({.space = space, .coding = coding}));
      ASSERT_TRUE(recoded);
      EXPECT_TRUE(recoded->is_whole);
      EXPECT_EQ(ReadJpegHeader(recoded->data)->coding, JpegCoding::kHuffman);
      EXPECT_EQ(ReadJpegHeader(recoded->data)->adobe_transform,
                ReadJpegHeader(huffman)->adobe_transform);
      EXPECT_EQ(PixelsOf(recoded->data), PixelsOf(huffman)) << space;
    }
  }
}

TEST(JpegTranscoder, MakesImagesThatDocumentsCanHold) {
  const std::string arithmetic = Encoded({.coding = Coding::kArithmetic});
  testing::OpenedImage image(arithmetic);
  EXPECT_EQ(image.frame().width, 40U);
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(embedded.image.filter, "DCTDecode");
  const std::string data = image.DataOf(embedded.image);
  EXPECT_NE(data, arithmetic);
  EXPECT_EQ(PixelsOf(data), PixelsOf(Encoded({})));
}

TEST(JpegTranscoder, GivesWhatIsThereOfDataThatWasCut) {
  const std::string arithmetic = Encoded({.coding = Coding::kArithmetic});
  const std::optional<RecodedJpeg> recoded =
      CodeByHuffman(std::string_view(arithmetic).substr(0, arithmetic.size() * 3 / 4));
  ASSERT_TRUE(recoded);
  EXPECT_FALSE(recoded->is_whole);
  EXPECT_EQ(PixelsOf(recoded->data).size(), 40U * 30 * 3);
}

// A gray picture in as many scans as are wanted, the last ones all the same.
std::string OfScans(int count) {
  const std::string jpeg = Encoded({.space = JCS_GRAYSCALE, .coding = Coding::kProgressive});
  const std::size_t last = jpeg.rfind("\xFF\xDA");
  const std::string scan = jpeg.substr(last, jpeg.size() - 2 - last);
  std::string many = jpeg.substr(0, last);
  for (std::size_t at = many.find("\xFF\xDA"); at != std::string::npos;
       at = many.find("\xFF\xDA", at + 2)) {
    --count;
  }
  for (; count > 0; --count) {
    many += scan;
  }
  return many + "\xFF\xD9";
}

TEST(JpegTranscoder, ReadsSoManyScansAndNoMore) {
  EXPECT_TRUE(CodeByHuffman(OfScans(limits::kMaxJpegScans)));
  EXPECT_FALSE(CodeByHuffman(OfScans(limits::kMaxJpegScans + 1)));
  EXPECT_NE(JpegReader::Open(OfScans(limits::kMaxJpegScans), -1), nullptr);
  EXPECT_EQ(JpegReader::Open(OfScans(limits::kMaxJpegScans + 1), -1), nullptr);
}

TEST(JpegTranscoder, RefusesWhatItCannotRead) {
  EXPECT_FALSE(CodeByHuffman(""));
  EXPECT_FALSE(CodeByHuffman("\xFF\xD8\xFF\xD9"));
  std::string huge = Encoded({.coding = Coding::kArithmetic});
  const std::size_t frame = huge.find("\xFF\xC9");
  ASSERT_NE(frame, std::string::npos);
  const std::string lossless = std::string(huge).replace(frame + 1, 1, "\xCB");
  EXPECT_FALSE(CodeByHuffman(lossless));
  EXPECT_EQ(testing::ImageCodeOf(lossless), ImageErrorCode::kUnsupported);
  huge.replace(frame + 5, 4, "\xFF\xDC\xFF\xDC");  // 65500 x 65500 pixels
  EXPECT_FALSE(CodeByHuffman(huge));
}

std::vector<JpegSample> Samples() {
  std::vector<JpegSample> samples = {{.space = JCS_GRAYSCALE},
                                     {},
                                     {.is_subsampled = false},
                                     {.coded = JCS_RGB},
                                     {.space = JCS_CMYK},
                                     {.space = JCS_CMYK, .coded = JCS_YCCK},
                                     {.coding = Coding::kProgressive},
                                     {.coding = Coding::kArithmetic},
                                     {.quality = 95},
                                     {.has_jfif = false}};
  return samples;
}

// An image of a document, as it is and optimised, decoded by djpeg.
std::string DecodedByDjpeg(const std::string& jpeg) {
  const testing::TempDir directory;
  return testing::RunProgram({"djpeg", testing::WriteBytes(directory.Path("in.jpg"), jpeg)}).output;
}

TEST(JpegOptimizer, KeepsEveryPixelAndTheMarkersOfColors) {
  for (const JpegSample& sample : Samples()) {
    const std::string jpeg = Encoded(sample);
    const std::optional<std::string> optimized = OptimizeJpeg(jpeg);
    ASSERT_TRUE(optimized);
    EXPECT_TRUE(optimized->size() < jpeg.size() || sample.coding == Coding::kArithmetic);
    EXPECT_EQ(PixelsOf(*optimized), PixelsOf(jpeg));
    const auto before = ReadJpegHeader(jpeg);
    const auto after = ReadJpegHeader(*optimized);
    EXPECT_EQ(after->coding, JpegCoding::kHuffman);
    EXPECT_EQ(after->adobe_transform, before->adobe_transform);
    EXPECT_FALSE(after->has_jfif);
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_EQ(after->component[i].id, before->component[i].id);
    }
  }
}

TEST(JpegOptimizer, KeepsWhatDjpegSees) {
  TARNIX_NEED_PROGRAM("djpeg");
  for (const JpegSample& sample : Samples()) {
    if (sample.space != JCS_CMYK) {  // which djpeg does not write
      const std::string jpeg = Encoded(sample);
      ASSERT_FALSE(DecodedByDjpeg(jpeg).empty());
      EXPECT_EQ(DecodedByDjpeg(*OptimizeJpeg(jpeg)), DecodedByDjpeg(jpeg));
    }
  }
}

TEST(JpegOptimizer, LeavesOutWhatHasNoEffectInDocuments) {
  const std::string jpeg = Encoded({.profile = std::string(3000, 'p')});
  const std::string with_all = jpeg.substr(0, 2) + testing::ExifJpegSegment(6, 240) +
                               testing::JpegSegment(0xFE, "a comment") + jpeg.substr(2);
  EXPECT_EQ(OptimizeJpeg(with_all), OptimizeJpeg(Encoded({})));
}

TEST(JpegOptimizer, KeepsTheMarkerThatContradictsTheNamesOfComponents) {
  std::string jpeg = Encoded({});
  const std::size_t frame = jpeg.find("\xFF\xC0");
  const std::size_t scan = jpeg.find("\xFF\xDA");
  for (std::size_t i = 0; i < 3; ++i) {
    jpeg[frame + 10 + 3 * i] = "RGB"[i];
    jpeg[scan + 5 + 2 * i] = "RGB"[i];
  }
  const std::optional<std::string> optimized = OptimizeJpeg(jpeg);
  ASSERT_TRUE(optimized);
  EXPECT_TRUE(ReadJpegHeader(*optimized)->has_jfif);
  EXPECT_EQ(PixelsOf(*optimized), PixelsOf(jpeg));
}

TEST(JpegOptimizer, RefusesMarkersThatContradictEachOther) {
  const std::string jpeg = Encoded({});
  const std::string adobe("Adobe\0\x64\0\0\0\0", 11);
  const std::string start = jpeg.substr(0, 20);  // with the marker of JFIF
  EXPECT_FALSE(OptimizeJpeg(start + testing::JpegSegment(0xEE, adobe + '\0') + jpeg.substr(20)));
  EXPECT_TRUE(OptimizeJpeg(start + testing::JpegSegment(0xEE, adobe + '\1') + jpeg.substr(20)));
}

TEST(JpegOptimizer, RefusesDataThatIsNotComplete) {
  for (const Coding coding : {Coding::kHuffman, Coding::kProgressive}) {
    const std::string jpeg = Encoded({.coding = coding});
    for (std::size_t size = 0; size < jpeg.size(); ++size) {
      EXPECT_FALSE(OptimizeJpeg(std::string_view(jpeg).substr(0, size))) << size;
    }
    EXPECT_EQ(OptimizeJpeg(jpeg + "what follows"), OptimizeJpeg(jpeg));
  }
}

TEST(JpegOptimizer, RefusesDamage) {
  const std::string jpeg = Encoded({.space = JCS_GRAYSCALE});
  const std::size_t scan = jpeg.find("\xFF\xDA");
  std::string damaged = jpeg;
  damaged.replace(scan + 40, 2, "\xFF\xD3");  // a restart that nobody expects
  EXPECT_FALSE(OptimizeJpeg(damaged));
  EXPECT_FALSE(OptimizeJpeg(jpeg.substr(0, scan + 20) + jpeg.substr(scan + 60)));
}

TEST(JpegOptimizer, SeveralThreadsOptimizeAtOnce) {
  const std::string jpeg = Encoded({});
  const std::optional<std::string> expected = OptimizeJpeg(jpeg);
  std::vector<std::optional<std::string>> results(4);
  std::vector<std::thread> threads;
  for (std::optional<std::string>& result : results) {
    threads.emplace_back([&] { result = OptimizeJpeg(jpeg); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (const std::optional<std::string>& result : results) {
    EXPECT_EQ(result, expected);
  }
}

}  // namespace

}  // namespace TarnixTools::engines
