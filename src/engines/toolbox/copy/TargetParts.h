// What a document being made has gathered beside its pages, from all its sources.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_TARGETPARTS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_TARGETPARTS_H_

#include "engines/toolbox/copy/fields/FormFields.h"
#include "engines/toolbox/copy/layers/Layers.h"
#include "engines/toolbox/copy/navigation/Destinations.h"
#include "engines/toolbox/copy/navigation/Outline.h"
#include "engines/toolbox/copy/navigation/PageLabels.h"
#include "engines/toolbox/copy/report/CopyReport.h"
#include "engines/toolbox/copy/settings/DocumentSettings.h"
#include "engines/toolbox/copy/structure/Language.h"
#include "engines/toolbox/copy/structure/Structure.h"
#include "engines/toolbox/metadata/Metadata.h"

namespace TarnixTools::engines::toolbox {

class TargetContent;

struct TargetParts {
  TargetDestinations destinations;
  TargetOutline outline;
  TargetPageLabels page_labels;
  TargetFormFields form_fields;
  TargetLayers layers;
  TargetStructure structure;
  TargetLanguage language;
  TargetDocumentSettings settings;
  TargetMetadata metadata;
  CopyReport report;
  TargetContent* content = nullptr;  // what is painted onto pages; not owned
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_TARGETPARTS_H_
