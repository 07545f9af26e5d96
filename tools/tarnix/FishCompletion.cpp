#include "Completion.h"
#include "Job.h"

namespace TarnixTools::cli {
namespace {

constexpr std::string_view kStart =
    R"(# fish completion for tarnix; load it with: tarnix completion fish | source
function __tarnix_needs_job
    test (count (commandline -opc)) -eq 1
end

function __tarnix_has_job
    set -l words (commandline -opc)
    test (count $words) -ge 2; and test $words[2] = $argv[1]
end

complete -c tarnix -n __tarnix_needs_job -f
complete -c tarnix -n '__tarnix_has_job help' -f
)";

std::string Quoted(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') {
      quoted += '\\';
    }
    quoted += c;
  }
  return quoted + "'";
}

// What may follow the option, as complete takes it.
std::string ValueWords(const OptionRow& row) {
  if (row.kind == ValueKind::Flag) {
    return "";
  }
  if (row.kind == ValueKind::File || row.kind == ValueKind::Directory) {
    return " -r";
  }
  std::string words;
  if (row.kind == ValueKind::Choice) {
    for (const std::string_view choice : Choices(row)) {
      words += (words.empty() ? "" : " ") + std::string(choice);
    }
  }
  return " -x" + (words.empty() ? "" : " -a " + Quoted(words));
}

std::string OptionLine(const Job& job, const OptionRow& row) {
  std::string line = "complete -c tarnix -n '__tarnix_has_job " + std::string(job.name) + "' -l " +
                     std::string(row.name);
  if (row.letter != 0) {
    line += std::string(" -s ") + row.letter;
  }
  return line + ValueWords(row) + " -d " + Quoted(row.help) + "\n";
}

std::string JobLines(const Job& job) {
  const std::string offer = " -a " + std::string(job.name) + " -d " + Quoted(job.summary) + "\n";
  std::string lines = "complete -c tarnix -n __tarnix_needs_job" + offer +
                      "complete -c tarnix -n '__tarnix_has_job help'" + offer;
  for (const OptionRow* row : ShownOptions(job)) {
    lines += OptionLine(job, *row);
  }
  return lines;
}

}  // namespace

std::string FishCompletion() {
  std::string script(kStart);
  for (const Job* job : Jobs()) {
    script += JobLines(*job);
  }
  return script;
}

}  // namespace TarnixTools::cli
