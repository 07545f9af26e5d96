// All font programs of a document: read one after the other, cut on all cores to the glyphs that are
// shown, and put in the places of those that they come from.
//
//   FontPass pass(document);
//   const DocumentSurvey survey(document, pages, &pass);   // tells which codes are shown
//   pass.Run(settings, false, rewriter);
#ifndef TARNIX_ENGINES_OPTIMIZER_FONTS_FONTPASS_H_
#define TARNIX_ENGINES_OPTIMIZER_FONTS_FONTPASS_H_

#include <cstdint>
#include <optional>
#include <unordered_set>

#include "engines/optimizer/OptimizerSettings.h"
#include "engines/optimizer/fonts/FontJob.h"
#include "engines/optimizer/fonts/FontPlan.h"
#include "engines/optimizer/fonts/FontUse.h"
#include "pdf/content/ContentVisitor.h"
#include "pdf/file/Document.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::optimizer {

class FontPass : public pdf::ContentVisitor {
 public:
  // The document outlives the pass.
  explicit FontPass(pdf::Document& document) : document_(&document), use_(document) {}

  // Of every string that the document shows.
  std::optional<pdf::TextAdvance> ShowText(const pdf::StringUse& string) override;

  // Tells the rewriter of programs that have become smaller or are dropped. Throws pdf::Error for a
  // document that cannot be read any more.
  //   claims_pdfa - programs are neither dropped nor cut where lists of glyphs are wanted
  void Run(const OptimizerSettings& settings, bool claims_pdfa, pdf::DocumentRewriter& rewriter);

  const FontReport& report() const { return report_; }

 private:
  void Cut(const OptimizerSettings& settings, bool claims_pdfa, pdf::DocumentRewriter& rewriter);

  pdf::Document* document_;
  FontUse use_;
  FontReport report_;
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_FONTS_FONTPASS_H_
