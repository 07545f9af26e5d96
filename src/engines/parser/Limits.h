// Bounds of the content parser.
#ifndef TARNIX_ENGINES_PARSER_LIMITS_H_
#define TARNIX_ENGINES_PARSER_LIMITS_H_

#include <cstddef>

namespace TarnixTools::engines::parser::limits {

// Bytes of stored images that are kept in case the same is drawn again: of one that has been drawn
// once, of one that has been drawn before, and of all.
inline constexpr std::size_t kMaxKeptOnce = std::size_t{256} << 10;
inline constexpr std::size_t kMaxKeptImage = std::size_t{4} << 20;
inline constexpr std::size_t kMaxKeptImages = std::size_t{16} << 20;

// Bytes of an XMP packet that is written to a file, decoded. What is read of packets is bounded more
// closely.
inline constexpr std::size_t kMaxPacketBytes = std::size_t{64} << 20;

}  // namespace TarnixTools::engines::parser::limits

#endif  // TARNIX_ENGINES_PARSER_LIMITS_H_
