// How large a page is on the screen.
#include "engines/toolbox/Guard.h"
#include "engines/toolbox/Handles.h"

namespace TarnixTools::engines {

int PdfPageGetSize(TPdfPage* page, TPdfSize* size) {
  if (page == nullptr || size == nullptr) {
    return 0;
  }
  return Guarded([&]() -> int {
    const pdf::PageGeometry geometry = page->Geometry();
    *size = {geometry.SeenWidth(), geometry.SeenHeight()};
    return 1;
  });
}

}  // namespace TarnixTools::engines
