#include <iostream>
#include <streambuf>
#include <string>

#include "FreedMemory.h"
#include "ImageOutputs.h"
#include "Job.h"
#include "JobContext.h"
#include "Pdf2ImgTask.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "pages",
     .kind = ValueKind::Pages,
     .argument = "PAGES",
     .help = "pages to look at, as in 1-3,5,8- (default: all)"},
    {.name = "original",
     .help = "as they are stored: JPEG and JPEG 2000 byte for byte, fax as TIFF, the rest as PNG"},
};

// Standard output is for the names alone: what the library writes there goes nowhere.
class SilentOutput : public std::streambuf {
 public:
  SilentOutput() : before_(std::cout.rdbuf(this)) {}

  ~SilentOutput() override { std::cout.rdbuf(before_); }

  SilentOutput(const SilentOutput&) = delete;
  SilentOutput& operator=(const SilentOutput&) = delete;

 protected:
  int_type overflow(int_type character) override { return traits_type::not_eof(character); }

  std::streamsize xsputn(const char* /*text*/, std::streamsize count) override { return count; }

 private:
  std::streambuf* before_;
};

JobResult ExtractImages(JobContext& context) {
  KeepFreedMemory();
  Pdf2ImgTask task;
  task.SetMode(Pdf2ImgExtractImages);
  task.SetStoreOriginal(context.Options().Has("original"));
  task.SetNamePattern(context.NamePattern());
  SetPages(context, task);
  context.AddDocuments(task);
  const SilentOutput silent;
  return RunImageTask(context, task);
}

const JobRegistration kRegistration({
    .name = "extract-images",
    .summary = "take out the images on the pages",
    .description = "Writes every image that is drawn on the pages of the inputs as a JPEG file "
                   "(STEM-image-0001.jpg and so on).",
    .examples = {"tarnix img2pdf -o picture.pdf logo.png", "tarnix extract-images picture.pdf",
                 "tarnix extract-images --original --pages 1 -o images picture.pdf"},
    .output = OutputKind::ManyFiles,
    .with_any_extension = "original",
    .suffix = "-image",
    .extension = ".jpg",
    .engine = EngineName::Parser,
    .can_protect = false,
    .options = kOptions,
    .run = ExtractImages,
});

}  // namespace
}  // namespace TarnixTools::cli
