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

// What is painted onto pages.
using FontPtr = std::unique_ptr<engines::TPdfFont, ToolboxCloser>;
using ColorSpacePtr = std::unique_ptr<engines::TPdfColorSpace, ToolboxCloser>;
using PaintPtr = std::unique_ptr<engines::TPdfPaint, ToolboxCloser>;
using TextPtr = std::unique_ptr<engines::TPdfText, ToolboxCloser>;
using TextGeneratorPtr = std::unique_ptr<engines::TPdfTextGenerator, ToolboxCloser>;
using ContentPtr = std::unique_ptr<engines::TPdfContent, ToolboxCloser>;
using ContentGeneratorPtr = std::unique_ptr<engines::TPdfContentGenerator, ToolboxCloser>;
using ImagePtr = std::unique_ptr<engines::TPdfImage, ToolboxCloser>;
using TransformationPtr = std::unique_ptr<engines::TPdfTransformation, ToolboxCloser>;

}  // namespace TarnixTools

#endif  // TARNIX_DOCUMENT_TOOLBOX_HANDLES_H_
