#include "engines/toolbox/copy/SourceParts.h"

#include "engines/toolbox/SourceDocument.h"

namespace TarnixTools::engines::toolbox {

pdf::ResourceUseReader& SourceParts::resources() {
  if (resources_ == nullptr) {
    resources_ = std::make_unique<pdf::ResourceUseReader>(source_->document());
  }
  return *resources_;
}

}  // namespace TarnixTools::engines::toolbox
