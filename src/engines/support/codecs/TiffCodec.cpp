#include "engines/support/codecs/TiffCodec.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include <tiffio.h>

#include "engines/support/codecs/CodecLibrary.h"
#include "engines/support/pictures/ImageError.h"
#include "engines/support/pictures/PictureLimits.h"

namespace TarnixTools::engines {

namespace {

struct LibTiff {
  LibTiff() : library("libtiff.so.6") {
    library.Resolve(OptionsAlloc, "TIFFOpenOptionsAlloc");
    library.Resolve(OptionsFree, "TIFFOpenOptionsFree");
    library.Resolve(SetMaxAlloc, "TIFFOpenOptionsSetMaxSingleMemAlloc");
    library.Resolve(SetErrorHandler, "TIFFOpenOptionsSetErrorHandlerExtR");
    library.Resolve(SetWarningHandler, "TIFFOpenOptionsSetWarningHandlerExtR");
    library.Resolve(ClientOpen, "TIFFClientOpenExt");
    library.Resolve(Close, "TIFFClose");
    library.Resolve(SetSubDirectory, "TIFFSetSubDirectory");
    library.Resolve(SetField, "TIFFSetField");
    library.Resolve(GetField, "TIFFGetFieldDefaulted");
    library.Resolve(IsTiled, "TIFFIsTiled");
    library.Resolve(StripSize, "TIFFStripSize64");
    library.Resolve(TileSize, "TIFFTileSize64");
    library.Resolve(TileRowSize, "TIFFTileRowSize64");
    library.Resolve(ComputeStrip, "TIFFComputeStrip");
    library.Resolve(ComputeTile, "TIFFComputeTile");
    library.Resolve(ReadStrip, "TIFFReadEncodedStrip");
    library.Resolve(ReadTile, "TIFFReadEncodedTile");
    library.Resolve(ReadRgba, "TIFFReadRGBAImageOriented");
    library.Resolve(IsCodecConfigured, "TIFFIsCODECConfigured");
  }

  // Throws each time when the library is not there.
  static const LibTiff& Get() {
    static const LibTiff tiff;
    return tiff;
  }

