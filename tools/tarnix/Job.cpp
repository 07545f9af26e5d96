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
  return {{"code", CodeName(failure.code)},
          {"engineCode", failure.engine_code},
          {"message", failure.message}};
}

bool IsShown(const OptionRow& row, const Job& job) {
  switch (row.applies_to) {
    case AppliesTo::EveryJob:
      return true;
    case AppliesTo::JobsThatWrite:
      return job.output != OutputKind::None;
    case AppliesTo::JobsThatWriteOneFile:
      return job.output == OutputKind::OneFile;
    case AppliesTo::JobsWithPrefix:
      return job.has_prefix;
  }
  return false;
}

bool IsAccepted(const OptionRow& row, const Job& job) {
  return row.applies_to == AppliesTo::JobsThatWrite || IsShown(row, job);
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
