// What a compression did to images, by what they are, and to fonts, and what it left out.
#ifndef TARNIX_ENGINES_OPTIMIZER_OPTIMIZERREPORT_H_
#define TARNIX_ENGINES_OPTIMIZER_OPTIMIZERREPORT_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "engines/optimizer/Optimizer.h"

namespace TarnixTools::engines::optimizer {

using ImageClass = TPdfImageClass;
using LeftAlone = TPdfImageLeftAlone;
using ClassFigures = TPdfImageFigures;
using FontLeftAlone = TPdfFontLeftAlone;
using FontReport = TPdfFontFigures;
using ReportedKind = TPdfOptimizedKind;

inline constexpr std::size_t kImageClassCount = kPdfImageClassCount;
inline constexpr std::size_t kLeftAloneCount = kPdfImageLeftAloneCount;
inline constexpr std::size_t kFontLeftAloneCount = kPdfFontLeftAloneCount;

struct OptimizerReport {
  // reason: a static text. Nothing is added where nothing is counted.
  void Kept(ReportedKind kind, const char* reason, std::uint64_t count = 1);
  void Dropped(ReportedKind kind, const char* reason, std::uint64_t count = 1);

  // The document has been copied as it is: images and fonts are what they were, and nothing was left
  // out.
  void TakeBack();

  std::array<ClassFigures, kImageClassCount> images{};
  FontReport fonts;
  std::vector<TPdfOptimizeReportEntry> entries;
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_OPTIMIZERREPORT_H_
