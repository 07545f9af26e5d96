#include "Warnings.h"

#include <algorithm>

namespace TarnixTools::cli {
namespace {

bool IsLoss(const PdfReportEntry& entry) {
  return entry.kind == PdfReportKind::Damage && entry.outcome == PdfReportOutcome::Dropped;
}

bool IsWarning(const PdfReportEntry& entry) {
  switch (entry.kind) {
    case PdfReportKind::Damage:
    case PdfReportKind::Signature:
    case PdfReportKind::XfaForm:
    case PdfReportKind::Script:
    case PdfReportKind::Attachment:
    case PdfReportKind::MetadataValue:
    case PdfReportKind::XmpPacket:
    case PdfReportKind::PdfAClaim:
    case PdfReportKind::Protection:
    case PdfReportKind::ScannedText:
    case PdfReportKind::PageNumber:
    case PdfReportKind::TextStamp:
    case PdfReportKind::ImageStamp:
      return entry.outcome == PdfReportOutcome::Dropped;
    case PdfReportKind::Font:
    case PdfReportKind::PageSize:
      return entry.outcome == PdfReportOutcome::Replaced;
    default:
      return false;
  }
}

// What a conversion has kept stands in the way of the level that was asked for.
bool IsLostOrInTheWay(const PdfReportEntry& entry) {
  return entry.outcome == PdfReportOutcome::Dropped ||
         (entry.kind == PdfReportKind::Conversion && entry.outcome == PdfReportOutcome::Kept);
}

}  // namespace

std::vector<std::string> WarningsOf(const PdfReport& report) {
  std::vector<std::string> warnings;
  for (const PdfReportEntry& entry : report.GetEntries()) {
    if (IsWarning(entry)) {
      const std::string place =
          IsLoss(entry) && entry.page > 0 ? " (page " + std::to_string(entry.page) + ")" : "";
      warnings.push_back(PdfReport::GetText(entry) + place);
    }
  }
  return warnings;
}

std::vector<std::string> RewriteWarningsOf(const PdfReport& report) {
  std::vector<std::string> warnings;
  for (const PdfReportEntry& entry : report.GetEntries()) {
    if (IsLostOrInTheWay(entry)) {
      warnings.push_back(PdfReport::GetText(entry));
    }
  }
  return warnings;
}

bool HasLoss(const PdfReport& report) {
  return std::any_of(report.GetEntries().begin(), report.GetEntries().end(), &IsLoss);
}

}  // namespace TarnixTools::cli
