// What is read of a source once, however many targets its pages go to; each on first use.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_SOURCEPARTS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_SOURCEPARTS_H_

#include <memory>

#include "engines/toolbox/copy/annotations/Annotations.h"
#include "engines/toolbox/copy/fields/FormFields.h"
#include "engines/toolbox/copy/layers/Layers.h"
#include "engines/toolbox/copy/navigation/Destinations.h"
#include "engines/toolbox/copy/navigation/Outline.h"
#include "engines/toolbox/copy/navigation/PageLabels.h"
#include "engines/toolbox/copy/settings/DocumentSettings.h"
#include "engines/toolbox/copy/structure/Structure.h"
#include "engines/toolbox/metadata/Metadata.h"
#include "pdf/content/ResourceUse.h"

namespace TarnixTools::engines::toolbox {

class SourceParts {
 public:
  explicit SourceParts(SourceDocument& source) : source_(&source) {}

  SourceAnnotations& annotations() { return Once(annotations_); }

  SourceDestinations& destinations() { return Once(destinations_); }

  SourceOutline& outline() { return Once(outline_); }

  SourcePageLabels& page_labels() { return Once(page_labels_); }

  SourceFormFields& form_fields() { return Once(form_fields_); }

  SourceLayers& layers() { return Once(layers_); }

  SourceStructure& structure() { return Once(structure_); }

  pdf::ResourceUseReader& resources();

  SourceDocumentSettings& settings() { return Once(settings_); }

  SourceMetadata& metadata() { return Once(metadata_); }

 private:
  template <typename Part>
  Part& Once(std::unique_ptr<Part>& part) {
    if (part == nullptr) {
      part = std::make_unique<Part>(*source_);
    }
    return *part;
  }

  SourceDocument* source_;
  std::unique_ptr<SourceAnnotations> annotations_;
  std::unique_ptr<SourceDestinations> destinations_;
  std::unique_ptr<SourceOutline> outline_;
  std::unique_ptr<SourcePageLabels> page_labels_;
  std::unique_ptr<SourceFormFields> form_fields_;
  std::unique_ptr<SourceLayers> layers_;
  std::unique_ptr<SourceStructure> structure_;
  std::unique_ptr<pdf::ResourceUseReader> resources_;
  std::unique_ptr<SourceDocumentSettings> settings_;
  std::unique_ptr<SourceMetadata> metadata_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_SOURCEPARTS_H_
