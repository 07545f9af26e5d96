// The layout of a page in a line, for tests of where the analysis decides otherwise.
//
//   SketchOf(AnalyzePage(page))  ->  "L One line/and another J Next paragraph | R Second column"
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_LAYOUTSKETCH_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_LAYOUTSKETCH_H_

#include <functional>
#include <string>

#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines {

// Bands are parted by "||", columns by "|". A paragraph begins with the letter of its alignment, in
// small letters where it runs to the left, with ">" or "<" for its first indent; its lines are parted by "/", "+" where
// a word goes on, "//" where the line ends for a reason. "^{2}" is raised, "_{2}" lowered, "<u s h "
// stands before what is underlined, struck and highlighted. A table is "[a,b;c,d]", with its spans.
std::string SketchOf(const PageLayout& page);

std::string SketchOf(const Table& table);

// What something becomes over a range of numbers: a line for each part of it where it is the same.
// The step is a power of two, so that numbers are those that they seem.
std::string Sweep(const std::string& title, double first, double last, double step,
                  const std::function<std::string(double)>& sketch);

}  // namespace TarnixTools::engines

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_LAYOUTSKETCH_H_
