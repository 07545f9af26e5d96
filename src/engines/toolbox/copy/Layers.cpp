#include "engines/toolbox/copy/Layers.h"

#include "engines/toolbox/copy/CopyContext.h"

namespace TarnixTools::engines {

SourceLayers::SourceLayers(SourceDocument&) {}

void TargetLayers::Finish(pdf::FileWriter&, std::string&) {}

void LayerCopier::Copy() {}

}  // namespace TarnixTools::engines
