// Name trees (ISO 32000-2, 7.9.6): values by name.
//
//   ReadNameTree(document, names.Get("EmbeddedFiles"),
//                [&](std::string_view name, const Object& value) { ... });
#ifndef TARNIX_PDF_TREE_NAMETREE_H_
#define TARNIX_PDF_TREE_NAMETREE_H_

#include <functional>
#include <string_view>

#include "pdf/file/Document.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {

using TakeNamed = std::function<void(std::string_view name, const Object& value)>;

// Hands over every pair of the tree in its order; a value that is a reference comes as one. Both
// live until `take` returns. Tolerant: nodes and names of wrong types are passed over, and no
// object is read twice, so loops end and the work is in proportion to the file. What the nodes'
// /Limits say does not matter.
void ReadNameTree(Document& document, const Object& root, const TakeNamed& take);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_TREE_NAMETREE_H_
