#include "engines/optimizer/OptimizedDocument.h"

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

#include "engines/optimizer/Limits.h"
#include "engines/optimizer/OptimizerFailure.h"
#include "engines/optimizer/WorkPool.h"
#include "engines/optimizer/fonts/FontPass.h"
#include "engines/optimizer/images/InlineImages.h"
#include "engines/optimizer/structure/DuplicateObjects.h"
#include "engines/optimizer/structure/StreamRecoder.h"
#include "engines/optimizer/structure/UnusedResources.h"
#include "engines/optimizer/survey/DocumentSurvey.h"
#include "engines/support/files/DiskFile.h"
#include "engines/support/metadata/Signatures.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::optimizer {

namespace {

// What a byte of a compressed stream takes while it is coded again, more or less.
constexpr std::uint64_t kDecodedPerByte = 6;

std::shared_ptr<std::FILE> OpenFile(const platform::WidePath& path) {
  std::shared_ptr<std::FILE> file = OpenShared(path);
  if (file == nullptr) {
    throw OptimizerFailure(kOptimizerOpenError);
  }
  return file;
}

platform::OutputFile CreateFile(const platform::WidePath& path) {
  std::optional<platform::OutputFile> file = platform::OutputFile::Create(path);
  if (!file) {
    throw OptimizerFailure(kOptimizerCreateError, errno);
  }
  return std::move(*file);
}

// How far the job is behind each of its stages, in hundredths.
constexpr int kSurveyed = 15;
constexpr int kFontsCut = 25;
constexpr int kImagesCoded = 65;
constexpr int kRecoded = 90;
constexpr int kWritten = 98;

// Of which the data is in the store.
struct WaitingStream {
  StreamCoding coding;
  StoredData data;
};

}  // namespace

OptimizedDocument::OptimizedDocument(const platform::WidePath& path, std::string_view password)
    : file_(OpenFile(path)),
      document_(pdf::Document::Open(std::make_unique<DiskSource>(file_), password)),
      pages_(*document_) {}

OptimizerReport OptimizedDocument::Save(const platform::WidePath& path,
                                        const SaveOptions& options) {
  report_ = {};
  JobStages stages;
  SavedFile saved(CreateFile(path));
  const CarriedClaim claim = Rewrite(saved, options, stages);
  DiskSource source(file_);
  const bool has_shrunk = saved.size() < static_cast<std::int64_t>(source.Size());
  if (!has_shrunk && !MayGrow(options) && saved.Empty()) {
    CopyAll(source, saved.sink());
    report_.TakeBack();
  } else {
    ReportClaim(claim, ProvePdfAClaim(claim.level, options.claim_proof, saved.file()));
  }
  stages.Finish();
  saved.Complete();
  return std::move(report_);
}

// What is encrypted cannot be PDF/A, and what goes into a pipe cannot be looked at again.
CarriedClaim OptimizedDocument::Rewrite(SavedFile& saved, const SaveOptions& options,
                                        JobStages& stages) {
  DataStore store(limits::kMaxHeldResults);
  pdf::DocumentRewriter rewriter(*document_);
  pdf::RewriteOptions rewriting = {
      .security = options.security, .packing = pdf::Packing::kDense, .keeps_id = true};
  KeepPages(rewriter);
  const bool can_be_proven =
      options.claim_proof != nullptr && options.security == nullptr && saved.size() >= 0;
  const CarriedClaim claim = CarryPdfAClaim(*document_, rewriter, rewriting, can_be_proven);
  Reduce(options.settings, claim.was_there, store, rewriter, stages);
  report_.Dropped(ReportedKind::kSignature, "does not hold in another file",
                  DropSignatures(*document_, rewriter));
  stages.Begin(kRecoded);
  RecodeStreams(store, rewriter);
  stages.Begin(kWritten);
  ToldSink sink(saved.sink(), DiskSource(file_).Size());
  rewriter.Write(sink, rewriting);
  ReportDamage();
  return claim;
}

