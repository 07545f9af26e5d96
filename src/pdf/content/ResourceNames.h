// Which names of its resource dictionary a content stream uses (ISO 32000-2, 7.8.3).
#ifndef TARNIX_PDF_CONTENT_RESOURCENAMES_H_
#define TARNIX_PDF_CONTENT_RESOURCENAMES_H_

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>

#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {

enum class ResourceCategory : std::uint8_t {
  kColorSpace,
  kExtGState,
  kFont,
  kPattern,
  kProperties,
  kShading,
  kXObject,
};

// Keys of a resource dictionary under which named resources stand, by category.
inline constexpr std::array<std::string_view, 7> kResourceCategoryKeys = {
    "ColorSpace", "ExtGState", "Font", "Pattern", "Properties", "Shading", "XObject"};

using ResourceNameSink = std::function<void(ResourceCategory, std::string_view name)>;

struct ContentNames {
  // False: something could not be read, or an operator is not known; names that were not told may
  // be used as well.
  bool is_complete = true;
  // Operands at the end belong to an operator in the stream that follows.
  bool has_operands_left = false;
};

// Tells the sink every name that an operator or an inline image of the content looks up. In doubt a
// name too many, and the same one often.
ContentNames CollectResourceNames(std::string_view content, const ResourceNameSink& sink);

// The same, operator by operator: for content that is not as usual.
ContentNames ReadResourceNames(std::string_view content, const ResourceNameSink& sink);

// Names within a colour space, or instead of one, that a reader may look up: also those of the
// device colour spaces.
void CollectColorSpaceNames(const Object& color_space, const ResourceNameSink& sink);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_RESOURCENAMES_H_
