// What belongs to a document as a whole: language, viewer settings, attachments, output intents.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_DOCUMENTSETTINGS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_DOCUMENTSETTINGS_H_

#include <string>

namespace TarnixTools::pdf {
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines {

class CopyContext;
class SourceDocument;

// Read once per source.
class SourceDocumentSettings {
 public:
  explicit SourceDocumentSettings(SourceDocument& source);
};

// Of a document being made.
class TargetDocumentSettings {
 public:
  // Writes what there is and appends the entries for it, of the catalog and of its /Names
  // dictionary.
  void Finish(pdf::FileWriter& writer, std::string& catalog, std::string& names);
};

class DocumentSettingsCopier {
 public:
  explicit DocumentSettingsCopier(CopyContext& context) : context_(&context) {}

  // After the pages have been written.
  void Copy();

 private:
  CopyContext* context_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_DOCUMENTSETTINGS_H_
