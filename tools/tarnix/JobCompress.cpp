#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "FreedMemory.h"
#include "Job.h"
#include "JobContext.h"
#include "PdfCompressTask.h"
#include "Warnings.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "level",
     .kind = ValueKind::Choice,
     .argument = "low|recommended|extreme",
     .help = "how small: images of 200 pixels per inch (low), 150 (recommended, the default) or 72 "
             "(extreme)"},
};

PdfCompressLevel LevelOf(const std::string& word) {
  return word == "low"       ? PdfCompressLevel::Low
         : word == "extreme" ? PdfCompressLevel::Extreme
                             : PdfCompressLevel::Recommended;
}

// Why images or fonts stay as they were.
template <typename Figures>
struct LeftAlone {
  std::int64_t Figures::*count;
  const char* reason;
};

constexpr std::array<LeftAlone<PdfCompressedImages>, 3> kImagesLeftAlone = {{
    {&PdfCompressedImages::left_smallest, "nothing smaller looks as good"},
    {&PdfCompressedImages::left_unreadable, "data cannot be decoded"},
    {&PdfCompressedImages::left_unhandled, "color space or mask is not handled"},
}};

constexpr std::array<LeftAlone<PdfCompressedFonts>, 6> kFontsLeftAlone = {{
    {&PdfCompressedFonts::left_smallest, "what is used takes as much"},
    {&PdfCompressedFonts::left_any_code, "any glyph may be used"},
    {&PdfCompressedFonts::left_unreadable, "cannot be read"},
    {&PdfCompressedFonts::left_unsure, "would not surely look and work as before"},
    {&PdfCompressedFonts::left_conformance, "the standard wants lists of glyphs"},
    {&PdfCompressedFonts::left_no_library, "a library that reads fonts is missing"},
}};

template <typename Figures, std::size_t kCount>
Json LeftAloneJson(const Figures& figures, const std::array<LeftAlone<Figures>, kCount>& rows) {
  Json list = Json::array();
  for (const LeftAlone<Figures>& row : rows) {
    if (figures.*row.count > 0) {
      list.push_back({{"count", figures.*row.count}, {"reason", row.reason}});
    }
  }
  return list;
}

Json ImagesJson(const PdfCompressTask& task) {
  Json list = Json::array();
  for (const PdfCompressedImages& images : task.GetImages()) {
    list.push_back({{"class", PdfCompressTask::GetImageClassName(images.image_class)},
                    {"count", images.count},
                    {"bytesBefore", images.bytes_before},
                    {"bytesAfter", images.bytes_after},
                    {"leftAlone", LeftAloneJson(images, kImagesLeftAlone)}});
  }
  return list;
}

Json FontsJson(const PdfCompressTask& task) {
  const PdfCompressedFonts& fonts = task.GetFonts();
  return {{"count", fonts.count},
          {"bytesBefore", fonts.bytes_before},
          {"bytesAfter", fonts.bytes_after},
          {"merged", fonts.merged},
          {"removed", fonts.removed},
          {"leftAlone", LeftAloneJson(fonts, kFontsLeftAlone)}};
}

JobResult Compress(JobContext& context) {
  KeepFreedMemory();
  PdfCompressTask task(context.Document());
  task.SetCompressLevel(LevelOf(context.Options().Text("level")));
  task.SetOutPdfName(context.OutputName());
  context.SetOutput(task);
  ForPassword([&] { task.Execute(); });
  return {.outputs = {context.OutputPath()},
          .fields = {{"ratio", std::round(task.GetCompressRatio() * 100.0) / 100},
                     {"images", ImagesJson(task)},
                     {"fonts", FontsJson(task)}},
          .report = task.GetReport(),
          .warnings = RewriteWarningsOf(task.GetReport())};
}

const JobRegistration kRegistration({
    .name = "compress",
    .summary = "make documents smaller",
    .description =
        "Writes a smaller copy of each input that looks as before, or the input itself "
        "where nothing is gained (STEM-compressed.pdf). Text stays text; images above the "
        "level's resolution are reduced to it.",
    .examples = {"tarnix compress report.pdf",
                 "tarnix compress --level extreme -o small.pdf report.pdf",
                 "tarnix compress -o small letter.pdf report.pdf plan.pdf"},
    .output = OutputKind::OneFile,
    .suffix = "-compressed",
    .engine = EngineName::Rewriting,
    .options = kOptions,
    .run = Compress,
});

}  // namespace
}  // namespace TarnixTools::cli
