#include "engines/support/metadata/DroppedClaim.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "engines/support/metadata/XmpPacket.h"
#include "pdf/tree/DocumentVersion.h"

namespace TarnixTools::engines {

namespace {

void WriteForPdfA1(pdf::Document& document, pdf::RewriteOptions& options) {
  constexpr int kPdf14 = 14;
  const int version = std::max(pdf::DocumentVersion(document), kPdf14);
  options.layout = pdf::FileLayout::kTable;
  options.version = std::to_string(version / 10) + "." + std::to_string(version % 10);
}

}  // namespace

// A packet that cannot be read may have a claim, too.
DroppedClaim DropPdfAClaim(pdf::Document& document, pdf::DocumentRewriter& rewriter,
                           pdf::RewriteOptions& options) {
  const std::uint32_t number = XmpPacketNumber(document);
  if (number == 0) {
    return {};
  }
  std::optional<XmpPacket> packet = ReadXmpPacket(document, number);
  if (!packet) {
    rewriter.RemoveEntry(rewriter.catalog(), "Metadata");
    return {.was_there = false, .was_packet_lost = true};
  }
  if (packet->has_claim) {
    rewriter.Change(number, pdf::ObjectChange::Stream("<</Type/Metadata/Subtype/XML>>",
                                                      std::move(packet->bytes)));
  }
  if (packet->claimed_part == 1) {
    WriteForPdfA1(document, options);
  }
  return {.was_there = packet->has_claim, .was_packet_lost = false};
}

}  // namespace TarnixTools::engines
