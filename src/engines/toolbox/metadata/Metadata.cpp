#include "engines/toolbox/metadata/Metadata.h"

#include <string_view>
#include <utility>

#include "engines/support/metadata/CarriedClaim.h"
#include "engines/support/metadata/MetadataLimits.h"
#include "engines/support/metadata/XmpEdit.h"
#include "engines/support/metadata/XmpPacket.h"
#include "engines/toolbox/SourceDocument.h"
#include "engines/toolbox/copy/report/CopyReport.h"
#include "pdf/Error.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

namespace {

// As XML of the property's type.
std::string ValueFor(const XmpMirror& mirror, const std::optional<std::string>& value) {
  const std::string text = value ? XmlText(*value) : std::string();
  if (!text.empty() && mirror.type.starts_with("seq")) {
    return "<rdf:Seq><rdf:li>" + text + "</rdf:li></rdf:Seq>";
  }
  if (!text.empty() && mirror.type == "lang alt") {
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
    kept->values = ReadXmpInfoValues(*document_);
    ReadPacket(*kept);
    kept_ = std::move(kept);
  }
  return kept_;
}

void SourceMetadata::ReadPacket(KeptMetadata& kept) {
  if (packet_number_ == 0) {
    return;
  }
  std::optional<XmpPacket> packet = ReadXmpPacket(*document_, packet_number_);
  if (!packet) {
    packet_trouble_ = "cannot be read";
    return;
  }
  has_claim_ = packet->has_claim;
  kept.packet = std::move(packet->bytes);
  if (has_claim_) {
    kept.claiming =
        document_->TryDecodeStream(packet_number_, engines::limits::kMaxMetadataBytes)->data;
  }
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
}

void SourceMetadata::ReportDropped(CopyReport& report) const {
  report.Add(CopiedKind::kMetadataValue, CopyOutcome::kDropped, "not carried over", entry_count_);
  report.Add(CopiedKind::kXmpPacket, CopyOutcome::kDropped, "not carried over",
             packet_number_ != 0 ? 1 : 0);
}

void TargetMetadata::Report(SourceMetadata& source, CopyReport& report) const {
  if (source.IsKept(kept_)) {
    source.ReportKept(report);
    report.Add(CopiedKind::kPdfAClaim, CopyOutcome::kDropped, ReasonOf(ClaimFate::kUnproven),
               source.has_claim() && !claim_.is_told() ? 1 : 0);
  } else {
    source.ReportDropped(report);
  }
}

std::uint32_t TargetMetadata::WriteInfo(pdf::FileWriter& writer, const DocumentInfo& info) const {
  return kept_ == nullptr ? WriteDocumentInfo(writer, info, {}, {})
                          : WriteDocumentInfo(writer, info, kept_->info, kept_->entries);
}

void TargetMetadata::WritePacket(pdf::FileWriter& writer, const DocumentInfo& info,
                                 std::string& catalog, CopyReport& report) const {
  const std::optional<PdfALevel> level = PdfALevelOf(claim_.level());
  const std::string packet = level ? ClaimingPacket(*level, info, report) : KeptPacket(info);
  if (packet.empty()) {
    return;
  }
  const std::uint32_t number = writer.Reserve();
  writer.BeginStream(number, "<</Type/Metadata/Subtype/XML", packet.size());
  writer.AppendStream(packet);
  writer.EndStream();
  catalog += "/Metadata";
  pdf::AppendReference(catalog, number);
}

// Empty where nothing is kept.
std::string TargetMetadata::KeptPacket(const DocumentInfo& info) const {
  if (kept_ == nullptr || kept_->packet.empty()) {
    return {};
  }
  std::vector<XmpChange> changes;
  for (const DocumentInfoField& field : kDocumentInfoFields) {
    const XmpMirror& mirror = XmpMirrorOf(field.field);
    if (info.*field.value != kept_->info.*field.value) {
      changes.push_back(
          {mirror.name_space, mirror.name, mirror.prefix, ValueFor(mirror, info.*field.value)});
    }
  }
  const std::optional<EditedXmp> edited = EditXmp(kept_->packet, changes);
  return edited ? edited->bytes : kept_->packet;
}

// What is kept, and in any case all that the information says (ISO 19005-1, 6.7.3).
std::string TargetMetadata::ClaimingPacket(const PdfALevel& level, const DocumentInfo& info,
                                           CopyReport& report) const {
  if (kept_ != nullptr && info == kept_->info) {
    return kept_->claiming;
  }
  XmpInfoValues values = kept_ != nullptr ? kept_->values : XmpInfoValues();
  for (const DocumentInfoField& field : kDocumentInfoFields) {
    values[static_cast<std::size_t>(field.field)] = info.*field.value;
  }
  PdfAPacket packet =
      MakePdfAPacket(kept_ != nullptr ? ReadXmp(kept_->packet) : XmpTree(), level, values);
  report.Add(CopiedKind::kMetadataValue, CopyOutcome::kDropped, "not allowed in PDF/A",
             packet.dropped.size());
  return std::move(packet.bytes);
}

}  // namespace TarnixTools::engines::toolbox
