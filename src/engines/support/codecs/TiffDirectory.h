// The structure of TIFF files (TIFF 6.0; BigTIFF): directories and their fields, read without
// decoding anything.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_TIFFDIRECTORY_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_TIFFDIRECTORY_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "engines/support/files/ByteReader.h"

namespace TarnixTools::engines {

enum class TiffTag : std::uint16_t {
  kImageWidth = 256,
  kImageLength = 257,
  kBitsPerSample = 258,
  kCompression = 259,
  kPhotometric = 262,
  kFillOrder = 266,
  kStripOffsets = 273,
  kOrientation = 274,
  kSamplesPerPixel = 277,
  kRowsPerStrip = 278,
  kStripByteCounts = 279,
  kXResolution = 282,
  kYResolution = 283,
  kPlanarConfiguration = 284,
  kT4Options = 292,
  kT6Options = 293,
  kResolutionUnit = 296,
  kPredictor = 317,
  kColorMap = 320,
  kTileWidth = 322,
  kTileLength = 323,
  kExtraSamples = 338,
  kSampleFormat = 339,
  kJpegTables = 347,
  kIccProfile = 34675,
};

class TiffDirectory {
 public:
  std::uint64_t offset() const { return offset_; }

  // Whether the data ends before its last field.
  bool is_cut() const { return is_cut_; }

  bool Has(TiffTag tag) const { return Find(tag) != nullptr; }

  // The first value of a field of whole numbers, or the default where it is missing.
  std::uint64_t Number(ByteReader& reader, TiffTag tag, std::uint64_t otherwise) const;

  // Up to `limit` values.
  std::vector<std::uint64_t> Numbers(ByteReader& reader, TiffTag tag, std::size_t limit) const;

  // The first value of a field of ratios; 0 where it is missing or senseless.
  double Ratio(ByteReader& reader, TiffTag tag) const;

  // A field of bytes, empty where it is missing or has more than `limit`.
  std::string Bytes(ByteReader& reader, TiffTag tag, std::size_t limit) const;

 private:
  friend class TiffStructure;

  struct Field {
    std::uint16_t tag;
    std::uint16_t type;
    std::uint64_t count;
    std::uint64_t place;  // of the values
  };

  const Field* Find(TiffTag tag) const;

  std::uint64_t offset_ = 0;
  bool is_cut_ = false;
  ByteOrder order_ = ByteOrder::kBig;
  std::vector<Field> fields_;
};

class TiffStructure {
 public:
  static bool Recognises(ByteReader& reader);

  // Follows the chain of directories, as far as it is sound and to `most` of them.
  static std::vector<TiffDirectory> Read(ByteReader& reader, std::size_t most);
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_TIFFDIRECTORY_H_
