// Finds the blocks of pages by their layout, in the order in which they are read.
//
//   BlockFinder finder(document, pages);
//   const PlacedBlocks page = finder.Find(page_index);
//   const auto block = page.At(begin, end);   // what the operators between two places paint
#ifndef TARNIX_ENGINES_PDFA_CONVERT_TAGS_BLOCKFINDER_H_
#define TARNIX_ENGINES_PDFA_CONVERT_TAGS_BLOCKFINDER_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "engines/pdfa/convert/tags/PageMarks.h"
#include "engines/support/pages/PageReader.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/tree/VisibleLayers.h"

namespace TarnixTools::engines::pdfa {

class PlacedBlocks {
 public:
  // An operator of the content that paints something of a block.
  struct Claim {
    std::uint32_t place = 0;
    std::uint32_t block = 0;
  };

  PlacedBlocks() = default;
  // Of several claims to one place the first one counts.
  PlacedBlocks(std::vector<PageBlock> blocks, std::vector<Claim> claims);

  // Index of the block whose operator comes first in the range; nothing where none has one.
  std::optional<std::uint32_t> At(std::size_t begin, std::size_t end) const;

  std::vector<PageBlock> TakeBlocks() { return std::move(blocks_); }

 private:
  std::vector<PageBlock> blocks_;
  std::vector<Claim> claims_;  // by place
};

class BlockFinder {
 public:
  // Both outlive this. Throws pdf::Error for a document that cannot be read any more.
  BlockFinder(pdf::Document& document, const pdf::PageTree& pages);

  BlockFinder(const BlockFinder&) = delete;
  BlockFinder& operator=(const BlockFinder&) = delete;

  // Throws pdf::Error for a document that cannot be read any more.
  PlacedBlocks Find(std::size_t page_index);

  const pdf::VisibleLayers& layers() const { return layers_; }

 private:
  pdf::Document* document_;
  const pdf::PageTree* pages_;
  pdf::VisibleLayers layers_;
  PageReader reader_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_TAGS_BLOCKFINDER_H_
