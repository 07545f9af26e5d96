// Name trees and number trees of the document (ISO 32000-2, 7.9.6 and 7.9.7), and the entries of the
// catalog that lead to them and to the other trees.
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_TREECHECK_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_TREECHECK_H_

#include "engines/repair/checks/Check.h"

namespace TarnixTools::engines::repair {

// Entries of the catalog that are not what they have to be go.
void CheckCatalog(CheckContext& context);

// A tree with damage becomes one node with all pairs that can be read.
void CheckKeyedTrees(CheckContext& context);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_TREECHECK_H_
