// Footnotes: small text below that of the page, and the raised marks that lead to it.
#ifndef TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_NOTES_H_
#define TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_NOTES_H_

#include "engines/office/layout/OfficeDocument.h"

namespace TarnixTools::engines::office {

// Moves the notes of every page out of its flow, where each has its mark.
void FindNotes(OfficeDocument& document);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_NOTES_H_
