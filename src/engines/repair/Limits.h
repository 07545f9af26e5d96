// Bounds of the engine that repairs documents.
#ifndef TARNIX_ENGINES_REPAIR_LIMITS_H_
#define TARNIX_ENGINES_REPAIR_LIMITS_H_

#include <cstddef>

namespace TarnixTools::engines::repair::limits {

// Problems of one kind that are listed; later ones are only counted.
inline constexpr std::size_t kMaxListedOfAKind = 100;

}  // namespace TarnixTools::engines::repair::limits

#endif  // TARNIX_ENGINES_REPAIR_LIMITS_H_
