// The decoders behind Decode, one function per filter; nothing outside this folder includes this
// header. Each takes the bytes of one step and the most it may give, and answers with what it could
// decode; each throws kLimitExceeded past `limit`.
#ifndef TARNIX_PDF_FILTERS_FILTER_STEPS_H_
#define TARNIX_PDF_FILTERS_FILTER_STEPS_H_

#include <cstddef>
#include <string_view>

#include "pdf/filters/Filters.h"

namespace TarnixTools::pdf::filters {

inline bool IsWhiteSpace(char c) {
  return c == '\0' || c == '\t' || c == '\n' || c == '\f' || c == '\r' || c == ' ';
}

// zlib data; also with white space before it, a damaged or missing zlib header, or a wrong or
// missing checksum. Complete when the last deflate block ends properly: a checksum that does not
// fit costs nothing.
Decoded DecodeFlate(std::string_view encoded, std::size_t limit);

constexpr std::size_t kZlibHeaderBytes = 2;

// RFC 1950, 2.2: method 8, a window of at most 32 KiB, the check bits, no preset dictionary.
bool StartsWithZlibHeader(std::string_view data);

// `early_change`: 1 when codes grow one code early (the standard's default), else 0.
Decoded DecodeLzw(std::string_view encoded, int early_change, std::size_t limit);

Decoded DecodeAscii85(std::string_view encoded, std::size_t limit);
Decoded DecodeAsciiHex(std::string_view encoded, std::size_t limit);
Decoded DecodeRunLength(std::string_view encoded, std::size_t limit);

// Throws kFilterFailed for parameters that no data fits.
void CheckPredictor(const FilterParameters& parameters);

// The bytes of a row as it is encoded, with the tag of a PNG row; 1 without a predictor. The
// parameters have passed CheckPredictor.
std::size_t RowBytes(const FilterParameters& parameters);

// Undoes the predictor that `parameters` name; they have passed CheckPredictor. Rows that are cut
// are kept; a row tag that the PNG standard lacks counts as "none". Either makes the result
// incomplete.
Decoded UndoPredictor(std::string data, const FilterParameters& parameters);

}  // namespace TarnixTools::pdf::filters

#endif  // TARNIX_PDF_FILTERS_FILTER_STEPS_H_
