// PdfDoc: conversion to PDF/A.
#include <cstdint>
#include <string>

#include "PdfDoc.h"
#include "PdfException.h"
#include "PdfTransformation.h"
#include "document/PdfAHandles.h"
#include "document/TemporaryFiles.h"
#include "engines/pdfa/PdfA.h"
#include "foundation/Platform.h"
#include "foundation/Protection.h"
#include "foundation/Utf8.h"

namespace TarnixTools {
namespace {

using engines::TPdf2Pdf;

// The engine's code for a file that is PDF/A, but of a lower level than was asked for.
constexpr auto kNotTheWantedLevel = static_cast<std::int32_t>(0x83410540);

// The engine's code for a packet that is no XMP. The conversion has read it before and gone on.
constexpr std::int32_t kNoPacket = 16;

PdfReportOutcome OutcomeOf(engines::TPdf2PdfOutcome outcome) {
  switch (outcome) {
    case engines::TPdf2PdfOutcome::kChanged:
      return PdfReportOutcome::Replaced;
    case engines::TPdf2PdfOutcome::kBlocking:
      return PdfReportOutcome::Kept;
    case engines::TPdf2PdfOutcome::kDropped:
      break;
  }
  return PdfReportOutcome::Dropped;
}

void AddReport(TPdf2Pdf* converter, PdfReport& report) {
  const std::int32_t count = engines::Pdf2PdfGetReportCount(converter);
  for (std::int32_t i = 0; i < count; ++i) {
    engines::TPdf2PdfEntry entry;
    if (engines::Pdf2PdfGetReportEntry(converter, i, &entry) != 0) {
      report.Add({.kind = PdfReportKind::Conversion,
                  .outcome = OutcomeOf(entry.outcome),
                  .count = static_cast<std::int64_t>(entry.count),
                  .page = 0,
                  .reason = entry.what});
    }
  }
}

// False when only the wanted level will do.
bool Set(TPdf2Pdf* converter, PdfTransformation& settings) {
  bool is_strict = false;
  if (settings.GetCompliance() != PdfCompliance::None) {
    engines::Pdf2PdfSetCompliance(converter, static_cast<std::int32_t>(settings.GetCompliance()));
    is_strict = true;
  }
  if (settings.GetPdfaDowngrade()) {
    engines::Pdf2PdfSetAllowDowngrade(converter, 1);
    is_strict = false;
  }
  engines::Pdf2PdfSetReportDetails(converter, 1);
  return !is_strict;
}

[[noreturn]] void ThrowNotConverted(TPdf2Pdf* converter, std::int32_t code) {
  const std::int32_t errors =
      code == kNotTheWantedLevel ? 0 : engines::Pdf2PdfGetConversionErrors(converter);
  throw PdfException(PdfExceptionCode::EngineError, code,
                     "Conversion to PDF/A failed, error [0x%08X], conversion error [%d]",
                     static_cast<unsigned>(code), errors);
}

}  // namespace

// An older file of the output's name, which may be this very document, stays as it is until the new
// one is complete: then what is converted gets another name first.
void PdfDoc::ConvertDocToPdfA(PdfTransformation& settings, const std::string& output_path,
                              const std::string& password) {
  TemporaryFiles files;
  const ConverterHandle converter;
  const bool may_be_lower = Set(converter.Get(), settings);
  const std::string log = files.Reserve(output_path + "_out.log");
  const bool is_final = password.empty() && !platform::Exists(output_path);
  const std::string target = files.Reserve(is_final ? output_path : output_path + "tmp.pdf");
  const bool is_converted =
      engines::Pdf2PdfConvertW(converter.Get(), platform::WidePath(path_), Utf8ToWide(password_),
                               platform::WidePath(target), platform::WidePath(log)) != 0;
  const std::int32_t code = is_converted ? 0 : engines::Pdf2PdfGetErrorCode(converter.Get());
  if (!is_converted && (code != kNotTheWantedLevel || !may_be_lower)) {
    AddReport(converter.Get(), report_);
    ThrowNotConverted(converter.Get(), code);
  }
  MergeXmpMetaData(converter.Get(), output_path, files);
  if (password.empty() && engines::Pdf2PdfIsEncrypted(converter.Get()) != 0) {
    report_.Add(ProtectionDropped(path_));
  }
  if (!password.empty()) {
    LockConverted(target, output_path, password);
  } else if (is_final) {
    files.Keep(target);
  } else {
    CopyWhole(target, output_path);
  }
}

// Beside this document, or beside the output where that cannot be.
void PdfDoc::MergeXmpMetaData(TPdf2Pdf* converter, const std::string& output_path,
                              TemporaryFiles& files) {
  std::string packet = directory_ + "pdfa_metadata.xmp";
  const bool is_free = !platform::Exists(packet) && files.Reserve(packet) == packet;
  try {
    if (!is_free) {
      packet = files.Reserve(output_path + "_metadata.xmp");
    }
    WriteXmpMetaData(packet);
  } catch (const PdfException& error) {
    if (!is_free || error.GetCode() != PdfExceptionCode::FileNotFound) {
      throw;
    }
    packet = files.Reserve(output_path + "_metadata.xmp");
    WriteXmpMetaData(packet);
  }
  const bool is_set = engines::Pdf2PdfSetMetadataW(converter, platform::WidePath(packet)) != 0;
  const std::int32_t code = engines::Pdf2PdfGetErrorCode(converter);
  AddReport(converter, report_);
  if (!is_set && code == kNoPacket) {
    report_.Add({.kind = PdfReportKind::XmpPacket,
                 .outcome = PdfReportOutcome::Dropped,
                 .count = 1,
                 .page = 0,
                 .reason = "cannot be read"});
  } else if (!is_set) {
    throw PdfException(PdfExceptionCode::EngineError, code,
                       "Unable to set metadata at output PDF/A, error [0x%08X]",
                       static_cast<unsigned>(code));
  }
}

// PDF/A cannot be encrypted: what is written then claims no level any more.
void PdfDoc::LockConverted(const std::string& converted, const std::string& output_path,
                           const std::string& password) {
  PdfDoc intermediate(converted, "", true);
  intermediate.SetKeepMetadata(true);
  intermediate.Lock(password, output_path);
  report_.Add(intermediate.GetReport());
}

}  // namespace TarnixTools
