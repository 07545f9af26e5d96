// Writes properties as an XMP packet in UTF-8 (ISO 16684-1, clause 7): each property an element, the
// same properties always the same bytes.
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_XMPWRITER_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_XMPWRITER_H_

#include <span>
#include <string>

#include "engines/support/metadata/XmpTree.h"

namespace TarnixTools::engines {

// A node's prefix is taken where it is free; the namespaces of the specifications and of PDF/A have
// the prefixes that those give them. Properties of one namespace stand together.
std::string WriteXmp(std::span<const XmpNode> properties);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_XMPWRITER_H_