// What is left out goes first, so that no work is done on it. Fonts are cut by all that shows their
// glyphs, which merging could hide; images are coded once for all that are equal.
void OptimizedDocument::Reduce(const OptimizerSettings& settings, bool claims_pdfa,
                               DataStore& store, pdf::DocumentRewriter& rewriter,
                               JobStages& stages) {
  stages.Begin(kSurveyed);
  ReportStripped(StripEntries(*document_, pages_, settings.strip, rewriter));
  if (settings.optimizes_resources) {
    RemoveUnusedResources(*document_, pages_, rewriter);
  }
  FontPass fonts(*document_);
  const DocumentSurvey survey(*document_, pages_, &fonts);
  stages.Begin(kFontsCut);
  fonts.Run(settings, claims_pdfa, rewriter);
  report_.fonts = fonts.report();
  if (settings.removes_redundant_objects) {
    MergeDuplicateObjects(*document_, pages_, {}, rewriter);
  }
  stages.Begin(kImagesCoded);
  images_.emplace(*document_, survey, settings);
  WorkPool pool;  // ends before the images, also where they cannot be read
  images_->Run(rewriter, pool, store);
  images_->Apply(rewriter);
  report_.images = images_->Figures();
  for (const std::uint32_t number : survey.ContentsWithImages()) {
    RecodeInlineImages(*document_, rewriter.Successor(number), images_->goals(), store, rewriter);
  }
}

void OptimizedDocument::ReportStripped(const StrippedCounts& stripped) {
  constexpr const char* kReason = "left out at this level";
  report_.Dropped(ReportedKind::kStructureElement, kReason, stripped.structure_elements);
  report_.Dropped(ReportedKind::kArticleThread, kReason, stripped.beads);
  report_.Dropped(ReportedKind::kThumbnail, kReason, stripped.thumbnails);
}

// Streams that stay what they are, in fewer bytes.
void OptimizedDocument::RecodeStreams(DataStore& store, pdf::DocumentRewriter& rewriter) {
  const std::vector<std::uint32_t> numbers = StreamsToRecode(*document_, {}, rewriter);
  std::vector<std::optional<WaitingStream>> recoded(numbers.size());
  WorkPool pool;  // ends before what its work refers to
  JobSteps steps(static_cast<std::int64_t>(numbers.size()));
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    steps.Done();
    if (std::optional<EncodedStream> encoded = ReadEncoded(*document_, numbers[i])) {
      const std::uint64_t held = kDecodedPerByte * encoded->data.size();
      pool.Add(held, [encoded = *std::move(encoded), &store, &waiting = recoded[i]] {
        if (std::optional<RecodedStream> stream = Recode(encoded)) {
          waiting = {std::move(stream->coding), store.Keep(std::move(stream->data))};
        }
      });
    }
  }
  pool.Finish();
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (recoded[i]) {
      PutRecoded(*document_, numbers[i], recoded[i]->coding, recoded[i]->data, rewriter);
    }
  }
}

// Where the page tree has been put together, the tree of the file is not that of the document.
void OptimizedDocument::KeepPages(pdf::DocumentRewriter& rewriter) {
  if (is_damaged()) {
    rewriter.SetPages(pages_);
  }
}

void OptimizedDocument::ReportClaim(const CarriedClaim& claim, ClaimFate fate) {
  report_.Dropped(ReportedKind::kXmpPacket, "cannot be read", claim.was_packet_lost ? 1 : 0);
  if (claim.was_there && fate != ClaimFate::kKept) {
    report_.Dropped(ReportedKind::kPdfAClaim, ReasonOf(fate), 1);
  }
}

void OptimizedDocument::ReportDamage() {
  for (const pdf::Finding& finding : document_->findings().kept()) {
    if (pdf::IsLoss(finding.code)) {
      report_.Dropped(ReportedKind::kDamage, pdf::TextOf(finding.code));
    } else {
      report_.Kept(ReportedKind::kDamage, pdf::TextOf(finding.code));
    }
  }
}

// Encryption takes space, and what takes it off or puts damage right is wanted at any size.
bool OptimizedDocument::MayGrow(const SaveOptions& options) {
  return document_->is_encrypted() || options.security != nullptr || is_damaged();
}

}  // namespace TarnixTools::engines::optimizer
