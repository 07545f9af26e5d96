#include "engines/pdfa/checks/ActualTexts.h"

#include "engines/pdfa/Limits.h"
#include "pdf/tree/KeyedTree.h"

namespace TarnixTools::engines::pdfa {

using pdf::Object;

bool ActualTexts::Has(std::int64_t parents, std::int64_t id) {
  if (!elements_) {
    ReadParents();
  }
  const auto found = elements_->find(parents);
  return found != elements_->end() && id >= 0 &&
         static_cast<std::uint64_t>(id) < found->second.size() &&
         HasElement(found->second[static_cast<std::size_t>(id)]);
}

void ActualTexts::ReadParents() {
  elements_.emplace();
  pdf::Arena arena;
  const Object root = document_->Resolve(document_->Catalog(arena).Get("StructTreeRoot"), arena);
  std::size_t left = limits::kMaxStructureParents;
  pdf::ForEachInTree(*document_, root.Get("ParentTree"), "Nums",
                     [&](const Object& key, const Object& value) {
                       pdf::Arena of_value;
                       const auto items = document_->Resolve(value, of_value).Items();
                       if (items.size() > left) {
                         return;
                       }
                       left -= items.size();
                       std::vector<std::uint32_t>& numbers = (*elements_)[key.IntegerOr(-1)];
                       for (const Object& item : items) {
                         numbers.push_back(item.AsReference().number);
                       }
                     });
}

// What is found for an element holds for all that the way to it led through.
bool ActualTexts::HasElement(std::uint32_t element) {
  std::vector<std::uint32_t> way;
  bool has_text = false;
  while (element != 0 && !has_text && way.size() < limits::kMaxElementDepth) {
    const auto known = known_.find(element);
    if (known != known_.end()) {
      has_text = known->second;
      break;
    }
    way.push_back(element);
    pdf::Arena arena;
    const Object dictionary = document_->Load({element, 0}, arena);
    has_text = dictionary.Has("ActualText");
    element = dictionary.Get("P").AsReference().number;
  }
  for (const std::uint32_t number : way) {
    known_.emplace(number, has_text);
  }
  return has_text;
}

}  // namespace TarnixTools::engines::pdfa
