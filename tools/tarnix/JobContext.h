// What a running job knows: its inputs, its options, the passwords and where its output goes.
#ifndef TARNIX_CLI_JOB_CONTEXT_H_
#define TARNIX_CLI_JOB_CONTEXT_H_

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "CommandParser.h"
#include "Input.h"
#include "Job.h"
#include "OutputPlan.h"
#include "Passwords.h"
#include "PdfDoc.h"
#include "PdfException.h"

namespace TarnixTools::cli {

// The code of every engine for a password that is missing or wrong.
inline constexpr std::int32_t kEnginePasswordError = 17;

// Runs what fails with EngineError where the password is missing or wrong, which ends every job with
// the same status: it is a PasswordError from here on.
template <typename Operation>
auto ForPassword(Operation&& operation) -> decltype(operation()) {
  try {
    return operation();
  } catch (PdfException& error) {  // not const: only the non-const what() has the message
    if (error.GetErrorCode() != kEnginePasswordError) {
      throw;
    }
    throw PdfException(PdfExceptionCode::PasswordError, kEnginePasswordError, "%s", error.what());
  }
}

class JobContext {
 public:
  // All of them outlive the context.
  //   inputs - those of this run: all of the command, or the one at `first`.
  //   progress - told of the steps that are done and how many there are; false when the job is to stop.
  using Progress = std::function<bool(std::int64_t done, std::int64_t of)>;

  JobContext(const Command& command, std::vector<Input> inputs, Passwords& passwords,
             const OutputPlan& plan, std::size_t first, Progress progress)
      : command_(command),
        inputs_(std::move(inputs)),
        passwords_(passwords),
        plan_(plan),
        first_(first),
        progress_(std::move(progress)) {}

  const Command& CommandLine() const { return command_; }

  const std::vector<Input>& Inputs() const { return inputs_; }

  const OptionValues& Options() const { return command_.values; }

  // The password of the first input.
  const std::string& Password() const { return passwords_.For(inputs_.front()); }

  // What the options --NAME and --NAME-file give, empty without either.
  const std::string& PasswordOf(const std::string& name) const { return passwords_.OfOption(name); }

  // The password to put on the output; empty for none.
  const std::string& OutPassword() const { return passwords_.OfOption("out-password"); }

  // One of the inputs as a document; throws when it does not exist.
  PdfDoc DocumentOf(const Input& input) const { return {input.path, passwords_.For(input), true}; }

  // The first input.
  PdfDoc Document() const { return DocumentOf(inputs_.front()); }

  // The inputs as documents, in order; throws for the first that does not exist.
  std::vector<PdfDoc> Documents() const;

  // Hands all inputs to a task.
  template <typename Task>
  void AddDocuments(Task& task) const {
    for (PdfDoc& document : Documents()) {
      task.AddPdfDoc(document);
    }
  }

  // The pages that the option gives, which must be given: in order and with repeats.
  std::vector<int> Pages(const std::string& option) const;

  // Where the one output goes.
  const std::string& OutputPath() const { return plan_.PathOf(first_); }

  // The part of it behind the last slash.
  std::string OutputName() const;

  // Its directory, made with its parents. Call it when everything on the command line has been
  // checked.
  std::string OutputDirectory() const { return OutputPlan::MakeDirectoryOf(OutputPath()); }

  // How the several outputs of the first input are called.
  std::string NamePattern() const { return plan_.PatternFor(inputs_.front()); }

  // The directory that they go to, made with its parents.
  std::string MakeDirectory() const { return plan_.MakeDirectory(); }

  // Has a task show how far it is, and stop when the program is interrupted.
  template <typename Task>
  void Watch(Task& task) const {
    task.SetProgress([progress = progress_](const std::string& /*job*/, std::int64_t done,
                                            std::int64_t of) { return progress(done, of); });
  }

  // Hands directory and password of the output to a task, and watches it.
  template <typename Task>
  void SetOutput(Task& task) const {
    Watch(task);
    task.SetOutputPath(OutputDirectory());
    if (command_.job->can_protect) {
      task.SetOutPassword(OutPassword());
    }
  }

  // Runs a task on one document. Its output keeps what the document says of itself, and has the name
  // that the command line gives it.
  template <typename Task>
  JobResult RunNamed(Task& task) const {
    task.SetOutName(OutputName());
    return Run(task);
  }

  // Runs a task whose name is set already.
  template <typename Task>
  JobResult Run(Task& task) const {
    task.SetKeepMetadata(true);
    SetOutput(task);
    ForPassword([&] { task.Execute(); });
    return {.outputs = {OutputPath()}, .report = task.GetReport()};
  }

 private:
  const Command& command_;
  std::vector<Input> inputs_;
  Passwords& passwords_;
  const OutputPlan& plan_;
  std::size_t first_;
  Progress progress_;
};

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_JOB_CONTEXT_H_
