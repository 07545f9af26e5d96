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
  return result;
}

}  // namespace TarnixTools::cli
