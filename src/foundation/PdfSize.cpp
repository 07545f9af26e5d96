#include "PdfSize.h"

namespace TarnixTools {

PdfSize::PdfSize(double width, double height) : width_(width), height_(height) {}

}  // namespace TarnixTools
