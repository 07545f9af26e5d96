#include "PagePictures.h"

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "Pdf2ImgTask.h"
#include "Streams.h"
#include "TemporaryFiles.h"

namespace TarnixTools::cli {
namespace {

constexpr float kDpi = 72;

std::string ReadFile(const std::string& path) {
  std::ifstream file(NativePath(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

std::map<int, PagePicture> DrawPages(PdfDoc& document, const std::set<int>& pages) {
  std::map<int, PagePicture> pictures;
  const std::vector<PdfSize> sizes = document.GetPageSizes();
  const TemporaryDirectory directory;
  for (const int page : pages) {
    if (page < 1 || page > static_cast<int>(sizes.size())) {
      continue;
    }
    Pdf2ImgTask task(document);
    task.SetOutputPath(directory.Path());
    task.SetDpi(kDpi);
    task.SetPagesToExport({page});
    task.Execute();
    if (!task.GetImages().empty()) {
      pictures[page] = {ReadFile(task.GetImages().front()),
                        sizes[static_cast<std::size_t>(page) - 1]};
    }
  }
  return pictures;
}

}  // namespace TarnixTools::cli
