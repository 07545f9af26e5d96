#include "DecorationOptions.h"
#include "Job.h"
#include "JobContext.h"
#include "PdfStampImageTask.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "image",
     .kind = ValueKind::File,
     .argument = "FILE",
     .help = "the image: JPEG, JPEG 2000, PNG, TIFF, GIF, BMP, PNM or WebP; of several in a file "
             "the first",
     .is_required = true},
    {.name = "pixels-per-point",
     .kind = ValueKind::Number,
     .argument = "F",
     .help = "pixels of the image that come to a point of the page (default: 1.33)"},
    kWidthRow,
    kImageOpacityRow,
    kPagesRow,
    kPositionRow,
    kImageAtRow,
    kAdjustRow,
    kMarginRow,
    kRotateRow,
    kMosaicRow,
    kUnderRow,
};

JobResult StampImage(JobContext& context) {
  PdfStampImageTask task(context.Document());
  SetStampImageOptions(context.Options(), task);
  SetTargets(context.Options(), context.Document(), task);
  return context.RunNamed(task);
}

const JobRegistration kRegistration({
    .name = "stamp-image",
    .summary = "put an image on pages",
    .description = "Writes the input with an image on its pages, in their middle when nothing else "
                   "is asked for (STEM-stamped.pdf).",
    .examples =
        {"tarnix stamp-image --image logo.png letter.pdf",
         "tarnix stamp-image --image logo.png --width 15% --opacity 50 --at 450,750 letter.pdf",
         "tarnix stamp-image --image logo.png --mosaic --under --pages 1 report.pdf"},
    .output = OutputKind::OneFile,
    .suffix = "-stamped",
    .options = kOptions,
    .run = StampImage,
});

}  // namespace
}  // namespace TarnixTools::cli
