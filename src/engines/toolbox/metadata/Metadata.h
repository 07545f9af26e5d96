// What a document says of itself (ISO 32000-2, 14.3): document information and its XMP packet, read
// of a source, and kept in a document that is made of its pages.
#ifndef TARNIX_ENGINES_TOOLBOX_METADATA_METADATA_H_
#define TARNIX_ENGINES_TOOLBOX_METADATA_METADATA_H_

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engines/support/metadata/PdfAClaim.h"
#include "engines/support/metadata/PdfAPacket.h"
#include "engines/support/metadata/XmpInfo.h"
#include "engines/toolbox/DocumentInfo.h"
#include "engines/toolbox/metadata/TargetClaim.h"
#include "pdf/file/Document.h"
#include "pdf/write/FileWriter.h"

namespace TarnixTools::engines::toolbox {

class CopyReport;
class SourceDocument;

// What can be kept of a source.
struct KeptMetadata {
  DocumentInfo info;
  std::vector<InfoEntry> entries;  // all of the information
  XmpInfoValues values;            // of it, those that a packet says, too
  std::string packet;              // without a claim of PDF/A; empty for none
  std::string claiming;            // the packet as it is, where it claims something; else empty
};

class SourceMetadata {
 public:
  explicit SourceMetadata(SourceDocument& source);

  // Read on first use, and shared by the targets that keep it.
  const std::shared_ptr<const KeptMetadata>& Kept();

  // Code of the level of PDF/A that the source claims; 0 for none.
  std::int32_t ClaimedLevel() const { return ClaimedPdfACode(ReadDocumentXmp(*document_)); }

  // Whether the packet, once read, claims anything.
  bool has_claim() const { return has_claim_; }

  // Adds what a copy that keeps everything, or that keeps nothing, does with it.
  void ReportKept(CopyReport& report);
  void ReportDropped(CopyReport& report) const;

  bool IsKept(const std::shared_ptr<const KeptMetadata>& kept) const {
    return kept != nullptr && kept == kept_;
  }

 private:
  void ReadPacket(KeptMetadata& kept);

  pdf::Document* document_;
  std::uint64_t entry_count_ = 0;
  std::uint32_t packet_number_ = 0;  // 0: there is none
  std::shared_ptr<const KeptMetadata> kept_;
  const char* packet_trouble_ = nullptr;  // why it cannot be kept
  bool has_claim_ = false;
};

// Of a document being made.
class TargetMetadata {
 public:
  // What it keeps, from one source.
  void Keep(std::shared_ptr<const KeptMetadata> kept) { kept_ = std::move(kept); }

  TargetClaim& claim() { return claim_; }

  // Adds what becomes of a source's metadata, once for each source.
  void Report(SourceMetadata& source, CopyReport& report) const;

  // Number of the object written; 0 when there is nothing to write. info: as it is in the end.
  std::uint32_t WriteInfo(pdf::FileWriter& writer, const DocumentInfo& info) const;

  // Writes the packet, which says what the information says, and appends the catalog's entry.
  void WritePacket(pdf::FileWriter& writer, const DocumentInfo& info, std::string& catalog,
                   CopyReport& report) const;

 private:
  std::string KeptPacket(const DocumentInfo& info) const;
  std::string ClaimingPacket(const PdfALevel& level, const DocumentInfo& info,
                             CopyReport& report) const;

  std::shared_ptr<const KeptMetadata> kept_;  // null: nothing
  TargetClaim claim_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_METADATA_METADATA_H_
