// A document that is opened to be written again as PDF/A. Nothing is redrawn: text stays text.
//
//   ConvertedDocument document(WidePath("letter.pdf"), "");
//   const ConversionReport report = document.Save(WidePath("archive.pdf"), Level::k2b);
#ifndef TARNIX_ENGINES_PDFA_CONVERT_CONVERTEDDOCUMENT_H_
#define TARNIX_ENGINES_PDFA_CONVERT_CONVERTEDDOCUMENT_H_

#include <cstdio>
#include <memory>
#include <string_view>

#include "engines/pdfa/Level.h"
#include "engines/pdfa/convert/ConversionReport.h"
#include "foundation/Platform.h"
#include "pdf/file/ByteSink.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::pdfa {

class ConvertedDocument {
 public:
  // password is UTF-8. Throws pdf::Error as Document::Open and PageTree do, and
  // ConverterFailure(kConverterOpenError) for a file that cannot be opened.
  ConvertedDocument(const platform::WidePath& path, std::string_view password);

  // Writes the document so that it meets the level as far as it can be had; what stands in the way
  // is in the report. The file appears when it is complete. Throws pdf::Error, and
  // ConverterFailure(kConverterCreateError).
  ConversionReport Save(const platform::WidePath& path, Level level);

  pdf::Document& document() { return *document_; }

  const pdf::PageTree& pages() const { return pages_; }

 private:
  void Rewrite(pdf::ByteSink& sink, Level level, ConversionReport& report);

  std::shared_ptr<std::FILE> file_;
  std::unique_ptr<pdf::Document> document_;
  pdf::PageTree pages_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_CONVERTEDDOCUMENT_H_
