// Embedded programs that a document does without: those of the standard fonts (ISO 32000-2,
// 9.6.2.2), which every reader has.
//
//   if (IsStandardProgram(program, job)) {
//     DropProgram(rewriter, job, report);
//   }
#ifndef TARNIX_ENGINES_OPTIMIZER_FONTS_STANDARDFONTS_H_
#define TARNIX_ENGINES_OPTIMIZER_FONTS_STANDARDFONTS_H_

#include <string_view>

#include "engines/optimizer/fonts/FontJob.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::optimizer {

// Whether all that the fonts show looks the same without the program: each has the name of a
// standard font, shows its characters by an encoding that readers go by without the program, and
// their advances and extents are those of the installed face with the metrics of the standard font.
// False where there is no such face, as for Symbol and ZapfDingbats, or no library that
// reads fonts. Not for a document that has to
// embed its fonts. Uses nothing but its arguments and the installed fonts, on any thread.
//   program - decoded
bool IsStandardProgram(std::string_view program, const FontJob& job);

// Takes the program out of the document, and counts it.
void DropProgram(pdf::DocumentRewriter& rewriter, const FontJob& job, FontReport& report);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_FONTS_STANDARDFONTS_H_
