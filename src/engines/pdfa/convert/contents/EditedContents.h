// The content of pages, forms and patterns that several steps of a conversion change, written once.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_EDITEDCONTENTS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_EDITEDCONTENTS_H_

#include <cstdint>

#include "engines/pdfa/convert/Conversion.h"
#include "pdf/content/PageContents.h"

namespace TarnixTools::engines::pdfa {

// The content of a page as the document has it, which is what places in it mean. Throws pdf::Error
// for a document that cannot be read any more.
//   number - of the page's object
pdf::PageContents ContentOfPage(Conversion& conversion, std::uint32_t number);

// Gives each page that was edited content of its own, and each other content that was its new data.
// What is edited is read again when its turn has come, so that it is not held meanwhile.
void WriteEditedContents(Conversion& conversion);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_EDITEDCONTENTS_H_
