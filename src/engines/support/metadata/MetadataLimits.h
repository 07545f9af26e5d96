// Bounds on metadata.
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_METADATALIMITS_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_METADATALIMITS_H_

#include <cstddef>

namespace TarnixTools::engines::limits {

// Bytes of metadata, decoded; nesting of its elements; namespaces that are declared at one place;
// properties, fields, items and qualifiers of a packet.
inline constexpr std::size_t kMaxMetadataBytes = std::size_t{16} << 20;
inline constexpr std::size_t kMaxXmlNesting = 256;
inline constexpr std::size_t kMaxXmlNamespaces = 256;
inline constexpr std::size_t kMaxXmpNodes = 250'000;

}  // namespace TarnixTools::engines::limits

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_METADATALIMITS_H_
