// Storage for parsed values: grows in chunks, is released or reused as a whole.
#ifndef TARNIX_PDF_SYNTAX_ARENA_H_
#define TARNIX_PDF_SYNTAX_ARENA_H_

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace TarnixTools::pdf {

class Arena {
 public:
  Arena() = default;
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;
  Arena(Arena&&) = default;
  Arena& operator=(Arena&&) = default;

  // The copies live until Reset or destruction.
  std::string_view CopyText(std::string_view text) {
    if (text.empty()) {
      return {};
    }
    char* place = AllocateBytes(text.size(), 1);
    std::memcpy(place, text.data(), text.size());
    return {place, text.size()};
  }

  template <typename T>
  std::span<const T> CopyItems(std::span<const T> items) {
    static_assert(std::is_trivially_copyable_v<T>);
    if (items.empty()) {
      return {};
    }
    T* place = reinterpret_cast<T*>(AllocateBytes(items.size_bytes(), alignof(T)));
    std::memcpy(static_cast<void*>(place), items.data(), items.size_bytes());
    return {place, items.size()};
  }

  char* AllocateBytes(std::size_t size, std::size_t alignment) {
    std::size_t start = (used_ + alignment - 1) & ~(alignment - 1);
    if (chunks_.empty() || start + size > capacity_) {
      AddChunk(size);
      start = 0;
    }
    used_ = start + size;
    return chunks_.back().get() + start;
  }

  // Forgets everything; a chunk is kept for the next use, unless it is large.
  void Reset() {
    if (capacity_ > kMaxKept) {
      chunks_.clear();
      capacity_ = 0;
    } else if (chunks_.size() > 1) {
      chunks_.front() = std::move(chunks_.back());
      chunks_.resize(1);
    }
    used_ = 0;
  }

 private:
  // Most arenas hold one object. Allocators hand out sizes up to some 1,000 bytes at once, and look
  // for larger ones.
  static constexpr std::size_t kFirstChunk = 1024;
  static constexpr std::size_t kMaxKept = 8192;

  void AddChunk(std::size_t at_least) {
    const std::size_t grown =
        chunks_.empty() ? kFirstChunk : std::min<std::size_t>(capacity_ * 2, 1 << 20);
    capacity_ = std::max(at_least, grown);
    chunks_.push_back(std::make_unique_for_overwrite<char[]>(capacity_));
    used_ = 0;
  }

  std::vector<std::unique_ptr<char[]>> chunks_;
  std::size_t capacity_ = 0;  // of the last chunk
  std::size_t used_ = 0;      // in the last chunk
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_SYNTAX_ARENA_H_
