// A job of the command line: one subcommand, one small file. The file describes the job, says how
// to run it and registers it; parsing, passwords, the output directory, progress, JSON, exit
// statuses, --help, the bash completion and the man page follow from the description.
//
//   constexpr OptionRow kOptions[] = {
//       {.name = "angle",
//        .kind = ValueKind::Choice,
//        .argument = "0|90|180|270",
//        .help = "turn to the right"},
//   };
//
//   JobResult Rotate(JobContext& context) {
//     PdfRotateTask task;
//     context.AddDocuments(task);
//     task.SetRotationAngle(...);
//     context.SetOutput(task);
//     task.Execute();
//     return {.outputs = {...}, .report = task.GetReport()};
//   }
//
//   const JobRegistration kRegistration({
//       .name = "rotate",
//       .summary = "turn every page",
//       .description = "Turns every page of the input by the angle.",
//       .inputs = {.min = 1, .max = 1},
//       .options = kOptions,
//       .run = Rotate,
//   });
#ifndef TARNIX_CLI_JOB_H_
#define TARNIX_CLI_JOB_H_

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "Failure.h"
#include "OptionTable.h"
#include "PdfReport.h"

namespace TarnixTools::cli {

class JobContext;
struct Failure;

// Keeps its fields in the order in which they were added.
using Json = nlohmann::ordered_json;

constexpr int kExitDone = 0;
constexpr int kExitNo = 1;    // the answer of a job that asks a question
constexpr int kExitLost = 3;  // done, but something is lost that the input still announced

// How many files a job reads, and which.
struct InputRule {
  static constexpr int kNoLimit = -1;

  int min = 1;
  int max = kNoLimit;
  // Shell pattern of the names that the completion offers.
  std::string_view pattern = "*.[pP][dD][fF]";
};

enum class OutputKind { None, OneFile, ManyFiles };

// An input of several that a job has gone on without.
struct FailedInput {
  std::string input;
  Failure failure;
};

// What a job hands back. Paths may have either separator; they are printed in the system's own
// form.
struct JobResult {
  std::vector<std::string> outputs = {};  // files written, in order
  Json fields = Json::object();           // the job's own fields of the JSON object
  std::string text = {};  // printed instead of the outputs when not empty (no --json)
  PdfReport report = {};  // of the task, for --verbose
  std::vector<std::string> warnings = {};  // a line each, without a full stop; not with --quiet
  std::vector<FailedInput> failures = {};  // in order; the first decides the exit status
  int exit_status = kExitDone;
};

struct Job {
  std::string_view name;
  std::string_view summary;      // a few words, no full stop
  std::string_view description;  // one paragraph
  InputRule inputs = {};
  OutputKind output = OutputKind::OneFile;
  bool has_prefix = false;
  std::span<const OptionRow> options = {};
  // Throws UsageError (Failure.h) for what is wrong on the command line itself, PdfException for a
  // failed job.
  JobResult (*run)(JobContext&) = nullptr;
};

// Adds a job to the table; one namespace-scope constant per job file.
struct JobRegistration {
  explicit JobRegistration(const Job& job);
};

// Every registered job, by name.
std::vector<const Job*> Jobs();

// Null when there is no job of that name.
const Job* FindJob(std::string_view name);

// What the JSON output says of a failed job.
Json ToJson(const Failure& failure);

// Whether help, completion and man page show a common option for this job.
bool IsShown(const OptionRow& row, const Job& job);

// Whether the job's command line accepts a common option. Options for output are accepted by every
// job, so that a script may give them uniformly.
bool IsAccepted(const OptionRow& row, const Job& job);

// The rows shown for a job: its own, then the common ones.
std::vector<const OptionRow*> ShownOptions(const Job& job);

// "merge [OPTIONS] INPUT INPUT..."
std::string Synopsis(const Job& job);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_JOB_H_
