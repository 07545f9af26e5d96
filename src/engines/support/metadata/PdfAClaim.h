// What a document claims to be by the PDF/A identification in its XMP packet (ISO 19005-1, 6.7.11;
// ISO 19005-2 and -3, 6.6.4), and the codes that stand for it on every interface.
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_PDFACLAIM_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_PDFACLAIM_H_

#include <cstdint>
#include <optional>

#include "engines/support/metadata/PdfAPacket.h"
#include "engines/support/metadata/XmpTree.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines {

// 0x1401 for part 1 and 'b', and so on; 0 for what do not go together.
//   conformance - 'a', 'b' or 'u'
std::int32_t PdfACode(int part, char conformance);

// Nothing for a code that is no level's.
std::optional<PdfALevel> PdfALevelOf(std::int32_t code);

// The lower of two levels of one part, which a document has that has either; 0 for levels of different
// parts, and where one of the codes is no level's.
std::int32_t CommonPdfACode(std::int32_t code, std::int32_t other);

// Of what the packet claims; 0 when that is none.
std::int32_t ClaimedPdfACode(const XmpTree& tree);

// The tree of the document's packet; one of state kMalformed when it has none or it cannot be read.
// Throws pdf::Error for a source that fails.
XmpTree ReadDocumentXmp(pdf::Document& document);

// The code of the level that the document claims, or else its version in the same manner: 0x1400 for
// PDF 1.4, 0x1700 for 1.7, 0x2000 for 2.0. Throws pdf::Error for a source that fails.
std::int32_t ComplianceOf(pdf::Document& document);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_PDFACLAIM_H_
