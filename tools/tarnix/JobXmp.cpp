#include <string>

#include "Job.h"
#include "JobContext.h"

namespace TarnixTools::cli {
namespace {

JobResult Xmp(JobContext& context) {
  PdfDoc document = context.Document();
  context.OutputDirectory();
  ForPassword([&] { document.GetXmpMetaData(context.OutputPath()); });
  JobResult result{.outputs = {context.OutputPath()}, .report = document.GetReport()};
  for (const PdfReportEntry& entry : document.GetReport().GetEntries()) {
    if (entry.kind != PdfReportKind::Damage) {
      result.warnings.push_back(PdfReport::GetText(entry));
    }
  }
  return result;
}

const JobRegistration kRegistration({
    .name = "xmp",
    .summary = "extract the XMP metadata",
    .description =
        "Writes the XMP packet of the input as it stands (STEM.xmp); one that says nothing "
        "where the input has none.",
    .examples = {"tarnix xmp report.pdf", "tarnix xmp -o - report.pdf",
                 "tarnix xmp -o letter-packet.xmp letter.pdf"},
    .output = OutputKind::OneFile,
    .extension = ".xmp",
    .engine = EngineName::Parser,
    .can_protect = false,
    .run = Xmp,
});

}  // namespace
}  // namespace TarnixTools::cli
