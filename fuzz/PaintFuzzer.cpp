// Paints onto every page of any bytes, under and over what is there, and opens the result again: it
// must be a document with as many pages.
#include <algorithm>
#include <array>
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

// One black pixel.
constexpr unsigned char kPicture[] = {
    0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0x00, 0x00, 0x00, 0x0D, 0x49, 0x48,
    0x44, 0x52, 0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x01, 0x08, 0x00, 0x00, 0x00,
    0x00, 0x3A, 0x7E, 0x9B, 0x55, 0x00, 0x00, 0x00, 0x0A, 0x49, 0x44, 0x41, 0x54, 0x78,
    0xDA, 0x63, 0x60, 0x00, 0x00, 0x00, 0x02, 0x00, 0x01, 0xE5, 0x27, 0xDE, 0xFC, 0x00,
    0x00, 0x00, 0x00, 0x49, 0x45, 0x4E, 0x44, 0xAE, 0x42, 0x60, 0x82};

int CountPages(engines::TPdfDocument* document) {
  engines::TPdfPageList* pages = engines::PdfDocumentGetPages(document);
  const int count = pages != nullptr ? engines::PdfPageListGetCount(pages) : -1;
  engines::PdfClose(pages);
  return count;
}

void Paint(engines::TPdfPage* page, engines::TPdfImage* image, bool is_under) {
  engines::TPdfContent* content = engines::PdfPageGetContent(page);
  engines::TPdfContentGenerator* generator = engines::PdfNewContentGenerator(content, is_under);
  const engines::TPdfRectangle rectangle = {10, 20, 30, 40};
  engines::PdfContentGeneratorSave(generator);
  engines::PdfContentGeneratorPaintImage(generator, image, &rectangle);
  engines::PdfClose(generator);
  engines::PdfClose(content);
}

// Nothing where the document cannot be read.
int PaintAllPages(engines::TPdfDocument* source, engines::TPdfDocument* target, bool is_under) {
  const int count = std::min(CountPages(source), 100);
  MemoryFile picture{std::string(reinterpret_cast<const char*>(kPicture), sizeof kPicture)};
  const engines::TPdfStream picture_stream = picture.Descriptor();
  engines::TPdfImage* image = engines::PdfDocumentCreateImage(target, &picture_stream);
  if (image == nullptr) {
    std::abort();
  }
  engines::TPdfPageList* pages = engines::PdfDocumentGetPages(source);
  engines::TPdfPageList* copies = engines::PdfDocumentGetPages(target);
  for (int i = 0; i < count; ++i) {
    engines::TPdfPage* page = engines::PdfPageListGet(pages, i);
    engines::TPdfPage* copy = engines::PdfDocumentCopyPage(target, page, 15);
    Paint(copy, image, is_under);
    Paint(copy, image, false);
    engines::PdfPageListAppend(copies, copy);
    engines::PdfClose(copy);
    engines::PdfClose(page);
  }
  engines::PdfClose(image);
  engines::PdfClose(pages);
  engines::PdfClose(copies);
  return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  MemoryFile input{std::string(reinterpret_cast<const char*>(data), size)};
  const engines::TPdfStream input_stream = input.Descriptor();
  engines::TPdfDocument* source = engines::PdfDocumentOpenA(&input_stream, "");
  if (source == nullptr) {
    return 0;
  }
  MemoryFile output;
  const engines::TPdfStream output_stream = output.Descriptor();
  engines::TPdfDocument* target = engines::PdfDocumentCreateW(&output_stream, 0, nullptr);
  const int count = PaintAllPages(source, target, size % 2 == 0);
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
