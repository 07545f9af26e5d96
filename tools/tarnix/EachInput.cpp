#include "EachInput.h"

#include <utility>

#include "Causes.h"
#include "Failure.h"
#include "Interruption.h"
#include "JobContext.h"

namespace TarnixTools::cli {

JobResult TellOfEach(const JobContext& context, const InputTeller& tell) {
  JobResult result;
  Json files = Json::array();
  for (const Input& input : context.Inputs()) {
    try {
      files.push_back(tell(input, result));
    } catch (...) {
      result.failures.push_back({input.given, CurrentFailureOn(context.CommandLine(), {input})});
      files.push_back({{"path", input.given}, {"error", ToJson(result.failures.back().failure)}});
    }
    EndIfInterrupted();
  }
  result.fields["files"] = std::move(files);
  return result;
}

}  // namespace TarnixTools::cli
