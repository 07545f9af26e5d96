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
             "their dashes in front"},
};

JobResult Transform(JobContext& context) {
  PdfTransformTask task(context.Documents().front());
  if (context.Options().Has("recipe")) {
    for (const PdfTransformation& entry : ReadRecipe(context.Options().Text("recipe"))) {
      task.AddTransformation(entry);
    }
  }
  task.SetOutName(context.Options().Text("name"));
  return context.RunNamed(task);
}

const JobRegistration kRegistration({
    .name = "transform",
    .summary = "put several page numbers and stamps on pages",
    .description = "Writes the input with any number of page numbers, texts and images on its "
                   "pages, all of them in one pass. Each page gets its decorations in the order of "
                   "the recipe (default name: document_after_transformations.pdf).",
    .inputs = {.min = 1, .max = 1},
    .output = OutputKind::OneFile,
    .options = kOptions,
    .run = Transform,
});

}  // namespace
}  // namespace TarnixTools::cli
