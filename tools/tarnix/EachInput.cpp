#include "EachInput.h"

#include <set>
#include <utility>

#include "Failure.h"
#include "JobContext.h"
#include "Streams.h"

namespace TarnixTools::cli {
namespace {

// False when it failed: one input of several.
bool Attempt(const JobContext& context, const std::string& input, JobResult& result,
             const std::function<void()>& operation) {
  try {
    operation();
    return true;
  } catch (...) {
    if (context.Inputs().size() == 1) {
      throw;
    }
    result.failures.push_back({input, CurrentFailure()});
    return false;
  }
}

// Two inputs may not have one output.
void RequireOutputs(const JobContext& context, OutputNamer name_of) {
  std::set<std::string> names;
  for (const std::string& input : context.Inputs()) {
    const std::string name = name_of(context.Options(), PdfDoc(input, "", false));
    if (!names.insert(name).second) {
      throw UsageError("more than one output would be '" + name + "'");
    }
  }
}

void AddResult(JobResult& all, const std::string& input, JobResult one) {
  Json file = {{"input", input}, {"output", NativePath(one.outputs.front())}};
  file.update(one.fields);
  all.fields["files"].push_back(std::move(file));
  all.outputs.push_back(std::move(one.outputs.front()));
  all.report.Add(one.report);
  for (const std::string& warning : one.warnings) {
    all.warnings.push_back(input + ": " + warning);
  }
}

bool IsLoss(const PdfReportEntry& entry) {
  return entry.kind == PdfReportKind::Damage && entry.outcome == PdfReportOutcome::Dropped;
}

// What a conversion has kept stands in the way of the level that was asked for.
bool IsWarning(const PdfReportEntry& entry) {
  return entry.outcome == PdfReportOutcome::Dropped ||
         (entry.kind == PdfReportKind::Conversion && entry.outcome == PdfReportOutcome::Kept);
}

void AddLines(const PdfReport& report, bool (*is_told)(const PdfReportEntry&),
              std::vector<std::string>& lines) {
  for (const PdfReportEntry& entry : report.GetEntries()) {
    if (is_told(entry)) {
      lines.push_back(PdfReport::GetText(entry));
    }
  }
}

}  // namespace

JobResult WriteEach(JobContext& context, OutputNamer name, DocumentJob run) {
  if (context.Inputs().size() == 1) {
    return run(context, context.Documents().front());
  }
  RequireOutputs(context, name);
  JobResult all;
  all.fields["files"] = Json::array();
  for (const std::string& input : context.Inputs()) {
    Attempt(context, input, all,
            [&] { AddResult(all, input, run(context, context.DocumentOf(input))); });
  }
  return all;
}

JobResult TellOfEach(const JobContext& context, const InputTeller& tell) {
  JobResult result;
  Json files = Json::array();
  for (const std::string& input : context.Inputs()) {
    if (!Attempt(context, input, result, [&] { files.push_back(tell(input, result)); })) {
      files.push_back({{"path", input}, {"error", ToJson(result.failures.back().failure)}});
    }
  }
  result.fields["files"] = std::move(files);
  return result;
}

std::vector<std::string> WarningsOf(const PdfReport& report, bool loses_protection) {
  std::vector<std::string> warnings;
  if (loses_protection) {
    warnings.emplace_back("the input is protected, the output is not");
  }
  AddLines(report, IsWarning, warnings);
  return warnings;
}

std::vector<std::string> LossesOf(const PdfReport& report) {
  std::vector<std::string> losses;
  AddLines(report, IsLoss, losses);
  return losses;
}

}  // namespace TarnixTools::cli
