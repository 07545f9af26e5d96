// In which words pictures are refused that are too large, or of which data goes missing.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/JpegEncoder.h"
#include "engines/support/codecs/JpegSamples.h"
#include "engines/support/codecs/JpegWriter.h"
#include "engines/support/imagefiles/ImageFile.h"
#include "engines/support/images/WrittenImage.h"
#include "engines/support/pictures/GivenRows.h"
#include "engines/support/pictures/ImageError.h"
#include "engines/support/pictures/Plane.h"
#include "engines/support/pictures/UprightPicture.h"
#include "pdf/Error.h"
#include "pdf/file/ByteSink.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using testing::Big32;
using testing::Little32;

std::string MessageOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const ImageError& error) {
    return std::to_string(static_cast<int>(error.code())) + " " + error.what();
  } catch (const pdf::Error& error) {
    return error.what();
  }
  return "";
}

// Some bytes, then zeros up to a size that nobody has in memory.
class LongSource : public pdf::ByteSource {
 public:
  LongSource(std::string start, std::uint64_t size) : start_(std::move(start)), size_(size) {}

  std::uint64_t Size() const override { return size_; }

  std::size_t ReadAt(std::uint64_t offset, char* buffer, std::size_t size) override {
    const auto count =
        static_cast<std::size_t>(std::min<std::uint64_t>(size, size_ - std::min(offset, size_)));
    std::fill_n(buffer, count, '\0');
    if (offset < start_.size()) {
      start_.copy(buffer, count, static_cast<std::size_t>(offset));
    }
    return count;
  }

 private:
  std::string start_;
  std::uint64_t size_;
};

constexpr std::uint64_t kHeld = std::uint64_t{1} << 30;

std::string MessageOfFile(const std::string& start, std::uint64_t size) {
  return MessageOf([&] {
    LongSource source(start, size);
    ImageFile::Open(source)->Embed(0);
  });
}

TEST(PictureRefusals, OfFilesThatAreTooLong) {
  const std::string webp =
      "RIFF" + Little32(30) + "WEBPVP8L" + Little32(5) + std::string("\x2F\0\0\0\0\0", 6);
  EXPECT_EQ(MessageOfFile(webp, kHeld + 1), "3 the picture is too large to be decoded");
  const std::string arithmetic = testing::Encoded({.coding = testing::Coding::kArithmetic});
  EXPECT_EQ(MessageOfFile(arithmetic, kHeld + 1), "3 the JPEG file is too large to be coded anew");
  testing::TestPng png{.width = 1, .height = 1, .bits = 8, .color_type = 4, .rows = "x"};
  std::string start = png.Bytes();
  start = start.substr(0, start.find("IDAT") - 4) + Big32(0x40000001) + "IDAT";
  EXPECT_EQ(MessageOfFile(start, kHeld + 1000), "3 the picture is too large to be decoded");
}

TEST(PictureRefusals, OfPlanesThatAreTooLarge) {
  EXPECT_EQ(MessageOf([] { Plane(1'000'000, 1'000'000, 4, 8); }),
            "3 the picture is too large to be decoded");
  // A gigabyte, with a byte for the filter before each row.
  EXPECT_EQ(MessageOf([] { Plane(1023, 1 << 20, 1, 8); }), "");
  EXPECT_EQ(MessageOf([] { Plane(1024, 1 << 20, 1, 8); }),
            "3 the picture is too large to be decoded");
  EXPECT_EQ(MessageOf([] { Plane(5, 0, 1, 8); }), "");
}

TEST(PictureRefusals, OfPicturesThatAreTooLargeToBeTurned) {
  const auto turned = [](std::uint32_t width, std::uint32_t height, int orientation) {
    return MessageOf([&] {
      MakeUpright(std::make_unique<testing::GivenRows>(width, height, PixelLayout::kGray,
                                                       std::vector<testing::Bytes>()),
                  orientation);
    });
  };
  EXPECT_EQ(turned(1 << 19, 1025, 6), "the picture is too large to be turned");
  EXPECT_EQ(turned(1 << 19, 1025, 1), "");
  EXPECT_EQ(turned(1025, 1 << 19, 2), "the picture is too large to be turned");
}

TEST(PictureRefusals, OfSidesThatJpegDoesNotHave) {
  for (const auto& [width, height] : {std::pair(0U, 1U), {1U, 0U}, {65501U, 1U}, {1U, 65501U}}) {
    EXPECT_EQ(MessageOf([&, width = width, height = height] {
                JpegEncoder({.width = width, .height = height, .components = 1});
              }),
              "the picture is too large for JPEG");
    EXPECT_EQ(MessageOf([&, width = width, height = height] {
                pdf::StringSink sink;
                JpegWriter(sink, {.width = width, .height = height});
              }),
              "the picture is too large for JPEG");
  }
  // Coefficients of more than a gigabyte.
  EXPECT_EQ(MessageOf([] { JpegEncoder({.width = 65500, .height = 65500, .components = 3}); }),
            "the picture is too large for JPEG");
  EXPECT_EQ(MessageOf([] { JpegEncoder({.width = 65500, .height = 1, .components = 1}); }), "");
  EXPECT_EQ(MessageOf([] { JpegEncoder({.width = 1, .height = 65500, .components = 1}); }), "");
}

TEST(PictureRefusals, OfJpegFilesWithoutAllTheirRows) {
  pdf::StringSink sink;
  JpegWriter writer(sink, {.width = 1, .height = 2, .layout = PixelLayout::kGray});
  const std::uint8_t pixel = 7;
  writer.WriteRows(&pixel, 1, 1);
  EXPECT_EQ(MessageOf([&] { writer.Finish(); }), "the picture cannot be stored as JPEG");
}

TEST(PictureRefusals, OfFilesThatBecomeShorter) {
  for (const std::uint64_t length : {std::uint64_t{3}, std::uint64_t{300'000}}) {
    EncodedImage image;
    image.image.width = image.image.height = 1;
    image.image.data.push_back({2, length, {}});
    const std::string file(static_cast<std::size_t>(length) + 1, 'x');
    EXPECT_EQ(MessageOf([&] { DocumentOf({&image}, file); }), "the image file has become shorter");
    EXPECT_EQ(MessageOf([&] { DocumentOf({&image}, file + "y"); }), "");
  }
}

}  // namespace
}  // namespace TarnixTools::engines
