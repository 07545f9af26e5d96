#include <string>

#include "Job.h"
#include "JobContext.h"
#include "PdfRemovePagesTask.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "pages",
     .kind = ValueKind::Text,
     .argument = "PATTERN",
     .help = "pages and ranges of pages to leave out, as in 1,3-5,10"},
};

JobResult RemovePages(JobContext& context) {
  PdfRemovePagesTask task(context.Documents().front());
  task.AddRemovedPattern(context.Options().Text("pages"));
  task.SetOutPrefix(context.Options().Text("prefix"));
  task.SetOutPdfName(context.Options().Text("name"));
  context.Run(task);
  const std::string name =
      task.GetOutPdfName().empty() ? task.GetOutPrefix() + ".pdf" : task.GetOutPdfName();
  return {.outputs = {task.GetOutputPath() + name}, .report = task.GetReport()};
}

const JobRegistration kRegistration({
    .name = "remove-pages",
    .summary = "leave pages out",
    .description = "Writes the input without some of its pages (default name: truncated.pdf, with "
                   "--prefix PREFIX.pdf; default directory: the current one).",
    .inputs = {.min = 1, .max = 1},
    .output = OutputKind::OneFile,
    .has_prefix = true,
    .options = kOptions,
    .run = RemovePages,
});

}  // namespace
}  // namespace TarnixTools::cli
