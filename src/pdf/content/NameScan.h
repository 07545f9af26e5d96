// The quick way to the resource names of ordinary content: looks at nothing but names and what
// follows them.
#ifndef TARNIX_PDF_CONTENT_NAMESCAN_H_
#define TARNIX_PDF_CONTENT_NAMESCAN_H_

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "pdf/content/ResourceNames.h"

namespace TarnixTools::pdf {

// A name as it stands in the content, with its slash and escapes.
using ScannedName = std::pair<ResourceCategory, std::string_view>;

// The category of the names that an operator takes.
std::optional<ResourceCategory> CategoryOf(std::uint32_t operator_code);

// Adds the names that the content looks up. False, whatever was added, for content that has to be
// read operator by operator: with inline images, comments, strings without an end, or names that
// are not followed by what is usual.
bool ScanNames(std::string_view content, std::vector<ScannedName>& names);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_NAMESCAN_H_
