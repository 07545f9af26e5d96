#include "engines/support/imagefiles/TiffFile.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "engines/support/codecs/Exif.h"
#include "engines/support/codecs/FaxJoiner.h"
#include "engines/support/codecs/JpegMarkers.h"
#include "engines/support/codecs/TiffCodec.h"
#include "engines/support/imagefiles/ImageFileLimits.h"
#include "engines/support/images/RasterEncoder.h"
#include "engines/support/pictures/IccProfile.h"
#include "engines/support/pictures/ImageError.h"
#include "engines/support/pictures/PictureLimits.h"

namespace TarnixTools::engines {

namespace {

enum Compression : std::uint64_t { kFaxRows = 2, kFax3 = 3, kFax4 = 4, kOldJpeg = 6, kJpeg = 7 };

// Bits of the fields for options of fax data.
enum FaxOption : std::uint64_t { kTwoDimensional = 1, kUncompressed = 2 };

enum Photometric : std::uint64_t {
  kMinIsWhite = 0,
  kMinIsBlack = 1,
  kRgbColor = 2,
  kPalette = 3,
  kSeparated = 5,
  kYCbCr = 6,
};

enum ExtraSample : std::uint64_t { kUnspecified = 0, kAssociated = 1, kUnassociated = 2 };

int ColorsOf(std::uint64_t photometric, int samples) {
  switch (photometric) {
    case kRgbColor:
    case kYCbCr:
      return 3;
    case kSeparated:
      return std::min(samples, 4);
    default:
      return 1;
  }
}

std::string ReverseBits(std::string bytes) {
  for (char& byte : bytes) {
    unsigned value = static_cast<unsigned char>(byte);
    value = (value & 0xF0) >> 4 | (value & 0x0F) << 4;
    value = (value & 0xCC) >> 2 | (value & 0x33) << 2;
    byte = static_cast<char>((value & 0xAA) >> 1 | (value & 0x55) << 1);
  }
  return bytes;
}

// Drops channels after the first `count`.
Plane FirstChannels(const Plane& plane, int count) {
  Plane kept(plane.width(), plane.height(), count, plane.bits());
  const std::size_t sample = static_cast<std::size_t>(plane.bits()) / 8;
  const std::size_t from_step = sample * static_cast<std::size_t>(plane.channels());
  const std::size_t to_step = sample * static_cast<std::size_t>(count);
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    for (std::uint32_t x = 0; x < plane.width(); ++x) {
      std::memcpy(kept.row(y) + x * to_step, plane.row(y) + x * from_step, to_step);
    }
  }
  return kept;
}

// Samples of a number of bits that a document does not have, in as many bytes as they need: 0 stays
// 0, the largest value the largest.
Plane WidenSamples(const Plane& packed) {
  const auto bits = static_cast<unsigned>(packed.bits());
  const unsigned sample_bytes = bits < 8 ? 1 : 2;
  const unsigned most = std::max(1U, (1U << bits) - 1);
  const unsigned most_wide = (1U << 8 * sample_bytes) - 1;
  Plane wide(packed.width(), packed.height(), packed.channels(),
             static_cast<int>(8 * sample_bytes));
  const std::size_t count = wide.row_bytes() / sample_bytes;
  for (std::uint32_t y = 0; y < packed.height(); ++y) {
    const unsigned char* from = packed.row(y);
    unsigned char* to = wide.row(y);
    std::uint32_t held = 0;
    unsigned held_bits = 0;
    for (std::size_t i = 0; i < count; ++i) {
      for (; held_bits < bits; held_bits += 8) {
        held = held << 8 | *from++;
      }
      held_bits -= bits;
      const std::uint32_t value = held >> held_bits & most;
      const std::uint32_t widened = (value * most_wide + most / 2) / most;
      if (sample_bytes == 2) {
        *to++ = static_cast<unsigned char>(widened >> 8);
      }
      *to++ = static_cast<unsigned char>(widened);
    }
  }
  return wide;
}

// Makes signed numbers, of 8 or 16 bits, unsigned ones: the lowest becomes 0.
void CountFromZero(Plane& plane) {
  const std::size_t step = static_cast<std::size_t>(plane.bits()) / 8;
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    unsigned char* row = plane.row(y);
    for (std::size_t i = 0; i < plane.row_bytes(); i += step) {
      row[i] ^= 0x80;
    }
  }
}

