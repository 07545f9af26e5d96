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
    {.name = "allow-empty", .help = "write also when all four values are empty"},
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

JobResult PrintMetadata(PdfDoc& document) {
  JobResult result;
  Json values = Json::object();
  for (const Field& field : kFields) {
    const std::string value = document.GetMetaData(field.param);
    values[field.name] = value;
    std::string line = field.name;
    line.resize(10, ' ');
    result.text += OneLine(value.empty() ? field.name : line + value) + "\n";
  }
  result.fields["metadata"] = std::move(values);
  return result;
}

JobResult WriteMetadata(JobContext& context) {
  PdfSetMetaDataTask task;
  context.AddDocuments(task);
  for (const Field& field : kFields) {
    task.SetMetaParam(field.param, context.Options().Text(field.name));
  }
  task.SetAllowEmptyMetaValues(context.Options().Has("allow-empty"));
  task.SetOutName(context.Options().Text("name"));
  context.SetOutput(task);
  task.Execute();
  return {.outputs = {task.GetOutputPath() + task.GetOutName()}, .report = task.GetReport()};
}

JobResult Metadata(JobContext& context) {
  const bool is_change =
      std::any_of(std::begin(kOptions), std::end(kOptions),
                  [&](const auto& row) { return context.Options().Has(row.name); });
  if (is_change) {
    return WriteMetadata(context);
  }
  return PrintMetadata(context.Documents().front());
}

const JobRegistration kRegistration({
    .name = "metadata",
    .summary = "show or change author, keywords and the like",
    .description = "Writes a copy of the input with the values given and the other ones empty "
                   "(default name: document_with_meta_params_set.pdf). Without any of its options "
                   "it shows the values of the input and writes no file.",
    .inputs = {.min = 1, .max = 1},
    .output = OutputKind::OneFile,
    .options = kOptions,
    .run = Metadata,
});

}  // namespace
}  // namespace TarnixTools::cli
