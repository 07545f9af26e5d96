#include "engines/toolbox/metadata/Metadata.h"

#include <array>
#include <span>
#include <string_view>
#include <utility>

#include "engines/support/metadata/XmpEdit.h"
#include "engines/support/metadata/XmpPacket.h"
#include "engines/toolbox/SourceDocument.h"
#include "engines/toolbox/copy/report/CopyReport.h"
#include "pdf/Error.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

namespace {

// The property that says what an entry of the information says.
struct Mirror {
  std::optional<std::string> DocumentInfo::*value;
  std::string_view name_space;
  std::string_view name;
  std::string_view prefix;
};

constexpr std::array<Mirror, 6> kMirrors = {{
    {&DocumentInfo::author, "http://purl.org/dc/elements/1.1/", "creator", "dc"},
    {&DocumentInfo::keywords, "http://ns.adobe.com/pdf/1.3/", "Keywords", "pdf"},
    {&DocumentInfo::creator, "http://ns.adobe.com/xap/1.0/", "CreatorTool", "xmp"},
    {&DocumentInfo::producer, "http://ns.adobe.com/pdf/1.3/", "Producer", "pdf"},
    {&DocumentInfo::title, "http://purl.org/dc/elements/1.1/", "title", "dc"},
    {&DocumentInfo::subject, "http://purl.org/dc/elements/1.1/", "description", "dc"},
}};

std::string ValueFor(const Mirror& mirror, const std::optional<std::string>& value) {
  std::string text = value ? XmlText(*value) : std::string();
  if (!text.empty() && mirror.value == &DocumentInfo::author) {
    return "<rdf:Seq><rdf:li>" + text + "</rdf:li></rdf:Seq>";
  }
  if (!text.empty() &&
      (mirror.value == &DocumentInfo::title || mirror.value == &DocumentInfo::subject)) {
    return "<rdf:Alt><rdf:li xml:lang=\"x-default\">" + text + "</rdf:li></rdf:Alt>";
  }
  return text;
}

}  // namespace

SourceMetadata::SourceMetadata(SourceDocument& source) : document_(&source.document()) {
  pdf::Arena arena;
  entry_count_ = document_->Resolve(document_->trailer().Get("Info"), arena).Entries().size();
  packet_number_ = XmpPacketNumber(*document_);
}

const std::shared_ptr<const KeptMetadata>& SourceMetadata::Kept() {
  if (kept_ == nullptr) {
    auto kept = std::make_shared<KeptMetadata>();
    kept->info = ReadDocumentInfo(*document_);
    kept->entries = ReadInfoEntries(*document_);
    kept->packet = ReadPacket();
    kept_ = std::move(kept);
  }
  return kept_;
}

std::string SourceMetadata::ReadPacket() {
  if (packet_number_ == 0) {
    return {};
  }
  std::optional<XmpPacket> packet = ReadXmpPacket(*document_, packet_number_);
  if (packet) {
    has_claim_ = packet->has_claim;
    return std::move(packet->bytes);
  }
  packet_trouble_ = "cannot be read";
  return {};
}

void SourceMetadata::ReportKept(CopyReport& report) {
  const std::uint64_t count = Kept()->entries.size();
  report.Add(CopiedKind::kMetadataValue, CopyOutcome::kKept, {}, count);
  report.Add(CopiedKind::kMetadataValue, CopyOutcome::kDropped,
             "no value that information can have", entry_count_ - count);
  if (packet_number_ != 0) {
    report.Add(CopiedKind::kXmpPacket,
               packet_trouble_ == nullptr ? CopyOutcome::kKept : CopyOutcome::kDropped,
               packet_trouble_ == nullptr ? "" : packet_trouble_);
  }
  report.Add(CopiedKind::kPdfAClaim, CopyOutcome::kDropped, "not proven of what is written",
             has_claim_ ? 1 : 0);
}

void SourceMetadata::ReportDropped(CopyReport& report) const {
  report.Add(CopiedKind::kMetadataValue, CopyOutcome::kDropped, "not carried over", entry_count_);
  report.Add(CopiedKind::kXmpPacket, CopyOutcome::kDropped, "not carried over",
             packet_number_ != 0 ? 1 : 0);
}

void TargetMetadata::Report(SourceMetadata& source, CopyReport& report) const {
  if (source.IsKept(kept_)) {
    source.ReportKept(report);
  } else {
    source.ReportDropped(report);
  }
}

std::uint32_t TargetMetadata::WriteInfo(pdf::FileWriter& writer, const DocumentInfo& info) const {
  return kept_ == nullptr ? WriteDocumentInfo(writer, info, {}, {})
                          : WriteDocumentInfo(writer, info, kept_->info, kept_->entries);
}

void TargetMetadata::WritePacket(pdf::FileWriter& writer, const DocumentInfo& info,
                                 std::string& catalog) const {
  if (kept_ == nullptr || kept_->packet.empty()) {
    return;
  }
  std::vector<XmpChange> changes;
  for (const Mirror& mirror : kMirrors) {
    if (info.*mirror.value != kept_->info.*mirror.value) {
      changes.push_back(
          {mirror.name_space, mirror.name, mirror.prefix, ValueFor(mirror, info.*mirror.value)});
    }
  }
  const std::optional<EditedXmp> edited = EditXmp(kept_->packet, changes);
  const std::string_view packet = edited ? edited->bytes : kept_->packet;
  const std::uint32_t number = writer.Reserve();
  writer.BeginStream(number, "<</Type/Metadata/Subtype/XML", packet.size());
  writer.AppendStream(packet);
  writer.EndStream();
  catalog += "/Metadata";
  pdf::AppendReference(catalog, number);
}

}  // namespace TarnixTools::engines::toolbox
