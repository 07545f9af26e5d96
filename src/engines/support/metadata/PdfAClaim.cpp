#include "engines/support/metadata/PdfAClaim.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "engines/support/metadata/MetadataLimits.h"
#include "engines/support/metadata/XmpPacket.h"
#include "pdf/tree/DocumentVersion.h"

namespace TarnixTools::engines {

namespace {

struct Code {
  int part;
  char conformance;
  std::int32_t code;
};

constexpr std::array<Code, 8> kCodes = {{
    {1, 'b', 0x1401},
    {1, 'a', 0x1402},
    {2, 'b', 0x1701},
    {2, 'u', 0x1702},
    {2, 'a', 0x1703},
    {3, 'b', 0x1711},
    {3, 'u', 0x1712},
    {3, 'a', 0x1713},
}};

// Empty where the packet has no such property of the identification.
std::string ValueOf(const XmpTree& tree, std::string_view name) {
  const XmpNode* node = tree.Find(kPdfAIdNamespace, name);
  return node != nullptr ? node->value : std::string();
}

}  // namespace

std::int32_t PdfACode(int part, char conformance) {
  const auto found = std::find_if(kCodes.begin(), kCodes.end(), [&](const Code& code) {
    return code.part == part && code.conformance == conformance;
  });
  return found == kCodes.end() ? 0 : found->code;
}

std::optional<PdfALevel> PdfALevelOf(std::int32_t code) {
  const auto found = std::find_if(kCodes.begin(), kCodes.end(),
                                  [&](const Code& known) { return known.code == code; });
  return found == kCodes.end() ? std::nullopt
                               : std::optional(PdfALevel{found->part, found->conformance});
}

// Codes of one part are in the order of what they ask for.
std::int32_t CommonPdfACode(std::int32_t code, std::int32_t other) {
  const std::optional<PdfALevel> level = PdfALevelOf(code);
  const std::optional<PdfALevel> other_level = PdfALevelOf(other);
  return level && other_level && level->part == other_level->part ? std::min(code, other) : 0;
}

std::int32_t ClaimedPdfACode(const XmpTree& tree) {
  const std::string part = ValueOf(tree, "part");
  const std::string conformance = ValueOf(tree, "conformance");
  if (part.size() != 1 || conformance.size() != 1) {
    return 0;
  }
  return PdfACode(part.front() - '0', static_cast<char>(conformance.front() - 'A' + 'a'));
}

XmpTree ReadDocumentXmp(pdf::Document& document) {
  const std::uint32_t number = XmpPacketNumber(document);
  const std::optional<pdf::Decoded> stream =
      number == 0 ? std::nullopt : document.TryDecodeStream(number, limits::kMaxMetadataBytes);
  return stream ? ReadXmp(stream->data) : XmpTree();
}

std::int32_t ComplianceOf(pdf::Document& document) {
  const std::int32_t claimed = ClaimedPdfACode(ReadDocumentXmp(document));
  if (claimed != 0) {
    return claimed;
  }
  const int version = pdf::DocumentVersion(document);
  return version / 10 * 0x1000 + version % 10 * 0x100;
}

}  // namespace TarnixTools::engines
