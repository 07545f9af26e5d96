// The converters of Pdf2OfficeTask: those of the conversion library, whose events nobody hears.
#ifndef TARNIX_CONVERSIONS_OFFICECONVERTERS_H_
#define TARNIX_CONVERSIONS_OFFICECONVERTERS_H_

#include <memory>

#include "engines/office/Office.h"

namespace TarnixTools {

template <typename Converter>
class SilentConverter : public Converter {
 public:
  void OnProgress(std::shared_ptr<ConversionSdk::ProgressEventArgs> event) override {
    event.reset();
  }

  void OnWarning(std::shared_ptr<ConversionSdk::WarningEventArgs> event) override { event.reset(); }
};

class PdfToWordConverter : public SilentConverter<ConversionSdk::Converters::PdfToWordConverter> {};

class PdfToExcelConverter : public SilentConverter<ConversionSdk::Converters::PdfToExcelConverter> {
};

class PdfToPowerPointConverter
    : public SilentConverter<ConversionSdk::Converters::PdfToPowerPointConverter> {};

}  // namespace TarnixTools

#endif  // TARNIX_CONVERSIONS_OFFICECONVERTERS_H_
