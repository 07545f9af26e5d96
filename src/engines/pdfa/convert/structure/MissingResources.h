// Resources for content that uses those of what draws it (ISO 19005-2, 6.2.2).
#ifndef TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_MISSINGRESOURCES_H_
#define TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_MISSINGRESOURCES_H_

#include "engines/pdfa/convert/Conversion.h"
#include "engines/pdfa/convert/survey/ContentSurvey.h"

namespace TarnixTools::engines::pdfa {

void AddMissingResources(Conversion& conversion, const ContentSurvey& survey);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_STRUCTURE_MISSINGRESOURCES_H_
