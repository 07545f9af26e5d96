// Takes out of resource dictionaries what nothing in their scope names: fonts, images, forms,
// patterns, shadings, graphics states, colour spaces and properties. What only they led to is not
// written then.
//
//   RemoveUnusedResources(document, pages, rewriter);
//
// A dictionary that several share loses what none of them names. One that anything else refers to,
// such as a form's default resources or a template that is no page, stays whole, and so does that
// of content which cannot be read to its end. Names that some content looks up and does not find in
// its own resources stay everywhere, for readers go on looking in those of its users; the fonts of
// variable text stay as well.
#ifndef TARNIX_ENGINES_OPTIMIZER_STRUCTURE_UNUSEDRESOURCES_H_
#define TARNIX_ENGINES_OPTIMIZER_STRUCTURE_UNUSEDRESOURCES_H_

#include <cstddef>

#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::optimizer {

// Sets and removes entries only: of resource dictionaries and categories in them that are objects,
// and else /Resources of the page, the node, the form or the font. Returns how many names were taken
// out.
std::size_t RemoveUnusedResources(pdf::Document& document, const pdf::PageTree& pages,
                                  pdf::DocumentRewriter& rewriter);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_STRUCTURE_UNUSEDRESOURCES_H_
