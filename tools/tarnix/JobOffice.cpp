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

// Where the output goes: the task adds the extension to the name.
struct Output {
  std::string directory;  // empty for the current one
  std::string name;
};

std::string Without(std::string name, const std::string& extension) {
  if (name.ends_with(extension)) {
    name.resize(name.size() - extension.size());
  }
  return name;
}

Output OutputOf(const JobContext& context, const std::string& stem, const std::string& extension) {
  const OptionValues& options = context.Options();
  const std::string given = options.Text("out-dir");
  if (!given.ends_with(extension)) {
    return {context.OutputDirectory(), Without(options.Text("name", stem), extension)};
  }
  const std::size_t slash = given.rfind('/');
  if (slash == std::string::npos) {
    return {"", Without(given, extension)};
  }
  return {JobContext::MakeDirectory(given.substr(0, slash + 1)),
          Without(given.substr(slash + 1), extension)};
}

// Whether the input is protected; opens it, so that a wrong password is told as one.
bool IsProtected(PdfDoc& document) {
  return ForPassword([&] {
    const bool is_protected = document.IsEncrypted();
    if (is_protected) {
      document.GetPagesNum();
    }
    return is_protected;
  });
}

JobResult Office(JobContext& context) {
  KeepFreedMemory();
  const OptionValues& options = context.Options();
  PdfDoc document = context.Documents().front();
  const std::string extension = "." + options.Text("to", "docx");
  Pdf2OfficeTask task(document);
  task.SetConversionType(ConversionOf(options.Text("to")));
  task.SetTimeout(TimeoutOf(options));
  task.SetOcrEnabled(!options.Has("no-ocr"));
  const bool is_protected = IsProtected(document);
  const Output output = OutputOf(context, document.GetDocName(false), extension);
  task.SetOutName(output.name);
  task.SetOutputPath(output.directory.empty() ? "." : output.directory);
  task.Execute();
  JobResult result{
      .outputs = {(output.directory.empty() ? "" : task.GetOutputPath()) + output.name + extension},
      .fields = {{"scannedPages", task.GetScannedPages()}}};
  if (is_protected) {
    result.warnings.emplace_back("the input is protected, the output is not");
  }
  return result;
}

const JobRegistration kRegistration({
    .name = "office",
    .summary = "make a Word, Excel or PowerPoint document",
    .description =
        "Writes the input as a document that can be edited (default name: that of the "
        "input; default directory: the current one): flowing text with headings, lists, "
        "tables and pictures; a workbook with a sheet for each table; or a slide for "
        "each page. Text of scanned pages is recognised. The output directory may also be the name "
        "of a file that ends in the kind's extension.",
    .inputs = {.min = 1, .max = 1},
    .output = OutputKind::OneFile,
    .options = kOptions,
    .run = Office,
});

}  // namespace
}  // namespace TarnixTools::cli
