// A document that is opened to be looked over and put right.
//
//   RepairedDocument document(WidePath("torn.pdf"), "");
//   document.Analyze(kAnalyzeAll);
//   for (const Problem& problem : document.problems().damage()) { ... }
//   document.Save(WidePath("mended.pdf"), {.is_repaired = true});
#ifndef TARNIX_ENGINES_REPAIR_REPAIREDDOCUMENT_H_
#define TARNIX_ENGINES_REPAIR_REPAIREDDOCUMENT_H_

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "engines/repair/ProblemList.h"
#include "engines/repair/RepairReport.h"
#include "engines/support/contract/ClaimProof.h"
#include "engines/support/files/SavedFile.h"
#include "foundation/Platform.h"
#include "pdf/Error.h"
#include "pdf/crypt/Security.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::repair {

struct SaveOptions {
  const pdf::Security* security = nullptr;  // null: not encrypted
  bool is_repaired = false;                 // what the last analysis listed is put right
  bool is_rebuilt = false;                  // written anew, whether there is a problem or not
  TPdfClaimProof claim_proof = nullptr;     // null: no claim of PDF/A is kept
};

class RepairedDocument {
 public:
  // password is UTF-8. Takes whatever has an object that can be recognised. Throws pdf::Error as
  // Document::Open does, and RepairFailure(kRepairOpenError) for a file that cannot be opened.
  RepairedDocument(const platform::WidePath& path, std::string_view password);

  // Lists the problems anew. That there is no page is one of them.
  //   analyses - AnalysisBits
  void Analyze(std::uint32_t analyses);

  const ProblemList& problems() const { return problems_; }

  bool is_encrypted() const { return document_->is_encrypted(); }

  // Throws pdf::Error, kNoPages most often, when no page was found by the last analysis.
  void RequirePages() const;

  // Writes the document; the file appears when it is complete. Without a problem to be put right and
  // without encryption before and after it is the opened file byte for byte, unless it is to be
  // rebuilt. Throws pdf::Error, kNoPages for a document without any page, and
  // RepairFailure(kRepairCreateError).
  RepairReport Save(const platform::WidePath& path, const SaveOptions& options);

 private:
  void FindPages();
  bool MustRewrite(const SaveOptions& options) const;
  void Write(pdf::DocumentRewriter& rewriter, SavedFile& saved, const SaveOptions& options);
  void KeepPages(pdf::DocumentRewriter& rewriter);
  std::uint32_t AddSized(std::size_t index, pdf::DocumentRewriter& rewriter);
  void Lose(TPdfRepairedKind kind, const char* reason, std::uint64_t count);

  std::shared_ptr<std::FILE> file_;
  std::unique_ptr<pdf::Document> document_;
  std::optional<pdf::PageTree> pages_;
  std::optional<pdf::Error> hopeless_;            // why there are no pages
  std::optional<pdf::DocumentRewriter> repairs_;  // what the last analysis would change
  ProblemList problems_;
  RepairReport report_;
};

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_REPAIREDDOCUMENT_H_