PictureSpace SpaceOf(int colors) {
  return colors == 1 ? PictureSpace::kGray : colors == 3 ? PictureSpace::kRgb : PictureSpace::kCmyk;
}

}  // namespace

TiffFile::TiffFile(pdf::ByteSource& source)
    : reader_(source), directories_(TiffStructure::Read(reader_, limits::kMaxFrames)) {
  std::erase_if(directories_, [](const TiffDirectory& directory) { return directory.is_cut(); });
  for (const TiffDirectory& directory : directories_) {
    ImageFrame frame;
    const auto side = [&](TiffTag tag) {
      return static_cast<std::uint32_t>(
          std::min<std::uint64_t>(directory.Number(reader_, tag, 0), limits::kMaxSide + 1));
    };
    frame.width = side(TiffTag::kImageWidth);
    frame.height = side(TiffTag::kImageLength);
    const ExifFacts facts = ExifFactsOf(directory, reader_);
    frame.dpi_x = facts.dpi_x;
    frame.dpi_y = facts.dpi_y;
    frame.orientation = facts.orientation;
    AddFrame(frame);
  }
  if (directories_.empty()) {
    throw ImageError(ImageErrorCode::kDamaged, "the TIFF file has no picture");
  }
}

TiffFile::Picture TiffFile::Describe(std::size_t index) {
  Picture picture;
  const TiffDirectory& directory = directories_[index];
  picture.directory = &directory;
  picture.width = frame(index).width;
  picture.height = frame(index).height;
  picture.compression = directory.Number(reader_, TiffTag::kCompression, 1);
  picture.photometric = directory.Number(reader_, TiffTag::kPhotometric, kMinIsBlack);
  const std::uint64_t samples = directory.Number(reader_, TiffTag::kSamplesPerPixel, 1);
  if (samples == 0 || samples > limits::kMaxTiffSamples) {
    throw ImageError(ImageErrorCode::kUnsupported, "a TIFF picture of too many samples per pixel");
  }
  picture.samples = static_cast<int>(samples);
  picture.colors = ColorsOf(picture.photometric, picture.samples);
  const std::vector<std::uint64_t> bits =
      directory.Numbers(reader_, TiffTag::kBitsPerSample, limits::kMaxTiffSamples);
  picture.bits = bits.empty() ? 1 : static_cast<int>(std::min<std::uint64_t>(bits[0], 64));
  const std::uint64_t format = directory.Number(reader_, TiffTag::kSampleFormat, 1);
  picture.is_signed = format == 2;
  picture.is_plain =
      std::all_of(bits.begin(), bits.end(), [&](std::uint64_t b) { return b == bits[0]; }) &&
      (format == 1 || format == 2);
  const std::vector<std::uint64_t> extra =
      directory.Numbers(reader_, TiffTag::kExtraSamples, limits::kMaxTiffSamples);
  picture.extra_sample = extra.empty() ? kUnspecified : extra[0];
  picture.has_alpha =
      picture.samples == picture.colors + 1 &&
      (picture.extra_sample == kAssociated || picture.extra_sample == kUnassociated);
  picture.is_separate =
      picture.samples > 1 && directory.Number(reader_, TiffTag::kPlanarConfiguration, 1) == 2;
  picture.profile =
      UsableProfile(directory.Bytes(reader_, TiffTag::kIccProfile, limits::kMaxProfileBytes),
                    picture.photometric == kPalette ? 3 : picture.colors);
  return picture;
}

EncodedImage TiffFile::Embed(std::size_t index) {
  const Picture picture = Describe(index);
  if (std::optional<EncodedImage> fax = PassFax(picture)) {
    return std::move(*fax);
  }
  if (std::optional<EncodedImage> fax = JoinFax(picture)) {
    return std::move(*fax);
  }
  if (std::optional<EncodedImage> jpeg = PassJpeg(picture)) {
    return std::move(*jpeg);
  }
  if (!TiffDecoder::Knows(picture.compression)) {
    throw ImageError(ImageErrorCode::kUnsupported, "a compression of TIFF that cannot be decoded");
  }
  std::optional<Raster> raster = DecodeSamples(picture);
  return EncodeRaster(raster ? std::move(*raster) : DecodeAny(picture));
}

