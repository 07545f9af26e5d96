// Opens any bytes as a document and looks at everything in it: all objects, all stream data, all
// pages. Whatever the bytes are, nothing worse than pdf::Error may come out.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "pdf/Error.h"
#include "pdf/file/Document.h"
#include "pdf/syntax/SyntaxObserver.h"
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

// Looks at every byte that it is shown, so that a view of what is gone does not pass.
class Listener : public pdf::SyntaxObserver {
 public:
  void OnHeader(const pdf::HeaderSyntax& header) override {
    Look(header.line);
    Look(header.line_end);
    Look(header.next_line);
  }

  void OnStartXref(const pdf::StartXrefSyntax& start) override {
    Look(start.after_keyword);
    Look(start.after_value);
  }

  void OnFileEnd(const pdf::FileEndSyntax& end) override { Look(end.after); }

  void OnXrefTable(const pdf::XrefTableSyntax& table) override { Look(table.after_keyword); }

  void OnXrefSubsection(const pdf::XrefSubsectionSyntax& subsection) override {
    Look(subsection.between);
    Look(subsection.after);
  }

  void OnXrefEntry(const pdf::XrefEntrySyntax& entry) override { Look(entry.text); }

  void OnTrailer(const pdf::TrailerSyntax& trailer) override { Look(trailer.dictionary); }

  void OnLinearization(const pdf::LinearizationSyntax& linearization) override {
    Look(linearization.dictionary);
  }

  void OnObject(const pdf::ObjectSyntax& object) override {
    Look(object.before);
    Look(object.after_number);
    Look(object.after_generation);
    Look(object.after_keyword);
  }

  void OnToken(const pdf::TokenSyntax& token) override { Look(token.token.text); }

  void OnRepeatedKey(const pdf::RepeatedKeySyntax& key) override { Look(key.name); }

  void OnStream(const pdf::StreamSyntax& stream) override {
    Look(stream.after_keyword);
    Look(stream.before_end);
  }

  void OnObjectEnd(const pdf::ObjectEndSyntax& end) override {
    Look(end.before);
    Look(end.after);
  }

 private:
  void Look(std::string_view text) {
    for (const char c : text) {
      sum_ = sum_ + static_cast<unsigned char>(c);
    }
  }

  void Look(const pdf::Object& value) {
    std::string text;
    pdf::AppendObject(text, value);
    Look(text);
  }

  volatile unsigned sum_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  try {
    const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
    for (std::uint32_t number = 1; number < document->object_limit() && number < kMaxObjects;
         ++number) {
      LookAtObject(*document, number);
    }
    Listener listener;
    document->Observe(listener);
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
