#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "Job.h"
#include "JobContext.h"
#include "PdfCompressTask.h"

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

// Why images stay as they were.
struct LeftAlone {
  std::int64_t PdfCompressedImages::*count;
  const char* reason;
};

constexpr std::array<LeftAlone, 3> kLeftAlone = {{
    {&PdfCompressedImages::left_smallest, "nothing smaller looks as good"},
    {&PdfCompressedImages::left_unreadable, "data cannot be decoded"},
    {&PdfCompressedImages::left_unhandled, "color space or mask is not handled"},
}};

Json ImagesJson(const PdfCompressTask& task) {
  Json list = Json::array();
  for (const PdfCompressedImages& images : task.GetImages()) {
    Json left_alone = Json::array();
    for (const LeftAlone& left : kLeftAlone) {
      if (images.*left.count > 0) {
        left_alone.push_back({{"count", images.*left.count}, {"reason", left.reason}});
      }
    }
    list.push_back({{"class", PdfCompressTask::GetImageClassName(images.image_class)},
                    {"count", images.count},
                    {"bytesBefore", images.bytes_before},
                    {"bytesAfter", images.bytes_after},
                    {"leftAlone", std::move(left_alone)}});
  }
  return list;
}

// What somebody may have counted on.
std::vector<std::string> WarningsOf(const PdfCompressTask& task, bool loses_protection) {
  std::vector<std::string> warnings;
  if (loses_protection) {
    warnings.emplace_back("the input is protected, the output is not");
  }
  for (const PdfReportEntry& entry : task.GetReport().GetEntries()) {
    if (entry.outcome == PdfReportOutcome::Dropped) {
      warnings.push_back(PdfReport::GetText(entry));
    }
  }
  return warnings;
}

// NAME-compressed.pdf, unless another name or a prefix was given.
std::string OutputName(const OptionValues& options, const PdfDoc& document) {
  if (options.Has("name")) {
    return options.Text("name");
  }
  return options.Has("prefix") ? options.Text("prefix") + "_" + document.GetDocName(true)
                               : document.GetDocName(false) + "-compressed.pdf";
}

JobResult Compress(JobContext& context) {
  const OptionValues& options = context.Options();
  PdfDoc document = context.Documents().front();
  const bool is_protected = document.IsEncrypted();
  PdfCompressTask task(document);
  task.SetCompressLevel(LevelOf(options.Text("level")));
  task.SetOutPdfName(OutputName(options, document));
  task.SetOutputPath(".");
  context.SetOutput(task);
  ForPassword([&] { task.Execute(); });
  const std::string directory = options.Has("out-dir") ? task.GetOutputPath() : "";
  return {.outputs = {directory + task.GetOutPdfName()},
          .fields = {{"ratio", std::round(task.GetCompressRatio() * 100.0) / 100},
                     {"images", ImagesJson(task)}},
          .report = task.GetReport(),
          .warnings = WarningsOf(task, is_protected && context.OutPassword().empty())};
}

const JobRegistration kRegistration({
    .name = "compress",
    .summary = "make a document smaller",
    .description = "Writes a smaller copy of the input that looks as before, or the input itself "
                   "where nothing is gained (default name: NAME-compressed.pdf; default directory: "
                   "the current one). Text stays text; images above the level's resolution are "
                   "reduced to it.",
    .inputs = {.min = 1, .max = 1},
    .output = OutputKind::OneFile,
    .has_prefix = true,
    .options = kOptions,
    .run = Compress,
});

}  // namespace
}  // namespace TarnixTools::cli
