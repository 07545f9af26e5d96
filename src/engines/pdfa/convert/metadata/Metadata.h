// What the document says of itself: an XMP packet that agrees with the document information and
// claims the level (ISO 19005-2, 6.6; 19005-1, 6.7).
#ifndef TARNIX_ENGINES_PDFA_CONVERT_METADATA_METADATA_H_
#define TARNIX_ENGINES_PDFA_CONVERT_METADATA_METADATA_H_

#include "engines/pdfa/convert/Conversion.h"
#include "engines/support/metadata/XmpInfo.h"
#include "engines/support/metadata/XmpTree.h"

namespace TarnixTools::engines::pdfa {

// Throws pdf::Error for a document that cannot be read any more.
void MendMetadata(Conversion& conversion);

// Gives the document a packet that claims the level and agrees with the information.
//   given - what it says else
void PutPacket(pdf::DocumentRewriter& rewriter, const XmpTree& given, const XmpInfoValues& info,
               Level level, ConversionReport& report);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_METADATA_METADATA_H_
