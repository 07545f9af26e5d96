#include "engines/toolbox/TargetDocument.h"

#include <algorithm>

#include "engines/support/metadata/PdfAClaim.h"
#include "engines/toolbox/SourceDocument.h"
#include "engines/toolbox/copy/pages/PageCopier.h"
#include "engines/toolbox/copy/report/DamageReport.h"
#include "foundation/Utf8.h"
#include "pdf/Error.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

namespace {

std::optional<pdf::Security> MakeSecurity(const TPdfEncryption* encryption) {
  if (encryption == nullptr) {
    return std::nullopt;
  }
  return pdf::Security::Create(WideToUtf8(encryption->user_password),
                               WideToUtf8(encryption->owner_password),
                               static_cast<std::int32_t>(encryption->permissions));
}

}  // namespace

TargetDocument::TargetDocument(const TPdfStream& stream, const TPdfEncryption* encryption)
    : sink_(stream),
      security_(MakeSecurity(encryption)),
      writer_(sink_, security_ ? &*security_ : nullptr) {
  parts_.content = &content_;
}

TargetDocument::~TargetDocument() {
  for (const Requests& requests : requests_) {
    requests.source->RemoveWaiting(*this);
  }
}

void TargetDocument::AppendPage(SourceDocument& source, std::uint32_t page_index, int rotation,
                                std::int32_t options, const PageContent* painted) {
  const auto position = static_cast<std::uint32_t>(pages_.page_count());
  const pdf::PageTreeWriter::Leaf leaf = pages_.AddPage();
  std::shared_ptr<PageContent> waiting;
  if (painted != nullptr && !painted->is_empty()) {
    waiting = std::make_shared<PageContent>(*painted);
    waiting->Pack();
  }
  RequestsOf(source).pages.push_back(
      {page_index, leaf.page, leaf.parent, position, rotation, options, std::move(waiting)});
}

void TargetDocument::KeepMetadata(SourceDocument& source) {
  const std::shared_ptr<const KeptMetadata>& kept = source.parts().metadata().Kept();
  info_ = kept->info;
  parts_.metadata.Keep(kept);
}

// Readers of PDF/A-1 read neither object streams nor cross-reference streams (ISO 19005-1, 6.1.4).
void TargetDocument::KeepClaim(SourceDocument& source) {
  TargetClaim& claim = parts_.metadata.claim();
  claim.Add(source.parts().metadata().ClaimedLevel(), security_.has_value());
  const std::optional<PdfALevel> level = PdfALevelOf(claim.level());
  if (level && level->part == 1) {
    writer_.SetFormat({.layout = pdf::FileLayout::kTable, .version = "1.4"});
  }
}

TargetDocument::Requests& TargetDocument::RequestsOf(SourceDocument& source) {
  const auto found = std::find_if(requests_.rbegin(), requests_.rend(),
                                  [&](const Requests& r) { return r.source == &source; });
  if (found != requests_.rend()) {
    return *found;
  }
  source.AddWaiting(*this);
  return requests_.emplace_back(Requests{&source, {}, {}});
}

void TargetDocument::WritePagesOf(SourceDocument& source) noexcept {
  const auto found = std::find_if(requests_.begin(), requests_.end(),
                                  [&](const Requests& r) { return r.source == &source; });
  if (found == requests_.end()) {
    return;
  }
  const std::vector<PageRequest> requests = std::move(found->pages);
  parts_.outline.SetHeading(std::move(found->heading));
  requests_.erase(found);
  source.RemoveWaiting(*this);
  if (failure_) {
    return;
  }
  try {
    PageCopier(source, writer_, parts_, requests).Write();
    ReportDamage(source, parts_.report);
  } catch (...) {
    failure_ = std::current_exception();
  }
}

void TargetDocument::Finish() {
  while (!requests_.empty()) {
    WritePagesOf(*requests_.front().source);
  }
  if (failure_) {
    std::rethrow_exception(failure_);
  }
  content_.Finish();
  const std::uint32_t info = parts_.metadata.WriteInfo(writer_, info_);
  writer_.Finish(WriteCatalog(), info);
  parts_.metadata.claim().Settle(parts_.report);
}

void TargetDocument::TellReport() const {
  if (report_callback_ == nullptr) {
    return;
  }
  for (const CopyEntry& entry : parts_.report.entries()) {
    const TPdfReportEntry told = {entry.kind, entry.outcome, entry.count, entry.page,
                                  entry.reason.c_str()};
    report_callback_(report_context_, &told);
  }
}

std::uint32_t TargetDocument::WriteCatalog() {
  const std::uint32_t catalog = writer_.Reserve();
  std::string text = "<</Type/Catalog/Pages";
  pdf::AppendReference(text, pages_.Finish());
  std::string names;
  parts_.destinations.Finish(writer_, text, names);
  parts_.outline.Finish(writer_, text);
  parts_.page_labels.Finish(writer_, text);
  parts_.form_fields.Finish(writer_, text);
  parts_.layers.Finish(writer_, text);
  parts_.structure.Finish(writer_, text);
  parts_.language.Finish(writer_, text, parts_.report);
  parts_.settings.Finish(writer_, text, names);
  parts_.metadata.WritePacket(writer_, info_, text, parts_.report);
  if (!names.empty()) {
    text += "/Names<<" + names + ">>";
  }
  writer_.WriteObject(catalog, text + ">>");
  return catalog;
}

}  // namespace TarnixTools::engines::toolbox
