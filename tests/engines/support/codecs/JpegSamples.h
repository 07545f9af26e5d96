// JPEG data for tests, made by libjpeg itself.
//
//   const std::string jpeg = Encoded({.space = JCS_CMYK, .coding = Coding::kArithmetic});
//   EXPECT_EQ(PixelsOf(jpeg).size(), 40U * 30 * 4);
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_CODECS_JPEGSAMPLES_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_CODECS_JPEGSAMPLES_H_

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <jpeglib.h>

#include "engines/support/codecs/JpegReader.h"

namespace TarnixTools::testing {

enum class Coding : std::uint8_t { kHuffman, kProgressive, kArithmetic, kProgressiveArithmetic };

struct JpegSample {
  J_COLOR_SPACE space = JCS_RGB;      // of the samples: JCS_GRAYSCALE, JCS_RGB or JCS_CMYK
  J_COLOR_SPACE coded = JCS_UNKNOWN;  // as what they are coded; JCS_UNKNOWN for the usual
  Coding coding = Coding::kHuffman;
  int quality = 75;
  bool is_subsampled = true;
  bool has_jfif = true;  // where it is usual
  std::string profile;   // ICC; empty for none
};

// A gradient of 40 x 30 pixels.
inline std::string Encoded(const JpegSample& sample) {
  jpeg_compress_struct state{};
  jpeg_error_mgr errors{};
  state.err = jpeg_std_error(&errors);
  jpeg_create_compress(&state);
  unsigned char* out = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&state, &out, &size);
  state.image_width = 40;
  state.image_height = 30;
  state.input_components = sample.space == JCS_GRAYSCALE ? 1 : sample.space == JCS_RGB ? 3 : 4;
  state.in_color_space = sample.space;
  jpeg_set_defaults(&state);
  if (sample.coded != JCS_UNKNOWN) {
    jpeg_set_colorspace(&state, sample.coded);
  }
  jpeg_set_quality(&state, sample.quality, TRUE);
  if (!sample.is_subsampled) {
    state.comp_info[0].h_samp_factor = 1;
    state.comp_info[0].v_samp_factor = 1;
  }
  state.write_JFIF_header = sample.has_jfif ? state.write_JFIF_header : FALSE;
  state.arith_code =
      sample.coding == Coding::kArithmetic || sample.coding == Coding::kProgressiveArithmetic
          ? TRUE
          : FALSE;
  if (sample.coding == Coding::kProgressive || sample.coding == Coding::kProgressiveArithmetic) {
    jpeg_simple_progression(&state);
  }
  jpeg_start_compress(&state, TRUE);
  if (!sample.profile.empty()) {
    jpeg_write_icc_profile(&state, reinterpret_cast<const JOCTET*>(sample.profile.data()),
                           static_cast<unsigned>(sample.profile.size()));
  }
  std::vector<JSAMPLE> samples(40 * static_cast<std::size_t>(state.input_components));
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

// Nothing for data that cannot be read.
inline std::vector<std::uint8_t> PixelsOf(const std::string& jpeg) {
  std::vector<std::uint8_t> pixels;
  const std::unique_ptr<engines::JpegReader> reader = engines::JpegReader::Open(jpeg, -1);
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

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_CODECS_JPEGSAMPLES_H_
