#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "Failure.h"
#include "Job.h"
#include "JobContext.h"
#include "PdfPageRange.h"
#include "PdfSplitTask.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "every",
     .kind = ValueKind::Integer,
     .argument = "N",
     .help = "pages of a piece (default: 1)",
     .excludes = "ranges"},
    {.name = "ranges",
     .kind = ValueKind::Text,
     .argument = "LIST",
     .help = "one piece per page or range of pages, as in 1-3,5"},
    {.name = "merge", .help = "join the pieces of --ranges into one file", .needs = "ranges"},
};

[[noreturn]] void ThrowBadRanges(const std::string& list) {
  throw UsageError("--ranges: '" + list + "' is not a list of pages and ranges such as 1-3,5");
}

// A number of digits only.
int ParsePageNumber(std::string_view text, const std::string& list) {
  const auto number = text.starts_with('-') ? std::nullopt : ToInteger(text);
  if (!number) {
    ThrowBadRanges(list);
  }
  return *number;
}

PdfPageRange ParseRange(std::string_view item, const std::string& list) {
  const auto dash = item.find('-');
  const int start = ParsePageNumber(item.substr(0, dash), list);
  const int end =
      dash == std::string_view::npos ? start : ParsePageNumber(item.substr(dash + 1), list);
  return {start, end};
}

std::vector<PdfPageRange> ParseRanges(const std::string& list) {
  std::vector<PdfPageRange> ranges;
  std::string_view rest = list;
  for (auto comma = rest.find(','); comma != std::string_view::npos; comma = rest.find(',')) {
    ranges.push_back(ParseRange(rest.substr(0, comma), list));
    rest.remove_prefix(comma + 1);
  }
  ranges.push_back(ParseRange(rest, list));
  return ranges;
}

// The library names the pieces after the document; here is the same rule. `stem` is the output
// directory and the document's name without its extension.
std::vector<std::string> RangeOutputs(const std::string& stem,
                                      const std::vector<PdfPageRange>& ranges) {
  std::vector<std::string> outputs;
  std::set<std::string> seen;  // a range may be asked for twice
  for (const PdfPageRange& range : ranges) {
    std::string label = std::to_string(range.GetStartPageNum());
    if (range.GetPagesNum() > 1) {
      label += "-" + std::to_string(range.GetEndPageNum());
    }
    std::string path = stem + "-" + label + ".pdf";
    if (seen.insert(path).second) {
      outputs.push_back(std::move(path));
    }
  }
  return outputs;
}

std::vector<std::string> PieceOutputs(const std::string& stem, int pages, int every) {
  const std::size_t width = std::to_string(pages).size() + 1;
  std::vector<std::string> outputs;
  for (int first = 0, piece = 1; first < pages; first += std::min(every, pages - first), ++piece) {
    const std::string number = std::to_string(piece);
    outputs.push_back(stem + "-" + std::string(width - number.size(), '0') + number + ".pdf");
  }
  return outputs;
}

JobResult Split(JobContext& context) {
  const OptionValues& options = context.Options();
  std::vector<PdfPageRange> ranges;
  PdfSplitTask task;
  if (options.Has("ranges")) {
    ranges = ParseRanges(options.Text("ranges"));
    task.SetSplitMode(PdfSplitMode::Ranges);
    task.SetMergeAfter(options.Has("merge"));
    for (const PdfPageRange& range : ranges) {
      task.AddSplitRange(range);
    }
  }
  task.SetFixedSplitInterval(options.Integer("every", 1));
  PdfDoc document = context.Documents().front();
  task.AddPdfDoc(document);
  context.Run(task);

  const std::string stem = task.GetOutputPath() + document.GetDocName(false);
  JobResult result{.report = task.GetReport()};
  if (task.GetMergeAfter()) {
    result.outputs = {stem + "_split-merge_.pdf"};
  } else if (!ranges.empty()) {
    result.outputs = RangeOutputs(stem, ranges);
  } else {
    result.outputs = PieceOutputs(stem, document.GetPagesNum(), task.GetFixedSplitInterval());
  }
  return result;
}

const JobRegistration kRegistration({
    .name = "split",
    .summary = "cut a document into pieces",
    .description = "Cuts the input into pieces of a fixed number of pages, or takes out ranges of "
                   "pages. The pieces "
                   "are named after the input, with a number or the range added.",
    .inputs = {.min = 1, .max = 1},
    .output = OutputKind::ManyFiles,
    .options = kOptions,
    .run = Split,
});

}  // namespace
}  // namespace TarnixTools::cli
