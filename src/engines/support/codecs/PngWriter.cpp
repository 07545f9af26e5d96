#include "engines/support/codecs/PngWriter.h"

#include <array>
#include <memory>
#include <new>
#include <string_view>

#include <libdeflate.h>

#include "engines/support/codecs/PngChunks.h"
#include "engines/support/codecs/PngFilters.h"

namespace TarnixTools::engines {

namespace {

constexpr int kLevel = 5;
// Each row of a larger picture is filtered in one way: trying them all takes longer than packing.
constexpr std::size_t kMaxTriedBytes = std::size_t{4} << 20;

struct CompressorFreer {
  void operator()(libdeflate_compressor* compressor) const noexcept {
    libdeflate_free_compressor(compressor);
  }
};

// Color types by the number of channels (table 9).
char ColorTypeOf(int channels) {
  constexpr std::array<char, 5> kTypes = {0, 0, 4, 2, 6};
  return kTypes.at(static_cast<std::size_t>(channels));
}

std::string Packed(const Plane& filtered) {
  const std::unique_ptr<libdeflate_compressor, CompressorFreer> compressor(
      libdeflate_alloc_compressor(kLevel));
  if (compressor == nullptr) {
    throw std::bad_alloc();
  }
  std::string packed(libdeflate_zlib_compress_bound(compressor.get(), filtered.size()), '\0');
  packed.resize(libdeflate_zlib_compress(compressor.get(), filtered.data(), filtered.size(),
                                         packed.data(), packed.size()));
  return packed;
}

}  // namespace

std::string EncodePng(Plane&& samples) {
  Filter(samples, samples.size() <= kMaxTriedBytes ? RowFilter::kBest : RowFilter::kUp);
  std::string file(kPngSignature);
  AppendPngHeader(file, {.width = samples.width(),
                         .height = samples.height(),
                         .color_type = ColorTypeOf(samples.channels())});
  AppendPngChunk(file, "IDAT", Packed(samples));
  AppendPngChunk(file, "IEND", {});
  return file;
}

}  // namespace TarnixTools::engines
