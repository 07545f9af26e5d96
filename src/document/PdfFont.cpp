#include "PdfFont.h"

#include "document/SystemFont.h"
#include "document/ToolboxHandles.h"
#include "engines/toolbox/Toolbox.h"
#include "foundation/Utf8.h"

namespace TarnixTools {
namespace {

// A file that takes everything and keeps nothing: fonts belong to a document that is made.
engines::TPdfStream Nowhere() {
  engines::TPdfStream stream;
  stream.get_length = [](void*) { return std::int64_t{0}; };
  stream.seek = [](void*, std::int64_t) { return 1; };
  stream.tell = [](void*) { return std::int64_t{0}; };
  stream.read = [](void*, void*, std::int64_t) { return std::int64_t{0}; };
  stream.write = [](void*, const void*, std::int64_t size) { return size; };
  stream.release = [](void*) {};
  return stream;
}

}  // namespace

struct PdfFont::Inside {
  Inside() {
    engines::PdfInitialize();
    const engines::TPdfStream stream = Nowhere();
    document = engines::PdfDocumentCreateW(&stream, 0, nullptr);
  }

  Inside(const Inside&) = delete;
  Inside& operator=(const Inside&) = delete;

  ~Inside() {
    font.reset();
    engines::PdfDocumentDiscard(document);
  }

  engines::TPdfDocument* document = nullptr;
  FontPtr font;
};

PdfFont::PdfFont(const std::string& name, const std::string& style)
    : inside_(std::make_shared<Inside>()) {
  inside_->font = MakeSystemFont(inside_->document, name, style).font;
}

PdfFont::PdfFont(const PdfFont& other) = default;
PdfFont::PdfFont(PdfFont&& other) noexcept = default;
PdfFont& PdfFont::operator=(const PdfFont& other) = default;
PdfFont& PdfFont::operator=(PdfFont&& other) noexcept = default;
PdfFont::~PdfFont() = default;

engines::TPdfFont* PdfFont::Get() const {
  return inside_ == nullptr ? nullptr : inside_->font.get();
}

double PdfFont::GetTextWidth(const std::string& line, double size) const {
  if (inside_ == nullptr) {
    return 0;
  }
  const TextPtr text(engines::PdfDocumentCreateText(inside_->document));
  const TextGeneratorPtr generator(
      engines::PdfNewTextGenerator(text.get(), inside_->font.get(), size, 0));
  return engines::PdfTextGeneratorGetWidthW(generator.get(), Utf8ToWide(line));
}

}  // namespace TarnixTools
