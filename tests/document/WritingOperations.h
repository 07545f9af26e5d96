// The operations of PdfDoc that write one file, for tests of what holds for all of them.
#ifndef TARNIX_TESTS_DOCUMENT_WRITING_OPERATIONS_H_
#define TARNIX_TESTS_DOCUMENT_WRITING_OPERATIONS_H_

#include <functional>
#include <string>
#include <vector>

#include "PdfDoc.h"
#include "PdfTransformation.h"

namespace TarnixTools {

// An operation by its name; an output goes to the path, with the password.
struct Operation {
  const char* name;
  std::function<void(PdfDoc& document, const std::string& output, const std::string& password)> run;
};

inline std::vector<Operation> WritingOperations() {
  return {
      {"Rotate",
       [](PdfDoc& document, const std::string& output, const std::string& password) {
         document.Rotate(PdfRotationAngle::Rotate90, output, password);
       }},
      {"Rotate of some pages",
       [](PdfDoc& document, const std::string& output, const std::string& password) {
         document.Rotate(PdfRotationAngle::Rotate90, {1}, output, password);
       }},
      {"Lock", [](PdfDoc& document, const std::string& output,
                  const std::string& password) { document.Lock(password, output); }},
      {"SetMetaData",
       [](PdfDoc& document, const std::string& output, const std::string& password) {
         document.SetMetaData({"Ada"}, output, password);
       }},
      {"Transform",
       [](PdfDoc& document, const std::string& output, const std::string& password) {
         PdfTransformation number(PdfTransformType::AddPageNumber);
         document.Transform(number, output, password);
       }},
      {"Transform by several",
       [](PdfDoc& document, const std::string& output, const std::string& password) {
         std::vector<PdfTransformation> number = {
             PdfTransformation(PdfTransformType::AddPageNumber)};
         document.Transform(number, output, password);
       }},
      {"Transform to PDF/A",
       [](PdfDoc& document, const std::string& output, const std::string& password) {
         PdfTransformation settings(PdfTransformType::PdfA);
         document.Transform(settings, output, password);
       }},
  };
}

}  // namespace TarnixTools

#endif  // TARNIX_TESTS_DOCUMENT_WRITING_OPERATIONS_H_
