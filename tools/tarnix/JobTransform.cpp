#include "Job.h"
#include "JobContext.h"
#include "PdfTransformTask.h"
#include "Recipe.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "recipe",
     .kind = ValueKind::File,
     .argument = "FILE",
     .help = "list of the decorations in JSON: objects with the field \"type\", which is number, "
             "stamp-text or stamp-image, and the options of that job as further fields, without "
             "their dashes in front",
     .is_required = true},
};

JobResult Transform(JobContext& context) {
  PdfTransformTask task(context.Document());
  for (const PdfTransformation& entry :
       ReadRecipe(context.Options().Text("recipe"), context.Document())) {
    task.AddTransformation(entry);
  }
  return context.RunNamed(task);
}

const JobRegistration kRegistration({
    .name = "transform",
    .summary = "put several page numbers and stamps on pages",
    .description = "Writes the input with any number of page numbers, texts and images on its "
                   "pages, all of them in one pass. Each page gets its decorations in the order of "
                   "the recipe (STEM-decorated.pdf).",
    .examples =
        {"tarnix transform --recipe marks.json letter.pdf",
         "tarnix transform --recipe marks.json --name '{stem}-marked.pdf' letter.pdf report.pdf",
         "tarnix transform --recipe marks.json -o - letter.pdf > marked.pdf"},
    .output = OutputKind::OneFile,
    .suffix = "-decorated",
    .options = kOptions,
    .run = Transform,
});

}  // namespace
}  // namespace TarnixTools::cli
