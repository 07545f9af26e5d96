// An appearance that an annotation gets, and the one that shows nothing.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_MADEAPPEARANCE_H_
#define TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_MADEAPPEARANCE_H_

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

// A form XObject.
struct MadeAppearance {
  bool shows_nothing() const { return content == " "; }

  std::string dictionary;
  std::string content;
};

// As large as the annotation.
MadeAppearance EmptyAppearance(const pdf::Object& annotation, pdf::Document& document);

// Operands and the operator, on a line.
void AppendOperation(std::string& out, std::span<const double> operands, std::string_view name);

inline void AppendOperation(std::string& out, std::initializer_list<double> operands,
                            std::string_view name) {
  AppendOperation(out, std::span(operands.begin(), operands.size()), name);
}

// Entries of a graphics state by which all is painted with the opacity, from 0 to 1.
std::string OpacityEntries(double opacity);

enum class PaintUse { kFill, kStroke };

// The operator that sets a colour, by its components: one of gray, three of RGB, four of CMYK,
// which are made RGB. Empty for another number of them.
std::string ColorOperator(std::vector<double> components, PaintUse use);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_MADEAPPEARANCE_H_
