// How large a page is on the screen.
#include "engines/toolbox/Guard.h"
#include "engines/toolbox/Handles.h"
#include "engines/toolbox/content/PageGeometry.h"

namespace TarnixTools::engines {

int PdfPageGetSize(TPdfPage* page, TPdfSize* size) {
  if (page == nullptr || size == nullptr) {
    return 0;
  }
  return Guarded([&]() -> int {
    *size = ReadPageGeometry(*page->source, page->index, page->rotation).VisibleSize();
    return 1;
  });
}

}  // namespace TarnixTools::engines
