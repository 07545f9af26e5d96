// Which font programs of a document can be cut down, and writing those that were.
//
//   FontReport report;
//   for (const FontJob& job : PlanFonts(document, use, rewriter, {}, report)) {
//     const auto program = document.TryDecodeStream(job.program, limits::kMaxProgramBytes);
//     const CutResult result = CutFont(program->data, job);  // on any thread
//     ApplyCut(rewriter, document, job, result, report);
//   }
#ifndef TARNIX_ENGINES_OPTIMIZER_FONTS_FONTPLAN_H_
#define TARNIX_ENGINES_OPTIMIZER_FONTS_FONTPLAN_H_

#include <vector>

#include "engines/optimizer/fonts/FontCutter.h"
#include "engines/optimizer/fonts/FontJob.h"
#include "engines/optimizer/fonts/FontUse.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::optimizer {

struct FontOptions {
  // Instructions by which outlines are fitted to pixels go. Readers that don't follow them show the
  // same pixels; in others the edges of glyphs are as they are of fonts without.
  bool drops_hints = false;
  // PDF/A-1 wants lists of the glyphs in subsets, which are not made here: such fonts are left.
  bool keeps_glyph_lists = false;
};

// The programs that may become smaller, in order of their numbers, each with others that have the
// same bytes. Goes by what the rewriter has merged so far; programs that it changes or drops are
// passed over. Those that are left alone from the start are in the report. Whoever merges or changes objects, too, leaves the programs of the
// jobs alone. Throws Error for a document that cannot be read any more.
std::vector<FontJob> PlanFonts(pdf::Document& document, const FontUse& use,
                               pdf::DocumentRewriter& rewriter, const FontOptions& options,
                               FontReport& report);

// Puts what was cut in place of the program and of those that are the same, takes lists of glyphs that are no longer right out of
// the descriptors, and adds to the report.
void ApplyCut(pdf::DocumentRewriter& rewriter, pdf::Document& document, const FontJob& job,
              const CutResult& result, FontReport& report);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_FONTS_FONTPLAN_H_
