#include "engines/support/codecs/PngWriter.h"

#include <array>
#include <memory>
#include <new>
#include <string_view>

#include <libdeflate.h>

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

void AppendNumber(std::string& out, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) {
    out += static_cast<char>(value >> shift & 0xFF);
  }
}

// type: four letters.
void AppendChunk(std::string& out, std::string_view type, std::string_view data) {
  AppendNumber(out, static_cast<std::uint32_t>(data.size()));
  const std::size_t start = out.size();
  out += type;
  out += data;
  AppendNumber(out, libdeflate_crc32(0, out.data() + start, out.size() - start));
}

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
  std::string header;
  AppendNumber(header, samples.width());
  AppendNumber(header, samples.height());
  header += '\x08';
  header += ColorTypeOf(samples.channels());
  header.append(3, '\0');
  Filter(samples, samples.size() <= kMaxTriedBytes ? RowFilter::kBest : RowFilter::kUp);
  std::string file("\x89PNG\r\n\x1A\n", 8);
  AppendChunk(file, "IHDR", header);
  AppendChunk(file, "IDAT", Packed(samples));
  AppendChunk(file, "IEND", {});
  return file;
}

}  // namespace TarnixTools::engines
