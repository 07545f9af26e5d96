// Tagged structure of copied pages (ISO 32000-2, 14.7).
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_H_

#include <string>

#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines {

class CopyContext;
struct PageRequest;
class SourceDocument;

// Read once per source.
class SourceStructure {
 public:
  explicit SourceStructure(SourceDocument& source);
};

// Of a document being made.
class TargetStructure {
 public:
  // Writes what there is and appends the catalog's entries for it.
  void Finish(pdf::FileWriter& writer, std::string& catalog);
};

class StructureCopier {
 public:
  explicit StructureCopier(CopyContext& context) : context_(&context) {}

  // Before any page is written: settles how the source's parent tree keys are renumbered.
  void Prepare();
  // Appends the page's /StructParents entry. is_repeated: the page was copied before in this copy.
  void CopyPageKey(std::string& page, const pdf::Object& dictionary, const PageRequest& request,
                   bool is_repeated);
  // Appends an annotation's /StructParent entry.
  void CopyAnnotationKey(std::string& out, const pdf::Object& dictionary);
  // After the pages have been written.
  void Copy();

 private:
  CopyContext* context_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_H_
