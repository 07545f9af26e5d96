#include "pdf/file/LargeObjects.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::uint64_t kLarge = 2048;                            // bytes; below, parsing is cheap
constexpr std::uint64_t kMaxKeptBytes = std::uint64_t{16} << 20;  // of text, of all together
constexpr std::uint8_t kTimesParsed = 4;                          // before it is kept

}  // namespace

bool LargeObjects::IsDue(std::uint32_t number, std::uint64_t bytes) {
  if (bytes < kLarge || bytes > kMaxKeptBytes - kept_bytes_ ||
      ++times_parsed_[number] < kTimesParsed) {
    return false;
  }
  times_parsed_.erase(number);
  kept_bytes_ += bytes;
  return true;
}

}  // namespace TarnixTools::pdf
