#include "engines/toolbox/copy/Outline.h"

#include "engines/toolbox/copy/CopyContext.h"

namespace TarnixTools::engines {

SourceOutline::SourceOutline(SourceDocument&) {}

void TargetOutline::Finish(pdf::FileWriter&, std::string&) {}

void OutlineCopier::Copy() {}

}  // namespace TarnixTools::engines
