#include <string>

#include "Job.h"
#include "JobContext.h"

namespace TarnixTools::cli {
namespace {

constexpr std::string_view kExtension = ".xmp";

// FILE.xmp of --out-dir, or a file of the name asked for in that directory.
std::string OutputPath(const JobContext& context, const PdfDoc& document) {
  const std::string given = context.Options().Text("out-dir");
  if (given.ends_with(kExtension)) {
    return given;
  }
  const std::string name =
      context.Options().Text("name", document.GetDocName(false) + std::string(kExtension));
  const std::string directory = context.OutputDirectory();
  return directory.empty() ? name : directory + "/" + name;
}

JobResult Xmp(JobContext& context) {
  PdfDoc document = context.Documents().front();
  const std::string path = OutputPath(context, document);
  ForPassword([&] { document.GetXmpMetaData(path); });
  JobResult result{.outputs = {path}, .report = document.GetReport()};
  for (const PdfReportEntry& entry : document.GetReport().GetEntries()) {
    result.warnings.push_back(PdfReport::GetText(entry));
  }
  return result;
}

const JobRegistration kRegistration({
    .name = "xmp",
    .summary = "extract the XMP metadata",
    .description = "Writes the XMP packet of the input as it stands (default name: NAME.xmp; "
                   "default directory: the current one); one that says nothing where the input has "
                   "none. The output directory may also be the name of a file that ends in .xmp.",
    .inputs = {.min = 1, .max = 1},
    .output = OutputKind::OneFile,
    .run = Xmp,
});

}  // namespace
}  // namespace TarnixTools::cli
