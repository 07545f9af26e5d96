// What stands behind the contract's handles.
#ifndef TARNIX_ENGINES_TOOLBOX_HANDLES_H_
#define TARNIX_ENGINES_TOOLBOX_HANDLES_H_

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engines/toolbox/DocumentInfo.h"
#include "engines/toolbox/SourceDocument.h"
#include "engines/toolbox/StreamBridge.h"
#include "engines/toolbox/TargetDocument.h"
#include "engines/toolbox/Toolbox.h"
#include "engines/toolbox/content/PageContent.h"
#include "engines/toolbox/content/TargetContent.h"
#include "engines/toolbox/content/TextPainter.h"
#include "pdf/Matrix.h"
#include "pdf/tree/PageGeometry.h"

namespace TarnixTools::engines {

// Either a source or a target. The stream is released when the handle goes.
struct TPdfDocument {
  TPdfStream stream;
  std::unique_ptr<toolbox::SourceDocument> source;
  std::unique_ptr<toolbox::TargetDocument> target;
};

struct TPdfPageList {
  TPdfDocument* document = nullptr;
};

// A page of a source, or a copy of one on its way into a target's page list.
struct TPdfPage {
  toolbox::SourceDocument* source = nullptr;
  std::uint32_t index = 0;  // zero-based
  toolbox::TargetDocument* target = nullptr;
  int rotation = 0;
  std::int32_t options = 0;                       // PdfCopyOption bits, of a copy
  std::shared_ptr<toolbox::PageContent> content;  // what was painted onto a copy; null: nothing yet

  pdf::PageGeometry Geometry() const { return source->GeometryOf(index).Turned(rotation); }
};

struct TPdfMetadata {
  toolbox::DocumentInfo info;
};

struct TPdfFont {
  toolbox::TargetContent* target = nullptr;
  const fonts::InstalledFace* face = nullptr;
};

struct TPdfColorSpace {};

struct TPdfPaint {
  toolbox::Paint paint;
};

struct TPdfText {
  toolbox::TargetContent* target = nullptr;
  std::vector<toolbox::PaintedLine> lines;
};

struct TPdfTextGenerator {
  TPdfText* text = nullptr;
  const fonts::InstalledFace* face = nullptr;
  double size = 0;       // points
  toolbox::Paint paint;  // opaque black until it is set
  TPdfPoint point;
};

struct TPdfContent {
  toolbox::TargetContent* target = nullptr;
  pdf::PageGeometry geometry;
  std::shared_ptr<toolbox::PageContent> page;
};

struct TPdfContentGenerator {
  TPdfContent content;
  bool prepends = false;
  std::string operators;
  toolbox::PageContent used;  // its resources only
  int open_saves = 0;
};

struct TPdfImage {
  toolbox::TargetContent* target = nullptr;
  std::unique_ptr<toolbox::StreamSource> file;
  std::shared_ptr<toolbox::StoredImage> stored;
  TPdfStream stream;  // released when the handle goes
};

struct TPdfTransformation {
  pdf::Matrix matrix;
};

// Destroys what stands behind a handle; 0 for a null handle, else 1.
template <typename Handle>
int Release(const Handle* handle) {
  const int result = handle != nullptr ? 1 : 0;
  delete handle;
  return result;
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_HANDLES_H_
