#include <string>
#include <utility>
#include <vector>

#include "Failure.h"
#include "Job.h"
#include "JobContext.h"
#include "Pdf2PdfATask.h"
#include "PdfALevel.h"
#include "Warnings.h"

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
  Pdf2PdfATask task(context.Document());
  task.SetCompliance(LevelOfWord(options.Text("level")));
  task.SetDowngrade(options.Has("allow-downgrade"));
  task.SetOutName(context.OutputName());
  context.SetOutput(task);
  Execute(task);
  const std::string& path = context.OutputPath();
  JobResult result{.outputs = {path},
                   .report = task.GetReport(),
                   .warnings = RewriteWarningsOf(task.GetReport())};
  result.fields["compliance"] =
      LevelJson(PdfDoc(path, context.OutPassword(), true).GetPdfaCompliance());
  return result;
}

const JobRegistration kRegistration({
    .name = "pdfa",
    .summary = "make a document PDF/A",
    .description = "Writes a copy of the input that is PDF/A and looks the same; text stays text "
                   "(STEM-pdfa.pdf). What PDF/A "
                   "does not allow is left out, and said. Where the level cannot be reached "
                   "nothing is written, and what stands in the way is told.",
    .examples = {"tarnix pdfa letter.pdf",
                 "tarnix pdfa --level 2b -o archive letter.pdf report.pdf",
                 "tarnix pdfa --level 1b --allow-downgrade report.pdf"},
    .output = OutputKind::OneFile,
    .suffix = "-pdfa",
    .engine = EngineName::Converter,
    .options = kOptions,
    .run = PdfA,
});

}  // namespace
}  // namespace TarnixTools::cli
