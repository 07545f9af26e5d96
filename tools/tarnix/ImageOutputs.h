// What the jobs that write images share.
#ifndef TARNIX_CLI_IMAGE_OUTPUTS_H_
#define TARNIX_CLI_IMAGE_OUTPUTS_H_

#include "Job.h"
#include "JobContext.h"
#include "Pdf2ImgTask.h"

namespace TarnixTools::cli {

// Limits the task to the pages that --pages names, of which the document has to have all.
void SetPages(const JobContext& context, Pdf2ImgTask& task);

// Runs the task. Images that were written before it failed are noted as finished.
JobResult RunImageTask(const JobContext& context, Pdf2ImgTask& task);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_IMAGE_OUTPUTS_H_
