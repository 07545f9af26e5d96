// Where the outputs of a job go: every name that is known before the job is settled, and looked at,
// before any work.
#ifndef TARNIX_CLI_OUTPUT_PLAN_H_
#define TARNIX_CLI_OUTPUT_PLAN_H_

#include <memory>
#include <string>
#include <vector>

#include "CommandParser.h"
#include "Input.h"
#include "TemporaryFiles.h"

namespace TarnixTools::cli {

class OutputPlan {
 public:
  // Throws UsageError for what cannot be meant: a file name for several files, one name for several
  // outputs, an output that is an input; PdfException (FileNotFound) for a file that may not be
  // replaced.
  OutputPlan(const Command& command, const std::vector<Input>& inputs);

  // The path of the one output of an input, of all inputs for a job that does them together or tells
  // of them in a report.
  const std::string& PathOf(std::size_t input) const { return paths_.at(input); }

  // What the several outputs of an input are called, as tasks take it: {n} stands for the number of
  // each and {stem} for the input's name.
  std::string PatternFor(const Input& input) const;

  // The directory of a path, ".", "/" or one with its parents, which are made when they are missing.
  // Throws PdfException (FileNotFound).
  static std::string MakeDirectoryOf(const std::string& path);

  // The directory that several outputs go to, made with its parents.
  std::string MakeDirectory() const;

  // Puts it in front of a name; "" for the current directory, as it is not printed.
  const std::string& Directory() const { return directory_; }

  bool IsStandardOutput() const { return standard_output_ != nullptr; }

 private:
  void SettleReport(const Command& command, const std::vector<Input>& inputs);
  void SettleDirectory(const Command& command, std::size_t outputs);
  std::string NameOf(const Command& command, const Input& input, std::size_t number) const;
  void SettlePaths(const Command& command, const std::vector<Input>& inputs);
  void SettlePattern(const Command& command, const std::vector<Input>& inputs);
  // One file may have several paths, which matters where it is written over.
  void RequireDifferent(bool is_in_place) const;
  void RequireNoInput(const Command& command, const std::vector<Input>& inputs) const;
  // The files that are there with names that the pattern can give.
  std::vector<std::string> ThereOfPattern(const std::vector<Input>& inputs) const;
  void RequireFree(const std::vector<Input>& inputs) const;

  std::string directory_;  // "" or ends with a slash
  std::string file_;       // what -o names, when it names a file
  std::string pattern_;
  bool with_any_extension_ = false;
  std::vector<std::string> paths_;
  std::unique_ptr<TemporaryDirectory> standard_output_;  // what goes there is written here first
};

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_OUTPUT_PLAN_H_
