// Painted paths as shapes of a page model: each line and each rectangle on its own, where a path
// has nothing else.
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_PATHSHAPES_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_PATHSHAPES_H_

#include <vector>

#include "engines/support/pages/PageModel.h"
#include "pdf/content/ContentVisitor.h"

namespace TarnixTools::engines {

// Only kinds and boxes are set, of what lies within the clip.
std::vector<PathShape> ShapesOf(const pdf::PathUse& path);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_PATHSHAPES_H_
