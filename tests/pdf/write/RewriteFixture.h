// Documents that are written again, and what has become of them.
//
//   RewriteCase test(RawPdf().Object(1, "<</Type/Catalog/Pages 2 0 R/Own 5 0 R>>")...);
//   test.rewriter().Drop(6);
//   EXPECT_EQ(test.Own(), "[null]");
#ifndef TARNIX_TESTS_PDF_WRITE_REWRITEFIXTURE_H_
#define TARNIX_TESTS_PDF_WRITE_REWRITEFIXTURE_H_

#include <memory>
#include <string>

#include "pdf/file/Document.h"
#include "pdf/write/DocumentRewriter.h"
#include "support/RawPdf.h"

namespace TarnixTools::testing {

// The bytes outlive the document.
std::unique_ptr<pdf::Document> OpenBytes(const std::string& bytes,
                                         const std::string& password = "");

// A value as text, each reference replaced by what it leads to, and a stream followed by its data
// in parentheses; "..." where that nests deeper than here.
std::string Expanded(pdf::Document& document, const pdf::Object& value, int depth = 8);

// The same document written anew without changes.
std::string RewrittenBytes(pdf::Document& document, const pdf::RewriteOptions& options = {});

// How what the catalog and the document information of the one lead to differs from what those of
// the other lead to: the first place, in words; empty when nothing does. Numbers of objects do not
// count, nor does how a stream's data is encoded; an entry that is null counts as none.
std::string DifferenceOf(pdf::Document& first, pdf::Document& second);

class RewriteCase {
 public:
  explicit RewriteCase(RawPdf pdf, const std::string& trailer = "/Root 1 0 R",
                       const std::string& password = "")
      : RewriteCase(pdf.Table(trailer), password) {}

  explicit RewriteCase(std::string bytes, const std::string& password = "")
      : source_bytes_(std::move(bytes)),
        source_(OpenBytes(source_bytes_, password)),
        rewriter_(*source_) {}

  pdf::Document& source() { return *source_; }

  pdf::DocumentRewriter& rewriter() { return rewriter_; }

  // Writes the document, and opens what was written with the password.
  pdf::Document& Write(const pdf::RewriteOptions& options = {}, const std::string& password = "");

  const std::string& bytes() const { return bytes_; }

  // The written catalog's /Own, expanded; the document is written if it was not.
  std::string Own();

  // How many objects were written that are not about the file itself.
  int CountObjects();

 private:
  std::string source_bytes_;
  std::unique_ptr<pdf::Document> source_;
  pdf::DocumentRewriter rewriter_;
  std::string bytes_;
  std::unique_ptr<pdf::Document> written_;
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_PDF_WRITE_REWRITEFIXTURE_H_
