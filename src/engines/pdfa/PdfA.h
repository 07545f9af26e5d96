// Contract of the engines for PDF/A (ISO 19005): the validator, which says whether a document is what
// it claims to be, and the converter, which makes it that. A null handle or a zero result is a
// failure, whose reason (ErrorCodes.h) PdfValidatorGetErrorCode or Pdf2PdfGetErrorCode tells; no
// exception leaves the engine. docs/engines.md has the meaning of every value.
//
//   PdfValidatorInitialize();
//   TPdfValidator* object = PdfValidatorCreateObject();
//   PdfValidatorSetReportingLevel(object, 2);
//   PdfValidatorOpenW(object, WidePath("archive.pdf"), L"", 0);
//   if (PdfValidatorValidate(object) == 0) {
//     for (std::int32_t i = 0; i < PdfValidatorGetFindingCount(object); ++i) {
//       TPdfFinding finding;
//       PdfValidatorGetFinding(object, i, &finding);
//     }
//   }
//   PdfValidatorClose(object);
//   PdfValidatorDestroyObject(object);
//   PdfValidatorUnInitialize();
//
//   Pdf2PdfInitialize();
//   TPdf2Pdf* converter = Pdf2PdfCreateObject();
//   Pdf2PdfSetCompliance(converter, 0x1701);
//   Pdf2PdfConvertW(converter, WidePath("letter.pdf"), L"", WidePath("archive.pdf"),
//                   WidePath("archive.log"));
//   Pdf2PdfDestroyObject(converter);
//   Pdf2PdfUnInitialize();
//
// Different objects may be used on different threads at once, one of them by one thread at a time.
#ifndef TARNIX_ENGINES_PDFA_PDFA_H_
#define TARNIX_ENGINES_PDFA_PDFA_H_

#include <cstdint>
#include <cstdio>
#include <string>

#include "foundation/Platform.h"

