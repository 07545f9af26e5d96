#include "engines/office/pages/OutlineReader.h"

#include <unordered_set>

#include "engines/office/Limits.h"
#include "pdf/tree/TextString.h"

namespace TarnixTools::engines::office {

using pdf::Arena;
using pdf::Object;

// Goes by /First and /Next alone: each item is taken once, wherever it is met first.
std::vector<OutlineEntry> ReadOutline(pdf::Document& document, Destinations& destinations) {
  struct Step {
    std::uint32_t number;
    std::uint32_t level;
  };

  Arena arena;
  const Object outlines = document.Resolve(document.Catalog(arena).Get("Outlines"), arena);
  std::vector<OutlineEntry> entries;
  std::unordered_set<std::uint32_t> visited;
  std::vector<Step> steps = {{outlines.Get("First").AsReference().number, 0}};
  Arena scratch;
  while (!steps.empty() && visited.size() < limits::kMaxOutlineItems) {
    const Step step = steps.back();
    steps.pop_back();
    if (step.number == 0 || !visited.insert(step.number).second) {
      continue;
    }
    scratch.Reset();
    const Object item = document.Load({step.number, 0}, scratch);
    if (!item.IsDictionary()) {
      continue;
    }
    if (const auto place = destinations.PlaceOfEntry(item)) {
      const std::string_view title = document.Resolve(item.Get("Title"), scratch).Text();
      entries.push_back({pdf::TextStringToUtf8(title.substr(0, limits::kMaxEntryText)), step.level,
                         place->page, place->y});
    }
    steps.push_back({item.Get("Next").AsReference().number, step.level});
    steps.push_back({item.Get("First").AsReference().number, step.level + 1});
  }
  return entries;
}

}  // namespace TarnixTools::engines::office
