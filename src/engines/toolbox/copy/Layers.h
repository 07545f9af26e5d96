// Optional content: layers that copied pages use, with their state (ISO 32000-2, 8.11).
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_LAYERS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_LAYERS_H_

#include <string>

namespace TarnixTools::pdf {
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines {

class CopyContext;
class SourceDocument;

// Read once per source.
class SourceLayers {
 public:
  explicit SourceLayers(SourceDocument& source);
};

// Of a document being made.
class TargetLayers {
 public:
  // Writes what there is and appends the catalog's entries for it.
  void Finish(pdf::FileWriter& writer, std::string& catalog);
};

class LayerCopier {
 public:
  explicit LayerCopier(CopyContext& context) : context_(&context) {}

  // After the pages have been written.
  void Copy();

 private:
  CopyContext* context_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_LAYERS_H_
