#include "pdf/content/UnshownContent.h"

#include "pdf/content/ResourceGraph.h"

namespace TarnixTools::pdf {

void WalkUnshown(Document& document, const PageTree& pages, ContentWalker& walker,
                 const std::unordered_set<std::uint32_t>& entered,
                 const std::function<void(std::size_t)>& begin_page) {
  ResourceGraph graph(document);
  for (std::size_t i = 0; i < pages.pages().size(); ++i) {
    if (begin_page) {
      begin_page(i);
    }
    graph.AddPage(pages, i);
    while (const ResourceNode* node = graph.Next()) {
      if (HasContent(node->kind) && node->kind != ResourceKind::kPage && node->number != 0 &&
          !entered.contains(node->number)) {
        walker.BeginContent({.kind = node->kind, .number = node->number}, node->scope);
        walker.Run();
      }
    }
  }
}

}  // namespace TarnixTools::pdf
