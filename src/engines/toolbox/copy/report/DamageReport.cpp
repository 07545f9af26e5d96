#include "engines/toolbox/copy/report/DamageReport.h"

namespace TarnixTools::engines::toolbox {

namespace {

const char* ReasonOf(pdf::FindingCode code) {
  switch (code) {
    case pdf::FindingCode::kHeaderMissing:
      return "file header missing";
    case pdf::FindingCode::kHeaderNotFirst:
      return "bytes before the file header";
    case pdf::FindingCode::kStartXrefMissing:
      return "start of the cross-reference not found";
    case pdf::FindingCode::kXrefDamaged:
      return "cross-reference section damaged";
    case pdf::FindingCode::kXrefLoop:
      return "cross-reference sections in a loop";
    case pdf::FindingCode::kXrefRebuilt:
      return "cross-reference rebuilt from the objects found";
    case pdf::FindingCode::kTrailerRebuilt:
      return "document catalog found by searching";
    case pdf::FindingCode::kCatalogInTrailer:
      return "document catalog no object of its own";
    case pdf::FindingCode::kObjectMissing:
      return "object missing";
    case pdf::FindingCode::kObjectDamaged:
      return "object damaged";
    case pdf::FindingCode::kObjectStreamDamaged:
      return "object stream damaged";
    case pdf::FindingCode::kStreamLengthWrong:
      return "stream length wrong";
    case pdf::FindingCode::kStreamEndMissing:
      return "stream end missing";
    case pdf::FindingCode::kPageTreeDamaged:
      return "page tree damaged";
    case pdf::FindingCode::kPageTreeLoop:
      return "page tree in a loop";
    case pdf::FindingCode::kPageCountWrong:
      return "page count wrong";
    case pdf::FindingCode::kPagesSalvaged:
      return "pages gathered without a page tree";
    case pdf::FindingCode::kPageAdopted:
      return "page found that the page tree had lost";
    case pdf::FindingCode::kPageBlank:
      return "page lost, an empty one stands for it";
    case pdf::FindingCode::kPagesMissing:
      return "fewer pages found than the document says it has";
    case pdf::FindingCode::kStringUndecryptable:
      return "encrypted data incomplete";
  }
  return "damage of another kind";
}

bool IsLoss(pdf::FindingCode code) {
  switch (code) {
    case pdf::FindingCode::kObjectMissing:
    case pdf::FindingCode::kObjectDamaged:
    case pdf::FindingCode::kObjectStreamDamaged:
    case pdf::FindingCode::kPageBlank:
    case pdf::FindingCode::kPagesMissing:
    case pdf::FindingCode::kStringUndecryptable:
      return true;
    default:
      return false;
  }
}

}  // namespace

void ReportDamage(SourceDocument& source, CopyReport& report) {
  for (const pdf::Finding& finding : source.TakeFindings()) {
    report.Add(CopiedKind::kDamage,
               IsLoss(finding.code) ? CopyOutcome::kDropped : CopyOutcome::kKept,
               ReasonOf(finding.code));
  }
}

}  // namespace TarnixTools::engines::toolbox
