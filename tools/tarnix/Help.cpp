#include "Help.h"

#include <algorithm>

#include "PdfCommonUtils.h"

namespace TarnixTools::cli {
namespace {

constexpr std::size_t kLineWidth = 79;
constexpr std::size_t kTextColumn = 30;

// The words of the text, broken into lines that fit between `column` and the right edge. The first
// line is taken to start at `column` already.
std::string Wrapped(std::string_view text, std::size_t column) {
  std::string wrapped;
  std::size_t position = column;
  while (!text.empty()) {
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(text.size(), word.size() + 1));
    if (position > column && position + 1 + word.size() > kLineWidth) {
      wrapped += "\n" + std::string(column, ' ');
      position = column;
    } else if (position > column) {
      wrapped += ' ';
      ++position;
    }
    wrapped += word;
    position += word.size();
  }
  return wrapped;
}

// A heading in the left column and its text in the right one, below the heading when that is too
// long.
std::string Entry(const std::string& heading, std::string_view text) {
  std::string line = "  " + heading;
  if (line.size() + 2 > kTextColumn) {
    line += "\n" + std::string(kTextColumn, ' ');
  } else {
    line.append(kTextColumn - line.size(), ' ');
  }
  return line + Wrapped(text, kTextColumn) + "\n";
}

}  // namespace

std::string OptionHeading(const OptionRow& row) {
  std::string heading = row.letter == 0 ? "" : std::string("-") + row.letter + ", ";
  heading += "--" + std::string(row.name);
  if (row.kind != ValueKind::Flag) {
    heading += " " + std::string(row.argument);
  }
  return heading;
}

std::string GeneralHelp() {
  std::string help =
      "Usage: tarnix JOB [OPTIONS] INPUT...\n"
      "Does one job on whole PDF documents and prints the path of every file written.\n\n"
      "Jobs:\n";
  for (const Job* job : Jobs()) {
    help += Entry(std::string(job->name), job->summary);
  }
  help += "\n";
  help += Entry("help [JOB]", "show this help, or the help of a job");
  help += Entry("--version", "show the version");
  return help + "\nThe options of a job are shown by 'tarnix JOB --help'.\n";
}

std::string JobHelp(const Job& job) {
  std::string help = "Usage: tarnix " + Synopsis(job) + "\n" + Wrapped(job.description, 0) + "\n";
  if (!job.options.empty()) {
    help += "\nOptions of " + std::string(job.name) + ":\n";
    for (const OptionRow& row : job.options) {
      help += Entry(OptionHeading(row), row.help);
    }
  }
  help += "\nCommon options:\n";
  for (const OptionRow& row : CommonOptions()) {
    if (IsShown(row, job)) {
      help += Entry(OptionHeading(row), row.help);
    }
  }
  help += "\nExamples:\n";
  for (const std::string_view example : job.examples) {
    help += "  " + std::string(example) + "\n";
  }
  return help;
}

std::string VersionLine() {
  return "tarnix " + PdfCommonUtils::GetLibVersion() + "\n";
}

}  // namespace TarnixTools::cli
