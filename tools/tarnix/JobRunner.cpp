#include "JobRunner.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "ActivityBar.h"
#include "CommandParser.h"
#include "EachInput.h"
#include "Failure.h"
#include "Help.h"
#include "JobContext.h"
#include "Streams.h"

namespace TarnixTools::cli {
namespace {

// Names and metadata may hold any bytes; what is not UTF-8 becomes U+FFFD.
std::string ToText(const Json& object) {
  return object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

JobResult RunWithProgress(const Command& command, JobContext& context) {
  const OptionValues& values = command.values;
  const ProgressMode mode =
      values.Has("quiet") ? ProgressMode::Never : ToProgressMode(values.Text("progress", "auto"));
  const ActivityBar bar(mode, "tarnix " + std::string(command.job->name));
  return command.job->run(context);
}

// Nothing for a file that is not a document or cannot be read back.
std::optional<int> CountPages(const std::string& path, const std::string& password) {
  if (!path.ends_with(".pdf")) {
    return std::nullopt;
  }
  try {
    return PdfDoc(path, password, true).GetPagesNum();
  } catch (const PdfException&) {
    return std::nullopt;
  }
}

// "wrote PATH (N pages)"; without the count where there is none.
std::string OutputLine(const std::string& path, const std::string& password) {
  const std::string line = "wrote " + path;
  const auto pages = CountPages(path, password);
  return pages ? line + " (" + std::to_string(*pages) + (*pages == 1 ? " page)" : " pages)") : line;
}

// What damage took of the inputs is told by every job, and ends it with a status of its own.
void TellLosses(JobResult& result) {
  std::vector<std::string> losses = LossesOf(result.report);
  if (losses.empty()) {
    return;
  }
  result.exit_status = kExitLost;
  for (std::string& loss : losses) {
    if (std::find(result.warnings.begin(), result.warnings.end(), loss) == result.warnings.end()) {
      result.warnings.push_back(std::move(loss));
    }
  }
}

// A job that is done, with the password that opens its outputs.
struct DoneJob {
  JobResult result;
  std::string out_password;
};

DoneJob Run(const Command& command) {
  JobContext context(command);
  JobResult result = RunWithProgress(command, context);
  for (std::string& path : result.outputs) {
    path = NativePath(path);
  }
  TellLosses(result);
  return {std::move(result), context.OutPassword()};
}

Json ReportJson(const PdfReport& report) {
  Json entries = Json::array();
  for (const PdfReportEntry& entry : report.GetEntries()) {
    Json item = {{"kind", PdfReport::GetKindName(entry.kind)},
                 {"outcome", PdfReport::GetOutcomeName(entry.outcome)},
                 {"count", entry.count}};
    if (entry.page > 0) {
      item["page"] = entry.page;
    }
    if (!entry.reason.empty()) {
      item["reason"] = entry.reason;
    }
    entries.push_back(std::move(item));
  }
  return entries;
}

Json FailuresJson(const std::vector<FailedInput>& failures) {
  Json list = Json::array();
  for (const FailedInput& failed : failures) {
    Json item = {{"input", failed.input}};
    item.update(ToJson(failed.failure));
    list.push_back(std::move(item));
  }
  return list;
}

void PrintJson(const Command& command, const JobResult& result) {
  Json object = {{"job", command.job->name}, {"outputs", result.outputs}};
  object.update(result.fields);
  object["report"] = ReportJson(result.report);
  if (!result.failures.empty()) {
    object["errors"] = FailuresJson(result.failures);
  }
  WriteOutput(ToText(object));
}

void PrintReport(const DoneJob& done) {
  for (const PdfReportEntry& entry : done.result.report.GetEntries()) {
    WriteError(OneLine(PdfReport::GetText(entry)) + "\n");
  }
  for (const std::string& path : done.result.outputs) {
    WriteError(OneLine(OutputLine(path, done.out_password)) + "\n");
  }
}

void PrintText(const Command& command, const DoneJob& done) {
  const JobResult& result = done.result;
  std::string text = result.text;
  if (text.empty()) {
    for (const std::string& path : result.outputs) {
      text += path + "\n";
    }
  }
  WriteOutput(text);
  if (command.values.Has("verbose")) {
    PrintReport(done);
  }
}

void PrintWarnings(const JobResult& result) {
  for (const std::string& warning : result.warnings) {
    WriteError(OneLine("tarnix: " + warning) + "\n");
  }
}

void PrintResult(const Command& command, const DoneJob& done) {
  if (!command.values.Has("quiet")) {
    PrintWarnings(done.result);
  }
  for (const FailedInput& failed : done.result.failures) {
    PrintFailure(failed.failure);
  }
  if (command.values.Has("json")) {
    PrintJson(command, done.result);
  } else {
    PrintText(command, done);
  }
}

int ReportFailure(const Command& command, const Failure& failure, const PdfReport& report = {}) {
  PrintFailure(failure);
  if (!command.values.Has("quiet")) {
    for (const PdfReportEntry& entry : report.GetEntries()) {
      WriteError(OneLine("tarnix: " + PdfReport::GetText(entry)) + "\n");
    }
  }
  if (command.values.Has("json")) {
    Json object = {{"job", command.job->name}, {"error", ToJson(failure)}};
    if (!report.GetEntries().empty()) {
      object["report"] = ReportJson(report);
    }
    WriteOutput(ToText(object));
  }
  return ExitStatus(failure.code);
}

}  // namespace

int RunJob(const Job& job, const std::vector<std::string>& words) {
  const Command command = ParseCommand(job, words);
  if (command.values.Has("help")) {
    WriteOutput(JobHelp(job));
    return kExitDone;
  }
  if (command.values.Has("version")) {
    WriteOutput(VersionLine());
    return kExitDone;
  }
  DoneJob done;
  try {
    done = Run(command);
  } catch (const UsageError&) {
    throw;
  } catch (const ReportedFailure& failure) {
    return ReportFailure(command, CurrentFailure(), failure.report());
  } catch (...) {
    return ReportFailure(command, CurrentFailure());
  }
  PrintResult(command, done);
  const std::vector<FailedInput>& failures = done.result.failures;
  return failures.empty() ? done.result.exit_status : ExitStatus(failures.front().failure.code);
}

}  // namespace TarnixTools::cli
