// Contract of the engine that finds what is wrong with a document and puts it right. A null handle or
// a zero result is a failure, whose reason (ErrorCodes.h) PdfRepairGetErrorCode tells; no exception
// leaves the engine. docs/repair.md lists every problem.
//
//   PdfRepairInitialize();
//   TPdfRepair* object = PdfRepairCreateObject();
//   PdfRepairOpenW(object, WidePath("torn.pdf"), L"");
//   PdfRepairAnalyzeAndRepair(object);
//   for (auto* error = PdfRepairGetFirstError(object); error != nullptr;
//        error = PdfRepairGetNextError(object)) { ... PdfRepairErrorGetMessageA(error, text, size) ... }
//   PdfRepairSaveAsW(object, WidePath("mended.pdf"), L"", L"", 0x804);
//   PdfRepairClose(object);
//   PdfRepairDestroyObject(object);
//   PdfRepairUnInitialize();
//
// Different objects may be used on different threads at once, one of them by one thread at a time.
#ifndef TARNIX_ENGINES_REPAIR_REPAIR_H_
#define TARNIX_ENGINES_REPAIR_REPAIR_H_

#include <cstdint>
#include <string>

#include "engines/support/contract/ClaimProof.h"
#include "foundation/Platform.h"

namespace TarnixTools::engines {

struct TPdfRepair;
struct TPdfRepairError;

// What an entry of a report is about.
enum class TPdfRepairedKind : std::int32_t {
  kDamage,
  kSignature,
  kXmpPacket,
  kPdfAClaim,
};

struct TPdfRepairReportEntry {
  TPdfRepairedKind kind{};
  bool is_lost = false;  // whether something that the document had is not in the output
  std::uint64_t count = 0;
  const char* reason = "";  // in English, in a few words; the text is static
};

// A session, on one thread; sessions may nest. An object that is not destroyed when the outermost
// one ends is left behind: it can still be asked for its error, closed and destroyed, until the
// thread starts another session or ends.
void PdfRepairInitialize();
void PdfRepairUnInitialize();

// An object without a document. The caller destroys it. Null: no memory.
TPdfRepair* PdfRepairCreateObject();
// Closes what is open.
int PdfRepairDestroyObject(TPdfRepair* object);

// The code of the last call that failed on the object, or on this thread for the null object.
std::int32_t PdfRepairGetErrorCode(const TPdfRepair* object);

// Opens a document; one that was open is closed. Every file in which an object can be recognised is
// opened, however damaged. Fails with 17 for a missing or wrong password.
//   password - empty for none
int PdfRepairOpenW(TPdfRepair* object, const platform::WidePath& path,
                   const std::wstring& password);

// Whether the open document is encrypted. 0 where none is open.
int PdfRepairIsEncrypted(const TPdfRepair* object);

// Fails when no document is open. Its problems are gone.
int PdfRepairClose(TPdfRepair* object);

// What an analysis looks at, a set of bits: 1 the file and its objects, 2 trees of objects such as
// that of pages, 4 what pages show. 7 at first. Other bits are kept and add nothing.
std::uint32_t PdfRepairGetAnalysisOptions(const TPdfRepair* object);
int PdfRepairSetAnalysisOptions(TPdfRepair* object, std::uint32_t options);

// How a document is saved, a set of bits: 1 written anew even where it has no problem. 0 at first.
// Other bits are kept and do nothing.
std::uint32_t PdfRepairGetRebuildOptions(const TPdfRepair* object);
int PdfRepairSetRebuildOptions(TPdfRepair* object, std::uint32_t options);

// Lists the problems of the open document, in place of those that were listed. Writes nothing.
int PdfRepairAnalyze(TPdfRepair* object);
// Lists them and has saving put them right. Fails, with the problems listed, for a document that
// cannot be saved: one without any page.
int PdfRepairAnalyzeAndRepair(TPdfRepair* object);

// The problems that were listed, one after the other; null behind the last, and for none. A document
// without any is sound: what no reader minds is no problem. A handle lasts until the next analysis,
// open or close.
const TPdfRepairError* PdfRepairGetFirstError(TPdfRepair* object);
const TPdfRepairError* PdfRepairGetNextError(TPdfRepair* object);

// What kind of problem it is, a number that never means anything else (docs/repair.md). 0 for null.
std::int32_t PdfRepairErrorGetErrorCode(const TPdfRepairError* error);
// One line of English in UTF-8: where, what, what becomes of it. As much as the buffer takes is
// written, with a zero at its end. Returns the bytes that all of it takes, the zero counted; 0 for
// the null problem.
//   buffer - null for the size alone
std::int32_t PdfRepairErrorGetMessageA(const TPdfRepairError* error, char* buffer,
                                       std::int32_t size);

// Writes the open document; as often as wanted. The file has its name only when it is complete, and
// may be the one that was opened. It is encrypted when one of the passwords is not empty; an empty
// owner password means the user's. permissions: /P (ISO 32000-2, table 22).
//
// Where no problem is to be put right, nothing is encrypted before or after, and the rebuild options
// do not ask for more, it is the opened file byte for byte, signatures included.
int PdfRepairSaveAsW(TPdfRepair* object, const platform::WidePath& path,
                     const std::wstring& user_password, const std::wstring& owner_password,
                     std::uint32_t permissions);

// Who proves, for the saves to come, the claim of PDF/A that a document has, when the new file is
// complete. Null, at first: what is written anew claims nothing.
int PdfRepairSetClaimProof(TPdfRepair* object, TPdfClaimProof proof);

// What the last save wrote of a damaged document, and what it left out; before the first, and after
// one that failed, what was listed. -1 for the null object.
std::int32_t PdfRepairGetReportCount(const TPdfRepair* object);
// index is zero-based.
int PdfRepairGetReportEntry(TPdfRepair* object, std::int32_t index, TPdfRepairReportEntry* entry);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_REPAIR_REPAIR_H_
