#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "EachInput.h"
#include "Job.h"
#include "JobContext.h"
#include "PagePictures.h"
#include "PdfALevel.h"
#include "PdfException.h"
#include "Streams.h"
#include "TemporaryFiles.h"
#include "ValidationReport.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "level",
     .kind = ValueKind::Choice,
     .argument = kLevelWords,
     .help = "level of PDF/A to judge by (default: the one that the document claims)"},
    {.name = "report",
     .kind = ValueKind::File,
     .argument = "FILE.html",
     .help = "write the result as a page to look at, with pictures of the pages"},
};

constexpr std::size_t kMostPictures = 12;  // of one document
constexpr std::size_t kMostListed = 50;    // findings in the text for people

// A document that claims nothing is judged by 2b, and is not what it claims whatever comes of it.
ValidatedFile Validate(PdfDoc& document, PdfCompliance wanted) {
  ValidatedFile file{.path = NativePath(document.GetPath()),
                     .claims = document.GetPdfaCompliance()};
  const bool has_claim = !WordOfLevel(file.claims).empty();
  const bool is_valid = document.ValidatePdfA(wanted);
  file.level = wanted != PdfCompliance::None ? wanted
               : has_claim                   ? file.claims
                                             : PdfCompliance::PdfA2B;
  file.is_valid = is_valid && (wanted != PdfCompliance::None || has_claim);
  file.findings = document.GetFindings();
  return file;
}

void AddPictures(PdfDoc& document, ValidatedFile& file) {
  std::set<int> pages;
  for (const PdfFinding& finding : file.findings) {
    if (finding.page > 0 && pages.size() < kMostPictures) {
      pages.insert(finding.page);
    }
  }
  if (pages.empty()) {
    return;
  }
  try {
    file.pictures = DrawPages(document, pages);
  } catch (PdfException& error) {  // not const: only the non-const what() has the message
    file.no_pictures = error.what();
  }
}

Json ToJson(const ValidatedFile& file) {
  Json findings = Json::array();
  for (const PdfFinding& finding : file.findings) {
    Json item = {{"clause", finding.clause}, {"test", finding.test},       {"object", nullptr},
                 {"page", nullptr},          {"message", finding.message}, {"cure", finding.cure}};
    if (finding.object > 0) {
      item["object"] = finding.object;
    }
    if (finding.page > 0) {
      item["page"] = finding.page;
    }
    if (!finding.subject.empty()) {
      item["subject"] = finding.subject;
    }
    findings.push_back(std::move(item));
  }
  return {{"path", file.path},
          {"claims", LevelJson(file.claims)},
          {"level", LevelJson(file.level)},
          {"valid", file.is_valid},
          {"findings", std::move(findings)}};
}

std::string LineOf(const PdfFinding& finding) {
  std::string line = "  " + finding.clause + "-" + std::to_string(finding.test);
  if (finding.page > 0) {
    line += " page " + std::to_string(finding.page);
  }
  if (finding.object > 0) {
    line += " object " + std::to_string(finding.object);
  }
  if (!finding.subject.empty()) {
    line += " (" + finding.subject + ")";
  }
  return OneLine(line + ": " + finding.message) + "\n";
}

std::string ToText(const ValidatedFile& file) {
  const bool has_claim = !WordOfLevel(file.claims).empty();
  std::string text =
      OneLine(file.path + (file.is_valid ? ": valid PDF/A-" : ": not valid PDF/A-") +
              WordOfLevel(file.level) + (has_claim ? "" : ", and claims no level of PDF/A")) +
      "\n";
  for (std::size_t i = 0; i < file.findings.size(); ++i) {
    if (i == kMostListed) {
      return text + "  ... and " + std::to_string(file.findings.size() - i) + " more\n";
    }
    text += LineOf(file.findings[i]);
  }
  return text;
}

ValidatedFile ValidateOne(const JobContext& context, const Input& input) {
  PdfDoc document = context.DocumentOf(input);
  const PdfCompliance wanted = LevelOfWord(context.Options().Text("level"));
  ValidatedFile file = ForPassword([&] { return Validate(document, wanted); });
  file.path = input.given;
  if (context.Options().Has("report")) {
    AddPictures(document, file);
  }
  return file;
}

JobResult Validate(JobContext& context) {
  std::vector<ValidatedFile> files;
  JobResult result = TellOfEach(context, [&](const Input& input, JobResult& all) {
    const ValidatedFile& file = files.emplace_back(ValidateOne(context, input));
    all.text += ToText(file);
    all.exit_status = file.is_valid ? all.exit_status : kExitNo;
    return ToJson(file);
  });
  if (context.Options().Has("report")) {
    OutputPlan::MakeDirectoryOf(context.OutputPath());
    UnfinishedFile(context.OutputPath()).Complete(HtmlReport(files));
    result.outputs.push_back(context.OutputPath());
  }
  return result;
}

const JobRegistration kRegistration({
    .name = "validate",
    .summary = "tell whether documents are PDF/A",
    .description = "Tells for every input whether it is what it claims to be, or what a level of "
                   "PDF/A asks for: one line for everything that is not, with the clause and the "
                   "test of the published validation profiles. Exit status 1: not all of them are.",
    .examples = {"tarnix pdfa --level 2b letter.pdf", "tarnix validate letter-pdfa.pdf",
                 "tarnix validate --level 2b --report letter.html letter-pdfa.pdf"},
    .inputs = {.use = InputUse::Listed},
    .output = OutputKind::None,
    .report_option = "report",
    .engine = EngineName::Validator,
    .options = kOptions,
    .run = Validate,
});

}  // namespace
}  // namespace TarnixTools::cli
