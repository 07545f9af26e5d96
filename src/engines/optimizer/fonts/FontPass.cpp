#include "engines/optimizer/fonts/FontPass.h"

#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engines/optimizer/WorkPool.h"
#include "engines/optimizer/fonts/FontCutter.h"
#include "engines/optimizer/fonts/FontLimits.h"
#include "engines/optimizer/fonts/StandardFonts.h"

namespace TarnixTools::engines::optimizer {

namespace {

// A program on its way.
struct Cutting {
  FontJob job;
  bool is_standard = false;  // readers have one that agrees
  CutResult result;
};

}  // namespace

std::optional<pdf::TextAdvance> FontPass::ShowText(const pdf::StringUse& string) {
  use_.Note(string);
  return std::nullopt;
}

void FontPass::Run(const OptimizerSettings& settings, bool claims_pdfa,
                   pdf::DocumentRewriter& rewriter) {
  if (settings.subsets_fonts || settings.removes_standard_fonts) {
    use_.KeepFormFonts();
    Cut(settings, claims_pdfa, rewriter);
  }
}

void FontPass::Cut(const OptimizerSettings& settings, bool claims_pdfa,
                   pdf::DocumentRewriter& rewriter) {
  std::deque<Cutting> cuttings;
  WorkPool pool;  // ends before what its work refers to
  const FontOptions options{.drops_hints = settings.drops_hints, .keeps_glyph_lists = claims_pdfa};
  for (FontJob& job : PlanFonts(*document_, use_, rewriter, options, report_)) {
    std::optional<pdf::Decoded> program =
        document_->TryDecodeStream(job.program, limits::kMaxProgramBytes);
    Cutting& cutting = cuttings.emplace_back(Cutting{.job = std::move(job), .result = {}});
    if (!program || !program->complete) {
      cutting.result.left_alone = FontLeftAlone::kUnreadable;
      continue;
    }
    const std::uint64_t held = 3 * program->data.size();
    pool.Add(held, [&cutting, &settings, claims_pdfa, data = std::move(program->data)] {
      cutting.is_standard =
          settings.removes_standard_fonts && !claims_pdfa && IsStandardProgram(data, cutting.job);
      if (!cutting.is_standard && settings.subsets_fonts) {
        cutting.result = CutFont(data, cutting.job);
      }
    });
  }
  pool.Finish();
  for (const Cutting& cutting : cuttings) {
    if (cutting.is_standard) {
      DropProgram(rewriter, cutting.job, report_);
    } else {
      ApplyCut(rewriter, *document_, cutting.job, cutting.result, report_);
    }
  }
}

}  // namespace TarnixTools::engines::optimizer
