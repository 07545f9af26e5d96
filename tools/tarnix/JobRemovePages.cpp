#include <string>

#include "Job.h"
#include "JobContext.h"
#include "PageList.h"
#include "PdfRemovePagesTask.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "pages",
     .kind = ValueKind::Pages,
     .argument = "PAGES",
     .help = "pages to leave out, as in 1,3-5,8-",
     .is_required = true},
};

// The library reads the plain form of a list itself, and opens the document once less for it.
bool IsPlain(const std::string& list) {
  return list.find_first_not_of("0123456789,-") == std::string::npos && !list.ends_with('-') &&
         list.find("-,") == std::string::npos;
}

JobResult RemovePages(JobContext& context) {
  const std::string pages = context.Options().Text("pages");
  PdfRemovePagesTask task(context.Document());
  task.AddRemovedPattern(IsPlain(pages) ? pages : PatternOf(context.Pages("pages")));
  task.SetOutPdfName(context.OutputName());
  return context.Run(task);
}

const JobRegistration kRegistration({
    .name = "remove-pages",
    .summary = "leave pages out",
    .description = "Writes the input without some of its pages (STEM-truncated.pdf).",
    .examples = {"tarnix remove-pages --pages 1 report.pdf",
                 "tarnix remove-pages --pages z -o shorter.pdf letter.pdf",
                 "tarnix remove-pages --pages 2-5:even report.pdf"},
    .output = OutputKind::OneFile,
    .suffix = "-truncated",
    .options = kOptions,
    .run = RemovePages,
});

}  // namespace
}  // namespace TarnixTools::cli
