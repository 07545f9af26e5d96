// The layout of a page as text, with all that the analysis made of it.
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_LAYOUTDUMP_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_LAYOUTDUMP_H_

#include <string>

#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines {

// A line for each part, further in than what it is a part of. Lengths are in hundredths of a point;
// what is as it usually is is left out.
std::string DumpLayout(const PageLayout& page);

// As the dump and the sketches have it: 1.5, 3, -0.25.
std::string ShownNumber(double value);

}  // namespace TarnixTools::engines

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_LAYOUTDUMP_H_
