#include "OutputPlan.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>

#include <sys/stat.h>

#include "Failure.h"
#include "MadeDirectories.h"
#include "PdfCommonUtils.h"
#include "PdfException.h"

namespace TarnixTools::cli {
namespace {

constexpr std::string_view kNumber = "{n}";
constexpr std::string_view kStem = "{stem}";

bool IsDirectory(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_directory(path, ignored);
}

bool EndsIn(std::string path, std::string_view extension) {
  std::transform(path.begin(), path.end(), path.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return path.ends_with(extension);
}

// What tells one file from another, whatever it is called.
using FileId = std::pair<dev_t, ino_t>;

std::set<FileId> IdsOf(const std::vector<std::string>& paths) {
  std::set<FileId> ids;
  for (const std::string& path : paths) {
    struct stat file {};

    if (stat(path.c_str(), &file) == 0) {
      ids.emplace(file.st_dev, file.st_ino);
    }
  }
  return ids;
}

std::vector<std::string> PathsOf(const std::vector<Input>& inputs) {
  std::vector<std::string> paths;
  paths.reserve(inputs.size());
  for (const Input& input : inputs) {
    paths.push_back(input.path);
  }
  return paths;
}

[[noreturn]] void ThrowThere(const std::string& path) {
  throw PdfException(PdfExceptionCode::FileNotFound, 0, "Unable to create new file [%s] (%s)",
                     path.c_str(), "File exists");
}

// The names in a directory, sorted.
std::vector<std::string> NamesIn(const std::string& directory) {
  std::vector<std::string> names;
  std::error_code error;
  for (std::filesystem::directory_iterator entry(directory.empty() ? "." : directory, error), end;
       !error && entry != end; entry.increment(error)) {
    names.push_back(entry->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

// Those of the names that the pattern can give for this stem.
std::vector<std::string> FittingNames(const std::vector<std::string>& names,
                                      const std::string& pattern, const std::string& stem,
                                      bool with_any_extension) {
  const std::size_t at = pattern.find(kNumber);
  const std::string head = PdfCommonUtils::FormName(pattern.substr(0, at), stem, "");
  std::string tail = PdfCommonUtils::FormName(pattern.substr(at + kNumber.size()), stem, "");
  if (with_any_extension) {
    tail.resize(std::min(tail.size(), tail.rfind('.')));
  }
  std::vector<std::string> fitting;
  for (auto name = std::lower_bound(names.begin(), names.end(), head);
       name != names.end() && name->starts_with(head); ++name) {
    const std::string known = with_any_extension ? name->substr(0, name->rfind('.')) : *name;
    const bool fits = known.size() > head.size() + tail.size() && known.ends_with(tail);
    if (fits && known.substr(head.size(), known.size() - head.size() - tail.size())
                        .find_first_not_of("0123456789-") == std::string::npos) {
      fitting.push_back(*name);
    }
  }
  return fitting;
}

bool HasNameOption(const OptionValues& values) {
  return values.Has("name") || values.Has("prefix");
}

// A name, not a path.
void RequireName(std::string_view option, const std::string& name) {
  RequireNoBackslash("--" + std::string(option), name);
  if (name.empty() || name.find('/') != std::string::npos) {
    throw UsageError("--" + std::string(option) + ": '" + name + "' is not the name of a file");
  }
}

bool IsInPlace(const Command& command) {
  return CanWriteOver(*command.job) && command.values.Has("in-place");
}

void RequireUse(const Command& command) {
  if (command.job->output == OutputKind::None) {
    return;  // which has none of them
  }
  std::vector<const char*> options = {"output", "name", "prefix", "no-clobber"};
  if (CanWriteOver(*command.job)) {
    options.push_back("in-place");
  }
  if (command.job->can_protect) {
    options.insert(options.end(), {"out-password", "out-password-file"});
  }
  for (const char* const option : options) {
    if (command.values.Has(option)) {
      throw UsageError("--" + std::string(option) + " has no use here: no file is written");
    }
  }
}

}  // namespace

OutputPlan::OutputPlan(const Command& command, const std::vector<Input>& inputs) {
  const OutputKind kind = OutputOf(*command.job, command.values);
  if (kind == OutputKind::None) {
    RequireUse(command);
    SettleReport(command, inputs);
    return;
  }
  for (const char* const option : {"name", "prefix"}) {
    if (command.values.Has(option)) {
      RequireName(option, command.values.Text(option));
    }
  }
  const std::size_t outputs = IsForEach(*command.job, command.values) ? inputs.size() : 1;
  SettleDirectory(command, kind == OutputKind::OneFile ? outputs : 2);
  if (kind == OutputKind::OneFile) {
    SettlePaths(command, inputs);
    RequireDifferent(IsInPlace(command));
  } else {
    SettlePattern(command, inputs);
  }
  if (!IsInPlace(command)) {
    RequireNoInput(command, inputs);
  }
  if (command.values.Has("no-clobber")) {
    RequireFree(inputs);
  }
}

// The report is an output like any other, and takes no document's place.
void OutputPlan::SettleReport(const Command& command, const std::vector<Input>& inputs) {
  const std::string_view option = command.job->report_option;
  if (!option.empty() && command.values.Has(option)) {
    paths_ = {command.values.Text(option)};
    RequireNoBackslash("--" + std::string(option), paths_.front());
    RequireNoInput(command, inputs);
  }
}

void OutputPlan::SettleDirectory(const Command& command, std::size_t outputs) {
  const std::string given = command.values.Text("output");
  RequireNoBackslash("--output", given);
  if (given == "-") {
    if (outputs > 1) {
      throw UsageError("standard output takes one file, and several are written");
    }
    if (command.values.Has("json")) {
      throw UsageError("standard output cannot have both the file and --json");
    }
    standard_output_ = std::make_unique<TemporaryDirectory>();
    directory_ = standard_output_->Path() + "/";
    return;
  }
  const bool is_file = EndsIn(given, ExtensionOf(*command.job, command.values)) &&
                       !given.ends_with('/') && !IsDirectory(given);
  if (!is_file) {
    directory_ = given.empty() || given.ends_with('/') ? given : given + "/";
    return;
  }
  if (outputs > 1) {
    throw UsageError("--output: '" + given + "' looks like a file, and several are written");
  }
  if (HasNameOption(command.values)) {
    throw UsageError("--output: '" + given + "' is a file already, and cannot have another name");
  }
  file_ = given;
}

std::string OutputPlan::NameOf(const Command& command, const Input& input,
                               std::size_t number) const {
  const Job& job = *command.job;
  const std::string stem = job.stem.empty() ? input.stem : std::string(job.stem);
  if (command.values.Has("name")) {
    return PdfCommonUtils::FormName(command.values.Text("name"), stem, std::to_string(number));
  }
  const std::string extension = ExtensionOf(job, command.values);
  const std::string done =
      job.output == OutputKind::ManyFiles ? "-" + std::string(job.name) : std::string(job.suffix);
  return command.values.Has("prefix") ? command.values.Text("prefix") + "_" + stem + extension
                                      : stem + done + extension;
}

void OutputPlan::SettlePaths(const Command& command, const std::vector<Input>& inputs) {
  const std::size_t count = IsForEach(*command.job, command.values) ? inputs.size() : 1;
  const bool is_in_place = IsInPlace(command);
  if (is_in_place && (command.values.Has("output") || HasNameOption(command.values))) {
    throw UsageError("--in-place writes over the input, and cannot have another name");
  }
  for (std::size_t i = 0; i < count; ++i) {
    if (is_in_place && inputs[i].given == "-") {
      throw UsageError("--in-place cannot write over standard input");
    }
    paths_.push_back(is_in_place      ? inputs[i].path
                     : !file_.empty() ? file_
                                      : directory_ + NameOf(command, inputs[i], i + 1));
  }
}

void OutputPlan::SettlePattern(const Command& command, const std::vector<Input>& inputs) {
  const OptionValues& values = command.values;
  const Job& job = *command.job;
  with_any_extension_ = !job.with_any_extension.empty() && values.Has(job.with_any_extension);
  const bool is_stemless = !job.without_stem.empty() && values.Has(job.without_stem);
  pattern_ = is_stemless ? std::string(job.suffix.substr(1))
                         : std::string(kStem) + std::string(job.suffix);
  pattern_ += "-" + std::string(kNumber) + ExtensionOf(job, values);
  if (values.Has("prefix")) {
    pattern_ = values.Text("prefix") + "_" + pattern_;
  }
  if (values.Has("name")) {
    pattern_ = values.Text("name");
    if (pattern_.find(kNumber) == std::string::npos) {
      throw UsageError("--name: several files are written, and '" + pattern_ + "' has no {n}");
    }
  }
  std::set<std::string> stems;
  for (const Input& input : inputs) {
    const bool is_new =
        stems.insert(pattern_.find(kStem) == std::string::npos ? "" : input.stem).second;
    if (!is_new) {
      throw UsageError("outputs of '" + input.given + "' and of another input have the same names");
    }
  }
}

void OutputPlan::RequireDifferent(bool is_in_place) const {
  std::set<std::string> seen;
  for (const std::string& path : paths_) {
    std::error_code ignored;
    const std::string file =
        is_in_place ? std::filesystem::weakly_canonical(path, ignored).string() : path;
    if (!seen.insert(file.empty() ? path : file).second) {
      throw UsageError("more than one output would be '" + path + "'");
    }
  }
}

void OutputPlan::RequireNoInput(const Command& command, const std::vector<Input>& inputs) const {
  const std::vector<std::string> outputs = paths_.empty() ? ThereOfPattern(inputs) : paths_;
  const std::set<FileId> ids = IdsOf(PathsOf(inputs));
  for (const std::string& output : outputs) {
    struct stat file {};

    if (stat(output.c_str(), &file) == 0 && ids.contains({file.st_dev, file.st_ino})) {
      const bool can_be = CanWriteOver(*command.job);
      throw UsageError("the output '" + output + "' is also an input" +
                       (can_be ? " (--in-place writes over it)" : ""));
    }
  }
}

void OutputPlan::RequireFree(const std::vector<Input>& inputs) const {
  for (const std::string& path : paths_) {
    std::error_code ignored;
    if (std::filesystem::symlink_status(path, ignored).type() !=
        std::filesystem::file_type::not_found) {
      ThrowThere(path);
    }
  }
  if (paths_.empty()) {
    if (const std::vector<std::string> files = ThereOfPattern(inputs); !files.empty()) {
      ThrowThere(files.front());
    }
  }
}

// For tasks, a name such as ".hidden" has no stem.
std::string OutputPlan::PatternFor(const Input& input) const {
  const bool is_hidden = input.stem.rfind('.') == 0;
  return is_hidden ? PdfCommonUtils::FormName(pattern_, input.stem, std::string(kNumber))
                   : pattern_;
}

std::vector<std::string> OutputPlan::ThereOfPattern(const std::vector<Input>& inputs) const {
  const std::vector<std::string> names = NamesIn(directory_);
  std::vector<std::string> files;
  for (const Input& input : inputs) {
    for (const std::string& name : FittingNames(names, pattern_, input.stem, with_any_extension_)) {
      files.push_back(directory_ + name);
    }
  }
  return files;
}

std::string OutputPlan::MakeDirectoryOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) {
    return ".";
  }
  const std::string directory = path.substr(0, slash + 1);
  const std::error_code error = MakeDirectories(directory);
  if (!IsDirectory(directory)) {
    const std::error_code reason = error ? error : std::make_error_code(std::errc::not_a_directory);
    throw PdfException(PdfExceptionCode::FileNotFound, 0,
                       "Unable to create output directory [%s] (%s)", path.substr(0, slash).c_str(),
                       reason.message().c_str());
  }
  return directory;
}

std::string OutputPlan::MakeDirectory() const {
  return MakeDirectoryOf(directory_);
}

}  // namespace TarnixTools::cli
