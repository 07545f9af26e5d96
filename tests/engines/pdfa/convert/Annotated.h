// A document with an annotation, for tests of what is drawn for it.
#ifndef TARNIX_TESTS_ENGINES_PDFA_CONVERT_ANNOTATED_H_
#define TARNIX_TESTS_ENGINES_PDFA_CONVERT_ANNOTATED_H_

#include <cstddef>
#include <string>

#include "engines/pdfa/convert/OpenedConversion.h"

namespace TarnixTools::engines::pdfa {

// A document whose object 4 is an annotation with the entries.
class Annotated : public OpenedConversion {
 public:
  explicit Annotated(const std::string& entries, const std::string& form = "")
      : OpenedConversion(FileWith(entries, form)), annotation_(Loaded(4)) {}

  const pdf::Object& annotation() const { return annotation_; }

 private:
  static testing::RawPdf FileWith(const std::string& entries, const std::string& form) {
    testing::RawPdf file;
    file.Object(1, "<</Type/Catalog/Pages 2 0 R/AcroForm<</Fields[4 0 R]" + form + ">>>>");
    file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
    file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Annots[4 0 R]>>");
    return file.Object(4, "<</Type/Annot" + entries + ">>");
  }

  pdf::Object annotation_;
};

// More numbers and characters than a test draws.
inline constexpr std::size_t kPlenty = 1'000;

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_TESTS_ENGINES_PDFA_CONVERT_ANNOTATED_H_
