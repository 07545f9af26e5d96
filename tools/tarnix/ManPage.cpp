#include "ManPage.h"

#include "Failure.h"
#include "Help.h"
#include "Job.h"
#include "PdfCommonUtils.h"

namespace TarnixTools::cli {
namespace {

struct StatusRow {
  PdfExceptionCode code;
  std::string_view meaning;
};

constexpr StatusRow kStatusRows[] = {
    {PdfExceptionCode::PasswordError, "a password is missing or wrong"},
    {PdfExceptionCode::NoPages, "no page would be left, or the document has none"},
    {PdfExceptionCode::InvalidParameter, "a value that the job or the document does not allow"},
    {PdfExceptionCode::FileNotFound, "a file or directory is missing or cannot be created"},
    {PdfExceptionCode::InternalError, "an operation failed, writing the result included"},
    {PdfExceptionCode::NoImagesFound, "no images were found"},
    {PdfExceptionCode::AllPagesScanned,
     "every page is a scanned image and text recognition is off"},
    {PdfExceptionCode::ConversionTimeout, "the conversion ran past its time limit"},
    {PdfExceptionCode::NoTablesFound, "no tables were found"},
    {PdfExceptionCode::EngineError, "the document is damaged beyond reading or cannot be written"},
};

// Plain text as roff: nothing in it is taken for a request, an escape or a typographic character.
std::string Roff(std::string_view text) {
  std::string roff = text.starts_with('.') || text.starts_with('\'') ? "\\&" : "";
  for (const char c : text) {
    switch (c) {
      case '\\':
        roff += "\\e";
        break;
      case '-':
        roff += "\\-";
        break;
      case '\'':
        roff += "\\(aq";
        break;
      default:
        roff += c;
    }
  }
  return roff;
}

std::string Section(std::string_view title) {
  return ".SH " + std::string(title) + "\n";
}

std::string Paragraph(std::string_view text) {
  return ".PP\n" + Roff(text) + "\n";
}

std::string Entry(std::string_view heading, std::string_view text) {
  return ".TP\n\\fB" + Roff(heading) + "\\fR\n" + Roff(text) + "\n";
}

std::string ExampleLine(std::string_view line) {
  return ".RS\n.nf\n" + Roff(line) + "\n.fi\n.RE\n";
}

std::string JobSection(const Job& job) {
  std::string section =
      ".SS \"" + Roff("tarnix " + Synopsis(job)) + "\"\n" + Roff(job.description) + "\n";
  for (const OptionRow& row : job.options) {
    section += Entry(OptionHeading(row), row.help);
  }
  for (const std::string_view example : job.examples) {
    section += ExampleLine(example);
  }
  return section;
}

// Which jobs have the option; the others refuse it.
std::string Condition(AppliesTo jobs) {
  switch (jobs) {
    case AppliesTo::JobsThatRead:
      return "; jobs on documents";
    case AppliesTo::JobsThatWrite:
      return "; jobs that write files";
    case AppliesTo::JobsThatWriteOver:
      return "; jobs that write one document of one";
    case AppliesTo::JobsThatProtect:
      return "; jobs that write documents";
    case AppliesTo::EveryJob:
      break;
  }
  return "";
}

std::string CommonSection() {
  std::string section = Section("\"COMMON OPTIONS\"");
  for (const OptionRow& row : CommonOptions()) {
    const std::string help = std::string(row.help) + Condition(row.applies_to);
    section += Entry(OptionHeading(row), help);
  }
  return section;
}

std::string StatusSection() {
  std::string section = Section("\"EXIT STATUS\"");
  section += Entry("0", "done");
  section += Entry("1", "the answer is no, from a job that asks a question");
  section += Entry("2", "wrong usage");
  section += Entry("3", "done, but something is lost that the input still announced");
  for (const StatusRow& row : kStatusRows) {
    section += Entry(std::to_string(ExitStatus({.code = row.code})),
                     CodeName(row.code) + ": " + std::string(row.meaning));
  }
  return section;
}

}  // namespace

std::string ManPage() {
  std::string page =
      ".TH TARNIX 1 \"\" \"tarnix " + PdfCommonUtils::GetLibVersion() + "\" \"User Commands\"\n";
  page += Section("NAME") + Roff("tarnix - whole-document PDF jobs") + "\n";
  page += Section("SYNOPSIS") + "\\fBtarnix\\fR \\fIJOB\\fR [\\fIOPTIONS\\fR] \\fIINPUT\\fR...\n";
  page += Section("DESCRIPTION");
  page += Roff(
              "Does one job on whole PDF documents and writes new files. Standard output is the "
              "path of every file "
              "written, one a line, or one JSON object with --json; everything else goes to "
              "standard error.") +
          "\n";
  page += Section("JOBS");
  for (const Job* job : Jobs()) {
    page += JobSection(*job);
  }
  page += CommonSection() + StatusSection();
  page += Section("ENVIRONMENT");
  page += Entry("TARNIX_PASSWORD",
                "password of the inputs when neither --password nor --password-file is given");
  page += Section("EXAMPLES");
  page += Paragraph("Rotate what another program writes, and hand it on:");
  page += ExampleLine("scan | tarnix rotate --angle 90 -o - - | lp");
  page += Paragraph("Number every document of a directory, each by its own name:");
  page += ExampleLine("tarnix number -o numbered *.pdf");
  page += Paragraph("Complete job names and options in bash (zsh and fish are there, too):");
  page += ExampleLine("source <(tarnix completion bash)");
  return page;
}

}  // namespace TarnixTools::cli
