// What the structure tree says of a paragraph.
#ifndef TARNIX_ENGINES_OFFICE_LAYOUT_PARAGRAPHS_STRUCTURETAGS_H_
#define TARNIX_ENGINES_OFFICE_LAYOUT_PARAGRAPHS_STRUCTURETAGS_H_

#include "engines/office/layout/PageLayout.h"
#include "engines/office/layout/paragraphs/TextRows.h"
#include "engines/office/pages/PageModel.h"

namespace TarnixTools::engines::office {

// Gives a paragraph the role that the tree has for its first row, where it has one.
void ReadTag(const PageModel& page, const TextRow& first, Paragraph& paragraph);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LAYOUT_PARAGRAPHS_STRUCTURETAGS_H_
