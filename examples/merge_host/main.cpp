// The smallest useful host: joins PDF files into OUTPUT_DIR/all.pdf and prints where that is.
//
//   merge_host OUTPUT_DIR FIRST.pdf SECOND.pdf...
#include <iostream>
#include <list>

#include "TarnixTools.h"

int main(int argc, char** argv) {
  using namespace TarnixTools;
  if (argc < 4) {
    std::cerr << "usage: merge_host OUTPUT_DIR FIRST.pdf SECOND.pdf...\n";
    return 2;
  }
  try {
    std::list<PdfDoc> documents;
    for (int i = 2; i < argc; ++i) {
      documents.emplace_back(argv[i], "", true);
    }
    PdfMergeTask task(documents);
    task.SetOutputPath(argv[1]);
    task.SetOutDocName("all.pdf");
    task.Execute();
    std::cout << PdfCommonUtils::GetNativePath(task.GetMergedDocPath()) << '\n';
  } catch (PdfException& error) {
    std::cerr << "merge_host: " << error.what() << '\n';
    return static_cast<int>(error.GetCode());
  }
}
