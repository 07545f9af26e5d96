// Copies all pages of any bytes into a new document through the document engine, and opens the
// result again: what comes out must be a document with as many pages.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "engines/toolbox/Toolbox.h"
#include "support/MemoryFile.h"

namespace engines = TarnixTools::engines;
using engines::MemoryFile;

namespace {

int CountPages(engines::TPdfDocument* document) {
  engines::TPdfPageList* pages = engines::PdfDocumentGetPages(document);
  const int count = pages != nullptr ? engines::PdfPageListGetCount(pages) : -1;
  engines::PdfClose(pages);
  return count;
}

void CopyAllPages(engines::TPdfDocument* source, engines::TPdfDocument* target, int count) {
  engines::TPdfPageList* source_pages = engines::PdfDocumentGetPages(source);
  engines::TPdfPageList* target_pages = engines::PdfDocumentGetPages(target);
  for (int i = 0; i < count; ++i) {
    engines::TPdfPage* page = engines::PdfPageListGet(source_pages, i);
    engines::TPdfSize size;
    engines::PdfPageGetSize(page, &size);
    engines::TPdfPage* copy = engines::PdfDocumentCopyPage(target, page, 15);
    engines::PdfPageRotate(copy, 90);
    engines::PdfPageListAppend(target_pages, copy);
    engines::PdfClose(copy);
    engines::PdfClose(page);
  }
  engines::PdfClose(source_pages);
  engines::PdfClose(target_pages);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  MemoryFile input{std::string(reinterpret_cast<const char*>(data), size), 0};
  const engines::TPdfStream input_stream = input.Descriptor();
  engines::TPdfDocument* source = engines::PdfDocumentOpenA(&input_stream, "");
  if (source == nullptr) {
    return 0;
  }
  const int count = std::min(CountPages(source), 500);
  MemoryFile output;
  const engines::TPdfStream output_stream = output.Descriptor();
  engines::TPdfEncryption encryption{L"", L"", 3900};
  engines::TPdfDocument* target =
      engines::PdfDocumentCreateW(&output_stream, 0, size % 4 == 0 ? &encryption : nullptr);
  CopyAllPages(source, target, std::max(count, 0));
  engines::PdfClose(source);
  if (engines::PdfClose(target) == 0 || count < 0) {
    return 0;
  }
  const engines::TPdfStream written_stream = output.Descriptor();
  engines::TPdfDocument* written = engines::PdfDocumentOpenA(&written_stream, "");
  if (written == nullptr || CountPages(written) != count) {
    std::abort();
  }
  engines::PdfClose(written);
  return 0;
}
