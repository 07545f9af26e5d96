// Bounds of the engine that repairs documents.
#ifndef TARNIX_ENGINES_REPAIR_LIMITS_H_
#define TARNIX_ENGINES_REPAIR_LIMITS_H_

#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines::repair::limits {

// Problems of one kind that are listed; later ones are only counted.
inline constexpr std::size_t kMaxListedOfAKind = 100;
// Bytes of one stream, encoded or decoded, that is looked at.
inline constexpr std::size_t kMaxCheckedStream = std::size_t{128} << 20;
// Of all streams together: this much, and this many times the size of the file.
inline constexpr std::uint64_t kCheckedAllowance = std::uint64_t{256} << 20;
inline constexpr std::uint64_t kCheckedRatio = 64;

}  // namespace TarnixTools::engines::repair::limits

#endif  // TARNIX_ENGINES_REPAIR_LIMITS_H_
