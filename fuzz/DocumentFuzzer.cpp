// Opens any bytes as a document and looks at everything in it: all objects, all stream data, all
// pages. Whatever the bytes are, nothing worse than pdf::Error may come out.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "pdf/Error.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/tree/PageTree.h"
#include "pdf/tree/TextString.h"
#include "pdf/write/Serialize.h"

namespace pdf = TarnixTools::pdf;

namespace {

constexpr std::uint32_t kMaxObjects = 2000;  // so that one input stays quick

void LookAtObject(pdf::Document& document, std::uint32_t number) {
  pdf::Arena arena;
  const pdf::Object object = document.Load({number, 0}, arena);
  std::string text;
  pdf::AppendObject(text, object);
  pdf::TextStringToUtf8(object.Text());
  document.TryDecodeStream(number);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  try {
    const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
    for (std::uint32_t number = 1; number < document->object_limit() && number < kMaxObjects;
         ++number) {
      LookAtObject(*document, number);
    }
    const pdf::PageTree pages(*document);
    for (const pdf::PageTree::Page& page : pages.pages()) {
      pdf::Arena arena;
      pages.Attribute(page, pdf::InheritableKey::kResources, arena);
      pdf::ReadPageGeometry(*document, pages, page);
    }
  } catch (const pdf::Error&) {
    // The document cannot be read, and says so.
  }
  return 0;
}
