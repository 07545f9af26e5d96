#include "OptionTable.h"

#include <charconv>
#include <cmath>
#include <stdexcept>

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kCommonOptions[] = {
    {.name = "out-dir",
     .letter = 'o',
     .kind = ValueKind::Directory,
     .argument = "DIR",
     .help =
         "output directory, created with its parents if missing (default: beside the first input)",
     .applies_to = AppliesTo::JobsThatWrite},
    {.name = "name",
     .kind = ValueKind::Text,
     .argument = "NAME",
     .help = "name of the output file",
     .applies_to = AppliesTo::JobsThatWriteOneFile},
    {.name = "prefix",
     .kind = ValueKind::Text,
     .argument = "PREFIX",
     .help = "prefix of the output names",
     .applies_to = AppliesTo::JobsWithPrefix},
    {.name = "password",
     .kind = ValueKind::Text,
     .argument = "PW",
     .help = "password of the inputs (other users may see it in the process list; --password-file "
             "does not show it)",
     .excludes = "password-file"},
    {.name = "password-file",
     .kind = ValueKind::File,
     .argument = "FILE",
     .help = "read the password of the inputs from the first line of FILE ('-': standard input)"},
    {.name = "out-password",
     .kind = ValueKind::Text,
     .argument = "PW",
     .help = "password to put on the output",
     .applies_to = AppliesTo::JobsThatWrite,
     .excludes = "out-password-file"},
    {.name = "out-password-file",
     .kind = ValueKind::File,
     .argument = "FILE",
     .help =
         "read the password to put on the output from the first line of FILE ('-': standard input)",
     .applies_to = AppliesTo::JobsThatWrite},
    {.name = "progress",
     .kind = ValueKind::Choice,
     .argument = "auto|always|never",
     .help = "progress bar on standard error; auto (the default): only on a terminal and only when "
             "the job takes longer than half a second"},
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
  values_.emplace(row.name, std::nullopt);
}

void OptionValues::Set(std::string_view name, std::string value) {
  values_.insert_or_assign(std::string(name), std::move(value));
}

bool OptionValues::Has(std::string_view name) const {
  return At(name).has_value();
}

std::string OptionValues::Text(std::string_view name, std::string_view default_value) const {
  return At(name).value_or(std::string(default_value));
}

int OptionValues::Integer(std::string_view name, int default_value) const {
  const auto& text = At(name);
  return text ? ToInteger(*text).value_or(default_value) : default_value;
}

double OptionValues::Number(std::string_view name, double default_value) const {
  const auto& text = At(name);
  return text ? ToNumber(*text).value_or(default_value) : default_value;
}

PairOf<int> OptionValues::IntegerPair(std::string_view name) const {
  return ToIntegerPair(Text(name)).value_or(PairOf<int>{});
}

PairOf<double> OptionValues::NumberPair(std::string_view name) const {
  return ToNumberPair(Text(name)).value_or(PairOf<double>{});
}

const std::optional<std::string>& OptionValues::At(std::string_view name) const {
  const auto found = values_.find(name);
  if (found == values_.end()) {
    throw std::logic_error("undeclared option --" + std::string(name));
  }
  return found->second;
}

}  // namespace TarnixTools::cli
