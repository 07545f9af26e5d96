#include <string>
#include <vector>

#include "Job.h"
#include "JobContext.h"
#include "PdfException.h"
#include "PdfRepairTask.h"

namespace TarnixTools::cli {
namespace {

bool IsLost(const PdfReportEntry& entry) {
  return entry.kind == PdfReportKind::Damage && entry.outcome == PdfReportOutcome::Dropped;
}

// What somebody may have counted on.
std::vector<std::string> WarningsOf(const PdfReport& report, bool loses_protection) {
  std::vector<std::string> warnings;
  if (loses_protection) {
    warnings.emplace_back("the input is protected, the output is not");
  }
  for (const PdfReportEntry& entry : report.GetEntries()) {
    if (entry.outcome == PdfReportOutcome::Dropped) {
      warnings.push_back(PdfReport::GetText(entry));
    }
  }
  return warnings;
}

int StatusOf(const PdfReport& report) {
  for (const PdfReportEntry& entry : report.GetEntries()) {
    if (IsLost(entry)) {
      return kExitLost;
    }
  }
  return kExitDone;
}

// A document that cannot be opened fails when it is repaired.
bool IsProtected(PdfDoc& document) {
  try {
    return document.IsEncrypted();
  } catch (const PdfException&) {
    return false;
  }
}

JobResult Repair(JobContext& context) {
  PdfDoc document = context.Documents().front();
  const bool is_protected = IsProtected(document);
  const std::string name = context.Options().Text("name");
  PdfRepairTask task(document, name.empty() ? document.GetDocName(false) + "-repaired.pdf" : name);
  task.SetOutputPath(".");
  context.SetOutput(task);
  ForPassword([&] { task.Execute(); });
  const std::string directory = context.Options().Has("out-dir") ? task.GetOutputPath() : "";
  return {.outputs = {directory + task.GetOutName()},
          .fields = {{"problems", task.GetErrorsInfo()}},
          .report = task.GetReport(),
          .warnings = WarningsOf(task.GetReport(), is_protected && context.OutPassword().empty()),
          .exit_status = StatusOf(task.GetReport())};
}

const JobRegistration kRegistration({
    .name = "repair",
    .summary = "put a damaged document right",
    .description = "Writes a sound copy of the input (default name: NAME-repaired.pdf; default "
                   "directory: the current one). With --json, what was wrong is listed. The exit "
                   "status is 3 when something is lost.",
    .inputs = {.min = 1, .max = 1},
    .output = OutputKind::OneFile,
    .run = Repair,
});

}  // namespace
}  // namespace TarnixTools::cli
