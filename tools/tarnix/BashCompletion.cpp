#include "Completion.h"
#include "Job.h"

namespace TarnixTools::cli {
namespace {

constexpr std::string_view kFunction = R"(
_tarnix()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} job=${COMP_WORDS[1]}
    local options='' pattern='' words=''
    COMPREPLY=()
    # bash cuts --option=value into three words
    if [[ $previous == '=' ]] && ((COMP_CWORD > 2)); then
        previous=${COMP_WORDS[COMP_CWORD-2]}
    elif [[ $current == '=' ]]; then
        current=''
    fi
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "$_tarnix_jobs help --help --version" -- "$current")
        return
    fi
    if [[ $job == help ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$_tarnix_jobs" -- "$current")
        return
    fi
    _tarnix_value "$job" "$previous"
    case $words in
        '') ;;
        :none) return ;;
        :file) mapfile -t COMPREPLY < <(compgen -f -- "$current"); return ;;
        :directory) mapfile -t COMPREPLY < <(compgen -d -- "$current"); return ;;
        *) mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current"); return ;;
    esac
    _tarnix_job "$job"
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    elif [[ -n $pattern ]]; then
        mapfile -t COMPREPLY < <(compgen -d -- "$current"; compgen -f -X "!$pattern" -- "$current")
    fi
}

complete -o filenames -F _tarnix tarnix
)";

// Rows are our own constants, free of anything that the shell would expand.
std::string SingleQuoted(std::string_view text) {
  return "'" + std::string(text) + "'";
}

std::string JobNames() {
  std::string names;
  for (const Job* job : Jobs()) {
    names += (names.empty() ? "" : " ") + std::string(job->name);
  }
  return names;
}

std::string OptionNames(const Job& job) {
  std::string names;
  for (const OptionRow* row : ShownOptions(job)) {
    names += (names.empty() ? "--" : " --") + std::string(row->name);
    if (row->letter != 0) {
      names += std::string(" -") + row->letter;
    }
  }
  return names;
}

// What may follow the option: the words of a choice, or a marker that starts with a colon.
std::string ValueWords(const OptionRow& row) {
  switch (row.kind) {
    case ValueKind::Choice: {
      std::string words;
      for (const std::string_view choice : Choices(row)) {
        words += (words.empty() ? "" : " ") + std::string(choice);
      }
      return words;
    }
    case ValueKind::File:
      return ":file";
    case ValueKind::Directory:
      return ":directory";
    default:
      return ":none";
  }
}

// One line of a case statement over "JOB OPTION"; `job` may be a pattern.
std::string ValueCase(std::string_view job, const OptionRow& row) {
  if (row.kind == ValueKind::Flag) {
    return "";
  }
  std::string labels = std::string(job) + "' --" + std::string(row.name) + "'";
  if (row.letter != 0) {
    labels += "|" + std::string(job) + "' -" + row.letter + "'";
  }
  return "        " + labels + ") words=" + SingleQuoted(ValueWords(row)) + " ;;\n";
}

// Sets `words` by job and option; a job's own rows come first, since they win.
std::string ValueFunction() {
  std::string function = "_tarnix_value()\n{\n    case \"$1 $2\" in\n";
  for (const Job* job : Jobs()) {
    for (const OptionRow& row : job->options) {
      function += ValueCase(job->name, row);
    }
  }
  for (const OptionRow& row : CommonOptions()) {
    function += ValueCase("*", row);
  }
  return function + "    esac\n}\n";
}

// Sets `options` and `pattern` by job.
std::string JobFunction() {
  std::string function = "_tarnix_job()\n{\n    case $1 in\n";
  for (const Job* job : Jobs()) {
    function += "        " + std::string(job->name) +
                ") options=" + SingleQuoted(OptionNames(*job)) +
                " pattern=" + SingleQuoted(job->inputs.pattern) + " ;;\n";
  }
  return function + "    esac\n}\n";
}

}  // namespace

std::string BashCompletion() {
  return "# bash completion for tarnix; load it with: source <(tarnix completion "
         "bash)\n\n_tarnix_jobs=" +
         SingleQuoted(JobNames()) + "\n\n" + JobFunction() + "\n" + ValueFunction() +
         std::string(kFunction);
}

}  // namespace TarnixTools::cli
