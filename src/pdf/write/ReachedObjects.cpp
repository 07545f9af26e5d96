#include "pdf/write/ReachedObjects.h"

#include <vector>

#include "pdf/write/NumberMap.h"

namespace TarnixTools::pdf {

void ForEachReached(const Document& document, DocumentRewriter& rewriter,
                    const VisitReached& visit) {
  std::vector<std::uint32_t> waiting;
  std::vector<std::uint32_t> found;
  NumberMap seen;
  Arena arena;
  const auto take = [&](std::uint32_t number) {
    seen.Set(number, 1);
    arena.Reset();
    const Object value = rewriter.Load(number, arena);
    visit(number, value);
    found.clear();
    CollectReferences(value, found);
    waiting.insert(waiting.end(), found.rbegin(), found.rend());
  };
  CollectReferences(document.trailer(), waiting);
  take(rewriter.catalog());
  while (!waiting.empty()) {
    const std::uint32_t number = rewriter.Successor(waiting.back());
    waiting.pop_back();
    const bool is_there = IsAddedObject(number) || document.Exists(number);
    if (is_there && seen.Get(number) == 0 && !document.IsCatalogObject(number)) {
      take(number);
    }
  }
}

}  // namespace TarnixTools::pdf
