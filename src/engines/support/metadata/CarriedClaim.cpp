#include "engines/support/metadata/CarriedClaim.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "engines/support/metadata/MetadataLimits.h"
#include "engines/support/metadata/PdfAClaim.h"
#include "engines/support/metadata/XmpPacket.h"
#include "foundation/Platform.h"
#include "pdf/Error.h"
#include "pdf/tree/DocumentVersion.h"

namespace TarnixTools::engines {

namespace {

void WriteForPdfA1(pdf::Document& document, pdf::RewriteOptions& options) {
  constexpr int kPdf14 = 14;
  const int version = std::max(pdf::DocumentVersion(document), kPdf14);
  options.layout = pdf::FileLayout::kTable;
  options.version = std::to_string(version / 10) + "." + std::to_string(version % 10);
}

void PutPacket(pdf::DocumentRewriter& rewriter, std::uint32_t number, std::string bytes) {
  rewriter.Change(number,
                  pdf::ObjectChange::Stream("<</Type/Metadata/Subtype/XML>>", std::move(bytes)));
}

// Of a document that claims something. The code of the level that its packet goes on claiming.
std::int32_t KeepClaim(pdf::Document& document, std::uint32_t number,
                       pdf::DocumentRewriter& rewriter) {
  std::optional<pdf::Decoded> stream = document.TryDecodeStream(number, limits::kMaxMetadataBytes);
  const std::int32_t level = stream ? ClaimedPdfACode(ReadXmp(stream->data)) : 0;
  if (level != 0) {
    PutPacket(rewriter, number, std::move(stream->data));
  }
  return level;
}

}  // namespace

// A packet that cannot be read may have a claim, too.
CarriedClaim CarryPdfAClaim(pdf::Document& document, pdf::DocumentRewriter& rewriter,
                            pdf::RewriteOptions& options, bool can_be_proven) {
  const std::uint32_t number = XmpPacketNumber(document);
  if (number == 0) {
    return {};
  }
  std::optional<XmpPacket> packet = ReadXmpPacket(document, number);
  if (!packet) {
    rewriter.RemoveEntry(rewriter.catalog(), "Metadata");
    return {.was_packet_lost = true};
  }
  CarriedClaim claim = {.was_there = packet->has_claim};
  if (packet->has_claim && can_be_proven) {
    claim.level = KeepClaim(document, number, rewriter);
  }
  if (packet->has_claim && claim.level == 0) {
    PutPacket(rewriter, number, std::move(packet->bytes));
  }
  if (packet->claimed_part == 1) {
    WriteForPdfA1(document, options);
  }
  return claim;
}

const char* ReasonOf(ClaimFate fate) {
  switch (fate) {
    case ClaimFate::kKept:
      return "";
    case ClaimFate::kLowered:
      return "only a lower level holds for what is written";
    case ClaimFate::kDropped:
      return "does not hold for what is written";
    case ClaimFate::kUnproven:
      break;
  }
  return "not proven of what is written";
}

ClaimFate ProvePdfAClaim(std::int32_t level, std::int32_t (*proof)(std::FILE* file),
                         std::FILE* file) {
  if (level == 0) {
    return ClaimFate::kUnproven;
  }
  const std::int32_t proven = proof(file);
  if (proven < 0) {
    throw pdf::Error(pdf::ErrorCode::kWriteFailed, "the claim of PDF/A cannot be proven",
                     platform::LastSystemError());
  }
  return proven == level ? ClaimFate::kKept
         : proven != 0   ? ClaimFate::kLowered
                         : ClaimFate::kDropped;
}

}  // namespace TarnixTools::engines
