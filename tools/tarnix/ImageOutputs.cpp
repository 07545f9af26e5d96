#include "ImageOutputs.h"

#include <string>
#include <vector>

#include "Interruption.h"
#include "Streams.h"

namespace TarnixTools::cli {

void SetPages(const JobContext& context, Pdf2ImgTask& task) {
  if (context.Options().Has("pages")) {
    const std::vector<int> pages = context.Pages("pages");
    task.SetPagesToExport({pages.begin(), pages.end()});
  }
}

JobResult RunImageTask(const JobContext& context, Pdf2ImgTask& task) {
  context.Watch(task);
  task.SetOutputPath(context.MakeDirectory());
  try {
    ForPassword([&] { task.Execute(); });
  } catch (...) {
    for (const std::string& image : task.GetWrittenFiles()) {
      NoteFinished(WithoutDot(NativePath(image)));
    }
    throw;
  }
  JobResult result{.report = task.GetReport()};
  for (const std::string& image : task.GetImages()) {
    result.outputs.push_back(WithoutDot(NativePath(image)));
  }
  return result;
}

}  // namespace TarnixTools::cli
