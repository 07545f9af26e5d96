#include "engines/toolbox/SourceDocument.h"

#include <algorithm>
#include <utility>

#include "engines/toolbox/StreamBridge.h"
#include "engines/toolbox/TargetDocument.h"

namespace TarnixTools::engines::toolbox {

SourceDocument::SourceDocument(const TPdfStream& stream, std::string_view password)
    : document_(pdf::Document::Open(std::make_unique<StreamSource>(stream), password)) {}

const pdf::PageTree& SourceDocument::pages() {
  if (pages_ == nullptr) {
    pages_ = std::make_unique<pdf::PageTree>(*document_);
    BarDocumentTrees();
  }
  return *pages_;
}

pdf::PageGeometry SourceDocument::GeometryOf(std::uint32_t page_index) {
  return pdf::ReadPageGeometry(*document_, pages(), pages().pages()[page_index]);
}

void SourceDocument::BarDocumentTrees() {
  pdf::Arena arena;
  const pdf::Object catalog = document_->Catalog(arena);
  for (const char* key :
       {"AcroForm", "Dests", "Names", "OCProperties", "Outlines", "StructTreeRoot", "Threads"}) {
    if (const pdf::Reference tree = catalog.Get(key).AsReference()) {
      Bar(tree.number);
    }
  }
}

void SourceDocument::Bar(std::uint32_t number) {
  if (number >= barred_.size()) {
    barred_.resize(std::max<std::size_t>(number + 1, document_->object_limit()));
  }
  barred_[number] = true;
}

bool SourceDocument::IsBarred(std::uint32_t number) {
  return pages().IsPage(number) || pages().IsNode(number) || document_->IsCatalogObject(number) ||
         (number < barred_.size() && barred_[number]) || parts_.annotations().Contains(number) ||
         parts_.form_fields().Contains(number);
}

std::span<const pdf::Finding> SourceDocument::TakeFindings() {
  const std::vector<pdf::Finding>& found = document_->findings().kept();
  const std::size_t first = std::exchange(taken_findings_, found.size());
  return std::span(found).subspan(first);
}

void SourceDocument::AddWaiting(TargetDocument& target) {
  if (std::find(waiting_.begin(), waiting_.end(), &target) == waiting_.end()) {
    waiting_.push_back(&target);
  }
}

void SourceDocument::RemoveWaiting(TargetDocument& target) {
  std::erase(waiting_, &target);
}

// Takes no memory: a source that is not served leaves its targets nothing to go back to.
void SourceDocument::ServeWaiting() noexcept {
  const auto targets = std::exchange(waiting_, {});
  for (TargetDocument* target : targets) {
    target->WritePagesOf(*this);
  }
}

}  // namespace TarnixTools::engines::toolbox
