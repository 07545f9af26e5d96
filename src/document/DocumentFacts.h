// What several operations tell of an open document.
#ifndef TARNIX_DOCUMENT_DOCUMENT_FACTS_H_
#define TARNIX_DOCUMENT_DOCUMENT_FACTS_H_

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "PdfSize.h"
#include "engines/toolbox/Toolbox.h"

namespace TarnixTools {

using MetadataGetter = int (*)(engines::TPdfMetadata*, char*, std::int32_t);

// A value of the document information; throws EngineError.
//   path   - for the message
//   getter - gives the function that gets the value, once the document has been found to have some
std::string ReadMetadata(engines::TPdfDocument* document, const std::string& path,
                         const std::function<MetadataGetter()>& getter);

// Of every page as it is seen, in points; throws EngineError.
//   count - of the document's pages
std::vector<PdfSize> ReadPageSizes(engines::TPdfDocument* document, int count);

}  // namespace TarnixTools

#endif  // TARNIX_DOCUMENT_DOCUMENT_FACTS_H_
