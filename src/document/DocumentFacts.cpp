#include "document/DocumentFacts.h"

#include <array>
#include <cstddef>

#include "PdfDoc.h"
#include "PdfException.h"
#include "document/ToolboxHandles.h"

namespace TarnixTools {

std::string ReadMetadata(engines::TPdfDocument* document, const std::string& path,
                         const std::function<MetadataGetter()>& getter) {
  const MetadataPtr metadata(engines::PdfDocumentGetMetadata(document));
  if (metadata == nullptr) {
    const std::int32_t error = engines::PdfGetLastError();
    throw PdfException(PdfExceptionCode::EngineError, error,
                       "Could not get meta from file [%s] (%d)", path.c_str(), error);
  }
  std::array<char, PdfDoc::PDFDOC_MAX_META_LENGTH> value{};
  const MetadataGetter get = getter();
  get(metadata.get(), value.data(), PdfDoc::PDFDOC_MAX_META_LENGTH);
  return value.data();
}

std::vector<PdfSize> ReadPageSizes(engines::TPdfDocument* document, int count) {
  const PageListPtr pages(engines::PdfDocumentGetPages(document));
  std::vector<PdfSize> sizes;
  sizes.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    const PagePtr page(engines::PdfPageListGet(pages.get(), i));
    engines::TPdfSize points;
    if (engines::PdfPageGetSize(page.get(), &points) == 0) {
      throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(),
                         "Unable not get page [%d] dimensions", i + 1);
    }
    sizes.emplace_back(points.width, points.height);
  }
  return sizes;
}

}  // namespace TarnixTools
