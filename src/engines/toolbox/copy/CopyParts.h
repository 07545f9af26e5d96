// The parts of one copy, one for each kind of thing that belongs to a page. They know each other
// through this.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_COPYPARTS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_COPYPARTS_H_

#include "engines/toolbox/copy/CopyContext.h"
#include "engines/toolbox/copy/annotations/Annotations.h"
#include "engines/toolbox/copy/fields/FormFields.h"
#include "engines/toolbox/copy/layers/Layers.h"
#include "engines/toolbox/copy/navigation/Destinations.h"
#include "engines/toolbox/copy/navigation/Outline.h"
#include "engines/toolbox/copy/navigation/PageLabels.h"
#include "engines/toolbox/copy/pages/PageResources.h"
#include "engines/toolbox/copy/settings/DocumentSettings.h"
#include "engines/toolbox/copy/structure/Structure.h"

namespace TarnixTools::engines::toolbox {

struct CopyParts {
  explicit CopyParts(CopyContext& context)
      : outline(context),
        page_labels(context),
        form_fields(context),
        layers(context),
        structure(context),
        settings(context),
        resources(context),
        annotations(context, *this) {}

  OutlineCopier outline;
  PageLabelCopier page_labels;
  FormFieldCopier form_fields;
  LayerCopier layers;
  StructureCopier structure;
  DocumentSettingsCopier settings;
  PageResourceCopier resources;
  AnnotationCopier annotations;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_COPYPARTS_H_
