// Large objects that are asked for again and again, kept in memory: whatever many others share is
// parsed a few times, not once for each of them.
#ifndef TARNIX_PDF_FILE_LARGEOBJECTS_H_
#define TARNIX_PDF_FILE_LARGEOBJECTS_H_

#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {

class LargeObjects {
 public:
  // Null for an object that is not kept.
  const Object* Find(std::uint32_t number) const {
    const auto found = kept_.find(number);
    return found == kept_.end() ? nullptr : &found->second;
  }

  // Notes that an object of so many bytes was parsed. True when it is to be kept from now on: parse
  // it once more into arena() and hand it to Keep.
  bool IsDue(std::uint32_t number, std::uint64_t bytes);

  // What is kept lives here, as long as this does.
  Arena& arena() { return arena_; }

  void Keep(std::uint32_t number, const Object& value) { kept_.emplace(number, value); }

  // Forgets which objects are kept; values that were handed out stay valid.
  void Clear() { kept_.clear(); }

 private:
  Arena arena_;
  std::unordered_map<std::uint32_t, Object> kept_;
  std::unordered_map<std::uint32_t, std::uint8_t> times_parsed_;
  std::uint64_t kept_bytes_ = 0;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILE_LARGEOBJECTS_H_
