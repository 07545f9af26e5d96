#include <string>
#include <utility>
#include <vector>

#include "EachInput.h"
#include "Failure.h"
#include "Job.h"
#include "JobContext.h"
#include "Pdf2PdfATask.h"
#include "PdfALevel.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "level",
     .kind = ValueKind::Choice,
     .argument = kLevelWords,
     .help = "level of PDF/A that the output is to have (default: the most useful one that the "
             "document can reach)"},
    {.name = "allow-downgrade",
     .help = "write the best level that the document can reach where it cannot have the one asked "
             "for",
     .needs = "level"},
};

void Execute(Pdf2PdfATask& task) {
  try {
    ForPassword([&] { task.Execute(); });
  } catch (const PdfException& error) {
    throw ReportedFailure(error, task.GetReport());
  }
}

JobResult PdfA(JobContext& context) {
  const OptionValues& options = context.Options();
  PdfDoc document = context.Documents().front();
  const bool is_protected = document.IsEncrypted();
  Pdf2PdfATask task(document);
  task.SetCompliance(LevelOfWord(options.Text("level")));
  task.SetDowngrade(options.Has("allow-downgrade"));
  task.SetOutName(options.Text("name", document.GetDocName(false) + "-pdfa.pdf"));
  task.SetOutputPath(".");
  context.SetOutput(task);
  Execute(task);
  const std::string path = (options.Has("out-dir") ? task.GetOutputPath() : "") + task.GetOutName();
  JobResult result{
      .outputs = {path},
      .report = task.GetReport(),
      .warnings = WarningsOf(task.GetReport(), is_protected && context.OutPassword().empty())};
  result.fields["compliance"] =
      LevelJson(PdfDoc(path, context.OutPassword(), true).GetPdfaCompliance());
  return result;
}

const JobRegistration kRegistration({
    .name = "pdfa",
    .summary = "make a document PDF/A",
    .description = "Writes a copy of the input that is PDF/A and looks the same; text stays text "
                   "(default name: NAME-pdfa.pdf; default directory: the current one). What PDF/A "
                   "does not allow is left out, and said. Where the level cannot be reached "
                   "nothing is written, and what stands in the way is told.",
    .inputs = {.min = 1, .max = 1},
    .output = OutputKind::OneFile,
    .options = kOptions,
    .run = PdfA,
});

}  // namespace
}  // namespace TarnixTools::cli
