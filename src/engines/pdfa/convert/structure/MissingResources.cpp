#include "engines/pdfa/convert/structure/MissingResources.h"

namespace TarnixTools::engines::pdfa {

void AddMissingResources(Conversion& conversion, const ContentSurvey& survey) {
  for (const auto& [number, resources] : survey.borrowed()) {
    conversion.rewriter.SetEntry(number, "Resources", resources);
  }
  conversion.report.Changed("content without resources of its own", survey.borrowed().size());
}

}  // namespace TarnixTools::engines::pdfa
