// Deflate (RFC 1951) without looking for repetitions. In filtered rows of photographs there are
// hardly any: the result is as small as that of a thorough search, at many times its speed.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_HUFFMANDEFLATE_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_HUFFMANDEFLATE_H_

#include <cstddef>
#include <cstdint>

#include "engines/support/pictures/HeldBytes.h"

namespace TarnixTools::engines {

// zlib-wrapped (RFC 1950). There is at least one byte.
HeldBytes DeflateByHuffman(const unsigned char* data, std::size_t size);

// About how many bytes that would give.
std::size_t HuffmanSize(const unsigned char* data, std::size_t size);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_HUFFMANDEFLATE_H_
