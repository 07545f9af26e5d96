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

// What is not given stays, or is emptied.
JobResult WriteMetadata(JobContext& context) {
  const OptionValues& options = context.Options();
  PdfDoc document = context.Document();
  PdfSetMetaDataTask task(document);
  for (const Field& field : kFields) {
    const bool stays = !options.Has(field.name) && !options.Has("clear");
    task.SetMetaParam(field.param,
                      stays ? document.GetMetaData(field.param) : options.Text(field.name));
  }
  task.SetAllowEmptyMetaValues(true);
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
    .summary = "show or change author, keywords and the like",
    .description =
        "Writes a copy of the input with the values given (STEM-metadata.pdf). Without any "
        "of its options it shows the values of the input and writes no file.",
    .examples = {"tarnix metadata letter.pdf",
                 "tarnix metadata --author 'Ann Smith' --keywords 'letter, example' letter.pdf",
                 "tarnix metadata --clear -o bare.pdf letter.pdf"},
    .output = OutputKind::OneFile,
    .only_tells = &OnlyTells,
    .suffix = "-metadata",
    .options = kOptions,
    .run = Metadata,
});

}  // namespace
}  // namespace TarnixTools::cli
