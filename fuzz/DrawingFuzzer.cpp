// Opens any bytes as a document and does with its pages what is done before they are drawn: looking
// for what would not come to an end, or would not be drawn, and writing a copy that can be drawn.
// Nothing worse may come of it than an Error. PDFium itself has no part in this.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "engines/support/drawing/DrawingCost.h"
#include "engines/support/drawing/RepairedCopy.h"
#include "engines/support/drawing/UndrawnObjects.h"
#include "engines/support/drawing/Unfolding.h"
#include "pdf/Error.h"
#include "pdf/file/ByteSink.h"
#include "pdf/file/ByteSource.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"

namespace {

using namespace TarnixTools;
using pdf::Object;

constexpr std::size_t kMaxPages = 16;  // more are slow, not different

class NoSink : public pdf::ByteSink {
 public:
  void Write(std::string_view /*bytes*/) override {}
};

void LookAt(pdf::Document& document, const pdf::PageTree& pages) {
  engines::DrawingCost cost(document);
  engines::UndrawnObjects undrawn(document);
  for (std::size_t i = 0; i < std::min(pages.pages().size(), kMaxPages); ++i) {
    cost.ExcessOf(pages, i);
    undrawn.FindOnPage(pages, i);
  }
  pdf::Arena arena;
  const Object catalog = document.Catalog(arena);
  engines::Unfolding fields(document, "Kids");
  fields.SizeOf(document.Resolve(catalog.Get("AcroForm"), arena).Get("Fields"));
}

void Prepare(std::string_view bytes) {
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  const pdf::PageTree pages(*document);
  LookAt(*document, pages);
  if (pages.pages().size() <= kMaxPages) {
    NoSink sink;
    engines::WriteRepairedCopy(*document, pages, sink);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    Prepare({reinterpret_cast<const char*>(data), size});
  } catch (const pdf::Error&) {
  }
  return 0;
}
