#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "engines/pdfa/PdfA.h"
#include "engines/pdfa/convert/ConvertedDocument.h"
#include "engines/pdfa/convert/ConverterFailure.h"
#include "engines/pdfa/convert/MergedMetadata.h"
#include "engines/pdfa/convert/WrittenFile.h"
#include "engines/support/contract/Registry.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {

using namespace pdfa;

struct TPdf2Pdf {
  std::int32_t wanted = 0;  // code of a level
  bool has_details = false;
  bool is_encrypted = false;                 // the document of the last conversion
  std::optional<platform::WidePath> target;  // of what was written last
  ConversionResult result;
  Pdf2PdfError last_error = kConverterNoError;
};

namespace {

using Objects = Registry<TPdf2Pdf>;

void Require(bool condition) {
  engines::Require<ConverterErrors>(condition);
}

void WriteLog(const TPdf2Pdf& object, const platform::WidePath& path) {
  if (!path.units().empty()) {
    WrittenFile log(path);
    log.sink().Write(object.result.report.Text(object.has_details));
    log.Complete();
  }
}

void Convert(TPdf2Pdf& object, const platform::WidePath& path, const std::wstring& password,
             const platform::WidePath& target, const platform::WidePath& log) {
  object.result = {};
  object.target.reset();
  object.is_encrypted = false;
  const std::optional<Level> wanted = LevelOfCode(object.wanted);
  Require(wanted || object.wanted == 0);
  ConvertedDocument document(path, WideToUtf8(password));
  object.is_encrypted = document.is_encrypted();
  object.result = document.Save(target, wanted);
  WriteLog(object, log);
  if (!object.result.reached) {
    throw ConverterFailure(kConverterNotReachedError);
  }
  object.target = target;
  if (!object.result.is_as_wanted) {
    throw ConverterFailure(kConverterDowngradedError);
  }
}

TPdf2PdfEntry EntryOf(const ConversionEntry& entry) {
  TPdf2PdfEntry told;
  told.outcome = entry.outcome == ConversionOutcome::kChanged   ? TPdf2PdfOutcome::kChanged
                 : entry.outcome == ConversionOutcome::kDropped ? TPdf2PdfOutcome::kDropped
                                                                : TPdf2PdfOutcome::kBlocking;
  told.what = entry.what.c_str();
  told.count = entry.count;
  return told;
}

}  // namespace

void Pdf2PdfInitialize() {
  Objects::BeginSession();
}

void Pdf2PdfUnInitialize() {
  Objects::EndSession();
}

TPdf2Pdf* Pdf2PdfCreateObject() {
  return GuardedWithoutObject<ConverterErrors>(
      [] { return Objects::Add(std::make_unique<TPdf2Pdf>()); });
}

int Pdf2PdfDestroyObject(TPdf2Pdf* object) {
  return Objects::Destroy(object) ? 1 : 0;
}

std::int32_t Pdf2PdfGetErrorCode(const TPdf2Pdf* object) {
  return static_cast<std::int32_t>(LastErrorOf<ConverterErrors>(object));
}

int Pdf2PdfSetCompliance(TPdf2Pdf* object, std::int32_t compliance) {
  return Guarded<ConverterErrors>(object, [&] {
    object->wanted = compliance;
    Require(compliance == 0 || LevelOfCode(compliance));
  });
}

// Whether a lower level is accepted, the caller decides by the code; it is written in any case.
int Pdf2PdfSetAllowDowngrade(TPdf2Pdf* object, int /*allow*/) {
  return Guarded<ConverterErrors>(object, [] {});
}

int Pdf2PdfSetReportDetails(TPdf2Pdf* object, int details) {
  return Guarded<ConverterErrors>(object, [&] { object->has_details = details != 0; });
}

int Pdf2PdfConvertW(TPdf2Pdf* object, const platform::WidePath& path, const std::wstring& password,
                    const platform::WidePath& target, const platform::WidePath& log) {
  return Guarded<ConverterErrors>(object, [&] { Convert(*object, path, password, target, log); });
}

int Pdf2PdfIsEncrypted(const TPdf2Pdf* object) {
  return object != nullptr && object->is_encrypted ? 1 : 0;
}

std::int32_t Pdf2PdfGetReachedCompliance(const TPdf2Pdf* object) {
  return object != nullptr && object->result.reached ? CodeOf(*object->result.reached) : 0;
}

std::int32_t Pdf2PdfGetConversionErrors(const TPdf2Pdf* object) {
  return object != nullptr ? static_cast<std::int32_t>(object->result.report.BlockingCount()) : -1;
}

std::int32_t Pdf2PdfGetReportCount(const TPdf2Pdf* object) {
  return object != nullptr ? static_cast<std::int32_t>(object->result.report.entries().size()) : -1;
}

int Pdf2PdfGetReportEntry(TPdf2Pdf* object, std::int32_t index, TPdf2PdfEntry* entry) {
  return Guarded<ConverterErrors>(object, [&] {
    Require(index >= 0 && index < Pdf2PdfGetReportCount(object) && entry != nullptr);
    *entry = EntryOf(object->result.report.entries()[static_cast<std::size_t>(index)]);
  });
}

int Pdf2PdfSetMetadataW(TPdf2Pdf* object, const platform::WidePath& packet) {
  return Guarded<ConverterErrors>(object, [&] {
    Require(object->target && object->result.reached);
    MergeMetadata(*object->target, packet, *object->result.reached);
  });
}

}  // namespace TarnixTools::engines
