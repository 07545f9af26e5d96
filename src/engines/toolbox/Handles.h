// What stands behind the contract's handles.
#ifndef TARNIX_ENGINES_TOOLBOX_HANDLES_H_
#define TARNIX_ENGINES_TOOLBOX_HANDLES_H_

#include <cstdint>
#include <memory>
#include <string>

#include "engines/toolbox/DocumentInfo.h"
#include "engines/toolbox/SourceDocument.h"
#include "engines/toolbox/TargetDocument.h"
#include "engines/toolbox/Toolbox.h"

namespace TarnixTools::engines {

// Either a source or a target. The stream is released when the handle goes.
struct TPdfDocument {
  TPdfStream stream;
  std::unique_ptr<SourceDocument> source;
  std::unique_ptr<TargetDocument> target;
};

struct TPdfPageList {
  TPdfDocument* document = nullptr;
};

// A page of a source, or a copy of one on its way into a target's page list.
struct TPdfPage {
  SourceDocument* source = nullptr;
  std::uint32_t index = 0;  // zero-based
  TargetDocument* target = nullptr;
  int rotation = 0;
  std::int32_t options = 0;  // PdfCopyOption bits, of a copy
};

struct TPdfMetadata {
  DocumentInfo info;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_HANDLES_H_
