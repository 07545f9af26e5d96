// A small cache of blocks over a byte source, and views into it.
#ifndef TARNIX_PDF_FILE_BLOCKREADER_H_
#define TARNIX_PDF_FILE_BLOCKREADER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "pdf/file/ByteSource.h"

namespace TarnixTools::pdf {

class BlockReader {
 public:
  explicit BlockReader(std::unique_ptr<ByteSource> source);

  std::uint64_t size() const { return size_; }

  // Bytes from `offset` on: at least `wanted` of them, or all up to the end of the source when it
  // has fewer; often more, where they are at hand. Empty at or beyond the end. Valid until the next
  // call of any member.
  std::string_view Window(std::uint64_t offset, std::size_t wanted);

  // Reads past the cache, for data that is used once.
  std::size_t Read(std::uint64_t offset, char* buffer, std::size_t size);

  // Reads past the cache in one large piece: up to `wanted` bytes from `offset` on, fewer when
  // there are many, none at the end. Valid until the next call of ReadPiece.
  std::string_view ReadPiece(std::uint64_t offset, std::uint64_t wanted);

 private:
  static constexpr std::size_t kBlockSize = std::size_t{64} << 10;
  static constexpr std::size_t kMaxBlocks = 48;
  static constexpr std::size_t kPieceSize = std::size_t{256} << 10;

  struct Block {
    std::uint64_t index = 0;
    std::uint64_t last_use = 0;
    std::size_t size = 0;
    std::unique_ptr<char[]> bytes;
  };

  const Block& Fetch(std::uint64_t index);
  Block& BlockToFill();

  std::unique_ptr<ByteSource> source_;
  std::uint64_t size_;
  std::uint64_t clock_ = 0;
  std::vector<Block> blocks_;
  std::vector<std::uint8_t> slots_;  // by block index: place in blocks_ plus one, 0 for none
  std::string assembled_;
  std::unique_ptr<char[]> piece_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILE_BLOCKREADER_H_
