#include "engines/repair/RepairedDocument.h"

#include <cerrno>
#include <utility>
#include <vector>

#include "engines/repair/RepairFailure.h"
#include "engines/repair/checks/Check.h"
#include "engines/repair/file/FoundDamage.h"
#include "engines/support/files/DiskFile.h"
#include "engines/support/metadata/CarriedClaim.h"
#include "engines/support/metadata/Signatures.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/write/EntryText.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::repair {

namespace {

std::shared_ptr<std::FILE> OpenFile(const platform::WidePath& path) {
  std::shared_ptr<std::FILE> file = OpenShared(path);
  if (file == nullptr) {
    throw RepairFailure(kRepairOpenError);
  }
  return file;
}

platform::OutputFile CreateFile(const platform::WidePath& path) {
  std::optional<platform::OutputFile> file = platform::OutputFile::Create(path);
  if (!file) {
    throw RepairFailure(kRepairCreateError, errno);
  }
  return std::move(*file);
}

}  // namespace

RepairedDocument::RepairedDocument(const platform::WidePath& path, std::string_view password)
    : file_(OpenFile(path)),
      document_(pdf::Document::Open(std::make_unique<DiskSource>(file_), password)) {}

// Pages come first, as they do in every other job, so that all agree on which ones there are.
void RepairedDocument::Analyze(std::uint32_t analyses) {
  problems_ = {};
  repairs_.emplace(*document_);
  FindPages();
  ProblemList found;
  if (pages_) {
    CheckContext context = {*document_, *pages_, *repairs_, found};
    JobSteps steps(static_cast<std::int64_t>(Checks().size()));
    for (const Check& check : Checks()) {
      if ((check.analysis & analyses) != 0) {
        pdf::UnlessDamaged(false, [&] {
          check.run(context);
          return true;
        });
      }
      steps.Done();
    }
  }
  ListFoundDamage(*document_, *repairs_, found);
  if (hopeless_) {
    found.Add({.code = ProblemCode::kNoPages, .outcome = Outcome::kLost});
  }
  problems_ = found.Of(analyses);
}

void RepairedDocument::FindPages() {
  if (pages_ || hopeless_) {
    return;
  }
  try {
    pages_.emplace(*document_);
  } catch (const pdf::Error& error) {
    if (!error.is_damage()) {
      throw;
    }
    hopeless_ = error;
  }
}

void RepairedDocument::RequirePages() const {
  if (hopeless_) {
    throw pdf::Error(*hopeless_);
  }
}

RepairReport RepairedDocument::Save(const platform::WidePath& path, const SaveOptions& options) {
  FindPages();
  RequirePages();
  SavedFile saved(CreateFile(path));
  report_ = ReportOf(problems_);
  if (!MustRewrite(options)) {
    DiskSource source(file_);
    CopyAll(source, saved.sink());
  } else if (options.is_repaired) {
    Write(*repairs_, saved, options);
  } else {
    pdf::DocumentRewriter unchanged(*document_);
    Write(unchanged, saved, options);
  }
  JobStages::FinishCurrent();
  saved.Complete();
  return std::move(report_);
}

bool RepairedDocument::MustRewrite(const SaveOptions& options) const {
  return options.is_rebuilt || options.security != nullptr || document_->is_encrypted() ||
         (options.is_repaired && !problems_.damage().empty());
}

// What is encrypted cannot be PDF/A, and what goes into a pipe cannot be looked at again.
void RepairedDocument::Write(pdf::DocumentRewriter& rewriter, SavedFile& saved,
                             const SaveOptions& options) {
  pdf::RewriteOptions rewriting = {.security = options.security, .version = {}, .keeps_id = true};
  if (!problems_.damage().empty() || document_->findings().count() > 0) {
    KeepPages(rewriter);
  }
  const bool can_be_proven =
      options.claim_proof != nullptr && options.security == nullptr && saved.size() >= 0;
  const CarriedClaim claim = CarryPdfAClaim(*document_, rewriter, rewriting, can_be_proven);
  const std::uint64_t signatures = DropSignatures(*document_, rewriter);
  ToldSink sink(saved.sink(), DiskSource(file_).Size());
  rewriter.Write(sink, rewriting);
  const ClaimFate fate = ProvePdfAClaim(claim.level, options.claim_proof, saved.file());
  Lose(TPdfRepairedKind::kPdfAClaim, ReasonOf(fate),
       claim.was_there && fate != ClaimFate::kKept ? 1 : 0);
  Lose(TPdfRepairedKind::kXmpPacket, "cannot be read", claim.was_packet_lost ? 1 : 0);
  Lose(TPdfRepairedKind::kSignature, "does not hold in another file", signatures);
}

void RepairedDocument::Lose(TPdfRepairedKind kind, const char* reason, std::uint64_t count) {
  if (count > 0) {
    report_.push_back({kind, true, count, reason});
  }
}

// All pages as they were found, in a tree of their own. One that is no object of its own may have no
// size either, which is written with it then.
void RepairedDocument::KeepPages(pdf::DocumentRewriter& rewriter) {
  std::vector<pdf::RewrittenPage> pages(pages_->pages().size());
  for (std::size_t i = 0; i < pages.size(); ++i) {
    pages[i].index = i;
    pages[i].added = pages_->pages()[i].number == 0 ? AddSized(i, rewriter) : 0;
  }
  rewriter.SetPages(*pages_, std::move(pages));
}

// The page with the size of the one before it, or behind the first; 0 where it has, or inherits, a
// size that will do.
std::uint32_t RepairedDocument::AddSized(std::size_t index, pdf::DocumentRewriter& rewriter) {
  const pdf::PageTree::Page& page = pages_->pages()[index];
  pdf::Arena arena;
  const auto box_of = [&](const pdf::PageTree::Page& of) {
    const pdf::Object box = pages_->Attribute(of, pdf::InheritableKey::kMediaBox, arena);
    return pdf::ReadPageBox(*document_, box);
  };
  if (box_of(page)) {
    return 0;
  }
  const std::size_t next_to_it = index > 0 ? index - 1 : index + 1;
  const auto size =
      next_to_it < pages_->pages().size() ? box_of(pages_->pages()[next_to_it]) : std::nullopt;
  std::string text = "<<";
  pdf::AppendEntries(text, page.direct, {"MediaBox"});
  pdf::AppendName(text, "MediaBox");
  pdf::AppendBox(text, size.value_or(pdf::kDefaultMediaBox));
  return rewriter.Add(pdf::ObjectChange::Value(text + ">>"));
}

}  // namespace TarnixTools::engines::repair
