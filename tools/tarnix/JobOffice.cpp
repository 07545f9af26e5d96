#include <string>

#include "Failure.h"
#include "FreedMemory.h"
#include "Job.h"
#include "JobContext.h"
#include "Pdf2OfficeTask.h"

namespace TarnixTools::cli {
namespace {

constexpr int kDefaultTimeout = 3600;  // seconds

constexpr OptionRow kOptions[] = {
    {.name = "to",
     .kind = ValueKind::Choice,
     .argument = "docx|xlsx|pptx",
     .help = "what is made: a Word document (default), a workbook of the tables, or slides"},
    {.name = "timeout",
     .kind = ValueKind::Integer,
     .argument = "SECONDS",
     .help = "how long it may take (default: 3600)"},
    {.name = "no-ocr", .help = "refuse documents all of whose pages are scanned"},
};

Pdf2OfficeConversion ConversionOf(const std::string& word) {
  return word == "xlsx" ? Pdf2OfficeXlsx : word == "pptx" ? Pdf2OfficePptx : Pdf2OfficeDocx;
}

int TimeoutOf(const OptionValues& options) {
  const int seconds = options.Integer("timeout", kDefaultTimeout);
  if (seconds < 0) {
    throw UsageError("--timeout: a time is not less than 0");
  }
  return seconds;
}

// The task adds the extension to the name.
std::string Without(std::string name, const std::string& extension) {
  if (name.ends_with(extension)) {
    name.resize(name.size() - extension.size());
  }
  return name;
}

// Opens what is protected, so that a wrong password is told as one.
void RequirePassword(PdfDoc document) {
  ForPassword([&] {
    if (document.IsEncrypted()) {
      document.GetPagesNum();
    }
  });
}

JobResult Office(JobContext& context) {
  KeepFreedMemory();
  const OptionValues& options = context.Options();
  const PdfDoc document = context.Document();
  Pdf2OfficeTask task(document);
  task.SetConversionType(ConversionOf(options.Text("to")));
  task.SetTimeout(TimeoutOf(options));
  task.SetOcrEnabled(!options.Has("no-ocr"));
  RequirePassword(document);
  task.SetOutName(Without(context.OutputName(), "." + options.Text("to", "docx")));
  task.SetOutputPath(context.OutputDirectory());
  context.Watch(task);
  task.Execute();
  return {.outputs = {context.OutputPath()},
          .fields = {{"scannedPages", task.GetScannedPages()}},
          .report = task.GetReport()};
}

const JobRegistration kRegistration({
    .name = "office",
    .summary = "make a Word, Excel or PowerPoint document",
    .description =
        "Writes the input as a document that can be edited (STEM.docx, STEM.xlsx or STEM.pptx): "
        "flowing text with headings, lists, tables and pictures; a workbook with a sheet for each "
        "table; or a slide for each page. Text of scanned pages is recognised.",
    .examples = {"tarnix office letter.pdf", "tarnix office --to pptx report.pdf",
                 "tarnix office --to docx --no-ocr -o report-text.docx report.pdf"},
    .extension = ".docx",
    .extension_option = "to",
    .engine = EngineName::Office,
    .can_protect = false,
    .options = kOptions,
    .run = Office,
});

}  // namespace
}  // namespace TarnixTools::cli
