#include "pdf/tree/NameTree.h"

#include "pdf/tree/KeyedTree.h"

namespace TarnixTools::pdf {

void ReadNameTree(Document& document, const Object& root, const TakeNamed& take) {
  ForEachInTree(document, root, "Names",
                [&](const Object& key, const Object& value) { take(key.Text(), value); });
}

}  // namespace TarnixTools::pdf
