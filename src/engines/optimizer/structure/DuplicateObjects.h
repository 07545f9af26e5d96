// Merges objects that are equal, with all that they lead to: fonts, images, forms, patterns, colour
// spaces, functions and whatever else pages have as resources, resource dictionaries, and content.
//
//   MergeDuplicateObjects(document, pages, taken, rewriter);
//
// Only what resources lead to by the keys that the standard names for that is looked at, for many
// other things are not the same although they are equal: pages, annotations, fields, elements of the
// structure, layers, signatures. A form or an image that the structure tree knows (/StructParents)
// stays by itself, too.
//
// Each object is read once, what it leads to before it, so that equal trees become one from their
// leaves up; the time follows the number of objects, and of streams only those are read whose
// dictionaries and lengths are equal.
#ifndef TARNIX_ENGINES_OPTIMIZER_STRUCTURE_DUPLICATEOBJECTS_H_
#define TARNIX_ENGINES_OPTIMIZER_STRUCTURE_DUPLICATEOBJECTS_H_

#include <cstddef>
#include <cstdint>
#include <unordered_set>

#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::optimizer {

// Goes by the objects as the rewriter has them: best after entries were removed, and before objects
// are changed in other ways, which then stay by themselves. The first of equal objects, in the order
// of pages, is the one that stays. Returns how many were merged into others.
//   taken - objects that neither become others nor stand for them
std::size_t MergeDuplicateObjects(pdf::Document& document, const pdf::PageTree& pages,
                                  const std::unordered_set<std::uint32_t>& taken,
                                  pdf::DocumentRewriter& rewriter);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_STRUCTURE_DUPLICATEOBJECTS_H_
