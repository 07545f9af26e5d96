// What a document says of itself (ISO 32000-2, 14.3): document information and its XMP packet, read
// of a source, and kept in a document that is made of its pages.
#ifndef TARNIX_ENGINES_TOOLBOX_METADATA_METADATA_H_
#define TARNIX_ENGINES_TOOLBOX_METADATA_METADATA_H_

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engines/toolbox/DocumentInfo.h"
#include "pdf/file/Document.h"
#include "pdf/write/FileWriter.h"

namespace TarnixTools::engines::toolbox {

class CopyReport;
class SourceDocument;

// What can be kept of a source.
struct KeptMetadata {
  DocumentInfo info;
  std::vector<InfoEntry> entries;  // all of the information
  std::string packet;              // without a claim of PDF/A; empty for none
};

class SourceMetadata {
 public:
  explicit SourceMetadata(SourceDocument& source);

  // Read on first use, and shared by the targets that keep it.
  const std::shared_ptr<const KeptMetadata>& Kept();

  // Adds what a copy that keeps everything, or that keeps nothing, does with it.
  void ReportKept(CopyReport& report);
  void ReportDropped(CopyReport& report) const;

  bool IsKept(const std::shared_ptr<const KeptMetadata>& kept) const {
    return kept != nullptr && kept == kept_;
  }

 private:
  std::string ReadPacket();

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

  // Adds what becomes of a source's metadata, once for each source.
  void Report(SourceMetadata& source, CopyReport& report) const;

  // Number of the object written; 0 when there is nothing to write. info: as it is in the end.
  std::uint32_t WriteInfo(pdf::FileWriter& writer, const DocumentInfo& info) const;

  // Writes the packet, which says what the information says, and appends the catalog's entry.
  void WritePacket(pdf::FileWriter& writer, const DocumentInfo& info, std::string& catalog) const;

 private:
  std::shared_ptr<const KeptMetadata> kept_;  // null: nothing
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_METADATA_METADATA_H_
