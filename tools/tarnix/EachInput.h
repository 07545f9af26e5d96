// Jobs that tell of several inputs in one answer: one that fails does not stop the others.
//
//   JobResult Check(JobContext& context) {
//     return TellOfEach(context, CheckOne);
//   }
#ifndef TARNIX_CLI_EACH_INPUT_H_
#define TARNIX_CLI_EACH_INPUT_H_

#include <functional>

#include "Input.h"
#include "Job.h"

namespace TarnixTools::cli {

class JobContext;

// What a job tells of one input: an object with the path. It may add to the text and set the exit
// status.
using InputTeller = std::function<Json(const Input& input, JobResult& result)>;

// Tells of each input in "files"; of one that fails the error is told there.
JobResult TellOfEach(const JobContext& context, const InputTeller& tell);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_EACH_INPUT_H_
