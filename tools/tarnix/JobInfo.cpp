#include <cmath>
#include <cstdint>
#include <cstdio>
#include <map>
#include <utility>
#include <vector>

#include "EachInput.h"
#include "Job.h"
#include "JobContext.h"
#include "PdfALevel.h"
#include "PdfException.h"
#include "PdfMetadataParam.h"
#include "PdfSize.h"
#include "Streams.h"

namespace TarnixTools::cli {
namespace {

constexpr OptionRow kOptions[] = {
    {.name = "units",
     .kind = ValueKind::Choice,
     .argument = "cm|mm|in|pt",
     .help = "unit of the page sizes (default: pt)"},
};

// More sizes than this are counted, not listed, in the text for people.
constexpr std::size_t kMaxListedSizes = 10;

// Pages of one size. Sizes are whole hundredths of the unit, so that what is shown alike is counted
// together.
struct SizeGroup {
  std::int64_t width_hundredths;
  std::int64_t height_hundredths;
  std::vector<std::pair<int, int>> page_ranges;  // first and last page number
  int pages;
};

struct Metadata {
  const char* label;
  std::string value;
};

struct FileInfo {
  std::string path;
  int pages;
  bool encrypted;
  PdfCompliance claims;  // a version of PDF where no level is claimed
  std::vector<SizeGroup> sizes;
  std::vector<Metadata> metadata;
};

double PointsToUnit(const std::string& unit) {
  if (unit == "cm") {
    return 2.54 / 72;
  }
  if (unit == "mm") {
    return 25.4 / 72;
  }
  return unit == "in" ? 1.0 / 72 : 1.0;
}

std::int64_t ToHundredths(double length) {
  constexpr double kLimit = 1e15;  // still exact as a double, and no rounding function overflows
  return std::isnan(length) ? 0 : std::llround(std::fmin(std::fmax(length * 100, -kLimit), kLimit));
}

std::vector<SizeGroup> GroupSizes(const std::vector<PdfSize>& sizes, double factor) {
  std::vector<SizeGroup> groups;
  std::map<std::pair<std::int64_t, std::int64_t>, std::size_t> group_of_size;
  int page_number = 0;
  for (PdfSize size : sizes) {
    ++page_number;
    const std::pair key(ToHundredths(size.GetWidth() * factor),
                        ToHundredths(size.GetHeight() * factor));
    const auto [found, is_new] = group_of_size.emplace(key, groups.size());
    if (is_new) {
      groups.push_back({.width_hundredths = key.first,
                        .height_hundredths = key.second,
                        .page_ranges = {},
                        .pages = 0});
    }
    SizeGroup& group = groups[found->second];
    ++group.pages;
    if (!group.page_ranges.empty() && group.page_ranges.back().second == page_number - 1) {
      group.page_ranges.back().second = page_number;
    } else {
      group.page_ranges.emplace_back(page_number, page_number);
    }
  }
  return groups;
}

FileInfo Look(const std::string& name, PdfDoc& document, double factor) {
  const std::vector<PdfSize> sizes = document.GetPageSizes();
  return {
      .path = name,
      .pages = static_cast<int>(sizes.size()),
      .encrypted = document.IsEncrypted(),
      .claims = document.GetPdfaCompliance(),
      .sizes = GroupSizes(sizes, factor),
      .metadata = {{"author", document.GetMetaData(PdfMetadataParam::Author)},
                   {"keywords", document.GetMetaData(PdfMetadataParam::Keywords)},
                   {"creator", document.GetMetaData(PdfMetadataParam::Creator)},
                   {"producer", document.GetMetaData(PdfMetadataParam::Producer)}},
  };
}

// "1-3,7"
std::string RangesText(const SizeGroup& group) {
  std::string text;
  for (const auto& [first, last] : group.page_ranges) {
    text += (text.empty() ? "" : ",") + std::to_string(first);
    if (last != first) {
      text += "-" + std::to_string(last);
    }
  }
  return text;
}

Json ToJson(const FileInfo& info) {
  Json sizes = Json::array();
  for (const SizeGroup& group : info.sizes) {
    sizes.push_back({{"width", static_cast<double>(group.width_hundredths) / 100},
                     {"height", static_cast<double>(group.height_hundredths) / 100},
                     {"pages", RangesText(group)}});
  }
  Json metadata = Json::object();
  for (const Metadata& entry : info.metadata) {
    metadata[entry.label] = entry.value;
  }
  return {{"path", info.path},           {"pages", info.pages},
          {"encrypted", info.encrypted}, {"claims", LevelJson(info.claims)},
          {"pageSizes", sizes},          {"metadata", metadata}};
}

// Two decimals at most: "612", "595.28".
std::string LengthText(std::int64_t hundredths) {
  char text[40];
  std::snprintf(text, sizeof text, "%.2f", static_cast<double>(hundredths) / 100);
  std::string number(text);
  number.erase(number.find_last_not_of('0') + 1);
  if (number.ends_with('.')) {
    number.pop_back();
  }
  return number;
}

std::string Line(std::string_view label, const std::string& value) {
  std::string line = "  " + std::string(label);
  line.resize(14, ' ');
  return line + OneLine(value) + "\n";
}

std::string SizesText(const FileInfo& info, const std::string& unit) {
  std::string text;
  for (const SizeGroup& group : info.sizes) {
    if (&group - info.sizes.data() == kMaxListedSizes) {
      return text + Line("", "... and " + std::to_string(info.sizes.size() - kMaxListedSizes) +
                                 " more sizes");
    }
    text += Line(text.empty() ? "page size" : "", LengthText(group.width_hundredths) + " x " +
                                                      LengthText(group.height_hundredths) + " " +
                                                      unit + " (" + std::to_string(group.pages) +
                                                      (group.pages == 1 ? " page)" : " pages)"));
  }
  return text;
}

std::string ToText(const FileInfo& info, const std::string& unit) {
  std::string text = info.path + "\n";
  text += Line("pages", std::to_string(info.pages));
  text += Line("encrypted", info.encrypted ? "yes" : "no");
  if (const std::string level = WordOfLevel(info.claims); !level.empty()) {
    text += Line("claims", "PDF/A-" + level);
  }
  text += SizesText(info, unit);
  for (const Metadata& entry : info.metadata) {
    if (!entry.value.empty()) {
      text += Line(entry.label, entry.value);
    }
  }
  return text;
}

JobResult Info(JobContext& context) {
  const std::string unit = context.Options().Text("units", "pt");
  return TellOfEach(context, [&](const Input& input, JobResult& all) {
    PdfDoc document = context.DocumentOf(input);
    const FileInfo info =
        ForPassword([&] { return Look(input.given, document, PointsToUnit(unit)); });
    all.text += (all.text.empty() ? "" : "\n") + ToText(info, unit);
    return ToJson(info);
  });
}

const JobRegistration kRegistration({
    .name = "info",
    .summary = "show pages, page sizes, encryption and metadata",
    .description =
        "Shows for every input its number of pages, whether it is encrypted, the level of "
        "PDF/A that it claims, its page sizes and its metadata. Writes no file.",
    .examples = {"tarnix info report.pdf", "tarnix info --units mm letter.pdf plan.pdf",
                 "tarnix info --json report.pdf"},
    .inputs = {.use = InputUse::Listed},
    .output = OutputKind::None,
    .options = kOptions,
    .run = Info,
});

}  // namespace
}  // namespace TarnixTools::cli
