#include "engines/optimizer/structure/ReachedObjects.h"

#include <vector>

#include "pdf/write/NumberMap.h"

namespace TarnixTools::engines::optimizer {

void ForEachReached(const pdf::Document& document, pdf::DocumentRewriter& rewriter,
                    const VisitReached& visit) {
  std::vector<std::uint32_t> waiting;
  std::vector<std::uint32_t> found;
  pdf::NumberMap seen;
  pdf::Arena arena;
  const auto take = [&](std::uint32_t number) {
    seen.Set(number, 1);
    arena.Reset();
    const pdf::Object value = rewriter.Load(number, arena);
    visit(number, value);
    found.clear();
    pdf::CollectReferences(value, found);
    waiting.insert(waiting.end(), found.rbegin(), found.rend());
  };
  pdf::CollectReferences(document.trailer(), waiting);
  take(rewriter.catalog());
  while (!waiting.empty()) {
    const std::uint32_t number = rewriter.Successor(waiting.back());
    waiting.pop_back();
    const bool is_there = pdf::IsAddedObject(number) || document.Exists(number);
    if (is_there && seen.Get(number) == 0 && !document.IsCatalogObject(number)) {
      take(number);
    }
  }
}

}  // namespace TarnixTools::engines::optimizer
