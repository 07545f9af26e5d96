#include "engines/toolbox/copy/DocumentSettings.h"

#include "engines/toolbox/copy/CopyContext.h"

namespace TarnixTools::engines {

SourceDocumentSettings::SourceDocumentSettings(SourceDocument&) {}

void TargetDocumentSettings::Finish(pdf::FileWriter&, std::string&, std::string&) {}

void DocumentSettingsCopier::Copy() {}

}  // namespace TarnixTools::engines
