#include "Completion.h"
#include "Job.h"

namespace TarnixTools::cli {
namespace {

constexpr std::string_view kStart = R"(#compdef tarnix
# zsh completion for tarnix; load it with: source <(tarnix completion zsh)
_tarnix()
{
    local -a jobs
    jobs=(
)";

constexpr std::string_view kChoice = R"(    )
    if ((CURRENT == 2)); then
        _describe -t jobs job jobs
        return
    fi
    if [[ $words[2] == help ]]; then
        ((CURRENT == 3)) && _describe -t jobs job jobs
        return
    fi
    local job=$words[2]
    shift words
    ((CURRENT--))
    case $job in
)";

constexpr std::string_view kEnd = R"(    esac
}

if [[ $funcstack[1] == _tarnix ]]; then
    _tarnix "$@"
else
    compdef _tarnix tarnix
fi
)";

// In single quotes, with the characters escaped that mean something to _arguments and _describe.
std::string Quoted(std::string_view text) {
  std::string quoted;
  for (const char c : text) {
    if (c == '\'') {
      quoted += "'\\'";
    } else if (c == ':' || c == '[' || c == ']' || c == '\\') {
      quoted += '\\';
    }
    quoted += c;
  }
  return quoted;
}

// What may follow the option, as _arguments takes it.
std::string ValueAction(const OptionRow& row) {
  std::string action = ":" + Quoted(row.argument) + ":";
  switch (row.kind) {
    case ValueKind::Choice:
      action += "(";
      for (const std::string_view choice : Choices(row)) {
        action += (action.back() == '(' ? "" : " ") + std::string(choice);
      }
      return action + ")";
    case ValueKind::File:
      return action + "_files";
    case ValueKind::Directory:
      return action + "_files -/";
    default:
      return action + " ";
  }
}

// A long name takes its value behind "=" or as the next word, a letter in the same word or the next.
std::string OptionSpec(const std::string& name, const OptionRow& row) {
  const bool has_value = row.kind != ValueKind::Flag;
  const std::string mark = !has_value ? "" : name.starts_with("--") ? "=" : "+";
  return " \\\n                '" + name + mark + "[" + Quoted(row.help) + "]" +
         (has_value ? ValueAction(row) : "") + "'";
}

std::string JobCase(const Job& job) {
  std::string text = "        " + std::string(job.name) + ")\n            _arguments -S";
  for (const OptionRow* row : ShownOptions(job)) {
    text += OptionSpec("--" + std::string(row->name), *row);
    if (row->letter != 0) {
      text += OptionSpec(std::string("-") + row->letter, *row);
    }
  }
  return text + " \\\n                '*:input:_files -g \"" + std::string(job.inputs.pattern) +
         "\"' ;;\n";
}

}  // namespace

std::string ZshCompletion() {
  std::string script(kStart);
  for (const Job* job : Jobs()) {
    script += "        '" + std::string(job->name) + ":" + Quoted(job->summary) + "'\n";
  }
  script += kChoice;
  for (const Job* job : Jobs()) {
    script += JobCase(*job);
  }
  return script + std::string(kEnd);
}

}  // namespace TarnixTools::cli
