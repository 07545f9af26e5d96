#include "engines/toolbox/copy/CopyContext.h"

namespace TarnixTools::engines::toolbox {

CopyContext::CopyContext(SourceDocument& source, pdf::FileWriter& target, TargetParts& parts,
                         const std::vector<PageRequest>& requests)
    : source_(&source),
      writer_(&target),
      parts_(&parts),
      requests_(&requests),
      objects_(source.document(), target, source.numbers(),
               [&source](std::uint32_t number) { return source.IsBarred(number); }) {
  const auto& pages = source.pages().pages();
  for (const PageRequest& request : requests) {
    by_index_.emplace(request.page_index, &request);
    const std::uint32_t number = pages[request.page_index].number;
    if (number != 0 && by_number_.emplace(number, &request).second) {
      objects_.Assign(number, request.target_number);
    }
  }
  is_whole_ = by_index_.size() == pages.size();
}

CopyContext::~CopyContext() {
  source_->numbers().Clear();
}

const PageRequest* CopyContext::CopyOfPage(std::uint32_t page_number) const {
  const auto found = by_number_.find(page_number);
  return found == by_number_.end() ? nullptr : found->second;
}

const PageRequest* CopyContext::CopyOfPageIndex(std::uint32_t page_index) const {
  const auto found = by_index_.find(page_index);
  return found == by_index_.end() ? nullptr : found->second;
}

}  // namespace TarnixTools::engines::toolbox
