// Reads numbers and bytes anywhere in a byte source, through a window of what was read last.
// Nothing beyond the end is an error: what is not there reads as zeros, and Has() tells.
#ifndef TARNIX_ENGINES_SUPPORT_FILES_BYTEREADER_H_
#define TARNIX_ENGINES_SUPPORT_FILES_BYTEREADER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "pdf/file/ByteSource.h"

namespace TarnixTools::engines {

enum class ByteOrder : std::uint8_t { kBig, kLittle };

class ByteReader {
 public:
  // The source outlives the reader.
  explicit ByteReader(pdf::ByteSource& source) : source_(&source), size_(source.Size()) {}

  std::uint64_t size() const { return size_; }

  pdf::ByteSource& source() const { return *source_; }

  bool Has(std::uint64_t offset, std::uint64_t count) const {
    return offset <= size_ && count <= size_ - offset;
  }

  // Up to `count` bytes at the offset, fewer at the end of the source and never more than
  // kWindow; valid until the next call.
  std::string_view View(std::uint64_t offset, std::size_t count);

  // All that can be had at the offset without reading again, or after reading the window from
  // there: empty only at the end of the source. Valid until the next call.
  std::string_view Available(std::uint64_t offset);

  // Up to `count` bytes, of any number.
  std::string Read(std::uint64_t offset, std::size_t count);

  // Reads up to `count` bytes into memory of the caller's; returns how many there were.
  std::size_t ReadInto(std::uint64_t offset, unsigned char* buffer, std::size_t count);

  std::uint8_t Byte(std::uint64_t offset);
  std::uint16_t Number16(std::uint64_t offset, ByteOrder order = ByteOrder::kBig);
  std::uint32_t Number32(std::uint64_t offset, ByteOrder order = ByteOrder::kBig);
  std::uint64_t Number64(std::uint64_t offset, ByteOrder order = ByteOrder::kBig);

  static constexpr std::size_t kWindow = std::size_t{16} << 10;

 private:
  std::uint64_t Number(std::uint64_t offset, std::size_t bytes, ByteOrder order);
  void Fill(std::uint64_t offset);

  pdf::ByteSource* source_;
  std::uint64_t size_;
  std::unique_ptr<char[]> window_;
  std::uint64_t window_start_ = 0;
  std::size_t window_size_ = 0;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_FILES_BYTEREADER_H_
