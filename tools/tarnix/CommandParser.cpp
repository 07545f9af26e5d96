#include "CommandParser.h"

#include <algorithm>

#include <CLI/CLI.hpp>

#include "Failure.h"
#include "Input.h"
#include "NearestWord.h"
#include "PageList.h"

namespace TarnixTools::cli {
namespace {

constexpr std::string_view kFormerOutput = "--out-dir";  // what -o was called once

CLI::Option* AddOption(CLI::App& app, const OptionRow& row) {
  std::string names = "--" + std::string(row.name);
  if (row.letter != 0) {
    names = std::string("-") + row.letter + "," + names;
  }
  if (row.kind == ValueKind::Flag) {
    return app.add_flag(names);
  }
  return app.add_option(names)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

// Takes any number of words as they are. A minimum that is never reached does that; the parser's
// other way, extra arguments, would take a word in brackets for a list.
CLI::Option* AddInputs(CLI::App& app, std::size_t word_count) {
  return app.add_option("INPUT")
      ->expected(static_cast<int>(word_count) + 1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->allow_extra_args(false);
}

const OptionRow* FindRow(const std::vector<const OptionRow*>& rows, std::string_view word) {
  const auto found = std::find_if(rows.begin(), rows.end(), [word](const OptionRow* row) {
    return word == "--" + std::string(row->name) ||
           (row->letter != 0 && word == std::string("-") + row->letter);
  });
  return found == rows.end() ? nullptr : *found;
}

// Settles what the parser would get wrong: "--option=" has an empty value (it would take the next
// word), a flag has no value at all, and a missing value gets a clear message.
std::vector<std::string> Normalized(const std::vector<std::string>& words,
                                    const std::vector<const OptionRow*>& rows) {
  std::vector<std::string> normalized;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == "--") {
      normalized.insert(normalized.end(), words.begin() + static_cast<std::ptrdiff_t>(i),
                        words.end());
      break;
    }
    std::string option = words[i].substr(0, words[i].find('='));
    const bool has_value = option.size() < words[i].size();
    if (option == kFormerOutput) {
      option = "--output";
    }
    const OptionRow* row = FindRow(rows, option);
    if (row == nullptr) {
      normalized.push_back(words[i]);
    } else if (row->kind == ValueKind::Flag) {
      if (has_value) {
        throw UsageError(option + " takes no value");
      }
      normalized.push_back(option);
    } else if (has_value && option.starts_with("--")) {
      normalized.push_back(option);
      normalized.push_back(words[i].substr(words[i].find('=') + 1));
    } else if (has_value) {
      normalized.push_back(words[i]);  // "-o=x" is -o with the value "=x"
    } else if (i + 1 == words.size()) {
      throw UsageError(option + " needs a value");
    } else {
      normalized.push_back(option);
      normalized.push_back(words[++i]);
    }
  }
  return normalized;
}

// The parser's own complaint in our words.
[[noreturn]] void ThrowUsageError(const CLI::ParseError& error, const CLI::App& app,
                                  const std::vector<const OptionRow*>& rows) {
  const auto words = app.remaining();
  const auto word =
      std::find_if(words.begin(), words.end(), [](const std::string& w) { return w != "--"; });
  if (word != words.end() && word->starts_with('-')) {
    std::vector<std::string> known;
    known.reserve(rows.size());
    for (const OptionRow* row : rows) {
      known.push_back("--" + std::string(row->name));
    }
    throw UsageError(UnknownOption(*word, known));
  }
  throw UsageError(error.what());
}

void Parse(CLI::App& app, const std::vector<std::string>& words,
           const std::vector<const OptionRow*>& rows) {
  try {
    app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
  } catch (const CLI::ParseError& error) {
    ThrowUsageError(error, app, rows);
  }
}

// What the kind of the row asks for, when the value is not of that kind.
std::string_view KindMismatch(const OptionRow& row, const std::string& value) {
  switch (row.kind) {
    case ValueKind::Integer:
      return ToInteger(value) ? "" : "is not a whole number";
    case ValueKind::Number:
      return ToNumber(value) ? "" : "is not a number";
    case ValueKind::IntegerPair:
      return ToIntegerPair(value) ? "" : "is not two whole numbers such as 10,20";
    case ValueKind::NumberPair:
      return ToNumberPair(value) ? "" : "is not two numbers such as 10,20.5";
    default:
      return "";
  }
}

void CheckValue(const OptionRow& row, const std::string& value) {
  const std::string option = "--" + std::string(row.name);
  if (const std::string_view mismatch = KindMismatch(row, value); !mismatch.empty()) {
    throw UsageError(option + ": '" + value + "' " + std::string(mismatch));
  }
  if (row.kind == ValueKind::Choice) {
    const auto choices = Choices(row);
    if (std::find(choices.begin(), choices.end(), value) == choices.end()) {
      throw UsageError(option + ": '" + value + "' is none of " + std::string(row.argument) +
                       Suggestion(value, {choices.begin(), choices.end()}));
    }
  }
  if ((row.kind == ValueKind::File || row.kind == ValueKind::Directory) && value.empty()) {
    throw UsageError(option + ": the path is empty");
  }
  if (row.kind == ValueKind::File || row.kind == ValueKind::Directory) {
    RequireNoBackslash(option, value);
  }
  if (row.kind == ValueKind::Pages) {
    CheckPageList(option, value);
  }
}

std::string Files(int count) {
  return std::to_string(count) + (count == 1 ? " input" : " inputs");
}

void CheckInputs(const Command& command) {
  const InputRule& rule = command.job->inputs;
  const int count = static_cast<int>(command.inputs.size());
  const std::string given = " (given: " + std::to_string(count) + ")";
  const bool is_part = count == 1 && command.job->has_page_inputs &&
                       command.inputs.front().find(':') != std::string::npos;
  if (count < rule.min && !is_part) {
    throw UsageError(std::string(command.job->name) + " needs " +
                     (rule.max == rule.min ? "" : "at least ") + Files(rule.min) + given);
  }
  if (rule.max != InputRule::kNoLimit && count > rule.max) {
    throw UsageError(std::string(command.job->name) + " takes " +
                     (rule.max == rule.min ? "" : "at most ") + Files(rule.max) + given);
  }
}

}  // namespace

void CheckOption(const OptionRow& row, const OptionValues& values) {
  if (!values.Has(row.name)) {
    if (row.is_required) {
      throw UsageError("--" + std::string(row.name) + " is needed");
    }
    return;
  }
  CheckValue(row, values.Text(row.name));
  const std::string option = "--" + std::string(row.name);
  if (!row.excludes.empty() && values.Has(row.excludes)) {
    throw UsageError(option + " and --" + std::string(row.excludes) + " exclude each other");
  }
  if (!row.needs.empty() && !values.Has(row.needs)) {
    throw UsageError(option + " needs --" + std::string(row.needs));
  }
}

Command ParseCommand(const Job& job, const std::vector<std::string>& words) {
  const auto rows = ShownOptions(job);
  const auto normalized = Normalized(words, rows);
  CLI::App app;
  app.set_help_flag();  // ours comes from the table
  const CLI::Option* inputs = AddInputs(app, normalized.size());
  std::vector<const CLI::Option*> options;
  options.reserve(rows.size());
  for (const OptionRow* row : rows) {
    options.push_back(AddOption(app, *row));
  }
  Parse(app, normalized, rows);

  Command command{.job = &job, .inputs = inputs->results(), .values = {}};
  for (std::size_t i = 0; i < rows.size(); ++i) {
    command.values.Declare(*rows[i]);
    for (const std::string& value : options[i]->results()) {
      command.values.Set(rows[i]->name, value);
    }
  }
  if (command.values.Has("help") || command.values.Has("version")) {
    return command;
  }
  for (const OptionRow* row : rows) {
    CheckOption(*row, command.values);
  }
  CheckInputs(command);
  return command;
}

}  // namespace TarnixTools::cli