// The picture's data, when it is all in one strip; cut at the end of the file.
std::optional<TiffFile::Strip> TiffFile::OnlyStrip(const Picture& picture) {
  const TiffDirectory& directory = *picture.directory;
  if (directory.Has(TiffTag::kTileWidth) ||
      directory.Number(reader_, TiffTag::kRowsPerStrip, picture.height) < picture.height) {
    return std::nullopt;
  }
  const std::uint64_t offset = directory.Number(reader_, TiffTag::kStripOffsets, 0);
  const std::uint64_t length = directory.Number(reader_, TiffTag::kStripByteCounts, 0);
  if (offset == 0 || offset >= reader_.size() || length == 0) {
    return std::nullopt;
  }
  return Strip{offset, std::min(length, reader_.size() - offset)};
}

// For a strip that is taken over as it is.
void TiffFile::NoteMissingEnd(const Picture& picture, Strip strip) {
  if (strip.length < picture.directory->Number(reader_, TiffTag::kStripByteCounts, 0)) {
    NoteCut();
  }
}

// The picture's data, in the order of its rows; nothing when not all of it is there or strips
// share parts of the file.
std::vector<TiffFile::Strip> TiffFile::Strips(const Picture& picture, std::uint32_t count) {
  const TiffDirectory& directory = *picture.directory;
  const std::vector<std::uint64_t> offsets =
      directory.Numbers(reader_, TiffTag::kStripOffsets, count);
  const std::vector<std::uint64_t> lengths =
      directory.Numbers(reader_, TiffTag::kStripByteCounts, count);
  std::vector<Strip> strips;
  if (offsets.size() != count || lengths.size() != count) {
    return strips;
  }
  std::uint64_t left = std::min(reader_.size(), limits::kMaxHeldFileBytes);
  for (std::size_t i = 0; i < offsets.size(); ++i) {
    if (lengths[i] > left || !reader_.Has(offsets[i], lengths[i])) {
      return {};
    }
    left -= lengths[i];
    strips.push_back({offsets[i], lengths[i]});
  }
  return strips;
}

bool TiffFile::IsFax(const Picture& picture) {
  return picture.compression >= kFaxRows && picture.compression <= kFax4 && picture.bits == 1 &&
         picture.samples == 1 && picture.photometric <= kMinIsBlack;
}

// The codes of a strip, the first bit in the highest of a byte.
std::string TiffFile::ReadFax(const Picture& picture, Strip strip) {
  std::string data = reader_.Read(strip.offset, static_cast<std::size_t>(strip.length));
  const bool is_reversed = picture.directory->Number(reader_, TiffTag::kFillOrder, 1) == 2;
  return is_reversed ? ReverseBits(std::move(data)) : data;
}

ImageStream TiffFile::DescribeFax(const Picture& picture) {
  ImageStream image;
  image.width = picture.width;
  image.height = picture.height;
  image.bits = 1;
  image.profile = picture.profile;
  image.filter = "CCITTFaxDecode";
  image.parameters =
      "/K -1/Columns " + std::to_string(picture.width) + "/Rows " + std::to_string(picture.height);
  return image;
}

std::optional<EncodedImage> TiffFile::PassFax(const Picture& picture) {
  if (picture.compression != kFax4 || !IsFax(picture)) {
    return std::nullopt;
  }
  const std::optional<Strip> strip = OnlyStrip(picture);
  if (!strip) {
    return std::nullopt;
  }
  NoteMissingEnd(picture, *strip);
  EncodedImage result;
  result.image = DescribeFax(picture);
  ImageStream& image = result.image;
  if (picture.photometric == kMinIsBlack) {
    image.parameters += "/BlackIs1 true";
  }
  if (picture.directory->Number(reader_, TiffTag::kFillOrder, 1) == 2) {
    if (strip->length > limits::kMaxHeldFileBytes) {
      return std::nullopt;
    }
    image.data.push_back(Hold(ReadFax(picture, *strip)));
  } else {
    image.data.push_back({strip->offset, strip->length, {}});
  }
  return result;
}

