// An image of a document: what its dictionary says, and its data (ISO 32000-2, 8.9.5).
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_DOCUMENTIMAGE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_DOCUMENTIMAGE_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pdf/file/ByteSink.h"
#include "pdf/file/Document.h"
#include "pdf/filters/Filters.h"
#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::engines {

// Where the image is.
struct DocumentImage {
  pdf::Document* document = nullptr;
  std::uint32_t number = 0;  // of its stream; 0 for an inline image
  pdf::Object dictionary;    // an inline image's with full names
  std::string_view data;     // an inline image's, encoded
  pdf::Object color_spaces;  // /ColorSpace of the resources it is drawn with; null for a mask
};

// An image XObject. Its dictionary lives in the arena. Throws pdf::Error.
DocumentImage ImageObjectOf(pdf::Document& document, std::uint32_t number, pdf::Arena& arena);

// The dictionary of an inline image with the names that an image XObject would have; named colour
// spaces are looked up in the resources. Everything lives in the arena.
pdf::Object FullInlineDictionary(pdf::Document& document, const pdf::Object& entries,
                                 const pdf::Object& resources, pdf::Arena& arena);

// The image filter at the end of a chain.
enum class ImageFilter : std::uint8_t { kNone, kDct, kJpx, kCcitt, kJbig2, kUnknown };

// What the dictionary says. Values live in the arena that was given.
struct ImageFacts {
  std::uint32_t width = 0;  // 0: none that can be used
  std::uint32_t height = 0;
  int bits = 8;  // per component; 1, 2, 4, 8 or 16
  bool is_mask = false;
  pdf::Object color_space;             // resolved; null for none
  bool has_default_space = false;      // it depends on the resources (ISO 32000-2, 8.6.5.6)
  std::vector<double> decode;          // empty for none, or one that changes nothing
  std::vector<pdf::FilterStep> steps;  // before the image filter
  ImageFilter filter = ImageFilter::kNone;
  pdf::Object filter_parameters;        // resolved
  std::uint32_t soft_mask = 0;          // number of a stream
  std::uint32_t stencil_mask = 0;       // number of a stream
  std::vector<std::int64_t> color_key;  // pairs of least and most
  std::vector<double> matte;            // of a soft mask: what its picture is mixed with
  bool uses_jpx_alpha = false;          // the alpha channel of JPEG 2000 data is its soft mask
};

// Throws pdf::Error for a document that cannot be read any more, never for odd values.
ImageFacts FactsOf(const DocumentImage& image, pdf::Arena& arena);

// Hands the data to the sink, decrypted and otherwise as it stands. At most `most` bytes. Throws
// pdf::Error.
void CopyEncoded(const DocumentImage& image, pdf::ByteSink& sink,
                 std::uint64_t most = ~std::uint64_t{0});

// The data in memory, decrypted and otherwise as it stands. Throws pdf::Error(kLimitExceeded) for
// more than max_bytes.
std::string EncodedData(const DocumentImage& image, std::size_t max_bytes);

// The data behind the filters before the image filter. What cannot be decoded is missing at the
// end. Throws pdf::Error(kLimitExceeded) for more than max_bytes.
std::string DecodeToImageFilter(const DocumentImage& image, const ImageFacts& facts,
                                std::size_t max_bytes);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_DOCUMENTIMAGE_H_
