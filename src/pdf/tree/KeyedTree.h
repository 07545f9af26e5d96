// Name trees and number trees: sorted pairs of key and value, spread over nodes (ISO 32000-2, 7.9.6
// and 7.9.7).
//
//   ForEachInTree(document, names.Get("Dests"), "Names",
//                 [&](const Object& key, const Object& value) { ... });
#ifndef TARNIX_PDF_TREE_KEYEDTREE_H_
#define TARNIX_PDF_TREE_KEYEDTREE_H_

#include <cstddef>
#include <functional>
#include <string_view>

#include "pdf/file/Document.h"

namespace TarnixTools::pdf {

// What was passed over in a tree.
struct TreeDamage {
  std::size_t nodes = 0;    // that are no dictionaries
  std::size_t loops = 0;    // nodes and lists that were met before
  std::size_t entries = 0;  // that are no keys where keys should stand, and keys without values
};

// Calls `visit` for every pair of the tree, in its order where that is sound. leaf_key is "Names"
// for a name tree, whose keys are strings, or "Nums" for a number tree, whose keys are integers;
// pairs with another key are passed over, and every node is visited once, whatever leads to it.
// /Limits do not matter. key and value are valid during the call; the value is as it stands in the
// tree, possibly a reference.
TreeDamage ForEachInTree(Document& document, const Object& root, std::string_view leaf_key,
                         const std::function<void(const Object& key, const Object& value)>& visit);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_TREE_KEYEDTREE_H_
