// Contract of the engine that compresses documents: a document written again, smaller. A null handle
// or a zero result is a failure, whose reason (ErrorCodes.h) PdfOptimizeGetErrorCode tells; no
// exception leaves the engine. docs/engines.md has the meaning of every value.
//
//   PdfOptimizeInitialize();
//   TPdfOptimizer* object = PdfOptimizeCreateObject();
//   PdfOptimizeSetProfile(object, 2);
//   PdfOptimizeSetResolutionDPI(object, 150);
//   PdfOptimizeOpenW(object, WidePath("scan.pdf"), L"");
//   PdfOptimizeSaveAsW(object, WidePath("small.pdf"), L"", L"", 0xFFFFFFFF);
//   PdfOptimizeClose(object);
//   PdfOptimizeDestroyObject(object);
//   PdfOptimizeUnInitialize();
//
// Different objects may be used on different threads at once, one of them by one thread at a time.
#ifndef TARNIX_ENGINES_OPTIMIZER_OPTIMIZER_H_
#define TARNIX_ENGINES_OPTIMIZER_OPTIMIZER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "engines/support/contract/ClaimProof.h"
#include "foundation/Platform.h"

namespace TarnixTools::engines {

struct TPdfOptimizer;

// What an image is, by its look.
enum class TPdfImageClass : std::int32_t {
  kPhotograph,
  kFlatArt,   // screenshots, drawings, few colours
  kTextScan,  // a page of text in gray or colour
  kBitonal,   // one bit a pixel, stencil masks included
  kSoftMask,
};

inline constexpr std::size_t kPdfImageClassCount = 5;

// Why an image stays as it was.
enum class TPdfImageLeftAlone : std::int32_t {
  kSmallest,    // nothing that looks as good is smaller
  kUnreadable,  // its data cannot be decoded surely
  kUnhandled,   // a colour space or mask that is not computed here
};

inline constexpr std::size_t kPdfImageLeftAloneCount = 3;

// What became of the images of a class.
struct TPdfImageFigures {
  std::size_t images = 0;
  std::uint64_t bytes_before = 0;  // of their encoded data
  std::uint64_t bytes_after = 0;
  std::array<std::size_t, kPdfImageLeftAloneCount> left_alone{};  // by TPdfImageLeftAlone
};

// Why a font program stays as it was.
enum class TPdfFontLeftAlone : std::int32_t {
  kSmallest,    // what it could become is not smaller
  kAnyCode,     // any of its glyphs may be shown: a form's font, or codes that are not surely known
  kUnreadable,  // it cannot be read
  kUnsure,      // it would not surely look and work as before
  kConformance,  // the document's standard wants lists of its glyphs
  kNoLibrary,    // there is no library that reads or cuts fonts
};

inline constexpr std::size_t kPdfFontLeftAloneCount = 6;

// What became of the font programs that text is shown in.
struct TPdfFontFigures {
  std::size_t programs = 0;
  std::size_t merged = 0;          // into another that is the same
  std::size_t dropped = 0;         // of standard fonts
  std::uint64_t bytes_before = 0;  // of their encoded data
  std::uint64_t bytes_after = 0;
  std::array<std::size_t, kPdfFontLeftAloneCount> left_alone{};  // by TPdfFontLeftAlone
};

// What an entry of a report is about.
enum class TPdfOptimizedKind : std::int32_t {
  // Of the document: kept where all of it could be read all the same, dropped where something is
  // lost.
  kDamage,
  kSignature,
  kXmpPacket,
  kPdfAClaim,
  kStructureElement,
  kArticleThread,  // its beads count
  kThumbnail,
};

enum class TPdfOptimizeOutcome : std::int32_t { kKept, kDropped };

struct TPdfOptimizeReportEntry {
  TPdfOptimizedKind kind{};
  TPdfOptimizeOutcome outcome{};
  std::uint64_t count = 0;
  const char* reason = "";  // in English, in a few words; the text is static
};

// A session, on one thread; sessions may nest. An object that is not destroyed when the outermost
// one ends is left behind: it can still be asked for its error, closed and destroyed, until the
// thread starts another session or ends.
void PdfOptimizeInitialize();
void PdfOptimizeUnInitialize();

// An object without a document, with the settings of profile 0. The caller destroys it. Null: no
// memory.
TPdfOptimizer* PdfOptimizeCreateObject();
// Closes what is open.
int PdfOptimizeDestroyObject(TPdfOptimizer* object);

// The code of the last call that failed on the object, or on this thread for the null object.
std::int32_t PdfOptimizeGetErrorCode(const TPdfOptimizer* object);

// Opens a document; one that was open is closed. Fails with 17 for a missing or wrong password.
//   password - empty for none
int PdfOptimizeOpenW(TPdfOptimizer* object, const platform::WidePath& path,
                     const std::wstring& password);

// Whether the open document is encrypted. 0 where none is open.
int PdfOptimizeIsEncrypted(const TPdfOptimizer* object);

// Writes the open document, as the settings are now; as often as wanted. The file has its name only
// when it is complete, and may be the one that was opened. It is encrypted when one of the passwords
// is not empty; an empty owner password means the user's. permissions: /P (ISO 32000-2, table 22).
//
// Where it would not become smaller, it is the opened file byte for byte. That does not hold for an
// encrypted document and for encryption, for a damaged one, and for a path that is a pipe or a
// device.
int PdfOptimizeSaveAsW(TPdfOptimizer* object, const platform::WidePath& path,
                       const std::wstring& user_password, const std::wstring& owner_password,
                       std::uint32_t permissions);

// Who proves, for the saves to come, the claim of PDF/A that a document has, when the new file is
// complete. Null, at first: what is written claims nothing.
int PdfOptimizeSetClaimProof(TPdfOptimizer* object, TPdfClaimProof proof);

// Fails when no document is open.
int PdfOptimizeClose(TPdfOptimizer* object);

// What the last save has done; what was asked for before is gone with the next save or open. A save
// that failed has nothing to tell.
int PdfOptimizeGetImageFigures(TPdfOptimizer* object, TPdfImageClass image_class,
                               TPdfImageFigures* figures);
int PdfOptimizeGetFontFigures(TPdfOptimizer* object, TPdfFontFigures* figures);
// What was wrong with the document, and what is not in the output. -1 for the null object.
std::int32_t PdfOptimizeGetReportCount(const TPdfOptimizer* object);
// index is zero-based.
int PdfOptimizeGetReportEntry(TPdfOptimizer* object, std::int32_t index,
                              TPdfOptimizeReportEntry* entry);

// Settings, for the saves to come. A value out of range is refused and leaves the setting as it is.
//
// All of them at once: 0, at first, or 2.
int PdfOptimizeSetProfile(TPdfOptimizer* object, std::int32_t profile);
// Of images: 0 none, 1 to RGB.
int PdfOptimizeSetColorConversion(TPdfOptimizer* object, std::int32_t conversion);
// Sets of bits: what may be used beside what never loses anything. Unknown bits add nothing.
int PdfOptimizeSetBitonalCompressions(TPdfOptimizer* object, std::uint32_t codecs);
int PdfOptimizeSetContinuousCompressions(TPdfOptimizer* object, std::uint32_t codecs);
// 1 (smallest file) to 100 (best image).
int PdfOptimizeSetImageQuality(TPdfOptimizer* object, std::int32_t quality);
// Pixels per inch of images as they are placed, 0 to 65535: those above the threshold are resampled,
// never below the resolution. 0 for none.
int PdfOptimizeSetResolutionDPI(TPdfOptimizer* object, float dpi);
int PdfOptimizeSetThresholdDPI(TPdfOptimizer* object, float dpi);
// Switches: 0, or another number for on.
int PdfOptimizeSetClipImages(TPdfOptimizer* object, int clip);
int PdfOptimizeSetOptimizeResources(TPdfOptimizer* object, int optimize);
int PdfOptimizeSetRemoveRedundantObjects(TPdfOptimizer* object, int remove);
int PdfOptimizeSetRemoveStandardFonts(TPdfOptimizer* object, int remove);
int PdfOptimizeSetSubsetFonts(TPdfOptimizer* object, int subset);
int PdfOptimizeSetReduceColorComplexity(TPdfOptimizer* object, int reduce);
// A set of bits: what is taken out. Unknown bits take out nothing.
int PdfOptimizeSetStrip(TPdfOptimizer* object, std::uint32_t parts);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_OPTIMIZER_OPTIMIZER_H_
