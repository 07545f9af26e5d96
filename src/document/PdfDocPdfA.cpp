// PdfDoc: XMP metadata and PDF/A.
#include <cerrno>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "PdfDoc.h"
#include "PdfException.h"
#include "document/ParserHandles.h"
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

}  // namespace TarnixTools
