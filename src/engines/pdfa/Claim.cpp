#include "engines/pdfa/Claim.h"

#include "engines/support/metadata/PdfAClaim.h"

namespace TarnixTools::engines::pdfa {

std::optional<Level> ClaimedLevel(pdf::Document& document) {
  return LevelOfCode(ClaimedPdfACode(ReadDocumentXmp(document)));
}

}  // namespace TarnixTools::engines::pdfa
