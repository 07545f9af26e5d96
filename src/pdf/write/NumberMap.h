// Which number each source object has in the target.
#ifndef TARNIX_PDF_WRITE_NUMBERMAP_H_
#define TARNIX_PDF_WRITE_NUMBERMAP_H_

#include <cstdint>
#include <vector>

#include "pdf/Limits.h"

namespace TarnixTools::pdf {

// Objects that the copy has and the source has not go by numbers that no object in a file can have.
inline constexpr std::uint32_t kFirstAddedObject = limits::kMaxObjectNumber + 1;

constexpr bool IsAddedObject(std::uint32_t number) {
  return number >= kFirstAddedObject;
}

// Clearing costs what was set, not what could be.
class NumberMap {
 public:
  // 0 for none.
  std::uint32_t Get(std::uint32_t number) const {
    const std::vector<std::uint32_t>& numbers = IsAddedObject(number) ? added_ : numbers_;
    const std::uint32_t index = IndexOf(number);
    return index < numbers.size() ? numbers[index] : 0;
  }

  void Set(std::uint32_t number, std::uint32_t target);
  void Clear();

  // The source's numbers that have one in the target, in the order in which they got it.
  const std::vector<std::uint32_t>& mapped() const { return set_; }

 private:
  static std::uint32_t IndexOf(std::uint32_t number) {
    return IsAddedObject(number) ? number - kFirstAddedObject : number;
  }

  std::vector<std::uint32_t> numbers_;
  std::vector<std::uint32_t> added_;
  std::vector<std::uint32_t> set_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_WRITE_NUMBERMAP_H_
