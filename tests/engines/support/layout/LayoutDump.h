// The layout of a page as JSON, to look at what the analysis made of it.
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_LAYOUTDUMP_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_LAYOUTDUMP_H_

#include <string>

#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines {

// One object; UTF-8. Lengths are rounded to a tenth of a point.
std::string DumpLayout(const PageLayout& page);

}  // namespace TarnixTools::engines

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_LAYOUTDUMP_H_
