// PdfDoc: what a document is, in short.
#include <string>

#include "PdfDoc.h"
#include "PdfException.h"
#include "document/DocumentFacts.h"
#include "document/ToolboxHandles.h"
#include "engines/toolbox/Toolbox.h"

namespace TarnixTools {
namespace {

// 17 stands for 1.7.
std::string VersionText(std::int32_t version) {
  return version == 0 ? std::string()
                      : std::to_string(version / 10) + "." + std::to_string(version % 10);
}

std::vector<int> RotationsOf(engines::TPdfDocument* document, int count) {
  const PageListPtr pages(engines::PdfDocumentGetPages(document));
  std::vector<int> rotations;
  rotations.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    const PagePtr page(engines::PdfPageListGet(pages.get(), i));
    std::int32_t degrees = 0;
    if (engines::PdfPageGetRotation(page.get(), &degrees) == 0) {
      throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(),
                         "Unable to get the rotation of page [%d]", i + 1);
    }
    rotations.push_back(degrees);
  }
  return rotations;
}

}  // namespace

PdfSummary PdfDoc::GetSummary() {
  OpenAndCountPages();
  const DiscardGuard closing(*this);
  engines::TPdfSummary facts;
  if (engines::PdfDocumentGetSummary(Document(), &facts) == 0) {
    throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(),
                       "Unable to look at PDF doc [%s]", path_.c_str());
  }
  const auto metadata = [&](MetadataGetter getter) {
    return ReadMetadata(Document(), path_, [getter] { return getter; });
  };
  const bool is_encrypted = facts.is_encrypted != 0;
  return {
      .version = VersionText(facts.version),
      .sizes = ReadPageSizes(Document(), pages_num_),
      .rotations = RotationsOf(Document(), pages_num_),
      .author = metadata(&engines::PdfMetadataGetAuthorA),
      .keywords = metadata(&engines::PdfMetadataGetKeywordsA),
      .creator = metadata(&engines::PdfMetadataGetCreatorA),
      .producer = metadata(&engines::PdfMetadataGetProducerA),
      .title = metadata(&engines::PdfMetadataGetTitleA),
      .subject = metadata(&engines::PdfMetadataGetSubjectA),
      .is_encrypted = is_encrypted,
      .is_owner = facts.is_owner != 0,
      .permissions = is_encrypted ? facts.permissions & kAllPermissions : kAllPermissions,
      .claims = static_cast<PdfCompliance>(facts.compliance),
      .is_tagged = facts.is_tagged != 0,
      .signatures = facts.signature_count,
      .fields = facts.field_count,
      .attachments = facts.attachment_count,
  };
}

}  // namespace TarnixTools
