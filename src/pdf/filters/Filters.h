// Stream decoding (ISO 32000-2, 7.4): FlateDecode, LZWDecode, ASCII85Decode, ASCIIHexDecode,
// RunLengthDecode and the PNG and TIFF predictors. Image filters (DCT, JPX, CCITTFax, JBIG2) are
// not the core's: their data is copied, never decoded here.
//
//   const FilterStep step{FilterKind::kFlate, {.predictor = 12, .columns = 4}};
//   std::string rows = Decode({step}, raw, limit).data;
#ifndef TARNIX_PDF_FILTERS_FILTERS_H_
#define TARNIX_PDF_FILTERS_FILTERS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "pdf/Error.h"

namespace TarnixTools::pdf {

enum class FilterKind : std::uint8_t {
  kFlate,
  kLzw,
  kAscii85,
  kAsciiHex,
  kRunLength,
  kCrypt,
  kImage,
  kUnknown,
};

// /DecodeParms of one filter; values outside their range (0, negative, huge) are accepted here and
// refused by Decode.
struct FilterParameters {
  std::int64_t predictor = 1;
  std::int64_t colors = 1;
  std::int64_t bits_per_component = 8;
  std::int64_t columns = 1;
  std::int64_t early_change = 1;  // LZW only
};

struct FilterStep {
  FilterKind kind = FilterKind::kUnknown;
  FilterParameters parameters;
};

// The kind for a filter's full or abbreviated name ("FlateDecode", "Fl", "A85", "AHx", "LZW",
// "RL"), without the slash.
FilterKind FilterKindOf(std::string_view name);

struct Decoded {
  std::string data;
  // False: the encoded data is damaged, cut or lacks its end mark; `data` is what came before that.
  bool complete = true;
  // The data would be longer than allowed, and nothing of it is there. Told by TryDecode; Decode
  // throws.
  bool is_too_long = false;
  // False: Flate data lacks its header, or has a wrong checksum, which costs no byte.
  bool is_well_wrapped = true;

  // Whether there was data of which nothing can be had.
  bool is_lost() const { return data.empty() && !complete; }
};

// Decodes `encoded` through the steps, first to last. Damaged input gives what was decoded before
// the damage; no input at all is a complete empty result. Memory follows what is really decoded,
// never a size that the data or its parameters claim.
//   max_bytes - what any step may give; besides, no step may give more than limits::kMaxExpansion
//               times the size of `encoded`, beyond limits::kExpansionAllowance.
// Throws Error: kLimitExceeded past either bound, kFilterFailed for a step that is kCrypt, kImage
// or kUnknown, for unusable parameters, and for more than limits::kMaxFilters steps.
Decoded Decode(const std::vector<FilterStep>& steps, std::string_view encoded,
               std::size_t max_bytes);

// Decodes as Decode does, but data that it refuses counts as damaged before its first byte: the
// result is empty and incomplete.
Decoded TryDecode(const std::vector<FilterStep>& steps, std::string_view encoded,
                  std::size_t max_bytes);

// What is left of data that could not be read because of the error: an empty, incomplete result.
// Throws the error when it is no damage.
Decoded LostTo(const Error& error);

// zlib-wrapped deflate of `data` appended to `out`. level: 1 (fastest) to 12 (smallest).
void DeflateTo(std::string& out, std::string_view data, int level);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILTERS_FILTERS_H_
