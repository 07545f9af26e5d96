#include "engines/toolbox/content/PageContent.h"

#include <utility>

#include "pdf/Limits.h"
#include "pdf/filters/Filters.h"

namespace TarnixTools::engines::toolbox {

namespace {

constexpr std::size_t kLong = std::size_t{4} << 10;
constexpr int kFastest = 1;

}  // namespace

void PageContent::Pack() {
  const std::size_t size = std::max(under.size(), over.size());
  if (is_packed || size < kLong || size > pdf::limits::kMaxHeldStream) {
    return;
  }
  for (std::string* part : {&under, &over}) {
    if (!part->empty()) {
      std::string packed;
      pdf::DeflateTo(packed, *part, kFastest);
      packed.shrink_to_fit();
      *part = std::move(packed);
    }
  }
  is_packed = true;
}

std::string PageContent::Plain(const std::string& part) const {
  if (!is_packed || part.empty()) {
    return part;
  }
  return pdf::Decode({{pdf::FilterKind::kFlate, {}}}, part, pdf::limits::kMaxHeldStream).data;
}

}  // namespace TarnixTools::engines::toolbox
