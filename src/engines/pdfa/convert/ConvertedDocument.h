// A document that is opened to be written again as PDF/A. Nothing is redrawn: text stays text.
//
//   ConvertedDocument document(WidePath("letter.pdf"), "");
//   const ConversionResult result = document.Save(WidePath("archive.pdf"), Level::k2b);
//   if (result.reached != Level::k2b) ...
#ifndef TARNIX_ENGINES_PDFA_CONVERT_CONVERTEDDOCUMENT_H_
#define TARNIX_ENGINES_PDFA_CONVERT_CONVERTEDDOCUMENT_H_

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "engines/pdfa/Level.h"
#include "engines/pdfa/convert/ConversionReport.h"
#include "foundation/Platform.h"
#include "pdf/file/ByteSink.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::pdfa {

class ContentSurvey;

struct ConversionResult {
  std::optional<Level> reached;  // what the file claims; nothing: none was written
  bool is_as_wanted = false;     // it is the level that was wanted
  // What was changed and left out for the level that was reached, and what stands in the way of the
  // one that was wanted.
  ConversionReport report;
};

class ConvertedDocument {
 public:
  // password is UTF-8. Throws pdf::Error as Document::Open and PageTree do, and
  // ConverterFailure(kConverterOpenError) for a file that cannot be opened.
  ConvertedDocument(const platform::WidePath& path, std::string_view password);

  // Writes the document at the level, or at the best one below that holds: what is written is judged
  // by the rules before it gets its name. Throws pdf::Error, and
  // ConverterFailure(kConverterCreateError).
  //   wanted - nothing for the most useful level
  ConversionResult Save(const platform::WidePath& path, std::optional<Level> wanted);

  bool is_encrypted() const { return is_encrypted_; }

 private:
  void Open(const std::shared_ptr<std::FILE>& file, std::string_view password);
  std::shared_ptr<std::FILE> Rewritten(Level level, const ContentSurvey& survey,
                                       ConversionReport& report);
  void Rewrite(pdf::ByteSink& sink, Level level, const ContentSurvey& survey,
               ConversionReport& report);

  platform::WidePath path_;
  std::string password_;
  bool is_encrypted_ = false;
  // With objects of their own for what the file may have in place.
  std::unique_ptr<pdf::Document> document_;
  std::unique_ptr<pdf::PageTree> pages_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_CONVERTEDDOCUMENT_H_
