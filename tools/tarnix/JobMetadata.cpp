#include <algorithm>
#include <iterator>
#include <string>

#include "Job.h"
#include "JobContext.h"
#include "PdfSetMetaDataTask.h"
#include "Streams.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "author", .kind = ValueKind::Text, .argument = "A", .help = "author to write"},
    {.name = "keywords", .kind = ValueKind::Text, .argument = "K", .help = "keywords to write"},
    {.name = "creator",
     .kind = ValueKind::Text,
     .argument = "C",
     .help = "program that made the original, to write"},
    {.name = "producer",
     .kind = ValueKind::Text,
     .argument = "P",
     .help = "program that made the PDF, to write"},
    {.name = "title", .kind = ValueKind::Text, .argument = "T", .help = "title to write"},
    {.name = "subject", .kind = ValueKind::Text, .argument = "S", .help = "subject to write"},
    {.name = "clear", .help = "empty the values that are not given"},
};

struct Field {
  const char* name;
  PdfMetadataParam param;
};

constexpr Field kFields[] = {
    {"author", PdfMetadataParam::Author},
    {"keywords", PdfMetadataParam::Keywords},
    {"creator", PdfMetadataParam::Creator},
    {"producer", PdfMetadataParam::Producer},
};

void AddValue(JobResult& result, const std::string& name, const std::string& value) {
  result.fields["metadata"][name] = value;
  std::string line = name;
  line.resize(10, ' ');
  result.text += OneLine(value.empty() ? name : line + value) + "\n";
}

JobResult PrintMetadata(PdfDoc& document) {
  JobResult result;
  for (const Field& field : kFields) {
    AddValue(result, field.name, document.GetMetaData(field.param));
  }
  AddValue(result, "title", document.GetTitle());
  AddValue(result, "subject", document.GetSubject());
  return result;
}

// What is not given stays, or is emptied.
JobResult WriteMetadata(JobContext& context) {
  const OptionValues& options = context.Options();
  const auto is_set = [&](const char* name) { return options.Has(name) || options.Has("clear"); };
  PdfSetMetaDataTask task(context.Document());
  for (const Field& field : kFields) {
    if (is_set(field.name)) {
      task.SetMetaParam(field.param, options.Text(field.name));
    }
  }
  if (is_set("title")) {
    task.SetTitle(options.Text("title"));
  }
  if (is_set("subject")) {
    task.SetSubject(options.Text("subject"));
  }
  task.SetAllowEmptyMetaValues(true);
  task.SetKeepUnset(true);
  return context.RunNamed(task);
}

bool OnlyTells(const OptionValues& options) {
  return std::none_of(std::begin(kOptions), std::end(kOptions),
                      [&](const auto& row) { return options.Has(row.name); });
}

JobResult Metadata(JobContext& context) {
  if (!OnlyTells(context.Options())) {
    return WriteMetadata(context);
  }
  PdfDoc document = context.Document();
  return PrintMetadata(document);
}

const JobRegistration kRegistration({
    .name = "metadata",
    .summary = "show or change title, author and the like",
    .description =
        "Writes a copy of the input with the values given (STEM-metadata.pdf). Without any "
        "of its options it shows the values of the input and writes no file.",
    .examples = {"tarnix metadata letter.pdf",
                 "tarnix metadata --author 'Ann Smith' --title 'A letter' letter.pdf",
                 "tarnix metadata --clear -o bare.pdf letter.pdf"},
    .output = OutputKind::OneFile,
    .only_tells = &OnlyTells,
    .suffix = "-metadata",
    .options = kOptions,
    .run = Metadata,
});

}  // namespace
}  // namespace TarnixTools::cli
