#include "engines/toolbox/copy/BoundedReader.h"

#include <algorithm>
#include <vector>

namespace TarnixTools::engines::toolbox {

using pdf::Object;

namespace {

// About the memory that a value takes, with all that is in it.
std::size_t WeightOf(const Object& value) {
  std::size_t weight = 0;
  std::vector<Object> waiting = {value};
  while (!waiting.empty()) {
    const Object next = waiting.back();
    waiting.pop_back();
    weight += sizeof(Object) + next.Text().size();
    waiting.insert(waiting.end(), next.Items().begin(), next.Items().end());
    for (const pdf::DictionaryEntry& entry : next.Entries()) {
      waiting.push_back(entry.value);
    }
  }
  return weight;
}

}  // namespace

Object BoundedReader::Look(const Object& value, pdf::Arena& arena) {
  if (!value.IsReference()) {
    return value;
  }
  if (budget_ == 0) {
    return {};
  }
  const Object found = document_->Resolve(value, arena);
  budget_ -= std::min(budget_, WeightOf(found));
  return found;
}

}  // namespace TarnixTools::engines::toolbox
