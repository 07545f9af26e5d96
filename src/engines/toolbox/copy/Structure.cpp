#include "engines/toolbox/copy/Structure.h"

#include "engines/toolbox/copy/CopyContext.h"

namespace TarnixTools::engines {

SourceStructure::SourceStructure(SourceDocument&) {}

void TargetStructure::Finish(pdf::FileWriter&, std::string&) {}

void StructureCopier::Prepare() {}

void StructureCopier::CopyPageKey(std::string&, const pdf::Object&, const PageRequest&, bool) {}

void StructureCopier::CopyAnnotationKey(std::string&, const pdf::Object&) {}

void StructureCopier::Copy() {}

}  // namespace TarnixTools::engines
