// tarnix: one subcommand per job of the library.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "Causes.h"
#include "Completion.h"
#include "Failure.h"
#include "Help.h"
#include "Job.h"
#include "JobRunner.h"
#include "ManPage.h"
#include "NearestWord.h"
#include "ResultPrinter.h"
#include "Streams.h"

namespace TarnixTools::cli {
namespace {

using Words = std::vector<std::string>;

constexpr int kExitBrokenPipe = 128 + 13;  // as SIGPIPE would end the process

const Job& JobNamed(const std::string& name) {
  const Job* job = FindJob(name);
  if (job == nullptr) {
    std::vector<std::string> known;
    for (const Job* each : Jobs()) {
      known.emplace_back(each->name);
    }
    throw UsageError(name.starts_with('-') ? UnknownOption(name, {"--help", "--version"})
                                           : "unknown job " + name + Suggestion(name, known));
  }
  return *job;
}

void ExpectNoMore(const Words& words) {
  if (!words.empty()) {
    throw UsageError("unexpected argument " + words.front());
  }
}

std::string HelpText(const Words& words) {
  if (words.empty()) {
    return GeneralHelp();
  }
  ExpectNoMore({words.begin() + 1, words.end()});
  return JobHelp(JobNamed(words.front()));
}

std::string CompletionText(const Words& words) {
  ExpectNoMore(words.empty() ? words : Words(words.begin() + 1, words.end()));
  const std::string shell = words.empty() ? "" : words.front();
  if (shell == "bash") {
    return BashCompletion();
  }
  if (shell == "zsh") {
    return ZshCompletion();
  }
  if (shell == "fish") {
    return FishCompletion();
  }
  throw UsageError("completion needs the name of a shell: bash, zsh or fish");
}

std::string VersionText(const Words& words) {
  ExpectNoMore(words);
  return VersionLine();
}

std::string ErrorsText(const Words& words) {
  ExpectNoMore(words);
  return ErrorTable();
}

std::string ManText(const Words& words) {
  ExpectNoMore(words);
  return ManPage();
}

// Commands that print a text instead of doing a job.
struct TextCommand {
  std::string_view word;
  std::string (*text)(const Words&);
};

constexpr TextCommand kTextCommands[] = {
    {"help", HelpText},         {"--help", HelpText},           {"-h", HelpText},
    {"--version", VersionText}, {"completion", CompletionText}, {"man", ManText},
    {"errors", ErrorsText},
};

int Dispatch(const Words& words) {
  if (words.empty()) {
    throw UsageError("no job given");
  }
  const Words rest(words.begin() + 1, words.end());
  for (const TextCommand& command : kTextCommands) {
    if (command.word == words.front()) {
      WriteOutput(command.text(rest));
      return kExitDone;
    }
  }
  return RunJob(JobNamed(words.front()), rest);
}

// What --help is to follow in the advice after wrong usage.
std::string AdvisedCommand(const Words& words) {
  const bool has_job = !words.empty() && FindJob(words.front()) != nullptr;
  return has_job ? "tarnix " + words.front() : "tarnix";
}

// With --json, standard output tells it too.
int TellUsageError(const Words& words, const std::string& message) {
  const auto end = std::find(words.begin(), words.end(), "--");
  const int status = PrintUsageError(message, AdvisedCommand(words));
  if (std::find(words.begin(), end, "--json") != end) {
    PrintUsageJson(FindJob(words.front()) != nullptr ? words.front() : "", message);
  }
  return status;
}

int RunCommandLine(char** begin, char** end) {
  Words words;
  try {
    words.assign(begin, end);
    return Dispatch(words);
  } catch (const UsageError& error) {
    return TellUsageError(words, error.what());
  } catch (const BrokenPipe&) {
    return kExitBrokenPipe;
  } catch (...) {
    const Failure failure = CurrentFailure();
    PrintFailure(failure);
    return ExitStatus(failure);
  }
}

}  // namespace
}  // namespace TarnixTools::cli

int main(int argc, char** argv) {
  TarnixTools::cli::PrepareStandardStreams();
  return TarnixTools::cli::RunCommandLine(argv + (argc > 0 ? 1 : 0), argv + argc);
}
