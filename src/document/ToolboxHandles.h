// Owners of the document engine's handles: what a guard holds is released on every path.
#ifndef TARNIX_DOCUMENT_TOOLBOX_HANDLES_H_
#define TARNIX_DOCUMENT_TOOLBOX_HANDLES_H_

#include <memory>

#include "engines/toolbox/Toolbox.h"

namespace TarnixTools {

struct ToolboxCloser {
  template <typename Handle>
  void operator()(Handle* handle) const noexcept {
    engines::PdfClose(handle);
  }
};

using PageListPtr = std::unique_ptr<engines::TPdfPageList, ToolboxCloser>;
using MetadataPtr = std::unique_ptr<engines::TPdfMetadata, ToolboxCloser>;
using PagePtr = std::unique_ptr<engines::TPdfPage, ToolboxCloser>;

}  // namespace TarnixTools

#endif  // TARNIX_DOCUMENT_TOOLBOX_HANDLES_H_
