#include "pdf/file/BlockReader.h"

#include "pdf/Error.h"

namespace TarnixTools::pdf {

BlockReader::BlockReader(std::unique_ptr<ByteSource> source)
    : source_(std::move(source)),
      size_(source_->Size()),
      slots_((size_ + kBlockSize - 1) / kBlockSize, 0) {}

std::string_view BlockReader::Window(std::uint64_t offset, std::size_t wanted) {
  if (offset >= size_) {
    return {};
  }
  const std::uint64_t available = size_ - offset;
  const std::size_t needed = static_cast<std::size_t>(std::min<std::uint64_t>(wanted, available));
  const std::size_t start = static_cast<std::size_t>(offset % kBlockSize);
  const Block& block = Fetch(offset / kBlockSize);
  if (block.size - start >= needed) {
    return {block.bytes.get() + start, block.size - start};
  }
  if (needed > kBlockSize * kMaxBlocks / 4) {  // large spans do not push everything else out
    assembled_.resize(needed);
    if (Read(offset, assembled_.data(), needed) != needed) {
      throw Error(ErrorCode::kSourceChanged, "the file became shorter while it was read");
    }
    return assembled_;
  }
  assembled_.assign(block.bytes.get() + start, block.size - start);
  while (assembled_.size() < needed) {
    const Block& next = Fetch((offset + assembled_.size()) / kBlockSize);
    assembled_.append(next.bytes.get(), std::min(next.size, needed - assembled_.size()));
  }
  return assembled_;
}

std::size_t BlockReader::Read(std::uint64_t offset, char* buffer, std::size_t size) {
  return source_->ReadAt(offset, buffer, size);
}

std::string_view BlockReader::ReadPiece(std::uint64_t offset, std::uint64_t wanted) {
  if (piece_ == nullptr) {
    piece_ = std::make_unique_for_overwrite<char[]>(kPieceSize);
  }
  const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(wanted, kPieceSize));
  return {piece_.get(), Read(offset, piece_.get(), size)};
}

const BlockReader::Block& BlockReader::Fetch(std::uint64_t index) {
  if (const std::uint8_t slot = slots_[index]; slot != 0) {
    Block& block = blocks_[slot - 1U];
    block.last_use = ++clock_;
    return block;
  }
  Block& block = BlockToFill();
  const std::uint64_t offset = index * kBlockSize;
  const std::size_t expected =
      static_cast<std::size_t>(std::min<std::uint64_t>(kBlockSize, size_ - offset));
  block.size = 0;
  if (block.bytes == nullptr) {
    block.bytes =
        std::make_unique_for_overwrite<char[]>(std::min<std::uint64_t>(kBlockSize, size_));
  }
  if (source_->ReadAt(offset, block.bytes.get(), expected) != expected) {
    throw Error(ErrorCode::kSourceChanged, "the file became shorter while it was read");
  }
  block.size = expected;
  block.index = index;
  block.last_use = ++clock_;
  slots_[index] = static_cast<std::uint8_t>(&block - blocks_.data() + 1);
  return block;
}

// A new block while there are few, else the one that was not used for longest.
BlockReader::Block& BlockReader::BlockToFill() {
  if (blocks_.size() < kMaxBlocks) {
    return blocks_.emplace_back();
  }
  Block* oldest = &blocks_.front();
  for (Block& block : blocks_) {
    if (block.last_use < oldest->last_use) {
      oldest = &block;
    }
  }
  if (oldest->size > 0) {
    slots_[oldest->index] = 0;
  }
  return *oldest;
}

}  // namespace TarnixTools::pdf
