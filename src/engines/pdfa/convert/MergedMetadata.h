// An XMP packet merged into a PDF/A document that is written already.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_MERGEDMETADATA_H_
#define TARNIX_ENGINES_PDFA_CONVERT_MERGEDMETADATA_H_

#include "engines/pdfa/Level.h"
#include "foundation/Platform.h"

namespace TarnixTools::engines::pdfa {

// Writes the document again with what both packets say, where its own goes before: the claim, and
// what agrees with the document information, stay. Throws pdf::Error, and
// ConverterFailure(kConverterMetadataError) for a packet that cannot be read, and kConverterOpenError
// or kConverterCreateError for a document that cannot be.
void MergeMetadata(const platform::WidePath& document, const platform::WidePath& packet,
                   Level level);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_MERGEDMETADATA_H_
