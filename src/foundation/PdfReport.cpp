#include "PdfReport.h"

#include <algorithm>

namespace TarnixTools {

namespace {

// Of an entry whose reason says it all.
std::string WhatIsTold(const PdfReportEntry& entry) {
  if (entry.kind == PdfReportKind::Damage) {
    return "damage: ";
  }
  if (entry.kind == PdfReportKind::Protection) {
    return "protection dropped: ";
  }
  return entry.outcome == PdfReportOutcome::Dropped ? "left out for PDF/A: "
         : entry.outcome == PdfReportOutcome::Kept  ? "in the way of PDF/A: "
                                                    : "changed for PDF/A: ";
}

}  // namespace

PdfReport::PdfReport() = default;
PdfReport::PdfReport(const PdfReport& other) = default;
PdfReport::PdfReport(PdfReport&& other) noexcept = default;
PdfReport& PdfReport::operator=(const PdfReport& other) = default;
PdfReport& PdfReport::operator=(PdfReport&& other) noexcept = default;
PdfReport::~PdfReport() = default;

void PdfReport::Add(const PdfReportEntry& entry) {
  const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const PdfReportEntry& e) {
    return e.kind == entry.kind && e.outcome == entry.outcome && e.reason == entry.reason &&
           e.source == entry.source;
  });
  if (found == entries_.end()) {
    entries_.push_back(entry);
  } else {
    found->count += entry.count;
  }
}

void PdfReport::Add(const PdfReport& report) {
  const std::vector<PdfReportEntry> entries = report.entries_;  // it may be this one
  for (const PdfReportEntry& entry : entries) {
    Add(entry);
  }
}

void PdfReport::Clear() {
  entries_.clear();
}

const char* PdfReport::GetKindName(PdfReportKind kind) {
  switch (kind) {
    case PdfReportKind::Link:
      return "link";
    case PdfReportKind::Annotation:
      return "annotation";
    case PdfReportKind::NamedDestination:
      return "named destination";
    case PdfReportKind::OutlineItem:
      return "outline item";
    case PdfReportKind::PageLabel:
      return "page label";
    case PdfReportKind::FormField:
      return "form field";
    case PdfReportKind::Signature:
      return "signature";
    case PdfReportKind::XfaForm:
      return "XFA form";
    case PdfReportKind::Script:
      return "script";
    case PdfReportKind::Layer:
      return "layer";
    case PdfReportKind::Attachment:
      return "attachment";
    case PdfReportKind::StructureElement:
      return "structure element";
    case PdfReportKind::ArticleThread:
      return "article thread";
    case PdfReportKind::Thumbnail:
      return "thumbnail";
    case PdfReportKind::OutputIntent:
      return "output intent";
    case PdfReportKind::ViewerSetting:
      return "viewer setting";
    case PdfReportKind::Resource:
      return "resource";
    case PdfReportKind::Damage:
      return "damage";
    case PdfReportKind::PageNumber:
      return "page number";
    case PdfReportKind::TextStamp:
      return "text stamp";
    case PdfReportKind::ImageStamp:
      return "image stamp";
    case PdfReportKind::Font:
      return "font";
    case PdfReportKind::Language:
      return "language";
    case PdfReportKind::MetadataValue:
      return "metadata value";
    case PdfReportKind::XmpPacket:
      return "XMP packet";
    case PdfReportKind::PdfAClaim:
      return "PDF/A claim";
    case PdfReportKind::Conversion:
      return "conversion";
    case PdfReportKind::Protection:
      return "protection";
    case PdfReportKind::ScannedText:
      return "scanned text";
    case PdfReportKind::PageSize:
      return "page size";
  }
  return "thing";
}

const char* PdfReport::GetOutcomeName(PdfReportOutcome outcome) {
  switch (outcome) {
    case PdfReportOutcome::Kept:
      return "kept";
    case PdfReportOutcome::Renamed:
      return "renamed";
    case PdfReportOutcome::Added:
      return "added";
    case PdfReportOutcome::Replaced:
      return "replaced";
    case PdfReportOutcome::Dropped:
      break;
  }
  return "dropped";
}

std::string PdfReport::GetText(const PdfReportEntry& entry) {
  if (entry.kind == PdfReportKind::Damage || entry.kind == PdfReportKind::Conversion ||
      entry.kind == PdfReportKind::Protection) {
    const std::string text = WhatIsTold(entry) + entry.reason;
    return entry.count > 1 ? text + " (" + std::to_string(entry.count) + " times)" : text;
  }
  std::string text = std::to_string(entry.count) + " " + GetKindName(entry.kind);
  text += entry.count == 1 ? " " : "s ";
  text += GetOutcomeName(entry.outcome);
  return entry.reason.empty() ? text : text + ": " + entry.reason;
}

}  // namespace TarnixTools
