#include "ResultPrinter.h"

#include <optional>
#include <utility>

#include "Interruption.h"
#include "PdfDoc.h"
#include "PdfException.h"
#include "Streams.h"
#include "Warnings.h"

namespace TarnixTools::cli {
namespace {

// Names and metadata may hold any bytes; what is not UTF-8 becomes U+FFFD.
std::string ToText(const Json& object) {
  return object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
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
    object["error"] = ToJson(result.failures.front().failure);
    object["errors"] = FailuresJson(result.failures);
  }
  WriteOutput(ToText(object));
}

std::string Lines(const std::vector<std::string>& paths) {
  std::string text;
  for (const std::string& path : paths) {
    text += path + "\n";
  }
  return text;
}

std::string ReportText(const std::string& head, const PdfReport& report) {
  std::string text;
  for (const PdfReportEntry& entry : report.GetEntries()) {
    text += OneLine(head + PdfReport::GetText(entry)) + "\n";
  }
  return text;
}

void PrintReport(const JobResult& result) {
  std::string text = result.reports.empty() ? ReportText("", result.report) : "";
  for (const InputReport& part : result.reports) {
    text += ReportText(part.input + ": ", part.report);
  }
  for (const std::string& path : result.outputs) {
    text += OneLine(OutputLine(path, result.password)) + "\n";
  }
  WriteError(text);
}

// A message that does not say which of the inputs it is about gets the input's name in the cause.
Failure NamedFailure(const FailedInput& failed) {
  Failure failure = failed.failure;
  if (failure.message.find(failed.input) == std::string::npos && failed.input != "-") {
    failure.cause = failed.input + (failure.cause.empty() ? "" : ": " + failure.cause);
  }
  return failure;
}

void PrintWarnings(const std::vector<std::string>& warnings) {
  for (const std::string& warning : warnings) {
    WriteError(OneLine("tarnix: " + warning) + "\n");
  }
}

// For a job that has failed already, which is what is told.
void TryWriteOutput(const std::string& text) {
  try {
    WriteOutput(text);
  } catch (const PdfException&) {
    // Standard output may be what failed.
  }
}

// That of the first failure; without one, whether something was lost; else the job's own answer.
int StatusOf(const JobResult& result) {
  if (!result.failures.empty()) {
    return ExitStatus(result.failures.front().failure);
  }
  return HasLoss(result.report) ? kExitLost : result.exit_status;
}

}  // namespace

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

int PrintResult(const Command& command, const JobResult& result) {
  if (!command.values.Has("quiet")) {
    PrintWarnings(result.warnings);
  }
  for (const FailedInput& failed : result.failures) {
    PrintFailure(NamedFailure(failed));
  }
  if (command.values.Has("json")) {
    PrintJson(command, result);
  } else {
    WriteOutput(result.text.empty() ? Lines(result.outputs) : result.text);
    if (command.values.Has("verbose")) {
      PrintReport(result);
    }
  }
  return StatusOf(result);
}

int PrintFailedJob(const Command& command, const Failure& failure, const PdfReport& report) {
  const std::vector<std::string> outputs = FinishedOutputs();
  PrintFailure(failure);
  if (!command.values.Has("quiet")) {
    for (const PdfReportEntry& entry : report.GetEntries()) {
      WriteError(OneLine("tarnix: " + PdfReport::GetText(entry)) + "\n");
    }
  }
  if (!command.values.Has("json")) {
    TryWriteOutput(Lines(outputs));
    return ExitStatus(failure);
  }
  Json object = {{"job", command.job->name}, {"outputs", outputs}, {"error", ToJson(failure)}};
  if (!report.GetEntries().empty()) {
    object["report"] = ReportJson(report);
  }
  TryWriteOutput(ToText(object));
  return ExitStatus(failure);
}

void PrintUsageJson(const std::string& job, const std::string& message) {
  const Failure failure = {.message = message, .is_usage = true};
  const Json name = job.empty() ? Json(nullptr) : Json(job);
  WriteOutput(ToText({{"job", name}, {"outputs", Json::array()}, {"error", ToJson(failure)}}));
}

}  // namespace TarnixTools::cli
