// What the tests of content share: documents of which each object is given, opened.
//
//   ContentDocument file;
//   file.Page("/Resources<</XObject<</F 10 0 R>>>>", "/F Do");
//   file.raw().Stream(10, kFormEntries, "0 0 9 9 re f");
//   file.Open();
#ifndef TARNIX_TESTS_PDF_CONTENT_CONTENTFIXTURE_H_
#define TARNIX_TESTS_PDF_CONTENT_CONTENTFIXTURE_H_

#include <memory>
#include <string>

#include "pdf/file/ByteSource.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "support/RawPdf.h"

namespace TarnixTools::pdf {

inline const std::string kFormEntries = "/Type/XObject/Subtype/Form/BBox[0 0 100 100]";
inline const std::string kImageEntries =
    "/Type/XObject/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray";

// A document of one page, object 3, whose content is object 4.
class ContentDocument {
 public:
  explicit ContentDocument(const std::string& catalog_entries = "") {
    raw_.Object(1, "<</Type/Catalog/Pages 2 0 R" + catalog_entries + ">>")
        .Object(2, "<</Type/Pages/Count 1/Kids[3 0 R]>>");
  }

  ContentDocument& Page(const std::string& entries, const std::string& content = "") {
    raw_.Object(3,
                "<</Type/Page/Parent 2 0 R/MediaBox[0 0 100 100]/Contents 4 0 R" + entries + ">>");
    raw_.Stream(4, "", content);
    return *this;
  }

  ContentDocument& Object(int number, const std::string& body) {
    raw_.Object(number, body);
    return *this;
  }

  ContentDocument& Stream(int number, const std::string& entries, const std::string& data) {
    raw_.Stream(number, entries, data);
    return *this;
  }

  // After the last object.
  Document& Open() {
    bytes_ = raw_.Table();
    document_ = Document::Open(std::make_unique<MemorySource>(bytes_), "");
    pages_ = std::make_unique<PageTree>(*document_);
    return *document_;
  }

  Document& document() { return *document_; }

  const PageTree& pages() const { return *pages_; }

 private:
  testing::RawPdf raw_;
  std::string bytes_;
  std::unique_ptr<Document> document_;
  std::unique_ptr<PageTree> pages_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_TESTS_PDF_CONTENT_CONTENTFIXTURE_H_
