#include "ImageOutputs.h"

#include <cstddef>
#include <set>
#include <string>

namespace TarnixTools::cli {
namespace {

// The library puts a separator of its own after the directory's.
std::string WithoutDoubleSeparator(std::string path) {
  const std::size_t at = path.find("\\\\", 1);
  return at != std::string::npos ? path.erase(at, 1) : path;
}

std::string WarningOf(const PdfReportEntry& entry) {
  std::string text = entry.reason;
  if (entry.page > 0) {
    text += ": page " + std::to_string(entry.page);
  }
  if (entry.count > 1) {
    text += " and " + std::to_string(entry.count - 1) + " more";
  }
  return text;
}

}  // namespace

JobResult ResultOf(const Pdf2ImgTask& task) {
  JobResult result{.report = task.GetReport()};
  std::set<std::string> seen;
  for (const std::string& image : task.GetImages()) {
    if (seen.insert(image).second) {
      result.outputs.push_back(WithoutDoubleSeparator(image));
    }
  }
  const std::size_t replaced = task.GetImages().size() - seen.size();
  if (replaced > 0) {
    result.warnings.push_back(std::to_string(replaced) +
                              (replaced == 1 ? " image was" : " images were") +
                              " replaced by later ones of the same name");
  }
  for (const PdfReportEntry& entry : result.report.GetEntries()) {
    if (entry.kind == PdfReportKind::Damage && entry.outcome == PdfReportOutcome::Dropped) {
      result.warnings.push_back(WarningOf(entry));
    }
  }
  return result;
}

}  // namespace TarnixTools::cli
