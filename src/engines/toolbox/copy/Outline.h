// Outline items (bookmarks) that lead to copied pages, with their ancestors (ISO 32000-2, 12.3.3).
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_OUTLINE_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_OUTLINE_H_

#include <string>

namespace TarnixTools::pdf {
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines {

class CopyContext;
class SourceDocument;

// Read once per source.
class SourceOutline {
 public:
  explicit SourceOutline(SourceDocument& source);
};

// Of a document being made.
class TargetOutline {
 public:
  // Writes what there is and appends the catalog's entries for it.
  void Finish(pdf::FileWriter& writer, std::string& catalog);
};

class OutlineCopier {
 public:
  explicit OutlineCopier(CopyContext& context) : context_(&context) {}

  // After the pages have been written.
  void Copy();

 private:
  CopyContext* context_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_OUTLINE_H_
