#include "support/JpegImage.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include <jpeglib.h>

#include "support/TempDir.h"

namespace TarnixTools::testing {
namespace {

// The library's frames can be unwound on the systems that tests run on.
[[noreturn]] void ThrowError(j_common_ptr) {
  throw std::runtime_error("not a JPEG file");
}

void Decode(jpeg_decompress_struct& state, JpegImage& image) {
  jpeg_read_header(&state, TRUE);
  image.components = state.num_components;
  image.density_x = state.X_density;
  image.density_unit = state.density_unit;
  image.is_subsampled =
      state.comp_info[0].h_samp_factor > 1 || state.comp_info[0].v_samp_factor > 1;
  state.out_color_space = JCS_RGB;
  jpeg_start_decompress(&state);
  image.width = static_cast<int>(state.output_width);
  image.height = static_cast<int>(state.output_height);
  image.pixels.resize(std::size_t{3} * state.output_width * state.output_height);
  while (state.output_scanline < state.output_height) {
    JSAMPROW row =
        image.pixels.data() + std::size_t{3} * state.output_width * state.output_scanline;
    jpeg_read_scanlines(&state, &row, 1);
  }
}

J_COLOR_SPACE SpaceFor(int components) {
  return components == 1 ? JCS_GRAYSCALE : components == 3 ? JCS_RGB : JCS_CMYK;
}

}  // namespace

Rgb JpegImage::At(int x, int y) const {
  if (x < 0 || y < 0 || x >= width || y >= height) {
    return {-1, -1, -1};
  }
  const std::size_t at = 3 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                              static_cast<std::size_t>(x));
  return {pixels[at], pixels[at + 1], pixels[at + 2]};
}

bool JpegImage::IsNear(int x, int y, const Rgb& color, int tolerance) const {
  const Rgb found = At(x, y);
  for (std::size_t i = 0; i < 3; ++i) {
    if (std::abs(found[i] - color[i]) > tolerance) {
      std::fprintf(stderr, "pixel %d, %d is %d %d %d\n", x, y, found[0], found[1], found[2]);
      return false;
    }
  }
  return true;
}

std::array<int, 4> JpegImage::Ink() const {
  std::array<int, 4> ink = {width, height, 0, 0};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const Rgb color = At(x, y);
      if (std::min({color[0], color[1], color[2]}) < 200) {
        ink = {std::min(ink[0], x), std::min(ink[1], y), std::max(ink[2], x + 1),
               std::max(ink[3], y + 1)};
      }
    }
  }
  return ink;
}

JpegImage ReadJpeg(const std::string& path) {
  return DecodeJpeg(ReadBytes(path));
}

JpegImage DecodeJpeg(const std::string& bytes) {
  JpegImage image;
  jpeg_decompress_struct state{};
  jpeg_error_mgr errors{};
  state.err = jpeg_std_error(&errors);
  errors.error_exit = &ThrowError;
  jpeg_create_decompress(&state);
  try {
    jpeg_mem_src(&state, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    Decode(state, image);
  } catch (const std::runtime_error&) {
    image = JpegImage();
  }
  jpeg_destroy_decompress(&state);
  return image;
}

std::string MakeJpeg(int width, int height, const std::vector<int>& color,
                     const std::vector<int>& right_half) {
  std::string row;
  for (int x = 0; x < width; ++x) {
    for (const int value : x < width / 2 || right_half.empty() ? color : right_half) {
      row += static_cast<char>(value);
    }
  }
  std::string samples;
  for (int y = 0; y < height; ++y) {
    samples += row;
  }
  return EncodeJpeg(width, height, static_cast<int>(color.size()), samples, 100);
}

std::string EncodeJpeg(int width, int height, int components, const std::string& samples,
                       int quality) {
  jpeg_compress_struct state{};
  jpeg_error_mgr errors{};
  state.err = jpeg_std_error(&errors);
  jpeg_create_compress(&state);
  unsigned char* buffer = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&state, &buffer, &size);
  state.image_width = static_cast<JDIMENSION>(width);
  state.image_height = static_cast<JDIMENSION>(height);
  state.input_components = components;
  state.in_color_space = SpaceFor(components);
  jpeg_set_defaults(&state);
  jpeg_set_quality(&state, quality, TRUE);
  jpeg_start_compress(&state, TRUE);
  const auto row_bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(components);
  std::vector<JSAMPLE> row(row_bytes);
  for (std::size_t y = 0; y < static_cast<std::size_t>(height); ++y) {
    std::copy_n(samples.begin() + static_cast<std::ptrdiff_t>(y * row_bytes), row_bytes,
                row.begin());
    JSAMPROW rows = row.data();
    jpeg_write_scanlines(&state, &rows, 1);
  }
  jpeg_finish_compress(&state);
  jpeg_destroy_compress(&state);
  std::string bytes(reinterpret_cast<const char*>(buffer), size);
  std::free(buffer);
  return bytes;
}

}  // namespace TarnixTools::testing
