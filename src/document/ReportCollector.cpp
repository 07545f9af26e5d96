#include "document/ReportCollector.h"

#include <new>

namespace TarnixTools {
namespace {

using engines::TPdfCopiedKind;
using engines::TPdfCopyOutcome;

PdfReportKind KindOf(TPdfCopiedKind kind) {
  switch (kind) {
    case TPdfCopiedKind::kLink:
      return PdfReportKind::Link;
    case TPdfCopiedKind::kAnnotation:
      return PdfReportKind::Annotation;
    case TPdfCopiedKind::kNamedDestination:
      return PdfReportKind::NamedDestination;
    case TPdfCopiedKind::kOutlineItem:
      return PdfReportKind::OutlineItem;
    case TPdfCopiedKind::kPageLabel:
      return PdfReportKind::PageLabel;
    case TPdfCopiedKind::kFormField:
      return PdfReportKind::FormField;
    case TPdfCopiedKind::kSignature:
      return PdfReportKind::Signature;
    case TPdfCopiedKind::kXfaForm:
      return PdfReportKind::XfaForm;
    case TPdfCopiedKind::kScript:
      return PdfReportKind::Script;
    case TPdfCopiedKind::kLayer:
      return PdfReportKind::Layer;
    case TPdfCopiedKind::kAttachment:
      return PdfReportKind::Attachment;
    case TPdfCopiedKind::kStructureElement:
      return PdfReportKind::StructureElement;
    case TPdfCopiedKind::kArticleThread:
      return PdfReportKind::ArticleThread;
    case TPdfCopiedKind::kThumbnail:
      return PdfReportKind::Thumbnail;
    case TPdfCopiedKind::kOutputIntent:
      return PdfReportKind::OutputIntent;
    case TPdfCopiedKind::kViewerSettings:
      return PdfReportKind::ViewerSetting;
    case TPdfCopiedKind::kResource:
      return PdfReportKind::Resource;
    case TPdfCopiedKind::kLanguage:
      return PdfReportKind::Language;
    case TPdfCopiedKind::kMetadataValue:
      return PdfReportKind::MetadataValue;
    case TPdfCopiedKind::kXmpPacket:
      return PdfReportKind::XmpPacket;
    case TPdfCopiedKind::kPdfAClaim:
      return PdfReportKind::PdfAClaim;
    case TPdfCopiedKind::kDamage:
      break;
  }
  return PdfReportKind::Damage;
}

PdfReportOutcome OutcomeOf(TPdfCopyOutcome outcome) {
  switch (outcome) {
    case TPdfCopyOutcome::kKept:
      return PdfReportOutcome::Kept;
    case TPdfCopyOutcome::kRenamed:
      return PdfReportOutcome::Renamed;
    case TPdfCopyOutcome::kDropped:
      break;
  }
  return PdfReportOutcome::Dropped;
}

void AddEntry(void* report, const engines::TPdfReportEntry* entry) {
  try {
    static_cast<PdfReport*>(report)->Add({KindOf(entry->kind), OutcomeOf(entry->outcome),
                                          static_cast<std::int64_t>(entry->count),
                                          static_cast<std::int32_t>(entry->page), entry->reason});
  } catch (const std::bad_alloc&) {
    // The file is written; an entry less in the report is no reason to give it up.
  }
}

}  // namespace

void CollectReport(engines::TPdfDocument* document, PdfReport& report) {
  engines::PdfDocumentSetReport(document, &AddEntry, &report);
}

}  // namespace TarnixTools
