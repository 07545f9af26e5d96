// The XMP packet of a document (ISO 32000-2, 14.3.2), and its claim that the document is PDF/A (ISO
// 19005). A claim holds for the file that it was proven of; whoever writes another one leaves it out.
//
//   if (const std::uint32_t number = XmpPacketNumber(*document); number != 0) {
//     const std::optional<XmpPacket> packet = ReadXmpPacket(*document, number);
//   }
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_XMPPACKET_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_XMPPACKET_H_

#include <cstdint>
#include <optional>
#include <string>

#include "pdf/file/Document.h"

namespace TarnixTools::engines {

struct XmpPacket {
  std::string bytes;       // the packet without a claim
  bool has_claim = false;  // whether there was one
  int claimed_part = 0;    // 1 for a claim of PDF/A-1; 0 for one that names no part
};

// Number of the stream that the catalog names; 0 where there is none.
std::uint32_t XmpPacketNumber(pdf::Document& document);

// nullopt for a packet that cannot be read, whether it has a claim or not. Throws pdf::Error for a
// source that fails.
std::optional<XmpPacket> ReadXmpPacket(pdf::Document& document, std::uint32_t number);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_XMPPACKET_H_
