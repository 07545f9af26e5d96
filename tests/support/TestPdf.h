// Small PDF files in code.
//
//   const std::string path = TestPdf()
//                                .Page("First page")
//                                .Page("Second page").Size(595.28, 841.89).Rotate(90)
//                                .PageEntry("/CropBox [10 10 200 200]")
//                                .Annotation("/Subtype /Link /Dest [{{page 1}} /Fit]")
//                                .Write(directory.Path("a.pdf"));
//
// Every entry is raw PDF text, in which {{page N}} (one-based) and {{NAME}}, an object added with
// Object, become references.
#ifndef TARNIX_TESTS_SUPPORT_TEST_PDF_H_
#define TARNIX_TESTS_SUPPORT_TEST_PDF_H_

#include <map>
#include <string>
#include <vector>

namespace TarnixTools::testing {

class TestPdf {
 public:
  // US Letter, in points.
  static constexpr double kDefaultWidth = 612;
  static constexpr double kDefaultHeight = 792;

  // Adds pages that show "LABEL 1", "LABEL 2", ...
  TestPdf& Pages(int count, const std::string& label = "Page");

  // Adds a page that shows the text, in Helvetica.
  TestPdf& Page(const std::string& text = "");

  // All of these are about the page added last.
  TestPdf& Size(double width, double height);  // its media box
  TestPdf& NoMediaBox();                       // it inherits one, or has none
  TestPdf& Rotate(int degrees);
  TestPdf& PageEntry(const std::string& entry);            // into its dictionary
  TestPdf& Annotation(const std::string& entries);         // what is between << and >>
  TestPdf& Content(const std::string& content_operators);  // instead of its text

  // Into the dictionary of the page tree's root, from which pages inherit.
  TestPdf& InheritedEntry(const std::string& entry);
  TestPdf& CatalogEntry(const std::string& entry);
  TestPdf& InfoEntry(const std::string& entry);

  // The catalog stands in the trailer and is no object of its own.
  TestPdf& CatalogInTrailer();

  // An indirect object that entries can refer to by {{name}}.
  TestPdf& Object(const std::string& name, const std::string& body);

  // The file: version 1.7 with a classic cross-reference table.
  std::string Bytes() const;

  // Writes the file and returns its path.
  std::string Write(const std::string& path) const;

 private:
  struct PageSource {
    std::string content;
    std::string media_box;
    std::vector<std::string> entries;
    std::vector<std::string> annotations;
  };

  PageSource& LastPage();
  int PageObject(int page_number) const;
  std::vector<std::string> ObjectBodies() const;
  std::string PageBody(const PageSource& page, int content_number, int& next_annotation) const;
  std::string Expand(const std::string& text) const;

  std::vector<PageSource> pages_;
  std::string inherited_entries_;
  std::string catalog_entries_;
  std::string info_entries_;
  bool is_catalog_in_trailer_ = false;
  std::vector<std::string> objects_;
  std::map<std::string, int> object_indices_;  // by name, into objects_
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_TEST_PDF_H_
