#include <vector>

#include "Job.h"
#include "JobContext.h"
#include "PdfRotateTask.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "angle",
     .kind = ValueKind::Choice,
     .argument = "0|90|180|270",
     .help = "degrees by which pages are turned clockwise",
     .is_required = true},
    {.name = "pages",
     .kind = ValueKind::Pages,
     .argument = "PAGES",
     .help = "pages to turn, as in 1-3,5,8- (default: all)"},
};

JobResult Rotate(JobContext& context) {
  PdfRotateTask task;
  context.AddDocuments(task);
  task.SetRotationAngle(
      static_cast<PdfRotationAngle>(ToInteger(context.Options().Text("angle", "0")).value_or(0)));
  if (context.Options().Has("pages")) {
    const std::vector<int> pages = context.Pages("pages");
    task.SetPages({pages.begin(), pages.end()});
  }
  return context.RunNamed(task);
}

const JobRegistration kRegistration({
    .name = "rotate",
    .summary = "turn pages",
    .description = "Turns every page of the input, or some, by a right angle or two or three "
                   "(STEM-rotated.pdf).",
    .examples = {"tarnix rotate --angle 90 plan.pdf",
                 "tarnix rotate --angle 180 --pages 2,4 report.pdf",
                 "tarnix rotate --angle 270 -o turned letter.pdf plan.pdf"},
    .output = OutputKind::OneFile,
    .suffix = "-rotated",
    .options = kOptions,
    .run = Rotate,
});

}  // namespace
}  // namespace TarnixTools::cli
