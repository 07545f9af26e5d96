// Reads and analyses the pages of a document on all cores.
#ifndef TARNIX_ENGINES_OFFICE_SDK_PAGEANALYSERS_H_
#define TARNIX_ENGINES_OFFICE_SDK_PAGEANALYSERS_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "engines/office/Office.h"
#include "engines/office/layout/OfficeDocument.h"
#include "engines/office/pages/DocumentReader.h"

namespace TarnixTools::engines::office {

// What happened to a page.
struct PageWarning {
  std::size_t page_index = 0;
  ConversionSdk::ConversionLoss loss{};
  std::string text;
};

// Whom the analysis tells, on the thread that has called it.
struct AnalysisEvents {
  std::function<void()> page_done;
  std::function<void(const PageWarning&)> warning;
};

// How the text of scanned pages is had.
struct ScanSettings {
  platform::WidePath path;
  std::string password;  // UTF-8
  bool recognises_text = true;
};

// The pages in the order of their indexes. One that cannot be read is blank, with a warning; what
// comes out does not depend on the number of threads. Throws Cancelled, and pdf::Error for a
// document that cannot be read any more.
std::vector<OfficePage> AnalyzePages(DocumentReader& reader,
                                     const std::vector<std::size_t>& page_indexes,
                                     const ScanSettings& scans,
                                     const ConversionSdk::ConversionState& state,
                                     const AnalysisEvents& events);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_SDK_PAGEANALYSERS_H_
