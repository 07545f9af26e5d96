// One conversion of a document, from its file to the output.
#ifndef TARNIX_ENGINES_OFFICE_SDK_CONVERSION_H_
#define TARNIX_ENGINES_OFFICE_SDK_CONVERSION_H_

#include <cstdint>

#include "engines/office/Office.h"
#include "engines/office/sdk/ConversionLog.h"

namespace TarnixTools::engines::office {

// One of ConversionStatus; the log tells the reason of a failure. Throws nothing.
std::int32_t Convert(const ConversionSdk::ConversionRequest& request,
                     ConversionSdk::ConversionState& state, ConversionSdk::ConversionEvents& events,
                     ConversionLog& log) noexcept;

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_SDK_CONVERSION_H_