  CodecLibrary library;
  // NOLINTBEGIN(readability-identifier-naming): named as the functions that they are
  decltype(TIFFOpenOptionsAlloc)* OptionsAlloc = nullptr;
  decltype(TIFFOpenOptionsFree)* OptionsFree = nullptr;
  decltype(TIFFOpenOptionsSetMaxSingleMemAlloc)* SetMaxAlloc = nullptr;
  decltype(TIFFOpenOptionsSetErrorHandlerExtR)* SetErrorHandler = nullptr;
  decltype(TIFFOpenOptionsSetWarningHandlerExtR)* SetWarningHandler = nullptr;
  decltype(TIFFClientOpenExt)* ClientOpen = nullptr;
  decltype(TIFFClose)* Close = nullptr;
  decltype(TIFFSetSubDirectory)* SetSubDirectory = nullptr;
  decltype(TIFFSetField)* SetField = nullptr;
  decltype(TIFFGetFieldDefaulted)* GetField = nullptr;
  decltype(TIFFIsTiled)* IsTiled = nullptr;
  decltype(TIFFStripSize64)* StripSize = nullptr;
  decltype(TIFFTileSize64)* TileSize = nullptr;
  decltype(TIFFTileRowSize64)* TileRowSize = nullptr;
  decltype(TIFFComputeStrip)* ComputeStrip = nullptr;
  decltype(TIFFComputeTile)* ComputeTile = nullptr;
  decltype(TIFFReadEncodedStrip)* ReadStrip = nullptr;
  decltype(TIFFReadEncodedTile)* ReadTile = nullptr;
  decltype(TIFFReadRGBAImageOriented)* ReadRgba = nullptr;
  decltype(TIFFIsCODECConfigured)* IsCodecConfigured = nullptr;
  // NOLINTEND(readability-identifier-naming)
};

// What libtiff reads from. Its functions are called from C: nothing may be thrown.
struct Stream {
  pdf::ByteSource* source = nullptr;
  std::uint64_t position = 0;
};

tmsize_t ReadProc(thandle_t handle, void* buffer, tmsize_t size) {
  auto& stream = *static_cast<Stream*>(handle);
  if (size <= 0) {
    return 0;
  }
  try {
    const std::size_t count = stream.source->ReadAt(stream.position, static_cast<char*>(buffer),
                                                    static_cast<std::size_t>(size));
    stream.position += count;
    return static_cast<tmsize_t>(count);
  } catch (...) {
    return 0;
  }
}

// Nothing is ever written.
tmsize_t WriteProc(thandle_t, void*, tmsize_t) {
  return -1;
}

toff_t SeekProc(thandle_t handle, toff_t offset, int whence) {
  auto& stream = *static_cast<Stream*>(handle);
  stream.position = whence == SEEK_SET   ? offset
                    : whence == SEEK_CUR ? stream.position + offset
                                         : stream.source->Size() + offset;
  return stream.position;
}

int CloseProc(thandle_t) {
  return 0;
}

toff_t SizeProc(thandle_t handle) {
  return static_cast<Stream*>(handle)->source->Size();
}

// Nothing is printed.
int Ignore(TIFF*, void*, const char*, const char*, va_list) {
  return 1;
}

// Some calls go on behind what they cannot read, and only tell of it.
int NoteDamage(TIFF*, void* has_met_damage, const char*, const char*, va_list) {
  *static_cast<bool*>(has_met_damage) = true;
  return 1;
}

struct TiffCloser {
  void operator()(TIFF* tiff) const noexcept { LibTiff::Get().Close(tiff); }
};

using TiffPtr = std::unique_ptr<TIFF, TiffCloser>;

// "O" keeps libtiff from reading the first directory, which need not be the one that is wanted.
TiffPtr OpenTiff(const LibTiff& tiff, Stream& stream, bool& has_met_damage) {
  const std::unique_ptr<TIFFOpenOptions, decltype(tiff.OptionsFree)> options(tiff.OptionsAlloc(),
                                                                             tiff.OptionsFree);
  if (options == nullptr) {
    throw std::bad_alloc();
  }
  tiff.SetMaxAlloc(options.get(), static_cast<tmsize_t>(limits::kMaxDecodedBytes));
  tiff.SetErrorHandler(options.get(), &NoteDamage, &has_met_damage);
  tiff.SetWarningHandler(options.get(), &Ignore, nullptr);
  return TiffPtr(tiff.ClientOpen("image", "rmOC", &stream, &ReadProc, &WriteProc, &SeekProc,
                                 &CloseProc, &SizeProc, nullptr, nullptr, options.get()));
}

// Copies one channel of rows of whole-byte samples between rows of several.
void SpreadChannel(const unsigned char* from, unsigned char* to, std::size_t pixels,
                   std::size_t sample_bytes, std::size_t pixel_bytes) {
  for (std::size_t x = 0; x < pixels; ++x, from += sample_bytes, to += pixel_bytes) {
    std::memcpy(to, from, sample_bytes);
  }
}

// Samples of a part of the picture, as they are stored.
struct Part {
  const unsigned char* samples = nullptr;
  std::size_t stride = 0;  // bytes from one row to the next
  std::uint32_t x = 0;
  std::uint32_t y = 0;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
};

// channel: the only one that the part has, -1 when samples are stored side by side.
void PutPart(Plane& plane, const Part& part, int channel) {
  const auto channels = static_cast<std::size_t>(plane.channels());
  const std::size_t sample_bytes = static_cast<std::size_t>(plane.bits()) / 8;
  const std::size_t pixel_bits = static_cast<std::size_t>(plane.bits()) * channels;
  for (std::uint32_t i = 0; i < part.height; ++i) {
    const unsigned char* from = part.samples + i * part.stride;
    unsigned char* to = plane.row(part.y + i);
    if (channel < 0) {
      std::memcpy(to + part.x * pixel_bits / 8, from, (part.width * pixel_bits + 7) / 8);
    } else {
      to += (part.x * channels + static_cast<std::size_t>(channel)) * sample_bytes;
      SpreadChannel(from, to, part.width, sample_bytes, sample_bytes * channels);
    }
  }
}

void SwapBytes(Plane& plane) {
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    unsigned char* row = plane.row(y);
    for (std::size_t i = 0; i + 1 < plane.row_bytes(); i += 2) {
      std::swap(row[i], row[i + 1]);
    }
  }
}

}  // namespace

