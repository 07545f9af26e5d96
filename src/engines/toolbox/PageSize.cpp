// How large a page is on the screen.
#include "engines/toolbox/Guard.h"
#include "engines/toolbox/Handles.h"

namespace TarnixTools::engines {

using namespace toolbox;

int PdfPageGetSize(TPdfPage* page, TPdfSize* size) {
  return Guarded({page, size}, [&] {
    const pdf::PageGeometry geometry = page->Geometry();
    *size = {geometry.SeenWidth(), geometry.SeenHeight()};
  });
}

}  // namespace TarnixTools::engines
