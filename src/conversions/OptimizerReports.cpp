#include "conversions/OptimizerReports.h"

#include <algorithm>
#include <array>

namespace TarnixTools {
namespace {

using engines::TPdfFontFigures;
using engines::TPdfFontLeftAlone;
using engines::TPdfImageClass;
using engines::TPdfImageFigures;
using engines::TPdfImageLeftAlone;
using engines::TPdfOptimizedKind;

struct ImageClassRow {
  TPdfImageClass engine_class;
  PdfImageClass image_class;
};

constexpr std::array<ImageClassRow, engines::kPdfImageClassCount> kImageClasses = {{
    {TPdfImageClass::kPhotograph, PdfImageClass::Photograph},
    {TPdfImageClass::kFlatArt, PdfImageClass::FlatArt},
    {TPdfImageClass::kTextScan, PdfImageClass::TextScan},
    {TPdfImageClass::kBitonal, PdfImageClass::Bitonal},
    {TPdfImageClass::kSoftMask, PdfImageClass::SoftMask},
}};

// Why fonts stay as they were, and where that is counted.
struct FontLeftAloneRow {
  TPdfFontLeftAlone reason;
  std::int64_t PdfCompressedFonts::*count;
};

constexpr std::array<FontLeftAloneRow, engines::kPdfFontLeftAloneCount> kFontsLeftAlone = {{
    {TPdfFontLeftAlone::kSmallest, &PdfCompressedFonts::left_smallest},
    {TPdfFontLeftAlone::kAnyCode, &PdfCompressedFonts::left_any_code},
    {TPdfFontLeftAlone::kUnreadable, &PdfCompressedFonts::left_unreadable},
    {TPdfFontLeftAlone::kUnsure, &PdfCompressedFonts::left_unsure},
    {TPdfFontLeftAlone::kConformance, &PdfCompressedFonts::left_conformance},
    {TPdfFontLeftAlone::kNoLibrary, &PdfCompressedFonts::left_no_library},
}};

PdfReportKind KindOf(TPdfOptimizedKind kind) {
  switch (kind) {
    case TPdfOptimizedKind::kSignature:
      return PdfReportKind::Signature;
    case TPdfOptimizedKind::kXmpPacket:
      return PdfReportKind::XmpPacket;
    case TPdfOptimizedKind::kPdfAClaim:
      return PdfReportKind::PdfAClaim;
    case TPdfOptimizedKind::kStructureElement:
      return PdfReportKind::StructureElement;
    case TPdfOptimizedKind::kArticleThread:
      return PdfReportKind::ArticleThread;
    case TPdfOptimizedKind::kThumbnail:
      return PdfReportKind::Thumbnail;
    case TPdfOptimizedKind::kDamage:
      break;
  }
  return PdfReportKind::Damage;
}

std::int64_t CountOf(const TPdfImageFigures& figures, TPdfImageLeftAlone reason) {
  return static_cast<std::int64_t>(figures.left_alone[static_cast<std::size_t>(reason)]);
}

PdfCompressedImages& EntryOf(std::vector<PdfCompressedImages>& images, PdfImageClass image_class) {
  const auto place = std::find_if(images.begin(), images.end(), [&](const auto& entry) {
    return entry.image_class >= image_class;
  });
  if (place != images.end() && place->image_class == image_class) {
    return *place;
  }
  return *images.insert(place, {.image_class = image_class});
}

void Add(PdfCompressedImages& entry, const TPdfImageFigures& figures) {
  entry.count += static_cast<std::int64_t>(figures.images);
  entry.bytes_before += static_cast<std::int64_t>(figures.bytes_before);
  entry.bytes_after += static_cast<std::int64_t>(figures.bytes_after);
  entry.left_smallest += CountOf(figures, TPdfImageLeftAlone::kSmallest);
  entry.left_unreadable += CountOf(figures, TPdfImageLeftAlone::kUnreadable);
  entry.left_unhandled += CountOf(figures, TPdfImageLeftAlone::kUnhandled);
}

}  // namespace

void AddReport(engines::TPdfOptimizer* optimizer, PdfReport& report) {
  const std::int32_t count = engines::PdfOptimizeGetReportCount(optimizer);
  for (std::int32_t i = 0; i < count; ++i) {
    engines::TPdfOptimizeReportEntry entry;
    engines::PdfOptimizeGetReportEntry(optimizer, i, &entry);
    const bool is_kept = entry.outcome == engines::TPdfOptimizeOutcome::kKept;
    report.Add({.kind = KindOf(entry.kind),
                .outcome = is_kept ? PdfReportOutcome::Kept : PdfReportOutcome::Dropped,
                .count = static_cast<std::int64_t>(entry.count),
                .page = 0,
                .reason = entry.reason});
  }
}

void AddImages(engines::TPdfOptimizer* optimizer, std::vector<PdfCompressedImages>& images) {
  for (const ImageClassRow& row : kImageClasses) {
    TPdfImageFigures figures;
    engines::PdfOptimizeGetImageFigures(optimizer, row.engine_class, &figures);
    if (figures.images > 0) {
      Add(EntryOf(images, row.image_class), figures);
    }
  }
}

void AddFonts(engines::TPdfOptimizer* optimizer, PdfCompressedFonts& fonts) {
  TPdfFontFigures figures;
  engines::PdfOptimizeGetFontFigures(optimizer, &figures);
  fonts.count += static_cast<std::int64_t>(figures.programs);
  fonts.merged += static_cast<std::int64_t>(figures.merged);
  fonts.removed += static_cast<std::int64_t>(figures.dropped);
  fonts.bytes_before += static_cast<std::int64_t>(figures.bytes_before);
  fonts.bytes_after += static_cast<std::int64_t>(figures.bytes_after);
  for (const FontLeftAloneRow& row : kFontsLeftAlone) {
    fonts.*row.count +=
        static_cast<std::int64_t>(figures.left_alone[static_cast<std::size_t>(row.reason)]);
  }
}

}  // namespace TarnixTools
