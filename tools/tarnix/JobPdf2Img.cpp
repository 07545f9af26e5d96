#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Failure.h"
#include "FreedMemory.h"
#include "ImageOutputs.h"
#include "Job.h"
#include "JobContext.h"
#include "Pdf2ImgTask.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "dpi",
     .kind = ValueKind::Text,
     .argument = "F",
     .help = "resolution in pixels per inch (default: 100)"},
    {.name = "pages",
     .kind = ValueKind::Pages,
     .argument = "PAGES",
     .help = "pages to draw, as in 1-3,5,8- (default: all)"},
    {.name = "size",
     .kind = ValueKind::Text,
     .argument = "WxH",
     .help = "size of the images, into which pages are scaled to fit (default: that of the page)"},
    {.name = "units",
     .kind = ValueKind::Choice,
     .argument = "pixels|page",
     .help = "unit of --size: pixels (default) or points of 1/72 inch",
     .needs = "size"},
    {.name = "format",
     .kind = ValueKind::Choice,
     .argument = "jpg|png",
     .help = "kind of the images (default: jpg)"},
    {.name = "gray", .help = "shades of gray instead of colours"},
    {.name = "quality",
     .kind = ValueKind::Integer,
     .argument = "N",
     .help = "quality of JPEG images, from 1 (smallest file) to 100 (best image, the default)"},
    {.name = "no-doc-name",
     .help = "leave the document's name out of the names of images",
     .excludes = "name"},
};

template <typename Number>
std::optional<Number> ToNumber(std::string_view text) {
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(number)
                                                                  : std::nullopt;
}

float ParseDpi(const std::string& text) {
  const std::optional<float> dpi = ToNumber<float>(text);
  if (!dpi || !(*dpi >= 0.5F && *dpi <= 65535.0F)) {
    throw UsageError("--dpi: '" + text + "' is not a number from 0.5 to 65535");
  }
  return *dpi;
}

// Whether the numbers make sense is for the task to say.
void SetSize(Pdf2ImgTask& task, const std::string& text) {
  const std::size_t times = text.find('x');
  const auto width = ToNumber<int>(std::string_view(text).substr(0, times));
  const auto height = times != std::string::npos
                          ? ToNumber<int>(std::string_view(text).substr(times + 1))
                          : std::nullopt;
  if (!width || !height) {
    throw UsageError("--size: '" + text + "' is not a size such as 800x600");
  }
  task.SetOutImgSize(*width, *height);
}

void SetFormat(const OptionValues& options, Pdf2ImgTask& task) {
  const bool is_png = options.Text("format") == "png";
  if (is_png && options.Has("quality")) {
    throw UsageError("--quality has no use here: PNG images lose nothing");
  }
  task.SetImgFormat(is_png ? Pdf2ImgPng : Pdf2ImgJpeg);
  task.SetGray(options.Has("gray"));
  task.SetQuality(options.Integer("quality", task.GetQuality()));
}

JobResult Pdf2Img(JobContext& context) {
  KeepFreedMemory();
  const OptionValues& options = context.Options();
  Pdf2ImgTask task;
  if (options.Has("dpi")) {
    task.SetDpi(ParseDpi(options.Text("dpi")));
  }
  if (options.Has("size")) {
    SetSize(task, options.Text("size"));
  }
  task.SetImgSizeUnits(options.Text("units", "pixels") == "page" ? Pdf2ImgPageUnits
                                                                 : Pdf2ImgPixels);
  SetFormat(options, task);
  task.SetNamePattern(context.NamePattern());
  SetPages(context, task);
  context.AddDocuments(task);
  return RunImageTask(context, task);
}

const JobRegistration kRegistration({
    .name = "pdf2img",
    .summary = "make images of pages",
    .description =
        "Draws every page of the inputs as a JPEG or PNG file (STEM-page-0001.jpg and so on).",
    .examples = {"tarnix pdf2img letter.pdf",
                 "tarnix pdf2img --format png --gray --dpi 150 --pages 1 report.pdf",
                 "tarnix pdf2img --size 200x200 -o thumbnails letter.pdf report.pdf"},
    .output = OutputKind::ManyFiles,
    .without_stem = "no-doc-name",
    .suffix = "-page",
    .extension = ".jpg",
    .extension_option = "format",
    .engine = EngineName::Rasteriser,
    .can_protect = false,
    .options = kOptions,
    .run = Pdf2Img,
});

}  // namespace
}  // namespace TarnixTools::cli
