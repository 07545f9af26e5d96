// Images of documents, for tests: what the dictionary and the data give, pixel by pixel.
//
//   ImageInDocument image("/Width 2/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8", "\x80\xFF");
//   EXPECT_EQ(image.Rows(), "80 FF\n");
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_IMAGES_IMAGEINDOCUMENT_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_IMAGES_IMAGEINDOCUMENT_H_

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/images/DocumentImage.h"
#include "engines/support/images/Picture.h"
#include "engines/support/pdfium/PdfiumSession.h"
#include "pdf/write/RewriteFixture.h"
#include "support/PnmImage.h"
#include "support/RawPdf.h"
#include "support/Readers.h"

namespace TarnixTools::engines {

inline std::string FromHex(const std::string& hex) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

inline std::string Repeat(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) {
    all += text;
  }
  return all;
}

// A picture, read to its end.
struct Pixels {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  PixelLayout layout = PixelLayout::kGray;
  std::uint32_t rows_with_data = 0;
  std::string bytes;

  testing::Rgb At(std::uint32_t x, std::uint32_t y) const {
    const std::size_t step = BytesPerPixel(layout);
    const std::size_t at = (std::size_t{y} * width + x) * step;
    const auto byte = [&](std::size_t i) {
      return at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : -1;
    };
    return step == 1 ? testing::Rgb{byte(0), byte(0), byte(0)}
                     : testing::Rgb{byte(0), byte(1), byte(2)};
  }

  // All bytes in hexadecimal, rows in lines, pixels apart.
  std::string Text() const {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    const std::size_t step = BytesPerPixel(layout);
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      const auto byte = static_cast<unsigned char>(bytes[i]);
      text += kDigits[byte >> 4U];
      text += kDigits[byte & 15U];
      text += (i + 1) % (width * step) == 0 ? "\n" : (i + 1) % step == 0 ? " " : "";
    }
    return text;
  }
};

inline Pixels ReadAll(RowSource& picture) {
  Pixels pixels{.width = picture.width(),
                .height = picture.height(),
                .layout = picture.layout(),
                .rows_with_data = 0,
                .bytes = {}};
  std::vector<std::uint8_t> row(picture.row_bytes());
  for (std::uint32_t y = 0; y < picture.height(); ++y) {
    pixels.rows_with_data += picture.ReadRow(row.data()) ? 1 : 0;
    pixels.bytes.append(row.begin(), row.end());
  }
  return pixels;
}

class ImageInDocument {
 public:
  // An image with these entries and this data, drawn on a page. `others` has the objects that it
  // refers to, from number 11 on.
  ImageInDocument(const std::string& entries, const std::string& data,
                  testing::RawPdf others = testing::RawPdf())
      : bytes_(others
                   .Pages(1,
                          "/MediaBox[0 0 9 9]/Contents 9 0 R"
                          "/Resources<</XObject<</I 10 0 R>>>>")
                   .Stream(9, "", "9 0 0 9 0 0 cm /I Do")
                   .Stream(10, "/Type/XObject/Subtype/Image" + entries, data)
                   .Table()),
        document_(testing::OpenBytes(bytes_)) {}

  pdf::Document& document() { return *document_; }

  const std::string& bytes() const { return bytes_; }

  DocumentImage Image() {
    return {.document = document_.get(),
            .number = 10,
            .dictionary = document_->Load({.number = 10, .generation = 0}, arena_),
            .data = {},
            .color_spaces = {}};
  }

  ImageFacts Facts() { return FactsOf(Image(), arena_); }

  // The picture stays until the next call.
  RowSource* Open(PictureSize least = kWholePicture) {
    image_ = Image();
    facts_ = FactsOf(image_, arena_);
    picture_ = OpenPicture(image_, facts_, least);
    return picture_.get();
  }

  // Without rows where there is no picture.
  Pixels Read(PictureSize least = kWholePicture) {
    RowSource* picture = Open(least);
    return picture != nullptr ? ReadAll(*picture) : Pixels();
  }

  std::string Rows() { return Read().Text(); }

  // The image as poppler decodes it, whatever its colour space.
  testing::PnmImage ReadByPoppler() const { return testing::ImageByPoppler(bytes_); }

 private:
  std::string bytes_;
  std::unique_ptr<pdf::Document> document_;
  pdf::Arena arena_;
  DocumentImage image_;
  ImageFacts facts_;
  RowSourcePtr picture_;
};

// Skips tests where there is no PDFium.
class NeedsPdfium : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!PdfiumLock().is_available()) {
      GTEST_SKIP() << "needs PDFium";
    }
  }
};

// The rows of a picture in black and white by its bits, which must be those of its bytes.
inline void ExpectBitsLikeBytes(ImageInDocument& image) {
  const Pixels pixels = image.Read();
  RowSource* picture = image.Open();
  ASSERT_TRUE(picture->is_bilevel());
  std::vector<std::uint8_t> bits(picture->width() / 8 + 1);
  for (std::uint32_t y = 0; y < picture->height(); ++y) {
    const bool has_data = picture->ReadBits(bits.data());
    EXPECT_EQ(has_data, y < pixels.rows_with_data);
    for (std::uint32_t x = 0; x < picture->width(); ++x) {
      const int value = (bits[x / 8] >> (7 - x % 8) & 1U) != 0 ? 255 : 0;
      EXPECT_EQ(pixels.At(x, y)[0], value) << x << " " << y;
    }
  }
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_IMAGES_IMAGEINDOCUMENT_H_
