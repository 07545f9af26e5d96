#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include <libdeflate.h>
#include <zlib.h>

#include "pdf/Error.h"
#include "pdf/filters/FilterSteps.h"
#include "pdf/filters/LimitedOutput.h"

namespace TarnixTools::pdf {
namespace {

using filters::kZlibHeaderBytes;
using filters::LimitedOutput;

struct DecompressorFreer {
  void operator()(libdeflate_decompressor* d) const noexcept { libdeflate_free_decompressor(d); }
};

struct CompressorFreer {
  void operator()(libdeflate_compressor* c) const noexcept { libdeflate_free_compressor(c); }
};

struct InflateEnder {
  void operator()(z_stream* stream) const noexcept { inflateEnd(stream); }
};

struct BufferFreer {
  void operator()(char* buffer) const noexcept { std::free(buffer); }
};

// Memory that is not written before it is used, unlike a string's: pages that the data does not
// reach cost nothing.
using RawBuffer = std::unique_ptr<char[], BufferFreer>;

// Text and object streams rarely shrink to less than a sixth.
constexpr std::size_t kFirstGuessRatio = 6;
constexpr std::size_t kSmallestGuess = 4096;
constexpr std::size_t kGuessGrowth = 4;
// Beyond this the data is inflated piece by piece, so that it is never held twice.
constexpr std::size_t kWholeBufferBytes = std::size_t{64} << 20;

libdeflate_decompressor* ThreadDecompressor() {
  thread_local const std::unique_ptr<libdeflate_decompressor, DecompressorFreer> decompressor(
      libdeflate_alloc_decompressor());
  if (!decompressor) {
    throw std::bad_alloc();
  }
  return decompressor.get();
}

RawBuffer AllocateRaw(std::size_t bytes) {
  RawBuffer buffer(static_cast<char*>(std::malloc(std::max<std::size_t>(bytes, 1))));
  if (!buffer) {
    throw std::bad_alloc();
  }
  return buffer;
}

// RFC 1950, 2.2: the checksum of the data stands behind it, its first byte first. No reader minds one
// that is cut off.
bool HasNoWrongChecksum(std::string_view behind, std::string_view data) {
  constexpr std::size_t kChecksumBytes = 4;
  if (behind.size() < kChecksumBytes) {
    return true;
  }
  std::uint32_t checksum = 0;
  for (std::size_t i = 0; i < kChecksumBytes; ++i) {
    checksum = (checksum << 8) | static_cast<unsigned char>(behind[i]);
  }
  return checksum == libdeflate_adler32(1, data.data(), data.size());
}

// Sound deflate data in one go into a guessed size, the guess growing while it is too small.
// Nothing when the data is damaged or large: then InflatePiecewise has to do it.
std::optional<Decoded> InflateWhole(std::string_view deflated, std::size_t limit) {
  std::size_t guess = kSmallestGuess;
  if (deflated.size() < kWholeBufferBytes) {
    guess = std::max(guess, deflated.size() * kFirstGuessRatio);
  } else {
    return std::nullopt;
  }
  while (guess <= kWholeBufferBytes) {
    guess = std::min(guess, limit);
    const RawBuffer buffer = AllocateRaw(guess);
    std::size_t consumed = 0;
    std::size_t produced = 0;
    const libdeflate_result result =
        libdeflate_deflate_decompress_ex(ThreadDecompressor(), deflated.data(), deflated.size(),
                                         buffer.get(), guess, &consumed, &produced);
    if (result == LIBDEFLATE_SUCCESS) {
      std::string data(buffer.get(), produced);
      const bool is_well_wrapped = HasNoWrongChecksum(deflated.substr(consumed), data);
      return Decoded{.data = std::move(data), .is_well_wrapped = is_well_wrapped};
    }
    if (result != LIBDEFLATE_INSUFFICIENT_SPACE) {
      return std::nullopt;
    }
    if (guess == limit) {
      filters::ThrowOutputLimit();
    }
    guess *= kGuessGrowth;
  }
  return std::nullopt;
}

std::unique_ptr<z_stream, InflateEnder> StartRawInflate(z_stream& stream) {
  const int result = inflateInit2(&stream, -MAX_WBITS);
  if (result == Z_MEM_ERROR) {
    throw std::bad_alloc();
  }
  if (result != Z_OK) {
    throw Error(ErrorCode::kInternal, "FlateDecode: inflate cannot start");
  }
  return std::unique_ptr<z_stream, InflateEnder>(&stream);
}

// Any deflate data, in pieces; keeps what was decoded before damage.
Decoded InflatePiecewise(std::string_view whole, std::size_t limit) {
  std::string_view deflated = whole;
  z_stream stream{};
  const auto inflating = StartRawInflate(stream);
  LimitedOutput out(limit);
  std::array<char, 65536> piece;
  int result = Z_OK;
  while (result == Z_OK) {
    if (stream.avail_in == 0) {
      const std::size_t take =
          std::min<std::size_t>(deflated.size(), std::numeric_limits<uInt>::max());
      stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(deflated.data()));
      stream.avail_in = static_cast<uInt>(take);
      deflated.remove_prefix(take);
    }
    stream.next_out = reinterpret_cast<Bytef*>(piece.data());
    stream.avail_out = static_cast<uInt>(piece.size());
    result = inflate(&stream, Z_NO_FLUSH);
    out.Append(std::string_view(piece.data(), piece.size() - stream.avail_out));
  }
  if (result == Z_MEM_ERROR) {
    throw std::bad_alloc();
  }
  const std::size_t unread = stream.avail_in + deflated.size();
  Decoded decoded{.data = out.Take(), .complete = result == Z_STREAM_END};
  decoded.is_well_wrapped = HasNoWrongChecksum(whole.substr(whole.size() - unread), decoded.data);
  return decoded;
}

Decoded Inflate(std::string_view deflated, std::size_t limit) {
  if (std::optional<Decoded> whole = InflateWhole(deflated, limit)) {
    return *std::move(whole);
  }
  return InflatePiecewise(deflated, limit);
}

std::string_view WithoutLeadingSpace(std::string_view data) {
  const auto first = std::find_if_not(data.begin(), data.end(), filters::IsWhiteSpace);
  return data.substr(static_cast<std::size_t>(first - data.begin()));
}

// No readable zlib header: the deflate data may start at once, or after a header that is damaged.
Decoded InflateWithoutHeader(std::string_view encoded, std::size_t limit) {
  Decoded bare = Inflate(encoded, limit);
  bare.is_well_wrapped = false;
  if (bare.complete || encoded.size() <= kZlibHeaderBytes) {
    return bare;
  }
  Decoded after_header = Inflate(encoded.substr(kZlibHeaderBytes), limit);
  after_header.is_well_wrapped = false;
  return after_header.complete || after_header.data.size() > bare.data.size() ? after_header : bare;
}

libdeflate_compressor* ThreadCompressor(int level) {
  constexpr int kHighestLevel = 12;
  using CompressorPtr = std::unique_ptr<libdeflate_compressor, CompressorFreer>;
  thread_local std::array<CompressorPtr, kHighestLevel + 1> compressors;
  level = std::clamp(level, 1, kHighestLevel);
  CompressorPtr& compressor = compressors[static_cast<std::size_t>(level)];
  if (!compressor) {
    compressor.reset(libdeflate_alloc_compressor(level));
  }
  if (!compressor) {
    throw std::bad_alloc();
  }
  return compressor.get();
}

}  // namespace