// How fax data is coded; nothing for other data, for tiles, and where parts of it are not coded.
std::optional<CcittParameters> TiffFile::FaxCoding(const Picture& picture) {
  if (!IsFax(picture) || picture.directory->Has(TiffTag::kTileWidth)) {
    return std::nullopt;
  }
  const std::uint64_t options = picture.directory->Number(
      reader_, picture.compression == kFax4 ? TiffTag::kT6Options : TiffTag::kT4Options, 0);
  if ((options & kUncompressed) != 0) {
    return std::nullopt;
  }
  CcittParameters coding;
  coding.columns = picture.width;
  coding.is_byte_aligned = picture.compression == kFaxRows;
  coding.k = picture.compression == kFax4                                       ? -1
             : picture.compression == kFax3 && (options & kTwoDimensional) != 0 ? 1
                                                                                : 0;
  return coding;
}

// Fax data of several strips, or of group 3, which takes more room, as one block of group 4.
// Nothing where it has errors, or where another coding may be smaller.
std::optional<EncodedImage> TiffFile::JoinFax(const Picture& picture) {
  const std::optional<CcittParameters> coding = FaxCoding(picture);
  if (!coding) {
    return std::nullopt;
  }
  const auto rows_per_strip = static_cast<std::uint32_t>(std::clamp<std::uint64_t>(
      picture.directory->Number(reader_, TiffTag::kRowsPerStrip, picture.height), 1,
      picture.height));
  FaxJoiner joiner(*coding, picture.photometric == kMinIsBlack);
  std::uint32_t rows_left = picture.height;
  for (const Strip& strip : Strips(picture, (picture.height - 1) / rows_per_strip + 1)) {
    const std::uint32_t rows = std::min(rows_per_strip, rows_left);
    if (!joiner.Add(ReadFax(picture, strip), rows) ||
        !IsBestAsFax(joiner.size(), picture.width, picture.height)) {
      return std::nullopt;
    }
    rows_left -= rows;
  }
  if (rows_left > 0) {
    return std::nullopt;
  }
  EncodedImage result;
  result.image = DescribeFax(picture);
  result.image.data.emplace_back().held = joiner.Finish();
  return result;
}

// The only strip, where it is JPEG data such as documents have.
std::optional<TiffFile::Strip> TiffFile::JpegStrip(const Picture& picture) {
  const bool is_gray = picture.samples == 1 && picture.photometric == kMinIsBlack;
  const bool is_color =
      picture.samples == 3 && (picture.photometric == kRgbColor || picture.photometric == kYCbCr);
  if (picture.compression != kJpeg || picture.bits != 8 || !(is_gray || is_color) ||
      picture.is_separate) {
    return std::nullopt;
  }
  const std::optional<Strip> strip = OnlyStrip(picture);
  const bool is_whole = strip && strip->length >= 4 &&
                        reader_.View(strip->offset, 2) == kJpegStart &&
                        reader_.View(strip->offset + strip->length - 2, 2) == kJpegEnd;
  return is_whole ? strip : std::nullopt;
}

// The tables, which the file has once for all strips, go before the strip's own.
std::optional<EncodedImage> TiffFile::PassJpeg(const Picture& picture) {
  const std::optional<Strip> strip = JpegStrip(picture);
  if (!strip) {
    return std::nullopt;
  }
  EncodedImage result;
  ImageStream& image = result.image;
  image.width = picture.width;
  image.height = picture.height;
  image.space = SpaceOf(picture.samples);
  image.profile = picture.profile;
  image.filter = "DCTDecode";
  if (picture.samples == 3) {
    image.parameters = picture.photometric == kRgbColor ? "/ColorTransform 0" : "/ColorTransform 1";
  }
  const std::string tables =
      picture.directory->Bytes(reader_, TiffTag::kJpegTables, limits::kMaxTiffTables);
  if (tables.size() > 4 && tables.starts_with(kJpegStart) && tables.ends_with(kJpegEnd)) {
    image.data.push_back(Hold(std::string_view(tables).substr(0, tables.size() - kJpegEnd.size())));
    image.data.push_back(
        {strip->offset + kJpegStart.size(), strip->length - kJpegStart.size(), {}});
  } else {
    image.data.push_back({strip->offset, strip->length, {}});
  }
  return result;
}

bool TiffFile::IsPacked(const Picture& picture) {
  return picture.samples == 1 && (picture.bits == 1 || picture.bits == 2 || picture.bits == 4);
}

bool TiffFile::IsJpegInColor(const Picture& picture) {
  return picture.compression == kJpeg && picture.photometric == kYCbCr;
}

