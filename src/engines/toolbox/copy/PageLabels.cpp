#include "engines/toolbox/copy/PageLabels.h"

#include "engines/toolbox/copy/CopyContext.h"

namespace TarnixTools::engines {

SourcePageLabels::SourcePageLabels(SourceDocument&) {}

void TargetPageLabels::Finish(pdf::FileWriter&, std::string&) {}

void PageLabelCopier::Copy() {}

}  // namespace TarnixTools::engines