namespace TarnixTools::engines {

struct TPdfValidator;
struct TPdf2Pdf;

// One thing that is not as the level asks for. Texts are UTF-8 and valid until the next validation,
// open or close.
struct TPdfFinding {
  const char* clause = "";   // of ISO 19005: "6.1.8"
  std::int32_t test = 0;     // of the clause, as the published validation profiles number them
  const char* wrong = "";    // a sentence: what is wrong
  const char* cure = "";     // a sentence: how to mend it
  const char* subject = "";  // what it is about: "font Helvetica"; empty where nothing has a name
  std::int32_t object = 0;   // number of the object; 0 for none
  std::int32_t page = 0;     // one-based; 0 for none
  std::int32_t has_box = 0;  // 1: the box is around it
  double left = 0;           // in points on the page as it is seen, from its lower left corner
  double bottom = 0;
  double right = 0;
  double top = 0;
};

// A session, on one thread; sessions may nest. An object that is not destroyed when the outermost
// one ends is left behind: it can still be asked for its error, closed and destroyed, until the
// thread starts another session or ends.
void PdfValidatorInitialize();
void PdfValidatorUnInitialize();

// An object without a document, with reporting level 1. The caller destroys it. Null: no memory.
TPdfValidator* PdfValidatorCreateObject();
// Closes what is open.
int PdfValidatorDestroyObject(TPdfValidator* object);

// The code of the last call that failed on the object, or on this thread for the null object.
std::int32_t PdfValidatorGetErrorCode(const TPdfValidator* object);

// How much the validations to come tell: 0 and 1 one finding of each rule, 2 many of them. Another
// value is refused and leaves the setting as it is.
int PdfValidatorSetReportingLevel(TPdfValidator* object, std::int32_t level);

// Opens a document; one that was open is closed. Fails with 17 for a missing or wrong password.
//   password   - empty for none
//   compliance - code of the level to validate by; 0 for the one that the document claims, 2b where
//                it claims none
int PdfValidatorOpenW(TPdfValidator* object, const platform::WidePath& path,
                      const std::wstring& password, std::int32_t compliance);

// The code of the level that the open document claims; of one that claims none its version in the
// same manner (0x1400 for PDF 1.4, 0x1700 for 1.7, 0x2000 for 2.0). 0: no document is open.
std::int32_t PdfValidatorGetCompliance(TPdfValidator* object);

// Non-zero: the open document is valid. Zero without findings: it could not be validated, and the
// error code tells why.
int PdfValidatorValidate(TPdfValidator* object);

// What the last validation has found, by clause. -1 for the null object.
std::int32_t PdfValidatorGetFindingCount(const TPdfValidator* object);
// index is zero-based.
int PdfValidatorGetFinding(TPdfValidator* object, std::int32_t index, TPdfFinding* finding);

// What a job that keeps a document's claim calls for the file that it wrote, which is complete and can
// be read and written: where the level that it claims does not hold, the packet is changed in its
// place, and claims the best level below it that does, or none. The packet must be stored without a
// filter. Returns the code of the level that is claimed then, 0 for none; -1 for a file that cannot be
// read or written, and the error code of no object tells why.
std::int32_t PdfValidatorProveClaim(std::FILE* file);

// Fails when no document is open.
int PdfValidatorClose(TPdfValidator* object);

// What became of something in a conversion.
enum class TPdf2PdfOutcome : std::int32_t {
  kChanged,   // it is there, in another way
  kDropped,   // it is not in the output
  kBlocking,  // it stands in the way of the level that was wanted
};

// The text is UTF-8 and valid until the next conversion.
struct TPdf2PdfEntry {
  TPdf2PdfOutcome outcome{};
  const char* what = "";  // in English, in a few words
  std::uint64_t count = 0;
};

// A session, as of the validator.
void Pdf2PdfInitialize();
void Pdf2PdfUnInitialize();

// An object that wants no certain level. The caller destroys it. Null: no memory.
TPdf2Pdf* Pdf2PdfCreateObject();
int Pdf2PdfDestroyObject(TPdf2Pdf* object);

// The code of the last call that failed on the object, or on this thread for the null object.
std::int32_t Pdf2PdfGetErrorCode(const TPdf2Pdf* object);

// Settings, for the conversions to come.
//
// The code of the level that is wanted; 0 for the most useful one that the document can reach, 2b or
// better. A code that is no level's is kept, and fails the conversion.
int Pdf2PdfSetCompliance(TPdf2Pdf* object, std::int32_t compliance);
// 0, or another number for: a lower level will do where the wanted one cannot be reached.
int Pdf2PdfSetAllowDowngrade(TPdf2Pdf* object, int allow);
// 0, or another number for: the log tells what was changed and left out, too, and not only what
// stands in the way.
int Pdf2PdfSetReportDetails(TPdf2Pdf* object, int details);

// Writes a document as PDF/A. The file has its name only when it is complete. Fails with 17 for a
// missing or wrong password; with 0x83410540 when the wanted level could not be reached and the file
// claims the best one that could; with another code, and without a file, when that is none.
//   password - empty for none
//   log      - gets one line for each thing to be told; an empty path for no log
int Pdf2PdfConvertW(TPdf2Pdf* object, const platform::WidePath& path, const std::wstring& password,
                    const platform::WidePath& target, const platform::WidePath& log);

// Whether the document of the last conversion is encrypted. 0 where it could not be opened.
int Pdf2PdfIsEncrypted(const TPdf2Pdf* object);

// The code of the level that the last conversion has reached; 0 for none.
std::int32_t Pdf2PdfGetReachedCompliance(const TPdf2Pdf* object);

// How much stands in the way of the level that the last conversion wanted. -1 for the null object.
std::int32_t Pdf2PdfGetConversionErrors(const TPdf2Pdf* object);

// What the last conversion has changed, left out, or could not mend. -1 for the null object.
std::int32_t Pdf2PdfGetReportCount(const TPdf2Pdf* object);
// index is zero-based.
int Pdf2PdfGetReportEntry(TPdf2Pdf* object, std::int32_t index, TPdf2PdfEntry* entry);

// Merges an XMP packet into the file that the last conversion wrote. The claim of the level, and what
// the document information says, stay. Fails where nothing was written, and for a packet that cannot
// be read.
int Pdf2PdfSetMetadataW(TPdf2Pdf* object, const platform::WidePath& packet);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_PDFA_PDFA_H_
