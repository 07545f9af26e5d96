#include <algorithm>
#include <string>
#include <vector>

#include "Interruption.h"
#include "Job.h"
#include "JobContext.h"
#include "PageList.h"
#include "PdfCommonUtils.h"
#include "PdfSplitTask.h"
#include "Streams.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "every",
     .kind = ValueKind::Integer,
     .argument = "N",
     .help = "pages of a piece (default: 1)",
     .excludes = "ranges"},
    {.name = "ranges",
     .kind = ValueKind::Pages,
     .argument = "PAGES",
     .help = "one piece for each item of the list, as in 1-3,5,8-"},
    {.name = "merge", .help = "join the pieces of --ranges into one file", .needs = "ranges"},
};

// Adds what the task has written, also when it fails.
void Execute(PdfSplitTask& task, JobResult& result) {
  const auto take = [&] {
    for (const std::string& piece : task.GetPieces()) {
      const std::string path = WithoutDot(NativePath(piece));
      if (std::find(result.outputs.begin(), result.outputs.end(), path) == result.outputs.end()) {
        result.outputs.push_back(path);
      }
    }
  };
  try {
    ForPassword([&] { task.Execute(); });
  } catch (...) {
    take();
    for (const std::string& path : result.outputs) {
      NoteFinished(path);
    }
    throw;
  }
  take();
  result.report.Add(task.GetReport());
}

// A task for all the pages of the list in one file.
PdfSplitTask JoiningTask(const PdfDoc& document, const std::vector<int>& pages,
                         const std::string& name) {
  PdfSplitTask task(document);
  task.SetKeepMetadata(true);
  task.SetSplitMode(PdfSplitMode::Ranges);
  task.SetMergeAfter(true);
  task.SetMergedName(name);
  for (const PdfPageRange& range : RangesOf(pages)) {
    task.AddSplitRange(range);
  }
  return task;
}

bool IsRun(const PageItem& item) {
  return RangesOf(item.pages).size() == 1;
}

// One file for each item: those that are runs of pages in one pass over the document.
JobResult SplitItems(const JobContext& context, const PdfDoc& document,
                     const std::vector<PageItem>& items) {
  JobResult result;
  const std::string directory = context.MakeDirectory();
  const bool are_runs = std::all_of(items.begin(), items.end(), &IsRun);
  if (are_runs) {
    PdfSplitTask task(document);
    task.SetKeepMetadata(true);
    task.SetSplitMode(PdfSplitMode::Ranges);
    for (const PageItem& item : items) {
      task.AddSplitRange(RangesOf(item.pages).front());
    }
    task.SetNamePattern(context.NamePattern());
    task.SetOutputPath(directory);
    task.SetOutPassword(context.OutPassword());
    context.Watch(task);
    Execute(task, result);
    return result;
  }
  for (const PageItem& item : items) {
    PdfSplitTask task = JoiningTask(
        document, item.pages,
        PdfCommonUtils::FormName(context.NamePattern(), context.Inputs().front().stem, item.label));
    task.SetOutputPath(directory);
    task.SetOutPassword(context.OutPassword());
    context.Watch(task);
    Execute(task, result);
  }
  return result;
}

JobResult SplitEvery(const JobContext& context, const PdfDoc& document) {
  PdfSplitTask task(document);
  task.SetKeepMetadata(true);
  task.SetFixedSplitInterval(context.Options().Integer("every", 1));
  task.SetNamePattern(context.NamePattern());
  task.SetOutputPath(context.MakeDirectory());
  task.SetOutPassword(context.OutPassword());
  context.Watch(task);
  JobResult result;
  Execute(task, result);
  return result;
}

JobResult Join(const JobContext& context, const PdfDoc& document, const std::vector<int>& pages) {
  PdfSplitTask task = JoiningTask(document, pages, context.OutputName());
  return context.Run(task);
}

JobResult Split(JobContext& context) {
  const OptionValues& options = context.Options();
  const PdfDoc document = context.Document();
  if (!options.Has("ranges")) {
    return SplitEvery(context, document);
  }
  return options.Has("merge")
             ? Join(context, document, context.Pages("ranges"))
             : SplitItems(context, document,
                          PageItemsOf("--ranges", options.Text("ranges"), document));
}

const JobRegistration kRegistration({
    .name = "split",
    .summary = "cut a document into pieces",
    .description = "Cuts the input into pieces of a fixed number of pages, or takes out pages: the "
                   "pieces are called STEM-1.pdf and so on, by their number or their pages.",
    .examples = {"tarnix split report.pdf", "tarnix split --every 2 report.pdf",
                 "tarnix split --ranges 1-2,5 --merge report.pdf"},
    .output = OutputKind::ManyFiles,
    .changed_by = "merge",
    .options = kOptions,
    .run = Split,
});

constexpr OptionRow kExtractOptions[] = {
    {.name = "pages",
     .kind = ValueKind::Pages,
     .argument = "PAGES",
     .help = "the pages, in this order, as in 3,1-2,z",
     .is_required = true},
};

JobResult ExtractPages(JobContext& context) {
  return Join(context, context.Document(), context.Pages("pages"));
}

const JobRegistration kExtractRegistration({
    .name = "extract-pages",
    .summary = "take pages out into one file",
    .description =
        "Writes the pages that are asked for, in that order and as often as they are asked "
        "for, to one file (STEM-pages.pdf).",
    .examples = {"tarnix extract-pages --pages 2-4 report.pdf",
                 "tarnix extract-pages --pages z-1 -o backwards.pdf report.pdf",
                 "tarnix extract-pages --pages :odd report.pdf"},
    .output = OutputKind::OneFile,
    .suffix = "-pages",
    .options = kExtractOptions,
    .run = ExtractPages,
});

}  // namespace
}  // namespace TarnixTools::cli
