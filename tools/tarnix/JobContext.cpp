#include "JobContext.h"

#include "PageList.h"

namespace TarnixTools::cli {

std::vector<PdfDoc> JobContext::Documents() const {
  std::vector<PdfDoc> documents;
  documents.reserve(inputs_.size());
  for (const Input& input : inputs_) {
    documents.push_back(DocumentOf(input));
  }
  return documents;
}

std::vector<int> JobContext::Pages(const std::string& option) const {
  return PagesOf("--" + option, Options().Text(option), Document());
}

std::string JobContext::OutputName() const {
  const std::string& path = OutputPath();
  return path.substr(path.rfind('/') + 1);
}

}  // namespace TarnixTools::cli
