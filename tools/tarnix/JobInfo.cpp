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
#include "PdfSize.h"
#include "PdfSummary.h"
#include "Rights.h"
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

// Pages that viewers turn alike.
struct RotationGroup {
  int degrees;
  std::vector<std::pair<int, int>> page_ranges;
};

struct Metadata {
  const char* label;
  std::string value;
};

struct FileInfo {
  std::string path;
  int pages;
  PdfSummary summary;
  std::vector<SizeGroup> sizes;
  std::vector<RotationGroup> rotations;  // in the order of degrees
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

void AddPage(std::vector<std::pair<int, int>>& ranges, int page) {
  if (!ranges.empty() && ranges.back().second == page - 1) {
    ranges.back().second = page;
  } else {
    ranges.emplace_back(page, page);
  }
}

std::vector<RotationGroup> GroupRotations(const std::vector<int>& rotations) {
  std::map<int, RotationGroup> groups;
  int page_number = 0;
  for (const int degrees : rotations) {
    RotationGroup& group = groups.try_emplace(degrees, RotationGroup{degrees, {}}).first->second;
    AddPage(group.page_ranges, ++page_number);
  }
  std::vector<RotationGroup> list;
  list.reserve(groups.size());
  for (auto& [degrees, group] : groups) {
    list.push_back(std::move(group));
  }
  return list;
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
    AddPage(group.page_ranges, page_number);
  }
  return groups;
}

FileInfo Look(const std::string& name, PdfDoc& document, double factor) {
  const PdfSummary summary = document.GetSummary();
  return {
      .path = name,
      .pages = static_cast<int>(summary.sizes.size()),
      .summary = summary,
      .sizes = GroupSizes(summary.sizes, factor),
      .rotations = GroupRotations(summary.rotations),
      .metadata = {{"title", summary.title},
                   {"subject", summary.subject},
                   {"author", summary.author},
                   {"keywords", summary.keywords},
                   {"creator", summary.creator},
                   {"producer", summary.producer}},
  };
}

// "1-3,7"
std::string RangesText(const std::vector<std::pair<int, int>>& ranges) {
  std::string text;
  for (const auto& [first, last] : ranges) {
    text += (text.empty() ? "" : ",") + std::to_string(first);
    if (last != first) {
      text += "-" + std::to_string(last);
    }
  }
  return text;
}

Json RotationsJson(const std::vector<RotationGroup>& groups) {
  Json rotations = Json::array();
  for (const RotationGroup& group : groups) {
    rotations.push_back({{"degrees", group.degrees}, {"pages", RangesText(group.page_ranges)}});
  }
  return rotations;
}

Json ToJson(const FileInfo& info) {
  Json sizes = Json::array();
  for (const SizeGroup& group : info.sizes) {
    sizes.push_back({{"width", static_cast<double>(group.width_hundredths) / 100},
                     {"height", static_cast<double>(group.height_hundredths) / 100},
                     {"pages", RangesText(group.page_ranges)}});
  }
  Json metadata = Json::object();
  for (const Metadata& entry : info.metadata) {
    metadata[entry.label] = entry.value;
  }
  const PdfSummary& summary = info.summary;
  return {{"path", info.path},
          {"pages", info.pages},
          {"version", summary.version},
          {"encrypted", summary.is_encrypted},
          {"permissions", PermittedWords(summary.permissions)},
          {"claims", LevelJson(summary.claims)},
          {"pageSizes", sizes},
          {"rotations", RotationsJson(info.rotations)},
          {"metadata", metadata},
          {"tagged", summary.is_tagged},
          {"signed", summary.signatures > 0},
          {"fields", summary.fields},
          {"attachments", summary.attachments}};
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

// "1 page", "12 pages"
std::string PagesCount(const std::vector<std::pair<int, int>>& ranges) {
  int pages = 0;
  for (const auto& [first, last] : ranges) {
    pages += last - first + 1;
  }
  return std::to_string(pages) + (pages == 1 ? " page" : " pages");
}

std::string SizesText(const FileInfo& info, const std::string& unit) {
  std::string text;
  for (const SizeGroup& group : info.sizes) {
    if (&group - info.sizes.data() == kMaxListedSizes) {
      return text + Line("", "... and " + std::to_string(info.sizes.size() - kMaxListedSizes) +
                                 " more sizes");
    }
    text += Line(text.empty() ? "page size" : "",
                 LengthText(group.width_hundredths) + " x " + LengthText(group.height_hundredths) +
                     " " + unit + " (" + PagesCount(group.page_ranges) + ")");
  }
  return text;
}

std::string DeniedText(std::uint32_t permissions) {
  std::string text;
  for (const std::string& word : DeniedWords(permissions)) {
    text += (text.empty() ? "" : ", ") + word;
  }
  return text;
}

std::string FeaturesText(const PdfSummary& summary) {
  std::string text = Line("tagged", summary.is_tagged ? "yes" : "no");
  const auto add_count = [&](std::string_view label, std::int64_t count) {
    text += count == 0 ? "" : Line(label, std::to_string(count));
  };
  add_count("signatures", summary.signatures);
  add_count("fields", summary.fields);
  add_count("attachments", summary.attachments);
  return text;
}

std::string RotationsText(const FileInfo& info) {
  std::string text;
  for (const RotationGroup& group : info.rotations) {
    if (group.degrees != 0) {
      text += Line(text.empty() ? "rotated" : "", std::to_string(group.degrees) + " degrees (" +
                                                      PagesCount(group.page_ranges) + ")");
    }
  }
  return text;
}

std::string ToText(const FileInfo& info, const std::string& unit) {
  std::string text = info.path + "\n";
  const PdfSummary& summary = info.summary;
  text += Line("pages", std::to_string(info.pages));
  text += Line("version", summary.version);
  text += Line("encrypted", summary.is_encrypted ? "yes" : "no");
  if (const std::string denied = DeniedText(summary.permissions); !denied.empty()) {
    text += Line("denied", denied);
  }
  if (const std::string level = WordOfLevel(summary.claims); !level.empty()) {
    text += Line("claims", "PDF/A-" + level);
  }
  text += FeaturesText(summary);
  text += SizesText(info, unit) + RotationsText(info);
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
        "Shows for every input its number of pages, version, whether it is encrypted and what that "
        "denies, the level of PDF/A that it claims, whether it is tagged, its signatures, form "
        "fields "
        "and attached files, its page sizes and rotations and its metadata. Writes no file.",
    .examples = {"tarnix info report.pdf", "tarnix info --units mm letter.pdf plan.pdf",
                 "tarnix info --json report.pdf"},
    .inputs = {.use = InputUse::Listed},
    .output = OutputKind::None,
    .options = kOptions,
    .run = Info,
});

}  // namespace
}  // namespace TarnixTools::cli
