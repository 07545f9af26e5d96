// What a running job knows: its inputs, its options, the passwords and where its output goes.
#ifndef TARNIX_CLI_JOB_CONTEXT_H_
#define TARNIX_CLI_JOB_CONTEXT_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "CommandParser.h"
#include "Job.h"
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
  // Reads the passwords that are to be read from files. Throws PdfException when one cannot be
  // read.
  explicit JobContext(const Command& command);

  const std::vector<std::string>& Inputs() const { return command_.inputs; }

  const OptionValues& Options() const { return command_.values; }

  const std::string& Password() const { return password_; }

  const std::string& OutPassword() const { return out_password_; }

  // For a job that puts another password than that on its output: what its option --NAME or
  // --NAME-file gives, empty without either. OutPassword() is the same from then on.
  const std::string& ReadOutPassword(const std::string& name);

  // The inputs as documents, in order; throws for the first that does not exist.
  std::vector<PdfDoc> Documents() const;

  // One of the inputs as a document; throws when it does not exist.
  PdfDoc DocumentOf(const std::string& input) const { return {input, password_, true}; }

  // Hands all inputs to a task.
  template <typename Task>
  void AddDocuments(Task& task) const {
    for (PdfDoc& document : Documents()) {
      task.AddPdfDoc(document);
    }
  }

  // Hands output directory and output password to a task, after making the directory. Call it when
  // everything on the command line has been checked. Without --out-dir the task's own rule holds.
  template <typename Task>
  void SetOutput(Task& task) const {
    if (Options().Has("out-dir")) {
      task.SetOutputPath(MakeOutputDirectory());
    }
    task.SetOutPassword(OutPassword());
  }

  // The directory that outputs go to, made with its parents; empty, which is the current one, when none was
  // given.
  std::string OutputDirectory() const;

  // Makes a directory with its parents, and returns its path in the system's form. Throws
  // PdfException when it cannot be made.
  static std::string MakeDirectory(const std::string& path);

  // Runs a task on one document. Its output keeps what the document says of itself.
  template <typename Task>
  void Run(Task& task) const {
    task.SetKeepMetadata(true);
    SetOutput(task);
    task.Execute();
  }

  // Runs a task on one document whose output has the name that the task was given.
  template <typename Task>
  JobResult RunNamed(Task& task) const {
    Run(task);
    return {.outputs = {task.GetOutputPath() + task.GetOutName()}, .report = task.GetReport()};
  }

  // Runs a task on one document whose output has the name that the task was given, or else one made
  // of the task's prefix and the document's name.
  template <typename Task>
  JobResult RunPrefixed(Task& task, const PdfDoc& document) const {
    task.SetOutPrefix(Options().Text("prefix"));
    task.SetOutPdfName(Options().Text("name"));
    Run(task);
    const std::string name = task.GetOutPdfName().empty()
                                 ? task.GetOutPrefix() + "_" + document.GetDocName(false) + ".pdf"
                                 : task.GetOutPdfName();
    return {.outputs = {task.GetOutputPath() + name}, .report = task.GetReport()};
  }

 private:
  std::string MakeOutputDirectory() const;

  const Command& command_;
  std::string password_;
  std::string out_password_;
};

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_JOB_CONTEXT_H_
