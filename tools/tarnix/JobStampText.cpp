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
     .help = "the text; \\n is a line break and \\\\ a backslash"},
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
  PdfStampTextTask task(context.Documents().front(), context.Options().Text("name"));
  SetStampTextOptions(context.Options(), task);
  return context.RunNamed(task);
}

const JobRegistration kRegistration({
    .name = "stamp-text",
    .summary = "put a text on pages",
    .description =
        "Writes the input with a text of one or more lines on its pages, in their middle "
        "when nothing else is asked for (default name: document_after_text_stamp.pdf).",
    .inputs = {.min = 1, .max = 1},
    .output = OutputKind::OneFile,
    .options = kOptions,
    .run = StampText,
});

}  // namespace
}  // namespace TarnixTools::cli
