// What the optimizer tells of a document that it has saved, as the library tells it.
#ifndef TARNIX_CONVERSIONS_OPTIMIZER_REPORTS_H_
#define TARNIX_CONVERSIONS_OPTIMIZER_REPORTS_H_

#include <vector>

#include "PdfCompressTask.h"
#include "PdfReport.h"
#include "engines/optimizer/Optimizer.h"

namespace TarnixTools {

void AddReport(engines::TPdfOptimizer* optimizer, PdfReport& report);

// Adds to the entries of the classes, which stay in the order of PdfImageClass.
void AddImages(engines::TPdfOptimizer* optimizer, std::vector<PdfCompressedImages>& images);

void AddFonts(engines::TPdfOptimizer* optimizer, PdfCompressedFonts& fonts);

}  // namespace TarnixTools

#endif  // TARNIX_CONVERSIONS_OPTIMIZER_REPORTS_H_