bool filters::StartsWithZlibHeader(std::string_view data) {
  if (data.size() < kZlibHeaderBytes) {
    return false;
  }
  const unsigned cmf = static_cast<unsigned char>(data[0]);
  const unsigned flags = static_cast<unsigned char>(data[1]);
  return (cmf & 0x0F) == 8 && (cmf >> 4) <= 7 && (cmf * 256 + flags) % 31 == 0 &&
         (flags & 0x20) == 0;
}

Decoded filters::DecodeFlate(std::string_view encoded, std::size_t limit) {
  const std::string_view trimmed = WithoutLeadingSpace(encoded);
  if (!filters::StartsWithZlibHeader(trimmed)) {
    return InflateWithoutHeader(encoded, limit);
  }
  Decoded decoded = Inflate(trimmed.substr(kZlibHeaderBytes), limit);
  if (decoded.data.empty() && !decoded.complete) {
    return InflateWithoutHeader(encoded, limit);
  }
  return decoded;
}

void DeflateTo(std::string& out, std::string_view data, int level) {
  libdeflate_compressor* compressor = ThreadCompressor(level);
  const std::size_t start = out.size();
  out.resize(start + libdeflate_zlib_compress_bound(compressor, data.size()));
  const std::size_t written = libdeflate_zlib_compress(compressor, data.data(), data.size(),
                                                       out.data() + start, out.size() - start);
  out.resize(start + written);
  if (written == 0) {
    throw Error(ErrorCode::kInternal, "deflate did not fit its own bound");
  }
}

}  // namespace TarnixTools::pdf
