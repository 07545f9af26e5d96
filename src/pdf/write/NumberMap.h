// Which number each source object has in the target.
#ifndef TARNIX_PDF_WRITE_NUMBERMAP_H_
#define TARNIX_PDF_WRITE_NUMBERMAP_H_

#include <cstdint>
#include <vector>

namespace TarnixTools::pdf {

// Clearing costs what was set, not what could be.
class NumberMap {
 public:
  std::uint32_t Get(std::uint32_t number) const {
    return number < numbers_.size() ? numbers_[number] : 0;
  }

  void Set(std::uint32_t number, std::uint32_t target);
  void Clear();

  // The source's numbers that have one in the target, in the order in which they got it.
  const std::vector<std::uint32_t>& mapped() const { return set_; }

 private:
  std::vector<std::uint32_t> numbers_;
  std::vector<std::uint32_t> set_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_WRITE_NUMBERMAP_H_
