#include <charconv>
#include <cmath>
#include <filesystem>
#include <list>
#include <string>
#include <system_error>
#include <vector>

#include "Failure.h"
#include "FreedMemory.h"
#include "Img2PdfTask.h"
#include "Job.h"
#include "JobContext.h"
#include "Streams.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "page",
     .kind = ValueKind::Choice,
     .argument = "fit|a4|letter",
     .help = "size of the pages: that of each image (fit, the default), or a fixed one on which "
             "images are centred and fitted"},
    {.name = "landscape", .help = "fixed pages are A4 landscape", .needs = "page"},
    {.name = "rotate",
     .kind = ValueKind::Choice,
     .argument = "0|90|180|270",
     .help = "degrees by which every image is turned clockwise (default: 0)"},
    {.name = "margin",
     .kind = ValueKind::Text,
     .argument = "POINTS",
     .help = "space around every image, in points (default: 0)"},
    {.name = "no-merge", .help = "write one document for each image instead of one of all"},
};

Img2PdfPageSize PageSizeOf(const std::string& word) {
  return word == "a4"       ? Img2PdfPageSize::Img2PdfPageA4
         : word == "letter" ? Img2PdfPageSize::Img2PdfPageLetter
                            : Img2PdfPageSize::Img2PdfPageFit;
}

Img2PdfImgRotation RotationOf(const std::string& degrees) {
  return degrees == "90"    ? Img2PdfImgRotation::Img2PdfRot90
         : degrees == "180" ? Img2PdfImgRotation::Img2PdfRot180
         : degrees == "270" ? Img2PdfImgRotation::Img2PdfRot270
                            : Img2PdfImgRotation::Img2PdfRotNone;
}

float ParseMargin(const std::string& text) {
  float margin = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, margin);
  if (result.ec != std::errc() || result.ptr != end || !std::isfinite(margin)) {
    throw UsageError("--margin: '" + text + "' is not a number");
  }
  return margin;
}

// A task that fails leaves the documents of the single images that it has made so far.
void Execute(Img2PdfTask& task) {
  try {
    task.Execute();
  } catch (...) {
    for (const std::string& path : task.GetWrittenFiles()) {
      std::error_code ignored;
      std::filesystem::remove(NativePath(path), ignored);
    }
    throw;
  }
}

JobResult ConvertImages(JobContext& context) {
  KeepFreedMemory();
  const OptionValues& options = context.Options();
  const float margin = ParseMargin(options.Text("margin", "0"));
  if (options.Has("landscape") && options.Text("page") == "fit") {
    throw UsageError("--landscape has no use with --page fit");
  }
  std::list<std::string> images;
  for (const Input& input : context.Inputs()) {
    images.push_back(input.path);
  }
  Img2PdfTask task(images);
  task.SetPageSize(PageSizeOf(options.Text("page")));
  task.SetOrientation(options.Has("landscape") ? Img2PdfOrientation::Img2PdfLandscape
                                               : Img2PdfOrientation::Img2PdfPortrait);
  task.SetImgRotation(RotationOf(options.Text("rotate")));
  task.SetMakeUpright(true);
  task.SetMargin(margin);
  task.SetMergeAfter(true);
  task.SetOutPdfName(context.OutputName());
  context.SetOutput(task);
  Execute(task);
  return {.outputs = {context.OutputPath()}, .report = task.GetReport()};
}

const JobRegistration kRegistration({
    .name = "img2pdf",
    .summary = "make a document of images",
    .description =
        "Makes one page of every image (JPEG, JPEG 2000, PNG, TIFF, GIF, BMP, PNM, WebP; "
        "every page of a TIFF), without loss and upright, in one document with the name "
        "of the first image (STEM.pdf).",
    .examples = {"tarnix img2pdf logo.png",
                 "tarnix img2pdf --page a4 --margin 36 -o picture.pdf logo.png",
                 "tarnix img2pdf --rotate 90 --no-merge -o turned logo.png"},
    .inputs = {.pattern = "*", .use = InputUse::Together},
    .output = OutputKind::OneFile,
    .changed_by = "no-merge",
    .engine = EngineName::Images,
    .reads_documents = false,
    .options = kOptions,
    .run = ConvertImages,
});

}  // namespace
}  // namespace TarnixTools::cli
