#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <jpeglib.h>

#include "engines/support/codecs/JpegMarkers.h"
#include "engines/support/codecs/JpegReader.h"
#include "engines/support/codecs/JpegTranscoder.h"
#include "engines/support/imagefiles/OpenedImage.h"

namespace TarnixTools::engines {

namespace {

enum class Coding : std::uint8_t { kHuffman, kArithmetic, kProgressiveArithmetic };

// A gradient of 40 x 30 pixels.
std::string Encoded(J_COLOR_SPACE space, int components, Coding coding) {
  jpeg_compress_struct state{};
  jpeg_error_mgr errors{};
  state.err = jpeg_std_error(&errors);
  jpeg_create_compress(&state);
  unsigned char* out = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&state, &out, &size);
  state.image_width = 40;
  state.image_height = 30;
  state.input_components = components;
  state.in_color_space = space;
  jpeg_set_defaults(&state);
  state.arith_code = coding == Coding::kHuffman ? FALSE : TRUE;
  if (coding == Coding::kProgressiveArithmetic) {
    jpeg_simple_progression(&state);
  }
  jpeg_start_compress(&state, TRUE);
  std::vector<JSAMPLE> samples(40 * static_cast<std::size_t>(components));
  while (state.next_scanline < state.image_height) {
    for (std::size_t i = 0; i < samples.size(); ++i) {
      samples[i] = static_cast<JSAMPLE>(i * 2 + std::size_t{state.next_scanline} * 5);
    }
    JSAMPROW row = samples.data();
    jpeg_write_scanlines(&state, &row, 1);
  }
  jpeg_finish_compress(&state);
  std::string jpeg(reinterpret_cast<const char*>(out), size);
  jpeg_destroy_compress(&state);
  std::free(out);
  return jpeg;
}

std::vector<std::uint8_t> PixelsOf(const std::string& jpeg) {
  std::vector<std::uint8_t> pixels;
  const std::unique_ptr<JpegReader> reader = JpegReader::Open(jpeg, -1);
  if (reader == nullptr) {
    return pixels;
  }
  std::vector<std::uint8_t> row(std::size_t{reader->width()} *
                                static_cast<std::size_t>(reader->components()));
  while (reader->ReadRow(row.data())) {
    pixels.insert(pixels.end(), row.begin(), row.end());
  }
  return pixels;
}

TEST(JpegTranscoder, KeepsEveryPixelOfArithmeticCoding) {
  struct Kind {
    J_COLOR_SPACE space;
    int components;
  };

  for (const Kind kind : {Kind{JCS_GRAYSCALE, 1}, Kind{JCS_RGB, 3}, Kind{JCS_CMYK, 4}}) {
    const std::string huffman = Encoded(kind.space, kind.components, Coding::kHuffman);
    ASSERT_FALSE(PixelsOf(huffman).empty());
    for (const Coding coding : {Coding::kArithmetic, Coding::kProgressiveArithmetic}) {
      const std::optional<std::string> recoded =
          CodeByHuffman(Encoded(kind.space, kind.components, coding));
      ASSERT_TRUE(recoded);
      EXPECT_EQ(ReadJpegHeader(*recoded)->coding, JpegCoding::kHuffman);
      EXPECT_EQ(ReadJpegHeader(*recoded)->adobe_transform,
                ReadJpegHeader(huffman)->adobe_transform);
      EXPECT_EQ(PixelsOf(*recoded), PixelsOf(huffman)) << kind.components;
    }
  }
}

TEST(JpegTranscoder, MakesImagesThatDocumentsCanHold) {
  const std::string arithmetic = Encoded(JCS_RGB, 3, Coding::kArithmetic);
  testing::OpenedImage image(arithmetic);
  EXPECT_EQ(image.frame().width, 40U);
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(embedded.image.filter, "DCTDecode");
  const std::string data = image.DataOf(embedded.image);
  EXPECT_NE(data, arithmetic);
  EXPECT_EQ(PixelsOf(data), PixelsOf(Encoded(JCS_RGB, 3, Coding::kHuffman)));
}

TEST(JpegTranscoder, GivesWhatIsThereOfDataThatWasCut) {
  const std::string arithmetic = Encoded(JCS_RGB, 3, Coding::kArithmetic);
  const std::optional<std::string> recoded =
      CodeByHuffman(std::string_view(arithmetic).substr(0, arithmetic.size() * 3 / 4));
  ASSERT_TRUE(recoded);
  EXPECT_EQ(PixelsOf(*recoded).size(), 40U * 30 * 3);
}

TEST(JpegTranscoder, RefusesWhatItCannotRead) {
  EXPECT_FALSE(CodeByHuffman(""));
  EXPECT_FALSE(CodeByHuffman("\xFF\xD8\xFF\xD9"));
  std::string huge = Encoded(JCS_RGB, 3, Coding::kArithmetic);
  const std::size_t frame = huge.find("\xFF\xC9");
  ASSERT_NE(frame, std::string::npos);
  const std::string lossless = std::string(huge).replace(frame + 1, 1, "\xCB");
  EXPECT_FALSE(CodeByHuffman(lossless));
  EXPECT_EQ(testing::ImageCodeOf(lossless), ImageErrorCode::kUnsupported);
  huge.replace(frame + 5, 4, "\xFF\xDC\xFF\xDC");  // 65500 x 65500 pixels
  EXPECT_FALSE(CodeByHuffman(huge));
}

}  // namespace

}  // namespace TarnixTools::engines
