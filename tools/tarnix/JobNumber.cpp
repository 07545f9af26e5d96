#include "DecorationOptions.h"
#include "Job.h"
#include "JobContext.h"
#include "PdfPageNumberTask.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "template",
     .kind = ValueKind::Text,
     .argument = "T",
     .help = "text in which {n} stands for the number of the page and {p} for the number of pages "
             "(default: {n})"},
    {.name = "start",
     .kind = ValueKind::Integer,
     .argument = "N",
     .help = "number of the first page (default: 1)"},
    kPagesRow,
    kPositionRow,
    kAtRow,
    kAdjustRow,
    kNumberMarginRow,
    kFontRow,
    kFontStyleRow,
    kNumberFontSizeRow,
    kColorRow,
    kOpacityRow,
    kAlignRow,
    kUnderRow,
    {.name = "facing-pages", .help = "left and right change sides on odd pages"},
    {.name = "cover-page",
     .help = "the first page is a cover: sides change on even pages instead",
     .needs = "facing-pages"},
};

JobResult Number(JobContext& context) {
  PdfPageNumberTask task(context.Document());
  SetNumberOptions(context.Options(), task);
  SetTargets(context.Options(), context.Document(), task);
  return context.RunNamed(task);
}

const JobRegistration kRegistration({
    .name = "number",
    .summary = "put page numbers on pages",
    .description =
        "Writes the input with page numbers, of 10 points and centred at the bottom when "
        "nothing else is asked for (STEM-numbered.pdf).",
    .examples = {"tarnix number report.pdf",
                 "tarnix number --template 'page {n} of {p}' --position bottom-right report.pdf",
                 "tarnix number --start 5 --pages 2- --color '#808080' -o numbered.pdf report.pdf"},
    .output = OutputKind::OneFile,
    .suffix = "-numbered",
    .options = kOptions,
    .run = Number,
});

}  // namespace
}  // namespace TarnixTools::cli
