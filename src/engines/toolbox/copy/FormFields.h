// Form fields whose widgets are on copied pages (ISO 32000-2, 12.7).
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_FORMFIELDS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_FORMFIELDS_H_

#include <cstdint>
#include <string>

#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines {

class CopyContext;
class SourceDocument;

// Read once per source.
class SourceFormFields {
 public:
  explicit SourceFormFields(SourceDocument& source);
};

// Of a document being made.
class TargetFormFields {
 public:
  // Writes what there is and appends the catalog's entries for it.
  void Finish(pdf::FileWriter& writer, std::string& catalog);
};

class FormFieldCopier {
 public:
  explicit FormFieldCopier(CopyContext& context) : context_(&context) {}

  // Before any page is written: looks at the fields of the copied pages' widgets.
  void Prepare();
  // Appends a widget's entries to its annotation dictionary, without << and >>: its own, save those
  // that the annotation copier writes (P, StructParent), and those of its field where the two are
  // one object.
  void CopyWidget(std::string& out, const pdf::Object& dictionary, std::uint32_t source_number,
                  std::uint32_t target_number);
  // After the pages have been written.
  void Copy();

 private:
  CopyContext* context_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_FORMFIELDS_H_
