#include <string>

#include "Job.h"
#include "JobContext.h"
#include "PageList.h"
#include "PdfMergeTask.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "bookmarks",
     .help = "an outline item for each input, with the input's own outline below"},
};

// A document with the pages of FILE:PAGES as its ranges.
PdfDoc PartOf(const JobContext& context, const Input& input) {
  PdfDoc document = context.DocumentOf(input);
  if (!input.pages.empty()) {
    for (const PdfPageRange& range : RangesOf(PagesOf(input.given, input.pages, document))) {
      document.AddRange(range);
    }
  }
  return document;
}

JobResult Merge(JobContext& context) {
  for (const Input& input : context.Inputs()) {
    if (!input.pages.empty()) {
      CheckPageList(input.given, input.pages);
    }
  }
  PdfMergeTask task;
  bool has_parts = false;
  for (const Input& input : context.Inputs()) {
    task.AddPdfDoc(PartOf(context, input));
    has_parts = has_parts || !input.pages.empty();
  }
  task.SetUseRanges(has_parts);
  task.SetAddOutlineItems(context.Options().Has("bookmarks"));
  context.SetOutput(task);
  task.SetOutDocName(context.OutputName());
  task.Execute();
  return {.outputs = {context.OutputPath()}, .report = task.GetReport()};
}

const JobRegistration kRegistration({
    .name = "merge",
    .summary = "join documents into one",
    .description =
        "Joins the inputs, in the order given, into one document (merged.pdf). FILE:PAGES "
        "stands for a part of a document, as in a.pdf:1-3 b.pdf:z-1.",
    .examples = {"tarnix merge letter.pdf report.pdf",
                 "tarnix merge -o book.pdf letter.pdf:1 report.pdf:3-z plan.pdf",
                 "tarnix merge --bookmarks --name both.pdf report.pdf letter.pdf"},
    .inputs = {.min = 2, .use = InputUse::Together},
    .output = OutputKind::OneFile,
    .stem = "merged",
    .has_page_inputs = true,
    .options = kOptions,
    .run = Merge,
});

}  // namespace
}  // namespace TarnixTools::cli
