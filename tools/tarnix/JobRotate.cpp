#include "Job.h"
#include "JobContext.h"
#include "PdfRotateTask.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "angle",
     .kind = ValueKind::Choice,
     .argument = "0|90|180|270",
     .help = "degrees by which every page is turned clockwise (default: 0)"},
};

JobResult Rotate(JobContext& context) {
  PdfRotateTask task;
  context.AddDocuments(task);
  task.SetRotationAngle(
      static_cast<PdfRotationAngle>(ToInteger(context.Options().Text("angle", "0")).value_or(0)));
  task.SetOutName(context.Options().Text("name"));
  return context.RunNamed(task);
}

const JobRegistration kRegistration({
    .name = "rotate",
    .summary = "turn every page",
    .description = "Turns every page of the input by a right angle or two or three (default name: "
                   "rotated_file.pdf; default directory: the current one).",
    .inputs = {.min = 1, .max = 1},
    .output = OutputKind::OneFile,
    .options = kOptions,
    .run = Rotate,
});

}  // namespace
}  // namespace TarnixTools::cli
