#include "pdf/Findings.h"

namespace TarnixTools::pdf {

const char* TextOf(FindingCode code) {
  switch (code) {
    case FindingCode::kHeaderMissing:
      return "file header missing";
    case FindingCode::kHeaderNotFirst:
      return "bytes before the file header";
    case FindingCode::kStartXrefMissing:
      return "start of the cross-reference not found";
    case FindingCode::kXrefDamaged:
      return "cross-reference section damaged";
    case FindingCode::kXrefLoop:
      return "cross-reference sections in a loop";
    case FindingCode::kXrefRebuilt:
      return "cross-reference rebuilt from the objects found";
    case FindingCode::kTrailerRebuilt:
      return "document catalog found by searching";
    case FindingCode::kCatalogInTrailer:
      return "document catalog no object of its own";
    case FindingCode::kObjectMissing:
      return "object missing";
    case FindingCode::kObjectDamaged:
      return "object damaged";
    case FindingCode::kObjectStreamDamaged:
      return "object stream damaged";
    case FindingCode::kStreamLengthWrong:
      return "stream length wrong";
    case FindingCode::kStreamEndMissing:
      return "stream end missing";
    case FindingCode::kPageTreeDamaged:
      return "page tree damaged";
    case FindingCode::kPageTreeLoop:
      return "page tree in a loop";
    case FindingCode::kPageCountWrong:
      return "page count wrong";
    case FindingCode::kPagesSalvaged:
      return "pages gathered without a page tree";
    case FindingCode::kPageAdopted:
      return "page found that the page tree had lost";
    case FindingCode::kPageBlank:
      return "page lost, an empty one stands for it";
    case FindingCode::kPagesMissing:
      return "fewer pages found than the document says it has";
    case FindingCode::kStringUndecryptable:
      return "encrypted data incomplete";
  }
  return "damage of another kind";
}

bool IsLoss(FindingCode code) {
  switch (code) {
    case FindingCode::kObjectMissing:
    case FindingCode::kObjectDamaged:
    case FindingCode::kObjectStreamDamaged:
    case FindingCode::kPageBlank:
    case FindingCode::kPagesMissing:
    case FindingCode::kStringUndecryptable:
      return true;
    default:
      return false;
  }
}

}  // namespace TarnixTools::pdf
