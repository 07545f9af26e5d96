// PdfDoc: XMP metadata and PDF/A.
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "PdfDoc.h"
#include "PdfException.h"
#include "document/ParserHandles.h"
#include "document/PdfAHandles.h"
#include "engines/parser/ErrorCodes.h"
#include "engines/parser/Parser.h"
#include "foundation/Platform.h"
#include "foundation/Utf8.h"

namespace TarnixTools {
namespace {

// What stands for the packet of a document that has none.
constexpr std::string_view kEmptyPacket =
    "<?xpacket begin='\xEF\xBB\xBF?' id='W5M0MpCehiHzreSzNTczkc9d'?>"
    "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\" x:xmptk=\"Tarnix\">"
    "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"></rdf:RDF></x:xmpmeta>"
    "<?xpacket end='w'?>";

void WriteWhole(const std::string& path, std::string_view bytes) {
  std::optional<platform::OutputFile> output = platform::OutputFile::Create(path);
  platform::FilePtr stream = output ? output->TakeStream() : nullptr;
  const bool is_written =
      stream != nullptr &&
      std::fwrite(bytes.data(), 1, bytes.size(), stream.get()) == bytes.size() &&
      std::fclose(stream.release()) == 0 && output->Commit();
  if (!is_written) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0, "Unable to create new file [%s] (%s)",
                       path.c_str(), platform::ErrorText(errno).c_str());
  }
}

// The document, opened; the messages are what is thrown when it cannot be.
ExpaDocPtr OpenForParsing(const PdfDoc& doc, const char* no_object, const char* not_opened) {
  ExpaDocPtr document(engines::ExpaDocCreateObject());
  if (document == nullptr) {
    throw PdfException(PdfExceptionCode::EngineError, engines::ExpaDocGetLastError(nullptr), "%s",
                       no_object);
  }
  if (engines::ExpaDocOpenW(document.get(), platform::WidePath(doc.GetPath()),
                            Utf8ToWide(doc.GetPassword())) == 0) {
    throw PdfException(PdfExceptionCode::EngineError, engines::ExpaDocGetLastError(document.get()),
                       not_opened, doc.GetPath().c_str());
  }
  return document;
}

constexpr std::int32_t kManyFindings = 2;

// The document, opened for validation by the level; 0: by the one that it claims.
void OpenForValidation(const ValidatorHandle& validator, const PdfDoc& doc, std::int32_t level) {
  const std::string& path = doc.GetPath();
  engines::PdfValidatorSetReportingLevel(validator.Get(), kManyFindings);
  if (validator.Get() == nullptr) {
    throw PdfException(PdfExceptionCode::InternalError, 0,
                       "Could not create PDF validator object for [%s]", path.c_str());
  }
  if (engines::PdfValidatorOpenW(validator.Get(), platform::WidePath(path),
                                 Utf8ToWide(doc.GetPassword()), level) == 0) {
    const std::int32_t code = engines::PdfValidatorGetErrorCode(validator.Get());
    throw PdfException(PdfExceptionCode::EngineError, code,
                       "Could not open validator object for file [%s] [0x%08X]", path.c_str(),
                       static_cast<unsigned>(code));
  }
}

std::vector<PdfFinding> FindingsOf(engines::TPdfValidator* validator) {
  std::vector<PdfFinding> findings;
  const std::int32_t count = engines::PdfValidatorGetFindingCount(validator);
  for (std::int32_t i = 0; i < count; ++i) {
    engines::TPdfFinding finding;
    if (engines::PdfValidatorGetFinding(validator, i, &finding) != 0) {
      findings.push_back({.clause = finding.clause,
                          .test = finding.test,
                          .message = finding.wrong,
                          .cure = finding.cure,
                          .subject = finding.subject,
                          .object = finding.object,
                          .page = finding.page,
                          .has_box = finding.has_box != 0,
                          .left = finding.left,
                          .bottom = finding.bottom,
                          .right = finding.right,
                          .top = finding.top});
    }
  }
  return findings;
}

bool IsPdfALevel(std::int32_t compliance) {
  switch (static_cast<PdfCompliance>(compliance)) {
    case PdfCompliance::PdfA1B:
    case PdfCompliance::PdfA1A:
    case PdfCompliance::PdfA2B:
    case PdfCompliance::PdfA2U:
    case PdfCompliance::PdfA2A:
    case PdfCompliance::PdfA3B:
    case PdfCompliance::PdfA3U:
    case PdfCompliance::PdfA3A:
      return true;
    case PdfCompliance::None:
      break;
  }
  return false;
}

}  // namespace

void PdfDoc::GetXmpMetaData(const std::string& xmp_path) {
  report_.Clear();
  WriteXmpMetaData(xmp_path);
}

void PdfDoc::GetXmpMetaData(PdfDoc& doc, const std::string& xmp_path) {
  doc.GetXmpMetaData(xmp_path);
}

void PdfDoc::WriteXmpMetaData(const std::string& xmp_path) {
  if (xmp_path.empty()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Invalid XMP out path for PDF [%s]",
                       path_.c_str());
  }
  const ParserSession session;
  const ExpaDocPtr document =
      OpenForParsing(*this, "Unable to create PDF expa handler to extract XMP",
                     "Unable to open PDF file [%s] for XMP extraction");
  if (engines::ExpaDocGetXMPMetadataW(document.get(), platform::WidePath(xmp_path)) != 0) {
    return;
  }
  if (engines::ExpaDocGetLastError(document.get()) == engines::kExpaMetadataError) {
    report_.Add({.kind = PdfReportKind::XmpPacket,
                 .outcome = PdfReportOutcome::Dropped,
                 .count = 1,
                 .page = 0,
                 .reason = "cannot be read"});
  }
  WriteWhole(xmp_path, kEmptyPacket);
}

PdfCompliance PdfDoc::GetPdfaCompliance() {
  const ParserSession session;
  const ExpaDocPtr document =
      OpenForParsing(*this, "Unable to create PDF handler to get document compliance",
                     "Unable to open PDF file [%s] for compliance verification");
  return static_cast<PdfCompliance>(engines::ExpaDocGetCompliance(document.get()));
}

bool PdfDoc::ValidatePdfA() {
  findings_.clear();
  const ValidatorHandle validator;
  OpenForValidation(validator, *this, 0);
  const bool claims = IsPdfALevel(engines::PdfValidatorGetCompliance(validator.Get()));
  const bool is_valid = engines::PdfValidatorValidate(validator.Get()) != 0;
  findings_ = FindingsOf(validator.Get());
  return claims && is_valid;
}

bool PdfDoc::ValidatePdfA(PdfCompliance level) {
  findings_.clear();
  const ValidatorHandle validator;
  OpenForValidation(validator, *this, static_cast<std::int32_t>(level));
  const bool is_valid = engines::PdfValidatorValidate(validator.Get()) != 0;
  const std::int32_t code = engines::PdfValidatorGetErrorCode(validator.Get());
  findings_ = FindingsOf(validator.Get());
  if (!is_valid && findings_.empty()) {
    throw PdfException(PdfExceptionCode::EngineError, code, "Could not validate file [%s] [0x%08X]",
                       path_.c_str(), static_cast<unsigned>(code));
  }
  return is_valid;
}

}  // namespace TarnixTools
