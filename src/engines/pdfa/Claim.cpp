#include "engines/pdfa/Claim.h"

#include "engines/support/metadata/MetadataLimits.h"
#include "engines/support/metadata/XmpPacket.h"
#include "engines/support/metadata/XmpTree.h"

namespace TarnixTools::engines::pdfa {

std::optional<Level> ClaimedLevel(pdf::Document& document) {
  const std::optional<pdf::Decoded> stream =
      document.TryDecodeStream(XmpPacketNumber(document), engines::limits::kMaxMetadataBytes);
  if (!stream) {
    return std::nullopt;
  }
  const XmpTree packet = ReadXmp(stream->data);
  const XmpNode* part = packet.Find(kPdfAIdNamespace, "part");
  const XmpNode* conformance = packet.Find(kPdfAIdNamespace, "conformance");
  if (part == nullptr || conformance == nullptr || part->value.size() != 1 ||
      conformance->value.size() != 1) {
    return std::nullopt;
  }
  return LevelOf(part->value.front() - '0',
                 static_cast<char>(conformance->value.front() - 'A' + 'a'));
}

}  // namespace TarnixTools::engines::pdfa
