// Fonts, their descriptors, shadings and spot colours may be written in place, where others have a
// reference, and pages with them. The steps of a conversion go by the numbers of objects, so that
// all of these get objects of their own before anything is looked at.
//
//   if (const auto file = WithOwnObjects(*document, pages)) ...  // to be opened in its place
#ifndef TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_OWNOBJECTS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_OWNOBJECTS_H_

#include <cstdio>
#include <memory>

#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines::pdfa {

// The same document, not encrypted, in a file that vanishes when it is closed; null where nothing is
// written in place. What is in a page that was written in place itself stays in it: a second call
// for the new file takes it out. Of what is the same there is one object. Throws pdf::Error for a
// document that cannot be read any more, and for a file that cannot be written.
std::shared_ptr<std::FILE> WithOwnObjects(pdf::Document& document, const pdf::PageTree& pages);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_OWNOBJECTS_H_
