#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/CodecLibrary.h"
#include "engines/support/codecs/TiffCodec.h"
#include "engines/support/pictures/ImageError.h"
#include "pdf/Error.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestTiff.h"

namespace TarnixTools::engines {
namespace {

using testing::TestTiff;

// Different bytes, as many as are wanted.
std::string Values(std::size_t count) {
  std::string values;
  for (std::size_t i = 0; i < count; ++i) {
    values += static_cast<char>(i * 13 + i / 256 + 1);
  }
  return values;
}

TestTiff Picture(std::uint32_t width, std::uint32_t height, std::uint32_t bits,
                 std::uint32_t channels = 1) {
  return TestTiff()
      .Sides(width, height)
      .Set(258, std::vector<std::uint32_t>(channels, bits))
      .Set(259, {1})
      .Set(262, {channels == 1 ? 1U : 2U})
      .Set(277, {channels});
}

// The samples of the first directory, which stands at byte 8; empty when nothing can be decoded.
std::string SamplesOf(const std::string& file, Plane plane, bool is_separate = false) {
  pdf::MemorySource source(file);
  TiffDecoder decoder(source, 8);
  if (!decoder.ReadSamples(plane, is_separate)) {
    return {};
  }
  std::string samples;
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    samples.append(plane.row(y), plane.row(y) + plane.row_bytes());
  }
  return samples;
}

TEST(TiffCodec, ReadsStrips) {
  const std::string all = Values(20);
  const TestTiff two = Picture(5, 4, 8).Set(278, {2}).Data({all.substr(0, 10), all.substr(10)});
  EXPECT_EQ(SamplesOf(two.Bytes(), Plane(5, 4, 1, 8)), all);
  const TestTiff uneven = Picture(5, 4, 8).Set(278, {3}).Data({all.substr(0, 15), all.substr(15)});
  EXPECT_EQ(SamplesOf(uneven.Bytes(), Plane(5, 4, 1, 8)), all);
  const TestTiff bits = Picture(12, 2, 1).Set(278, {2}).Data({"\xA5\xF0\x5A\x30"});
  EXPECT_EQ(SamplesOf(bits.Bytes(), Plane(12, 2, 1, 1)), "\xA5\xF0\x5A\x30");
}

TEST(TiffCodec, ReadsTiles) {
  const std::string tile = Values(256);
  const TestTiff tiled =
      Picture(20, 10, 8).Set(322, {16}).Set(323, {16}).Data({tile, std::string(256, 'b')}, true);
  const std::string samples = SamplesOf(tiled.Bytes(), Plane(20, 10, 1, 8));
  ASSERT_EQ(samples.size(), 200U);
  for (std::size_t y = 0; y < 10; ++y) {
    EXPECT_EQ(samples.substr(20 * y, 20), tile.substr(16 * y, 16) + "bbbb") << y;
  }
}

TEST(TiffCodec, PutsPlanesTogether) {
  const TestTiff strips =
      Picture(2, 2, 8, 3).Set(278, {2}).Set(284, {2}).Data({"rRsS", "gGhH", "bBcC"});
  EXPECT_EQ(SamplesOf(strips.Bytes(), Plane(2, 2, 3, 8), true), "rgbRGBshcSHC");
  std::vector<std::string> planes;
  for (const char c : {'r', 'g', 'b'}) {
    planes.emplace_back(256, c);
  }
  const TestTiff tiles =
      Picture(2, 2, 8, 3).Set(322, {16}).Set(323, {16}).Set(284, {2}).Data(planes, true);
  EXPECT_EQ(SamplesOf(tiles.Bytes(), Plane(2, 2, 3, 8), true), "rgbrgbrgbrgb");
}

TEST(TiffCodec, GivesTheHighByteFirst) {
  const TestTiff deep = Picture(2, 1, 16).Set(278, {1}).Data({"aAbB"});
  EXPECT_EQ(SamplesOf(deep.Bytes(), Plane(2, 1, 1, 16)), "AaBb");
}

TEST(TiffCodec, LeavesZerosWhereNothingCanBeDecoded) {
  const std::string all = Values(20);
  const TestTiff tiff = Picture(5, 4, 8).Set(278, {2}).Data({all.substr(0, 10), all.substr(10)});
  const std::string whole = tiff.Bytes();
  EXPECT_EQ(SamplesOf(whole.substr(0, whole.size() - 10), Plane(5, 4, 1, 8)),
            all.substr(0, 10) + std::string(10, '\0'));
}

TEST(TiffCodec, RefusesPlanesThatDoNotFitThePicture) {
  const TestTiff strips = Picture(5, 4, 8).Set(278, {4}).Data({Values(20)});
  EXPECT_EQ(SamplesOf(strips.Bytes(), Plane(50, 4, 1, 8)), "");
  const TestTiff tiles =
      Picture(20, 10, 8).Set(322, {16}).Set(323, {16}).Data({Values(256), Values(256)}, true);
  EXPECT_EQ(SamplesOf(tiles.Bytes(), Plane(20, 10, 3, 8)), "");
}

TEST(TiffCodec, MakesRgbOfAnyPicture) {
  const std::string file = Picture(2, 2, 8, 3).Set(278, {2}).Data({"abcdefghijkl"}).Bytes();
  pdf::MemorySource source(file);
  TiffDecoder decoder(source, 8);
  Plane plane(2, 2, 4, 8);
  ASSERT_TRUE(decoder.ReadRgba(plane));
  EXPECT_EQ(std::string(plane.row(0), plane.row(0) + 8),
            "abc\xFF"
            "def\xFF");
  EXPECT_EQ(std::string(plane.row(1), plane.row(1) + 8),
            "ghi\xFF"
            "jkl\xFF");
}

TEST(TiffCodec, MakesNothingOfWhatIsNone) {
  const std::string file = Picture(2, 2, 8).Set(262, {32'803}).Set(278, {2}).Data({"abcd"}).Bytes();
  pdf::MemorySource source(file);
  TiffDecoder decoder(source, 8);
  Plane plane(2, 2, 4, 8);
  EXPECT_FALSE(decoder.ReadRgba(plane));
  EXPECT_FALSE(TiffDecoder::Knows(32'000));
  EXPECT_FALSE(TiffDecoder::Knows(std::uint64_t{1} << 40));
  EXPECT_TRUE(TiffDecoder::Knows(5));
}

TEST(TiffCodec, RefusesFilesThatCannotBeRead) {
  for (const std::string& bytes : {std::string(), std::string("II*\0\x08\0\0\0", 8)}) {
    pdf::MemorySource source(bytes);
    try {
      TiffDecoder(source, 8);
      ADD_FAILURE() << bytes.size();
    } catch (const ImageError& error) {
      EXPECT_EQ(error.code(), ImageErrorCode::kDamaged);
    }
  }
}

class FailingSource : public pdf::ByteSource {
 public:
  std::uint64_t Size() const override { return 1000; }

  std::size_t ReadAt(std::uint64_t /*offset*/, char* /*buffer*/, std::size_t /*size*/) override {
    throw pdf::Error(pdf::ErrorCode::kReadFailed, "no more");
  }
};

// No exception goes through the library, which is written in C.
TEST(TiffCodec, GetsAlongWithASourceThatFails) {
  FailingSource source;
  EXPECT_THROW(TiffDecoder(source, 8), ImageError);
}

TEST(CodecLibrary, IsMissedWhereItIsNotInstalled) {
  const auto code_of = [](const char* name, const char* function_name) {
    try {
      void (*function)() = nullptr;
      CodecLibrary(name).Resolve(function, function_name);
    } catch (const ImageError& error) {
      return error.code();
    }
    return ImageErrorCode::kDamaged;
  };
  EXPECT_EQ(code_of("libno-such-library.so.7", "strlen"), ImageErrorCode::kUnsupported);
  EXPECT_EQ(code_of("libc.so.6", "no_such_function"), ImageErrorCode::kUnsupported);
}

// Every coding of tiffcp, of strips and of tiles.
TEST(TiffCodec, ReadsWhatLibtiffWrites) {
  TARNIX_NEED_PROGRAM("tiffcp");
  const testing::TempDir directory;
  const std::string samples = Values(std::size_t{3} * 40 * 30);
  testing::WriteBytes(directory.Path("in.tif"),
                      Picture(40, 30, 8, 3).Set(278, {30}).Data({samples}).Bytes());
  for (const char* coding : {"none", "lzw", "lzw:2", "zip", "packbits"}) {
    for (const bool is_tiled : {false, true}) {
      std::vector<std::string> command = {"tiffcp", "-c", coding};
      if (is_tiled) {
        command.insert(command.end(), {"-t", "-w", "16", "-l", "16"});
      }
      command.insert(command.end(), {directory.Path("in.tif"), directory.Path("out.tif")});
      ASSERT_EQ(testing::RunProgram(command).exit_status, 0);
      const std::string file = testing::ReadBytes(directory.Path("out.tif"));
      pdf::MemorySource source(file);
      const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(file[i]); };
      TiffDecoder decoder(source, byte(4) | byte(5) << 8U | byte(6) << 16U);
      Plane plane(40, 30, 3, 8);
      ASSERT_TRUE(decoder.ReadSamples(plane, false)) << coding;
      for (std::uint32_t y = 0; y < 30; ++y) {
        ASSERT_EQ(std::string(plane.row(y), plane.row(y) + 120), samples.substr(120 * y, 120))
            << coding << " " << is_tiled;
      }
    }
  }
}

}  // namespace
}  // namespace TarnixTools::engines
