// PdfDoc: what a document is, in short.
#include <string>

#include "PdfDoc.h"
#include "PdfException.h"
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
  PdfSummary summary;
  {
    OpenAndCountPages();
    const DiscardGuard closing(*this);
    engines::TPdfSummary facts;
    if (engines::PdfDocumentGetSummary(Document(), &facts) == 0) {
      throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(),
                         "Unable to look at PDF doc [%s]", path_.c_str());
    }
    summary.version = VersionText(facts.version);
    summary.rotations = RotationsOf(Document(), pages_num_);
    summary.is_encrypted = facts.is_encrypted != 0;
    summary.is_owner = facts.is_owner != 0;
    summary.permissions =
        summary.is_encrypted ? facts.permissions & kAllPermissions : kAllPermissions;
    summary.is_tagged = facts.is_tagged != 0;
    summary.signatures = facts.signature_count;
    summary.fields = facts.field_count;
    summary.attachments = facts.attachment_count;
  }
  summary.claims = GetPdfaCompliance();
  return summary;
}

}  // namespace TarnixTools
