#include "engines/office/layout/document/Bookmarks.h"

#include <map>
#include <string>
#include <vector>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kSlack = 6;  // points that a target may be below the upper edge of its paragraph

using ParagraphsByPage = std::map<std::uint32_t, std::vector<Paragraph*>>;

// The first paragraph that begins at the target or below it, or the last one of the page.
Paragraph* ParagraphAt(const std::vector<Paragraph*>& page, double y) {
  Paragraph* best = nullptr;
  Paragraph* last = nullptr;
  for (Paragraph* paragraph : page) {
    const double upper = UpperEdge(paragraph->box);
    if (upper >= y - kSlack && (best == nullptr || upper < UpperEdge(best->box))) {
      best = paragraph;
    }
    last = paragraph;
  }
  return best != nullptr ? best : last;
}

std::string BookmarkAt(const std::vector<Paragraph*>& page, double y, std::uint32_t& count) {
  Paragraph* paragraph = ParagraphAt(page, y);
  if (paragraph == nullptr) {
    return {};
  }
  if (paragraph->bookmark.empty()) {
    paragraph->bookmark = "target" + std::to_string(++count);
  }
  return paragraph->bookmark;
}

}  // namespace

void SetBookmarks(OfficeDocument& document) {
  ParagraphsByPage pages;
  for (OfficePage& page : document.pages) {
    pages[page.layout.number] = FlowParagraphs(page.layout);
  }
  std::uint32_t count = 0;
  std::map<std::pair<std::int32_t, double>, std::string> known;
  for (OfficePage& page : document.pages) {
    for (LinkTarget& link : page.layout.links) {
      const auto target =
          link.page < 0 ? pages.end() : pages.find(static_cast<std::uint32_t>(link.page));
      if (target == pages.end()) {
        continue;
      }
      const auto [entry, is_new] = known.try_emplace({link.page, link.y});
      if (is_new) {
        entry->second = BookmarkAt(target->second, link.y, count);
      }
      link.bookmark = entry->second;
    }
  }
}

}  // namespace TarnixTools::engines::office
