#include "DecorationOptions.h"
#include "Job.h"
#include "JobContext.h"
#include "PdfStampTextTask.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "text",
     .kind = ValueKind::Text,
     .argument = "T",
     .help = "the text; \\n is a line break and \\\\ a backslash",
     .is_required = true},
    kPagesRow,
    kPositionRow,
    kAtRow,
    kAdjustRow,
    kMarginRow,
    kRotateRow,
    kMosaicRow,
    kFontRow,
    kFontStyleRow,
    kFontSizeRow,
    kColorRow,
    kOpacityRow,
    kAlignRow,
    kUnderRow,
};

JobResult StampText(JobContext& context) {
  PdfStampTextTask task(context.Document());
  SetStampTextOptions(context.Options(), task);
  SetTargets(context.Options(), context.Document(), task);
  return context.RunNamed(task);
}

const JobRegistration kRegistration({
    .name = "stamp-text",
    .summary = "put a text on pages",
    .description =
        "Writes the input with a text of one or more lines on its pages, in their middle "
        "when nothing else is asked for (STEM-stamped.pdf).",
    .examples =
        {"tarnix stamp-text --text DRAFT --rotate 45 --font-size 72 --opacity 30 letter.pdf",
         "tarnix stamp-text --text 'page 1\\nonly' --pages 1 --position top-right report.pdf",
         "tarnix stamp-text --text PAID --at 400,60 --color '#C00000' letter.pdf"},
    .output = OutputKind::OneFile,
    .suffix = "-stamped",
    .options = kOptions,
    .run = StampText,
});

}  // namespace
}  // namespace TarnixTools::cli
