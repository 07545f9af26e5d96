// A document that is opened to be written again, smaller.
//
//   OptimizedDocument document(WidePath("scan.pdf"), "");
//   document.Save(WidePath("small.pdf"), {.settings = *ProfileSettings(kImageProfile)});
#ifndef TARNIX_ENGINES_OPTIMIZER_OPTIMIZEDDOCUMENT_H_
#define TARNIX_ENGINES_OPTIMIZER_OPTIMIZEDDOCUMENT_H_

#include <cstdio>
#include <memory>
#include <optional>
#include <string_view>

#include "engines/optimizer/OptimizerReport.h"
#include "engines/optimizer/OptimizerSettings.h"
#include "engines/optimizer/images/ImagePass.h"
#include "engines/optimizer/structure/StripEntries.h"
#include "engines/support/contract/ClaimProof.h"
#include "engines/support/files/DataStore.h"
#include "engines/support/files/SavedFile.h"
#include "engines/support/metadata/CarriedClaim.h"
#include "foundation/JobWatch.h"
#include "foundation/Platform.h"
#include "pdf/crypt/Security.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::optimizer {

struct SaveOptions {
  OptimizerSettings settings;
  const pdf::Security* security = nullptr;  // null: not encrypted
  TPdfClaimProof claim_proof = nullptr;     // null: no claim of PDF/A is kept
};

class OptimizedDocument {
 public:
  // password is UTF-8. Throws pdf::Error as Document::Open and PageTree do, and
  // OptimizerFailure(kOptimizerOpenError) for a file that cannot be opened.
  OptimizedDocument(const platform::WidePath& path, std::string_view password);

  // Writes the document; the file appears when it is complete. Nothing grows: where the new file
  // would not be smaller, it is the old one byte for byte, unless one of the two is encrypted or the
  // document is damaged. Throws pdf::Error, and OptimizerFailure(kOptimizerCreateError).
  OptimizerReport Save(const platform::WidePath& path, const SaveOptions& options);

  bool is_encrypted() const { return document_->is_encrypted(); }

 private:
  CarriedClaim Rewrite(SavedFile& saved, const SaveOptions& options, JobStages& stages);
  void Reduce(const OptimizerSettings& settings, bool claims_pdfa, DataStore& store,
              pdf::DocumentRewriter& rewriter, JobStages& stages);
  void ReportStripped(const StrippedCounts& stripped);
  void RecodeStreams(DataStore& store, pdf::DocumentRewriter& rewriter);
  void KeepPages(pdf::DocumentRewriter& rewriter);
  void ReportClaim(const CarriedClaim& claim, ClaimFate fate);
  void ReportDamage();
  bool MayGrow(const SaveOptions& options);

  bool is_damaged() const { return document_->findings().count() > 0; }

  std::shared_ptr<std::FILE> file_;
  std::unique_ptr<pdf::Document> document_;
  pdf::PageTree pages_;
  OptimizerReport report_;
  std::optional<ImagePass> images_;  // of the saving that is going on
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_OPTIMIZEDDOCUMENT_H_
