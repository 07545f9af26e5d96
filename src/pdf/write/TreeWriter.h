// Writes name trees and number trees (ISO 32000-2, 7.9.6 and 7.9.7).
//
//   TreeWriter tree(writer, "Nums");
//   tree.Add("0", "<</S/r>>");
//   catalog += "/PageLabels" + tree.Finish();
#ifndef TARNIX_PDF_WRITE_TREEWRITER_H_
#define TARNIX_PDF_WRITE_TREEWRITER_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pdf/write/FileWriter.h"
#include "pdf/write/TreeWriter.h"

namespace TarnixTools::pdf {

// A balanced tree, written while its pairs come.
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

#endif  // TARNIX_PDF_WRITE_TREEWRITER_H_
