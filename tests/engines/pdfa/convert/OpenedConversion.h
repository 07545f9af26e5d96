// A conversion over a small document in memory, of which a test runs single steps or parts of them.
//
//   OpenedConversion opened(file, Level::k2b);
//   RemoveForbiddenEntries(opened.conversion());
//   EXPECT_FALSE(opened.Changed(4).Has("AA"));
#ifndef TARNIX_TESTS_ENGINES_PDFA_CONVERT_OPENED_CONVERSION_H_
#define TARNIX_TESTS_ENGINES_PDFA_CONVERT_OPENED_CONVERSION_H_

#include <cstdint>
#include <memory>
#include <string>

#include "engines/pdfa/convert/Conversion.h"
#include "pdf/file/ByteSource.h"
#include "pdf/write/Serialize.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::pdfa {

class OpenedConversion {
 public:
  explicit OpenedConversion(testing::RawPdf file, Level level = Level::k2b)
      : document_(
            pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes_ = file.Table()), "")),
        pages_(*document_),
        rewriter_(*document_),
        conversion_{.document = *document_,
                    .pages = pages_,
                    .rewriter = rewriter_,
                    .level = level,
                    .report = report_} {}

  OpenedConversion(const OpenedConversion&) = delete;
  OpenedConversion& operator=(const OpenedConversion&) = delete;

  pdf::Document& document() { return *document_; }

  Conversion& conversion() { return conversion_; }

  // As the document has it, and as the conversion has left it; both live as long as this.
  pdf::Object Loaded(std::uint32_t number) { return document_->Load({number, 0}, arena_); }

  pdf::Object Changed(std::uint32_t number) { return rewriter_.Load(number, arena_); }

  std::string ChangedText(std::uint32_t number) {
    std::string text;
    pdf::AppendObject(text, Changed(number));
    return text;
  }

  std::string Report() const { return report_.Text(true); }

 private:
  std::string bytes_;
  std::unique_ptr<pdf::Document> document_;
  pdf::PageTree pages_;
  pdf::DocumentRewriter rewriter_;
  ConversionReport report_;
  Conversion conversion_;
  pdf::Arena arena_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_TESTS_ENGINES_PDFA_CONVERT_OPENED_CONVERSION_H_
