// Bytes that are held in memory, as encoders give them.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_HELDBYTES_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_HELDBYTES_H_

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>

namespace TarnixTools::engines {

// Bytes of our own, never filled with zeros first.
struct HeldBytes {
  std::unique_ptr<char[]> data;
  std::size_t size = 0;

  std::string_view view() const { return {data.get(), size}; }
};

inline HeldBytes HoldCopy(std::string_view bytes) {
  HeldBytes held;
  held.data = std::make_unique_for_overwrite<char[]>(bytes.size());
  held.size = bytes.size();
  std::copy(bytes.begin(), bytes.end(), held.data.get());
  return held;
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_HELDBYTES_H_
