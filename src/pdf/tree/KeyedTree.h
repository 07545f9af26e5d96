// Name trees and number trees: sorted pairs of key and value, spread over nodes (ISO 32000-2, 7.9.6
// and 7.9.7).
//
//   ForEachInTree(document, names.Get("Dests"), "Names",
//                 [&](const Object& key, const Object& value) { ... });
//
//   TreeWriter tree(writer, "Nums");
//   tree.Add("0", "<</S/r>>");
//   catalog += "/PageLabels" + tree.Finish();
#ifndef TARNIX_PDF_TREE_KEYEDTREE_H_
#define TARNIX_PDF_TREE_KEYEDTREE_H_

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "pdf/file/Document.h"
#include "pdf/write/FileWriter.h"

namespace TarnixTools::pdf {

// Calls `visit` for every pair of the tree, in its order where that is sound. leaf_key is "Names"
// for a name tree, whose keys are strings, or "Nums" for a number tree, whose keys are integers;
// pairs with another key are passed over, and every node is visited once, whatever leads to it.
// /Limits do not matter. key and value are valid during the call; the value is as it stands in the
// tree, possibly a reference.
void ForEachInTree(Document& document, const Object& root, std::string_view leaf_key,
                   const std::function<void(const Object& key, const Object& value)>& visit);

// Writes such a tree, balanced, while its pairs come.
class TreeWriter {
 public:
  // leaf_key: "Names" or "Nums". The writer outlives this.
  TreeWriter(FileWriter& writer, std::string leaf_key)
      : writer_(&writer), leaf_key_(std::move(leaf_key)) {}

  // The next pair, as PDF text; keys in the order of the tree.
  void Add(std::string_view key, std::string_view value);

  // Writes what is left and returns the root: the text of a dictionary or of a reference to one.
  std::string Finish();

 private:
  // Kids or pairs of a node to come.
  struct Level {
    std::string text;
    std::size_t count = 0;
    std::string first_key;
    std::string last_key;
  };

  void AddTo(std::size_t level, std::string_view first_key, std::string_view last_key,
             std::string_view text);
  void WriteNode(std::size_t level);

  FileWriter* writer_;
  std::string leaf_key_;
  std::vector<Level> levels_;  // from the leaves up
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_TREE_KEYEDTREE_H_
