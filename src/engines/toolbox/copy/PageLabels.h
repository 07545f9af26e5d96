// Page labels of copied pages (ISO 32000-2, 12.4.2).
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_PAGELABELS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_PAGELABELS_H_

#include <string>

namespace TarnixTools::pdf {
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines {

class CopyContext;
class SourceDocument;

// Read once per source.
class SourcePageLabels {
 public:
  explicit SourcePageLabels(SourceDocument& source);
};

// Of a document being made.
class TargetPageLabels {
 public:
  // Writes what there is and appends the catalog's entries for it.
  void Finish(pdf::FileWriter& writer, std::string& catalog);
};

class PageLabelCopier {
 public:
  explicit PageLabelCopier(CopyContext& context) : context_(&context) {}

  // After the pages have been written.
  void Copy();

 private:
  CopyContext* context_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_PAGELABELS_H_