// Samples of a number of bits that has to become another one.
bool TiffFile::HasOddDepth(const Picture& picture) {
  return picture.bits >= 1 && picture.bits < 16 && picture.bits != 8 && !IsPacked(picture) &&
         picture.photometric != kPalette && !picture.is_separate && picture.compression != kJpeg;
}

// Whether a document can hold the samples as they are decoded, or widened.
bool TiffFile::CanBeHeld(const Picture& picture) {
  const bool is_palette = picture.photometric == kPalette && picture.bits <= 8 &&
                          (picture.samples == 1 || picture.bits == 8);
  const bool is_known = picture.photometric <= kRgbColor || is_palette ||
                        (picture.photometric == kSeparated && picture.colors == 4) ||
                        IsJpegInColor(picture);
  const bool is_whole = picture.bits == 8 || picture.bits == 16;
  return picture.is_plain && is_known && (is_whole || IsPacked(picture) || HasOddDepth(picture)) &&
         (is_whole || !picture.is_signed) && picture.samples >= picture.colors &&
         picture.compression != kOldJpeg;
}

// Nothing for samples that a document cannot hold.
std::optional<Raster> TiffFile::DecodeSamples(const Picture& picture) {
  if (!CanBeHeld(picture)) {
    return std::nullopt;
  }
  Plane plane(picture.width, picture.height, picture.samples, picture.bits);
  TiffDecoder decoder(reader_.source(), picture.directory->offset());
  if (IsJpegInColor(picture)) {
    decoder.DecodeJpegToRgb();
  }
  if (!decoder.ReadSamples(plane, picture.is_separate)) {
    throw ImageError(ImageErrorCode::kDamaged, "nothing of the TIFF picture can be decoded");
  }
  if (decoder.has_met_damage()) {
    NoteCut();
  }
  if (HasOddDepth(picture)) {
    plane = WidenSamples(plane);
  }
  if (picture.is_signed) {
    CountFromZero(plane);
  }
  return RasterOf(picture, std::move(plane));
}

Raster TiffFile::RasterOf(const Picture& picture, Plane&& plane) {
  Raster raster;
  raster.profile = picture.profile;
  raster.space = SpaceOf(picture.colors);
  raster.is_inverted = picture.photometric == kMinIsWhite;
  raster.is_premultiplied = picture.extra_sample == kAssociated && picture.photometric != kPalette;
  if (picture.photometric == kPalette) {
    raster.space = PictureSpace::kIndexed;
    raster.palette = Palette(picture);
  }
  if (picture.has_alpha) {
    SplitAlpha(plane, raster);
  } else if (picture.samples > picture.colors) {
    raster.color = FirstChannels(plane, picture.colors);
  } else {
    raster.color = std::move(plane);
  }
  return raster;
}

// Three bytes for each index, of the 16-bit values that the file has; some programs wrote 8-bit
// ones.
std::string TiffFile::Palette(const Picture& picture) {
  const std::size_t count = std::size_t{1} << picture.bits;
  const std::vector<std::uint64_t> map =
      picture.directory->Numbers(reader_, TiffTag::kColorMap, 3 * count);
  if (map.size() < 3 * count) {
    throw ImageError(ImageErrorCode::kDamaged, "the palette is missing");
  }
  const bool is_wide = std::any_of(map.begin(), map.end(), [](std::uint64_t v) { return v > 255; });
  std::string palette;
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t c = 0; c < 3; ++c) {
      palette += static_cast<char>(map[c * count + i] >> (is_wide ? 8 : 0));
    }
  }
  return palette;
}

Raster TiffFile::DecodeAny(const Picture& picture) {
  Plane plane(picture.width, picture.height, 4, 8);
  TiffDecoder decoder(reader_.source(), picture.directory->offset());
  if (!decoder.ReadRgba(plane)) {
    throw ImageError(ImageErrorCode::kUnsupported, "the TIFF picture cannot be decoded");
  }
  if (decoder.has_met_damage()) {
    NoteCut();
  }
  Raster raster;
  raster.space = PictureSpace::kRgb;
  raster.is_premultiplied = true;  // libtiff does that to every alpha
  SplitAlpha(plane, raster);
  return raster;
}

}  // namespace TarnixTools::engines
