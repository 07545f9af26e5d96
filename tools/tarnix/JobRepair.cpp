#include <string>

#include "EachInput.h"
#include "Job.h"
#include "JobContext.h"
#include "PdfException.h"
#include "PdfRepairTask.h"

namespace TarnixTools::cli {
namespace {

// A document that cannot be opened fails when it is repaired.
bool IsProtected(PdfDoc& document) {
  try {
    return document.IsEncrypted();
  } catch (const PdfException&) {
    return false;
  }
}

// NAME-repaired.pdf, unless another name was given.
std::string OutputName(const OptionValues& options, const PdfDoc& document) {
  return options.Text("name", document.GetDocName(false) + "-repaired.pdf");
}

JobResult RepairOne(JobContext& context, PdfDoc document) {
  const bool is_protected = IsProtected(document);
  PdfRepairTask task(document, OutputName(context.Options(), document));
  task.SetOutputPath(".");
  context.SetOutput(task);
  ForPassword([&] { task.Execute(); });
  const std::string directory = context.Options().Has("out-dir") ? task.GetOutputPath() : "";
  return {.outputs = {directory + task.GetOutName()},
          .fields = {{"problems", task.GetErrorsInfo()}},
          .report = task.GetReport(),
          .warnings = WarningsOf(task.GetReport(), is_protected && context.OutPassword().empty())};
}

JobResult Repair(JobContext& context) {
  return WriteEach(context, OutputName, RepairOne);
}

const JobRegistration kRegistration({
    .name = "repair",
    .summary = "put a damaged document right",
    .description = "Writes a sound copy of each input (default name: NAME-repaired.pdf; default "
                   "directory: the current one). With --json, what was wrong is listed. The exit "
                   "status is 3 when something is lost. An input that fails does not stop the "
                   "others.",
    .inputs = {.min = 1},
    .output = OutputKind::OneFile,
    .run = Repair,
});

}  // namespace
}  // namespace TarnixTools::cli
