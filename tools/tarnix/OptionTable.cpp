#include "OptionTable.h"

#include <charconv>
#include <cmath>
#include <stdexcept>

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kCommonOptions[] = {
    {.name = "output",
     .letter = 'o',
     .kind = ValueKind::File,
     .argument = "PATH",
     .help =
         "where to write: a file, when one is written and PATH ends as such files do; otherwise "
         "a directory, created with its parents; '-': standard output (default: the current "
         "directory)",
     .applies_to = AppliesTo::JobsThatWrite},
    {.name = "name",
     .kind = ValueKind::Text,
     .argument = "NAME",
     .help = "name of the output; {stem} stands for the input's name without its extension, {n} "
             "for a number",
     .applies_to = AppliesTo::JobsThatWrite},
    {.name = "prefix",
     .kind = ValueKind::Text,
     .argument = "PREFIX",
     .help = "put PREFIX_ in front of the input's name instead of telling behind it what was done",
     .excludes = "name",
     .applies_to = AppliesTo::JobsThatWrite},
    {.name = "no-clobber",
     .letter = 'n',
     .help = "refuse to replace a file",
     .applies_to = AppliesTo::JobsThatWrite},
    {.name = "in-place",
     .help = "write the output over its input",
     .excludes = "no-clobber",
     .applies_to = AppliesTo::JobsThatWriteOver},
    {.name = "password",
     .kind = ValueKind::Text,
     .argument = "PW",
     .help = "password of the inputs, to be tried in turn with others (other users may see it in "
             "the process list; --password-file does not show it)",
     .applies_to = AppliesTo::JobsThatRead},
    {.name = "password-file",
     .kind = ValueKind::File,
     .argument = "FILE",
     .help = "read such a password from the first line of FILE ('-': standard input)",
     .applies_to = AppliesTo::JobsThatRead},
    {.name = "out-password",
     .kind = ValueKind::Text,
     .argument = "PW",
     .help = "password to put on the output",
     .excludes = "out-password-file",
     .applies_to = AppliesTo::JobsThatProtect},
    {.name = "out-password-file",
     .kind = ValueKind::File,
     .argument = "FILE",
     .help =
         "read the password to put on the output from the first line of FILE ('-': standard input)",
     .applies_to = AppliesTo::JobsThatProtect},
    {.name = "progress",
     .kind = ValueKind::Choice,
     .argument = "auto|always|never",
     .help = "progress bar on standard error; auto (the default): only on a terminal that is wide "
             "enough, and only when the job takes longer than half a second"},
    {.name = "json", .help = "write one JSON object to standard output"},
    {.name = "quiet",
     .letter = 'q',
     .help = "nothing on standard error but an error",
     .excludes = "verbose"},
    {.name = "verbose",
     .letter = 'v',
     .help = "tell on standard error what was kept, renamed and dropped, and why; with --json the "
             "field 'report' always tells it"},
    {.name = "help", .letter = 'h', .help = "show this help and exit"},
    {.name = "version", .help = "show the version and exit"},
};

template <typename Value>
std::optional<PairOf<Value>> ToPair(std::string_view text,
                                    std::optional<Value> (*convert)(std::string_view)) {
  const std::size_t comma = text.find(',');
  if (comma == std::string_view::npos) {
    return std::nullopt;
  }
  const std::optional<Value> x = convert(text.substr(0, comma));
  const std::optional<Value> y = convert(text.substr(comma + 1));
  if (!x || !y) {
    return std::nullopt;
  }
  return PairOf<Value>{*x, *y};
}

}  // namespace

std::span<const OptionRow> CommonOptions() {
  return kCommonOptions;
}

std::vector<std::string_view> Choices(const OptionRow& row) {
  std::vector<std::string_view> words;
  std::string_view rest = row.argument;
  for (auto bar = rest.find('|'); bar != std::string_view::npos; bar = rest.find('|')) {
    words.push_back(rest.substr(0, bar));
    rest.remove_prefix(bar + 1);
  }
  words.push_back(rest);
  return words;
}

std::optional<int> ToInteger(std::string_view text) {
  int value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end) {
    return std::nullopt;
  }
  return value;
}

std::optional<double> ToNumber(std::string_view text) {
  double value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || !std::isfinite(value)) {
    return std::nullopt;
  }
  return value;
}

std::optional<PairOf<int>> ToIntegerPair(std::string_view text) {
  return ToPair(text, &ToInteger);
}

std::optional<PairOf<double>> ToNumberPair(std::string_view text) {
  return ToPair(text, &ToNumber);
}

void OptionValues::Declare(const OptionRow& row) {
  values_.try_emplace(std::string(row.name));
}

void OptionValues::Set(std::string_view name, std::string value) {
  values_[std::string(name)].push_back(std::move(value));
}

bool OptionValues::Has(std::string_view name) const {
  return !At(name).empty();
}

std::string OptionValues::Text(std::string_view name, std::string_view default_value) const {
  const std::vector<std::string>& given = At(name);
  return given.empty() ? std::string(default_value) : given.back();
}

int OptionValues::Integer(std::string_view name, int default_value) const {
  return Has(name) ? ToInteger(Text(name)).value_or(default_value) : default_value;
}

double OptionValues::Number(std::string_view name, double default_value) const {
  return Has(name) ? ToNumber(Text(name)).value_or(default_value) : default_value;
}

PairOf<int> OptionValues::IntegerPair(std::string_view name) const {
  return ToIntegerPair(Text(name)).value_or(PairOf<int>{});
}

PairOf<double> OptionValues::NumberPair(std::string_view name) const {
  return ToNumberPair(Text(name)).value_or(PairOf<double>{});
}

const std::vector<std::string>& OptionValues::At(std::string_view name) const {
  const auto found = values_.find(name);
  if (found == values_.end()) {
    throw std::logic_error("undeclared option --" + std::string(name));
  }
  return found->second;
}

}  // namespace TarnixTools::cli
