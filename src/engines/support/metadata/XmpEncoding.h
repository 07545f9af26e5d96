// The encoding of an XMP packet (ISO 16684-1, 7.1): UTF-8, UTF-16 or UTF-32, told by its first bytes.
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_XMPENCODING_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_XMPENCODING_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace TarnixTools::engines {

enum class XmpEncoding : std::uint8_t { kUtf8, kUtf16, kUtf32 };

XmpEncoding XmpEncodingOf(std::string_view packet);

// The packet in UTF-8. One that is in another encoding loses the mark at its start and the
// declaration of the encoding that it had; nullopt for one whose length cannot be.
std::optional<std::string> XmpToUtf8(std::string_view packet);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_XMPENCODING_H_
