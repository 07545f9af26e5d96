// A font of the document engine, in a document that is never written.
#ifndef TARNIX_TESTS_DECORATION_FONT_FOR_TEST_H_
#define TARNIX_TESTS_DECORATION_FONT_FOR_TEST_H_

#include "document/ToolboxHandles.h"
#include "engines/toolbox/Toolbox.h"
#include "support/MemoryFile.h"

namespace TarnixTools::testing {

class FontForTest {
 public:
  FontForTest() {
    engines::PdfInitialize();
    const engines::TPdfStream stream = file_.Descriptor();
    document_ = engines::PdfDocumentCreateW(&stream, 0, nullptr);
    font_.reset(engines::PdfDocumentCreateSystemFontA(document_, "Arial", "", 1));
  }

  FontForTest(const FontForTest&) = delete;
  FontForTest& operator=(const FontForTest&) = delete;

  ~FontForTest() {
    font_.reset();
    engines::PdfDocumentDiscard(document_);
  }

  engines::TPdfFont* Get() const { return font_.get(); }

 private:
  engines::MemoryFile file_;
  engines::TPdfDocument* document_ = nullptr;
  FontPtr font_;
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_DECORATION_FONT_FOR_TEST_H_
