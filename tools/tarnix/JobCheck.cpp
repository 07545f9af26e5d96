#include <cstdint>
#include <list>
#include <string>

#include "Failure.h"
#include "Job.h"
#include "JobContext.h"
#include "PdfException.h"
#include "PdfRepairTask.h"
#include "Streams.h"

namespace TarnixTools::cli {
namespace {

constexpr std::int32_t kEnginePasswordError = 17;

bool IsDamaged(const PdfDoc& document, std::list<std::string>& problems) {
  try {
    return PdfRepairTask::IsDamaged(document, problems);
  } catch (PdfException& error) {
    if (error.GetErrorCode() != kEnginePasswordError) {
      throw;
    }
    throw PdfException(PdfExceptionCode::PasswordError, kEnginePasswordError, "%s", error.what());
  }
}

std::string ToText(const std::string& path, const std::list<std::string>& problems) {
  std::string text = path + ": " + (problems.empty() ? "sound" : "damaged") + "\n";
  for (const std::string& problem : problems) {
    text += "  " + OneLine(problem) + "\n";
  }
  return text;
}

// The statuses of failures come before the answers.
void Note(int status, JobResult& result) {
  if (result.exit_status == kExitDone || (result.exit_status == kExitNo && status > kExitNo)) {
    result.exit_status = status;
  }
}

void CheckOne(PdfDoc& document, JobResult& result) {
  const std::string path = NativePath(document.GetPath());
  std::list<std::string> problems;
  try {
    const bool is_damaged = IsDamaged(document, problems);
    result.fields["files"].push_back(
        {{"path", path}, {"damaged", is_damaged}, {"problems", problems}});
    result.text += ToText(path, problems);
    Note(is_damaged ? kExitNo : kExitDone, result);
  } catch (...) {
    const Failure failure = CurrentFailure();
    PrintFailure(failure);
    result.fields["files"].push_back({{"path", path}, {"error", ToJson(failure)}});
    Note(ExitStatus(failure.code), result);
  }
}

JobResult Check(JobContext& context) {
  JobResult result;
  result.fields["files"] = Json::array();
  for (PdfDoc& document : context.Documents()) {
    CheckOne(document, result);
  }
  return result;
}

const JobRegistration kRegistration({
    .name = "check",
    .summary = "tell whether documents are damaged",
    .description = "Looks through every input and lists what is wrong with it. Writes no file. The "
                   "exit status is 1 when an input is damaged.",
    .inputs = {.min = 1},
    .output = OutputKind::None,
    .run = Check,
});

}  // namespace
}  // namespace TarnixTools::cli
