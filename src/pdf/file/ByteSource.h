// Where a document's bytes come from. The core reads in blocks and on demand, never the whole file
// by force.
#ifndef TARNIX_PDF_FILE_BYTESOURCE_H_
#define TARNIX_PDF_FILE_BYTESOURCE_H_

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace TarnixTools::pdf {

class ByteSource {
 public:
  virtual ~ByteSource() = default;

  // Bytes in the source, as found when it was opened.
  virtual std::uint64_t Size() const = 0;
  // Reads up to `size` bytes at `offset` and returns how many there were; fewer only at the end of
  // the source. Throws Error(kReadFailed).
  virtual std::size_t ReadAt(std::uint64_t offset, char* buffer, std::size_t size) = 0;
};

// Bytes that somebody else keeps in memory.
class MemorySource : public ByteSource {
 public:
  explicit MemorySource(std::string_view bytes) : bytes_(bytes) {}

  std::uint64_t Size() const override { return bytes_.size(); }

  std::size_t ReadAt(std::uint64_t offset, char* buffer, std::size_t size) override {
    if (offset >= bytes_.size()) {
      return 0;
    }
    const std::size_t count = std::min(size, bytes_.size() - static_cast<std::size_t>(offset));
    std::memcpy(buffer, bytes_.data() + offset, count);
    return count;
  }

 private:
  std::string_view bytes_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILE_BYTESOURCE_H_
