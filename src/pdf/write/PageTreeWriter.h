// Writes a balanced page tree (ISO 32000-2, 7.7.3) for pages that come one after the other.
//
//   PageTreeWriter tree(writer);
//   const PageTreeWriter::Leaf leaf = tree.AddPage();
//   writer.WriteObject(leaf.page, "<</Type/Page/Parent ...");   // leaf.parent
//   const std::uint32_t root = tree.Finish();                    // for the catalog
#ifndef TARNIX_PDF_WRITE_PAGETREEWRITER_H_
#define TARNIX_PDF_WRITE_PAGETREEWRITER_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "pdf/write/FileWriter.h"

namespace TarnixTools::pdf {

class PageTreeWriter {
 public:
  // The writer outlives this.
  explicit PageTreeWriter(FileWriter& writer) : writer_(&writer) {}

  struct Leaf {
    std::uint32_t page;    // number for the page
    std::uint32_t parent;  // for its /Parent
  };

  // Takes a place at the end. The caller writes the page, at any time.
  Leaf AddPage();

  std::size_t page_count() const { return pages_.size(); }

  // Writes all nodes and returns the root's number.
  std::uint32_t Finish();

 private:
  std::uint32_t LeafFor(std::size_t position);
  void WriteNode(std::uint32_t number, std::uint32_t parent, const std::uint32_t* kids,
                 std::size_t kid_count, std::size_t page_count);

  FileWriter* writer_;
  std::vector<std::uint32_t> pages_;   // in page order
  std::vector<std::uint32_t> leaves_;  // lowest nodes
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_WRITE_PAGETREEWRITER_H_
