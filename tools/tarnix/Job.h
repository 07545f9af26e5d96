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
//     return context.RunNamed(task);
//   }
//
//   const JobRegistration kRegistration({
//       .name = "rotate",
//       .summary = "turn every page",
//       .description = "Turns every page of the input by the angle.",
//       .inputs = {.min = 1, .use = InputUse::Each},
//       .suffix = "-rotated",
//       .options = kOptions,
//       .run = Rotate,
//   });
#ifndef TARNIX_CLI_JOB_H_
#define TARNIX_CLI_JOB_H_

#include <array>
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

// What a job does with several inputs.
enum class InputUse {
  Each,      // it is run for each on its own
  Together,  // it makes one thing of all
  Listed,    // it tells of all in one answer
};

// How many files a job reads, and which.
struct InputRule {
  static constexpr int kNoLimit = -1;

  int min = 1;
  int max = kNoLimit;
  // Shell pattern of the names that the completion offers.
  std::string_view pattern = "*.[pP][dD][fF]";
  InputUse use = InputUse::Each;
};

enum class OutputKind { None, OneFile, ManyFiles };

// The engines, as far as their error codes differ.
enum class EngineName {
  Toolbox,
  Rewriting,
  Images,
  Parser,
  Validator,
  Rasteriser,
  Converter,
  Office
};

// An input of several that a job has gone on without.
struct FailedInput {
  std::string input;
  Failure failure;
};

// What the report says of one input of several.
struct InputReport {
  std::string input;
  PdfReport report;
};

// What a job hands back. Paths may have either separator; they are printed in the system's own
// form.
struct JobResult {
  std::vector<std::string> outputs = {};  // files written, in order
  Json fields = Json::object();           // the job's own fields of the JSON object
  std::string text = {};      // printed instead of the outputs when not empty (no --json)
  std::string password = {};  // that opens the outputs
  PdfReport report = {};  // of the task, for --verbose; damage that lost something makes the status
                          // kExitLost
  std::vector<InputReport> reports = {};   // its parts, where each input was done on its own
  std::vector<std::string> warnings = {};  // a line each, without a full stop; not with --quiet
  std::vector<FailedInput> failures = {};  // in order; the first decides the exit status
  int exit_status = kExitDone;
};

struct Job {
  std::string_view name;
  std::string_view summary;      // a few words, no full stop
  std::string_view description;  // one paragraph
  // Command lines that work in the directory of the examples, one after the other.
  std::array<std::string_view, 3> examples = {};
  InputRule inputs = {};
  OutputKind output = OutputKind::OneFile;
  // A flag of the job's own with which it writes one file instead of many, or does each input on its
  // own instead of all together.
  std::string_view changed_by = {};
  // A flag of the job's own with which names of several outputs have no stem in front of the suffix.
  std::string_view without_stem = {};
  // A flag of the job's own with which the extension of each output is that of the data in it.
  std::string_view with_any_extension = {};
  // Whether the job writes nothing with these options; null for a job that always does.
  bool (*only_tells)(const OptionValues&) = nullptr;
  // An option of the job's own that names a file to be written beside what it tells.
  std::string_view report_option = {};
  // The output's name is the input's stem (or this one), the suffix and the extension, which may be
  // the value of an option instead.
  std::string_view stem = {};
  std::string_view suffix = {};
  std::string_view extension = ".pdf";
  std::string_view extension_option = {};
  EngineName engine = EngineName::Toolbox;  // whose codes its failures have
  bool reads_documents = true;              // which may need a password
  bool has_page_inputs = false;             // FILE:PAGES
  bool can_protect = true;                  // the output, with --out-password
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

// Whether the output can take the place of the input.
bool CanWriteOver(const Job& job);

// Whether the job has a use for a common option.
bool IsShown(const OptionRow& row, const Job& job);

// The rows of a job: its own, then the common ones that it has a use for.
std::vector<const OptionRow*> ShownOptions(const Job& job);

// What the job writes when these options are given.
OutputKind OutputOf(const Job& job, const OptionValues& values);

// Whether the job is run for each input on its own when these options are given.
bool IsForEach(const Job& job, const OptionValues& values);

// ".pdf", or what the options ask for instead.
std::string ExtensionOf(const Job& job, const OptionValues& values);

// "merge [OPTIONS] INPUT INPUT..."
std::string Synopsis(const Job& job);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_JOB_H_
