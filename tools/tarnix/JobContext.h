// What a running job knows: its inputs, its options, the passwords and where its output goes.
#ifndef TARNIX_CLI_JOB_CONTEXT_H_
#define TARNIX_CLI_JOB_CONTEXT_H_

#include <string>
#include <string_view>
#include <vector>

#include "CommandParser.h"
#include "Job.h"
#include "PdfDoc.h"

namespace TarnixTools::cli {

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

 private:
  std::string MakeOutputDirectory() const;

  const Command& command_;
  std::string password_;
  std::string out_password_;
};

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_JOB_CONTEXT_H_
