#include "engines/support/metadata/XmpPacket.h"

#include <array>
#include <charconv>
#include <string_view>
#include <utility>

#include "engines/support/metadata/MetadataLimits.h"
#include "engines/support/metadata/XmpEdit.h"

namespace TarnixTools::engines {

namespace {

constexpr std::string_view kPdfA = "http://www.aiim.org/pdfa/ns/id/";

int PartOf(std::string_view value) {
  const std::size_t first = value.find_first_not_of(" \t\r\n");
  int part = 0;
  if (first != std::string_view::npos) {
    std::from_chars(value.data() + first, value.data() + value.size(), part);
  }
  return part;
}

}  // namespace

std::uint32_t XmpPacketNumber(pdf::Document& document) {
  pdf::Arena arena;
  const std::uint32_t number = document.Catalog(arena).Get("Metadata").AsReference().number;
  return document.Exists(number) ? number : 0;
}

std::optional<XmpPacket> ReadXmpPacket(pdf::Document& document, std::uint32_t number) {
  const std::optional<pdf::Decoded> stream =
      document.TryDecodeStream(number, limits::kMaxMetadataBytes);
  const std::array<XmpChange, 2> no_claim = {{{kPdfA, "part", {}, {}}, {kPdfA, {}, {}, {}}}};
  std::optional<EditedXmp> edited = stream ? EditXmp(stream->data, no_claim) : std::nullopt;
  if (!edited) {
    return std::nullopt;
  }
  return XmpPacket{std::move(edited->bytes), edited->found[1] > 0, PartOf(edited->values[0])};
}

}  // namespace TarnixTools::engines
