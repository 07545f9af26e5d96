#include "Job.h"

#include <algorithm>

#include "Failure.h"

namespace TarnixTools::cli {
namespace {

// A function-local static: registrations run before main, in no particular order.
std::vector<Job>& Table() {
  static std::vector<Job> jobs;
  return jobs;
}

}  // namespace

JobRegistration::JobRegistration(const Job& job) {
  Table().push_back(job);
}

std::vector<const Job*> Jobs() {
  std::vector<const Job*> jobs;
  for (const Job& job : Table()) {
    jobs.push_back(&job);
  }
  std::sort(jobs.begin(), jobs.end(), [](const Job* a, const Job* b) { return a->name < b->name; });
  return jobs;
}

const Job* FindJob(std::string_view name) {
  for (const Job& job : Table()) {
    if (job.name == name) {
      return &job;
    }
  }
  return nullptr;
}

Json ToJson(const Failure& failure) {
  return {{"code", failure.is_usage ? "WrongUsage" : CodeName(failure.code)},
          {"engineCode", failure.engine_code},
          {"message", failure.message},
          {"cause", failure.cause}};
}

bool CanWriteOver(const Job& job) {
  return job.output == OutputKind::OneFile && job.inputs.use == InputUse::Each &&
         job.extension == ".pdf";
}

bool IsShown(const OptionRow& row, const Job& job) {
  const bool writes = job.output != OutputKind::None;
  switch (row.applies_to) {
    case AppliesTo::EveryJob:
      return true;
    case AppliesTo::JobsThatRead:
      return job.reads_documents;
    case AppliesTo::JobsThatWrite:
      return writes;
    case AppliesTo::JobsThatWriteOver:
      return CanWriteOver(job);
    case AppliesTo::JobsThatProtect:
      return writes && job.can_protect;
  }
  return false;
}

std::vector<const OptionRow*> ShownOptions(const Job& job) {
  std::vector<const OptionRow*> rows;
  for (const OptionRow& row : job.options) {
    rows.push_back(&row);
  }
  for (const OptionRow& row : CommonOptions()) {
    if (IsShown(row, job)) {
      rows.push_back(&row);
    }
  }
  return rows;
}

OutputKind OutputOf(const Job& job, const OptionValues& values) {
  if (job.only_tells != nullptr && job.only_tells(values)) {
    return OutputKind::None;
  }
  const bool is_one =
      job.output == OutputKind::ManyFiles && !job.changed_by.empty() && values.Has(job.changed_by);
  return is_one ? OutputKind::OneFile : job.output;
}

bool IsForEach(const Job& job, const OptionValues& values) {
  return job.inputs.use == InputUse::Each ||
         (job.inputs.use == InputUse::Together && !job.changed_by.empty() &&
          values.Has(job.changed_by));
}

std::string ExtensionOf(const Job& job, const OptionValues& values) {
  return !job.extension_option.empty() && values.Has(job.extension_option)
             ? "." + values.Text(job.extension_option)
             : std::string(job.extension);
}

std::string Synopsis(const Job& job) {
  std::string line = std::string(job.name) + " [OPTIONS]";
  for (int i = 0; i < job.inputs.min; ++i) {
    line += " INPUT";
  }
  if (job.inputs.max != job.inputs.min) {
    line += "...";
  }
  return line;
}

}  // namespace TarnixTools::cli
