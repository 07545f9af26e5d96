// What the jobs that write images have in common.
#ifndef TARNIX_CLI_IMAGE_OUTPUTS_H_
#define TARNIX_CLI_IMAGE_OUTPUTS_H_

#include "Job.h"
#include "Pdf2ImgTask.h"

namespace TarnixTools::cli {

// The files and the report of a task that was executed. Images of one input that took the place of
// another's, as those of one name do, make a warning.
JobResult ResultOf(const Pdf2ImgTask& task);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_IMAGE_OUTPUTS_H_
