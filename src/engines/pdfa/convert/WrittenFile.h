// A PDF/A file on its way to the disk.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_WRITTENFILE_H_
#define TARNIX_ENGINES_PDFA_CONVERT_WRITTENFILE_H_

#include "engines/pdfa/Level.h"
#include "engines/support/files/SavedFile.h"
#include "foundation/Platform.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::pdfa {

// How a document of the level is written: in the version that its part goes by. Readers of PDF/A-1
// read neither object streams nor cross-reference streams (ISO 19005-1, 6.1.4).
pdf::RewriteOptions RewriteOptionsFor(Level level);

class WrittenFile : public SavedFile {
 public:
  // Throws ConverterFailure(kConverterCreateError).
  explicit WrittenFile(const platform::WidePath& path);
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_WRITTENFILE_H_
