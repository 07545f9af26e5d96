#include "JobRunner.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "Causes.h"
#include "CommandParser.h"
#include "Failure.h"
#include "Help.h"
#include "Input.h"
#include "Interruption.h"
#include "JobContext.h"
#include "MadeDirectories.h"
#include "OutputPlan.h"
#include "Passwords.h"
#include "ProgressBar.h"
#include "ResultPrinter.h"
#include "Streams.h"
#include "Warnings.h"

namespace TarnixTools::cli {
namespace {

// One run of the program: the command with all that it stands for.
struct Session {
  explicit Session(const Command& its_command)
      : command(its_command), inputs(command), passwords(command), plan(command, inputs.List()) {}

  const Command& command;
  const Inputs inputs;
  Passwords passwords;
  const OutputPlan plan;
};

// As they are printed, and noted as finished: what goes to standard output is not, until it is there.
void NoteOutputs(const OutputPlan& plan, JobResult& result) {
  for (std::string& path : result.outputs) {
    path = NativePath(path);
    if (!plan.IsStandardOutput()) {
      NoteFinished(path);
    }
  }
}

ProgressMode ModeOf(const OptionValues& values) {
  return values.Has("quiet") ? ProgressMode::Never
                             : ToProgressMode(values.Text("progress", "auto"));
}

// Those that the job has not made of its report itself.
void AddWarnings(JobResult& result) {
  for (std::string& warning : WarningsOf(result.report)) {
    const bool is_told =
        std::any_of(result.warnings.begin(), result.warnings.end(),
                    [&](const std::string& told) { return warning.starts_with(told); });
    if (!is_told) {
      result.warnings.push_back(std::move(warning));
    }
  }
}

bool LacksPassword(const JobResult& result) {
  return std::any_of(result.failures.begin(), result.failures.end(), [](const FailedInput& failed) {
    return failed.failure.code == PdfExceptionCode::PasswordError;
  });
}

// The job is run once more where a password was missing that somebody at the terminal knows.
JobResult RunWithPasswords(Session& session, JobContext& context) {
  const Job& job = *session.command.job;
  try {
    JobResult result = job.run(context);
    if (!LacksPassword(result) || !session.passwords.AskFor(context.Inputs())) {
      return result;
    }
  } catch (const PdfException& failure) {
    if (failure.GetCode() != PdfExceptionCode::PasswordError ||
        !session.passwords.AskFor(context.Inputs())) {
      throw;
    }
  }
  return job.run(context);
}

JobResult RunOn(Session& session, const std::vector<Input>& inputs, std::size_t first) {
  ProgressBar bar(ModeOf(session.command.values),
                  "tarnix " + std::string(session.command.job->name));
  const JobContext::Progress progress = [&bar](std::int64_t done, std::int64_t of) {
    bar.Set(done, of);
    return !IsInterrupted();
  };
  JobContext context(session.command, inputs, session.passwords, session.plan, first, progress);
  JobResult result = RunWithPasswords(session, context);
  if (session.command.job->output != OutputKind::None && session.command.job->can_protect) {
    result.password = context.OutPassword();
  }
  AddWarnings(result);
  NoteOutputs(session.plan, result);
  EndIfInterrupted();
  return result;
}

// Text of one input of several, which has to say whose it is.
std::string TextOf(const Input& input, const std::string& text) {
  const bool is_one_line = text.find('\n') + 1 == text.size();
  return text.empty() ? "" : OneLine(input.given) + (is_one_line ? ": " : ":\n") + text;
}

void AddResult(JobResult& all, const Input& input, JobResult one) {
  Json file = {{"input", input.given}, {"outputs", one.outputs}};
  file.update(one.fields);
  file["report"] = ReportJson(one.report);
  all.fields["files"].push_back(std::move(file));
  std::move(one.outputs.begin(), one.outputs.end(), std::back_inserter(all.outputs));
  all.text += TextOf(input, one.text);
  all.password = one.password;
  all.report.Add(one.report);
  all.reports.push_back({input.given, std::move(one.report)});
  for (const std::string& warning : one.warnings) {
    all.warnings.push_back(input.given + ": " + warning);
  }
  all.exit_status = std::max(all.exit_status, one.exit_status);
}

// Each on its own: one that fails does not stop the others.
JobResult RunOnEach(Session& session) {
  JobResult all;
  all.fields["files"] = Json::array();
  std::size_t number = 0;
  for (const Input& input : session.inputs.List()) {
    try {
      AddResult(all, input, RunOn(session, {input}, number));
    } catch (const UsageError&) {
      throw;
    } catch (...) {
      EndIfInterrupted();
      all.failures.push_back({input.given, CurrentFailureOn(session.command, {input})});
    }
    ++number;
  }
  return all;
}

JobResult RunAll(Session& session) {
  const std::vector<Input>& inputs = session.inputs.List();
  const bool is_for_each = IsForEach(*session.command.job, session.command.values);
  return is_for_each && inputs.size() > 1 ? RunOnEach(session) : RunOn(session, inputs, 0);
}

int Finish(Session& session, JobResult result) {
  if (session.plan.IsStandardOutput() && result.failures.empty()) {
    for (const std::string& path : std::exchange(result.outputs, {})) {
      CopyToOutput(path);
    }
  }
  return PrintResult(session.command, result);
}

// What the words stand for cannot be had: a password file, standard input, a place for the output.
std::vector<Input> InputsAsGiven(const Command& command) {
  std::vector<Input> inputs;
  for (const std::string& word : command.inputs) {
    inputs.push_back({.given = word, .path = word, .stem = {}, .pages = {}});
  }
  return inputs;
}

// Call it inside a catch block only.
int TellFailure(const Command& command, const std::vector<Input>& inputs, const PdfReport& report) {
  EndIfInterrupted();
  return PrintFailedJob(command, CurrentFailureOn(command, inputs), report);
}

int RunCommand(const Command& command) {
  std::vector<Input> inputs = InputsAsGiven(command);
  const MadeDirectories made;
  try {
    Session session(command);
    inputs = session.inputs.List();
    return Finish(session, RunAll(session));
  } catch (const UsageError&) {
    throw;
  } catch (const BrokenPipe&) {
    throw;
  } catch (const ReportedFailure& failure) {
    return TellFailure(command, inputs, failure.report());
  } catch (...) {
    return TellFailure(command, inputs, {});
  }
}

bool IsReportWanted(const Command& command) {
  const std::string_view option = command.job->report_option;
  return !option.empty() && command.values.Has(option);
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
  WatchForInterruption(command.values.Has("json") ? std::string(job.name) : "",
                       job.output != OutputKind::None || IsReportWanted(command));
  return RunCommand(command);
}

}  // namespace TarnixTools::cli
