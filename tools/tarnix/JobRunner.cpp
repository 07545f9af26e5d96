#include "JobRunner.h"

#include <optional>

#include "ActivityBar.h"
#include "CommandParser.h"
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
std::string OutputReport(const std::string& path, const std::string& password) {
  const std::string line = "wrote " + path;
  const auto pages = CountPages(path, password);
  return pages ? line + " (" + std::to_string(*pages) + (*pages == 1 ? " page)" : " pages)") : line;
}

void AddOutputsToReport(JobResult& result, const std::string& password) {
  for (const std::string& path : result.outputs) {
    result.report.push_back(OutputReport(path, password));
  }
}

JobResult Run(const Command& command) {
  JobContext context(command);
  JobResult result = RunWithProgress(command, context);
  for (std::string& path : result.outputs) {
    path = NativePath(path);
  }
  if (command.values.Has("verbose")) {
    AddOutputsToReport(result, context.OutPassword());
  }
  return result;
}

void PrintJson(const Command& command, const JobResult& result) {
  Json object = {{"job", command.job->name}, {"outputs", result.outputs}};
  object.update(result.fields);
  if (command.values.Has("verbose")) {
    object["report"] = result.report;
  }
  WriteOutput(ToText(object));
}

void PrintText(const Command& command, const JobResult& result) {
  std::string text = result.text;
  if (text.empty()) {
    for (const std::string& path : result.outputs) {
      text += path + "\n";
    }
  }
  WriteOutput(text);
  if (command.values.Has("verbose")) {
    for (const std::string& line : result.report) {
      WriteError(OneLine(line) + "\n");
    }
  }
}

void PrintResult(const Command& command, const JobResult& result) {
  if (command.values.Has("json")) {
    PrintJson(command, result);
  } else {
    PrintText(command, result);
  }
}

int ReportFailure(const Command& command, const Failure& failure) {
  PrintFailure(failure);
  if (command.values.Has("json")) {
    WriteOutput(ToText({{"job", command.job->name},
                        {"error",
                         {{"code", CodeName(failure.code)},
                          {"engineCode", failure.engine_code},
                          {"message", failure.message}}}}));
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
  JobResult result;
  try {
    result = Run(command);
  } catch (const UsageError&) {
    throw;
  } catch (...) {
    return ReportFailure(command, CurrentFailure());
  }
  PrintResult(command, result);
  return result.exit_status;
}

}  // namespace TarnixTools::cli
