// What the core noticed while a document was read, as problems.
#ifndef TARNIX_ENGINES_REPAIR_FILE_FOUNDDAMAGE_H_
#define TARNIX_ENGINES_REPAIR_FILE_FOUNDDAMAGE_H_

#include "engines/repair/ProblemList.h"
#include "pdf/file/Document.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::repair {

// Each finding once, however often the core came by. What the checks look at themselves is not among
// them: the data of streams, and pages that stand for lost ones. An object that cannot be had is a
// loss only where the document needs it.
void ListFoundDamage(pdf::Document& document, pdf::DocumentRewriter& rewriter,
                     ProblemList& problems);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_FILE_FOUNDDAMAGE_H_
