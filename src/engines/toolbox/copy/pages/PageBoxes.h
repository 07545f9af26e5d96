// The boxes of a copied page (ISO 32000-2, 14.11.2), inherited ones included.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_PAGES_PAGEBOXES_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_PAGES_PAGEBOXES_H_

#include <string>
#include <string_view>

#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines::toolbox {

class CopyContext;

// Whether the key of a page dictionary names a box.
bool IsPageBox(std::string_view key);

// Appends the page's boxes as they are. Among four numbers, something else is written as the 0 that
// it counts as; what pdf::ReadPageBox takes for no box is left out. A page without a media box gets
// US Letter, as which every reader takes it.
void AppendPageBoxes(std::string& out, CopyContext& context, const pdf::PageTree::Page& page,
                     const pdf::Object& dictionary, pdf::Arena& arena);

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_PAGES_PAGEBOXES_H_
