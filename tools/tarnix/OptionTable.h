// One row per command-line option. Parsing, --help, the bash completion and the man page are all
// read from these rows, so an option is described in one place only.
//
//   constexpr OptionRow kOptions[] = {
//       {.name = "every", .kind = ValueKind::Integer, .argument = "N", .help = "pages per piece"},
//   };
#ifndef TARNIX_CLI_OPTION_TABLE_H_
#define TARNIX_CLI_OPTION_TABLE_H_

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace TarnixTools::cli {

// What follows an option on the command line. Text, File and Directory differ only in what the
// shell completes; a pair is two numbers with a comma between them.
enum class ValueKind {
  Flag,
  Text,
  Integer,
  Number,
  IntegerPair,
  NumberPair,
  Choice,
  Pages,  // a list of pages (PageList.h)
  File,
  Directory,
};

// Says which jobs an option belongs to; the others refuse it.
enum class AppliesTo {
  EveryJob,
  JobsThatRead,       // that open documents, which may need a password
  JobsThatWrite,      // that write files
  JobsThatWriteOver,  // whose output can take the place of its input
  JobsThatProtect,    // whose output can have a password beside those of the job's own options
};

struct OptionRow {
  std::string_view name;  // long form, without the dashes
  char letter = 0;        // short form, 0 for none
  ValueKind kind = ValueKind::Flag;
  // What help shows; the allowed words, joined by '|', for a Choice.
  std::string_view argument = {};
  std::string_view help = {};
  std::string_view excludes = {};  // name of an option that cannot be given together with this one
  std::string_view needs = {};     // name of an option without which this one makes no sense
  AppliesTo applies_to = AppliesTo::EveryJob;
  bool is_required = false;
};

// The options that every job shares; each job adds its own rows (Job.h).
std::span<const OptionRow> CommonOptions();

// The words of a Choice.
std::vector<std::string_view> Choices(const OptionRow& row);

// The value of an Integer; nothing when the text is not a whole number that fits an int.
std::optional<int> ToInteger(std::string_view text);

// The value of a Number; nothing when the text is not a finite decimal number.
std::optional<double> ToNumber(std::string_view text);

template <typename Value>
struct PairOf {
  Value x{};
  Value y{};
};

// The value of a pair; nothing when the text is none.
std::optional<PairOf<int>> ToIntegerPair(std::string_view text);
std::optional<PairOf<double>> ToNumberPair(std::string_view text);

// What was given on the command line for the rows a job accepts. Of a row given several times the
// last value counts, unless all are asked for. Asking for a name that no row declares is a mistake in the program and throws
// std::logic_error.
class OptionValues {
 public:
  void Declare(const OptionRow& row);
  void Set(std::string_view name, std::string value);

  bool Has(std::string_view name) const;
  // The value given, or the default for an option that was not given.
  std::string Text(std::string_view name, std::string_view default_value = {}) const;

  // Every value given, in order.
  const std::vector<std::string>& All(std::string_view name) const { return At(name); }

  // The value of an Integer row, which parsing has checked.
  int Integer(std::string_view name, int default_value) const;
  // The value of a Number row, and of a pair, as parsing has checked them; zeros for a pair that
  // was not given.
  double Number(std::string_view name, double default_value) const;
  PairOf<int> IntegerPair(std::string_view name) const;
  PairOf<double> NumberPair(std::string_view name) const;

 private:
  const std::vector<std::string>& At(std::string_view name) const;

  std::map<std::string, std::vector<std::string>, std::less<>> values_;
};

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_OPTION_TABLE_H_
