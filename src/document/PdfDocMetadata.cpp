// PdfDoc: document information.
#include <array>
#include <memory>

#include "PdfDoc.h"
#include "PdfException.h"
#include "document/ToolboxHandles.h"
#include "engines/toolbox/Toolbox.h"

namespace TarnixTools {
namespace {

using MetadataGetter = int (*)(engines::TPdfMetadata*, char*, std::int32_t);

MetadataGetter GetterFor(PdfMetadataParam param) {
  switch (param) {
    case PdfMetadataParam::Author:
      return &engines::PdfMetadataGetAuthorA;
    case PdfMetadataParam::Keywords:
      return &engines::PdfMetadataGetKeywordsA;
    case PdfMetadataParam::Creator:
      return &engines::PdfMetadataGetCreatorA;
    case PdfMetadataParam::Producer:
      return &engines::PdfMetadataGetProducerA;
  }
  throw PdfException(PdfExceptionCode::InternalError, 0, "Invalid PDF META param requested [%d]",
                     static_cast<int>(param));
}

}  // namespace

std::string PdfDoc::GetMetaData(PdfMetadataParam param) {
  OpenCheckPassword();
  const DiscardGuard closing(*this);
  const MetadataPtr metadata(engines::PdfDocumentGetMetadata(Document()));
  if (metadata == nullptr) {
    const std::int32_t error = engines::PdfGetLastError();
    throw PdfException(PdfExceptionCode::EngineError, error,
                       "Could not get meta from file [%s] (%d)", path_.c_str(), error);
  }
  std::array<char, PDFDOC_MAX_META_LENGTH> value{};
  GetterFor(param)(metadata.get(), value.data(), PDFDOC_MAX_META_LENGTH);
  return value.data();
}

}  // namespace TarnixTools