struct TiffDecoder::State {
  Stream stream;
  bool has_met_damage = false;
  TiffPtr tiff;
};

TiffDecoder::TiffDecoder(pdf::ByteSource& source, std::uint64_t directory)
    : state_(std::make_unique<State>()) {
  const LibTiff& tiff = LibTiff::Get();
  state_->stream.source = &source;
  state_->tiff = OpenTiff(tiff, state_->stream, state_->has_met_damage);
  if (state_->tiff == nullptr || tiff.SetSubDirectory(state_->tiff.get(), directory) == 0) {
    throw ImageError(ImageErrorCode::kDamaged, "the TIFF picture cannot be read");
  }
  state_->has_met_damage = false;  // what it says of the directory is about no sample
}

TiffDecoder::~TiffDecoder() = default;

bool TiffDecoder::Knows(std::uint64_t compression) {
  return compression <= std::numeric_limits<std::uint16_t>::max() &&
         LibTiff::Get().IsCodecConfigured(static_cast<std::uint16_t>(compression)) != 0;
}

void TiffDecoder::DecodeJpegToRgb() {
  LibTiff::Get().SetField(state_->tiff.get(), TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
}

bool TiffDecoder::has_met_damage() const {
  return state_->has_met_damage;
}

bool TiffDecoder::ReadSamples(Plane& plane, bool is_separate) {
  plane.Fill(0);
  bool has_any = false;
  const int planes = is_separate ? plane.channels() : 1;
  for (int channel = 0; channel < planes; ++channel) {
    const int only = is_separate && planes > 1 ? channel : -1;
    const bool is_tiled = LibTiff::Get().IsTiled(state_->tiff.get()) != 0;
    has_any |= is_tiled ? ReadTiles(plane, only) : ReadStrips(plane, only);
  }
  if (plane.bits() == 16 && std::endian::native == std::endian::little) {
    SwapBytes(plane);
  }
  return has_any;
}

// channel: the plane that is read, -1 when samples are stored side by side.
bool TiffDecoder::ReadStrips(Plane& plane, int channel) {
  const LibTiff& tiff = LibTiff::Get();
  TIFF* handle = state_->tiff.get();
  std::uint32_t rows_per_strip = 0;
  tiff.GetField(handle, TIFFTAG_ROWSPERSTRIP, &rows_per_strip);
  rows_per_strip = std::clamp<std::uint32_t>(rows_per_strip, 1, plane.height());
  const std::size_t sample_bytes = static_cast<std::size_t>(plane.bits()) / 8;
  const std::size_t row_bytes = channel < 0 ? plane.row_bytes() : plane.width() * sample_bytes;
  const std::uint64_t size = tiff.StripSize(handle);
  if (size > limits::kMaxDecodedBytes || size < std::uint64_t{row_bytes} * rows_per_strip) {
    return false;
  }
  const auto strip =
      std::make_unique_for_overwrite<unsigned char[]>(static_cast<std::size_t>(size));
  bool has_any = false;
  for (std::uint32_t y = 0; y < plane.height(); y += rows_per_strip) {
    const std::uint32_t rows = std::min(rows_per_strip, plane.height() - y);
    // A strip that is damaged gives what came before the damage.
    std::memset(strip.get(), 0, static_cast<std::size_t>(size));
    const std::uint32_t number =
        tiff.ComputeStrip(handle, y, static_cast<std::uint16_t>(std::max(channel, 0)));
    has_any |= tiff.ReadStrip(handle, number, strip.get(), static_cast<tmsize_t>(size)) > 0;
    PutPart(plane,
            {.samples = strip.get(),
             .stride = row_bytes,
             .x = 0,
             .y = y,
             .width = plane.width(),
             .height = rows},
            channel);
  }
  return has_any;
}

bool TiffDecoder::ReadTiles(Plane& plane, int channel) {
  const LibTiff& tiff = LibTiff::Get();
  TIFF* handle = state_->tiff.get();
  std::uint32_t tile_width = 0;
  std::uint32_t tile_height = 0;
  tiff.GetField(handle, TIFFTAG_TILEWIDTH, &tile_width);
  tiff.GetField(handle, TIFFTAG_TILELENGTH, &tile_height);
  const std::uint64_t size = tiff.TileSize(handle);
  const std::uint64_t tile_row = tiff.TileRowSize(handle);
  const std::size_t pixel_bits = static_cast<std::size_t>(plane.bits()) *
                                 static_cast<std::size_t>(channel < 0 ? plane.channels() : 1);
  if (tile_width == 0 || tile_height == 0 || size > limits::kMaxDecodedBytes ||
      tile_row < (std::uint64_t{tile_width} * pixel_bits + 7) / 8 ||
      size < tile_row * tile_height || tile_width * pixel_bits % 8 != 0) {
    return false;
  }
  const auto tile = std::make_unique_for_overwrite<unsigned char[]>(static_cast<std::size_t>(size));
  bool has_any = false;
  for (std::uint32_t y = 0; y < plane.height(); y += std::min(tile_height, plane.height() - y)) {
    for (std::uint32_t x = 0; x < plane.width(); x += std::min(tile_width, plane.width() - x)) {
      std::memset(tile.get(), 0, static_cast<std::size_t>(size));
      const std::uint32_t number =
          tiff.ComputeTile(handle, x, y, 0, static_cast<std::uint16_t>(std::max(channel, 0)));
      has_any |= tiff.ReadTile(handle, number, tile.get(), static_cast<tmsize_t>(size)) > 0;
      PutPart(plane,
              {.samples = tile.get(),
               .stride = static_cast<std::size_t>(tile_row),
               .x = x,
               .y = y,
               .width = std::min(tile_width, plane.width() - x),
               .height = std::min(tile_height, plane.height() - y)},
              channel);
    }
  }
  return has_any;
}

bool TiffDecoder::ReadRgba(Plane& plane) {
  const LibTiff& tiff = LibTiff::Get();
  TIFF* handle = state_->tiff.get();
  const std::size_t pixels = std::size_t{plane.width()} * plane.height();
  const auto raster = std::make_unique_for_overwrite<std::uint32_t[]>(pixels);
  std::memset(raster.get(), 0, pixels * sizeof(std::uint32_t));
  // Turning is not its business.
  tiff.SetField(handle, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
  if (tiff.ReadRgba(handle, plane.width(), plane.height(), raster.get(), ORIENTATION_TOPLEFT, 0) ==
      0) {
    return false;
  }
  // What was decoded is not all zero: it has an alpha.
  if (std::all_of(raster.get(), raster.get() + pixels, [](std::uint32_t p) { return p == 0; })) {
    return false;
  }
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    unsigned char* to = plane.row(y);
    for (std::uint32_t x = 0; x < plane.width(); ++x) {
      const std::uint32_t pixel = raster[std::size_t{y} * plane.width() + x];
      *to++ = static_cast<unsigned char>(TIFFGetR(pixel));
      *to++ = static_cast<unsigned char>(TIFFGetG(pixel));
      *to++ = static_cast<unsigned char>(TIFFGetB(pixel));
      *to++ = static_cast<unsigned char>(TIFFGetA(pixel));
    }
  }
  return true;
}

}  // namespace TarnixTools::engines
