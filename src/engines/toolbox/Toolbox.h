// The document engine's contract: documents, page lists, page copies, document information, and
// what is painted onto copied pages.
//
// Every operation returns a handle, or a non-zero value on success. A null handle or a zero result
// means failure; the reason is PdfGetLastError() of the same thread, read right after the failing
// call. No exception crosses this header. Handles of any kind are released with PdfClose. A call
// that is given a null handle fails and leaves the last error as it was, so the cause of an earlier
// failed open stays readable.
//
// Different documents may be used on different threads at once; one document is used by one thread
// at a time.
//
//   TPdfDocument* source = PdfDocumentOpenA(&source_stream, "");
//   TPdfDocument* target = PdfDocumentCreateW(&target_stream, 0, nullptr);
//   TPdfPageList* pages = PdfDocumentGetPages(source);
//   TPdfPage* page = PdfPageListGet(pages, 0);
//   TPdfPage* copy = PdfDocumentCopyPage(target, page, 15);
//   PdfPageListAppend(PdfDocumentGetPages(target), copy);
//   ...
//   PdfClose(source);
//   int written = PdfClose(target);
#ifndef TARNIX_ENGINES_TOOLBOX_TOOLBOX_H_
#define TARNIX_ENGINES_TOOLBOX_TOOLBOX_H_

#include <cstdint>
#include <string>

#include "PdfEngineTypes.h"
#include "engines/support/contract/ClaimProof.h"

namespace TarnixTools::engines {

struct TPdfDocument;
struct TPdfPageList;
struct TPdfPage;
struct TPdfMetadata;
struct TPdfColorSpace;
struct TPdfPaint;
struct TPdfText;
struct TPdfTextGenerator;
struct TPdfContent;
struct TPdfContentGenerator;
struct TPdfImage;
struct TPdfTransformation;

struct TPdfRectangle {
  double left = 0;
  double bottom = 0;
  double right = 0;
  double top = 0;
};

// How the engine reaches a file. The engine calls nothing else of the file; `release` is called
// exactly once, when the document is closed or abandoned, or never if the open or create failed
// (the caller then still owns the file).
struct TPdfStream {
  std::int64_t (*get_length)(void* handle) = nullptr;          // -1: failed
  int (*seek)(void* handle, std::int64_t position) = nullptr;  // 1 done, 0 failed
  std::int64_t (*tell)(void* handle) = nullptr;                // current position
  std::int64_t (*read)(void* handle, void* buffer,
                       std::int64_t size) = nullptr;  // count read, -1: error
  std::int64_t (*write)(void* handle, const void* buffer,
                        std::int64_t size) = nullptr;  // size, or -1
  void (*release)(void* handle) = nullptr;
  void* handle = nullptr;
};

// Passwords (wide strings) and permission bits (ISO 32000-2, table 22) of a document to be created.
struct TPdfEncryption {
  std::wstring user_password;
  std::wstring owner_password;
  std::uint32_t permissions = 0;
};

// What a page copy brings along: any sum of these bits.
enum PdfCopyOption : int {
  kCopyLinks = 1,
  kCopyAnnotations = 2,
  kCopyFormFields = 4,
  kCopyOutlineItems = 8,
};

// What an entry of a report is about.
enum class TPdfCopiedKind : std::int32_t {
  kLink,
  kAnnotation,
  kNamedDestination,
  kOutlineItem,
  kPageLabel,
  kFormField,
  kSignature,
  kXfaForm,
  kScript,
  kLayer,
  kAttachment,
  kStructureElement,
  kArticleThread,
  kThumbnail,
  kOutputIntent,
  kViewerSettings,
  kResource,
  // Of a source: kept where all of it could be read all the same, dropped where something is lost.
  kDamage,
  kLanguage,
  kMetadataValue,  // of the document information
  kXmpPacket,
  kPdfAClaim,
};

enum class TPdfCopyOutcome : std::int32_t { kKept, kRenamed, kDropped };

struct TPdfReportEntry {
  TPdfCopiedKind kind;
  TPdfCopyOutcome outcome;
  std::uint64_t count;  // of things with this kind, outcome and reason
  std::uint32_t page;   // one-based page of the output that the first is on; 0: none in particular
  const char* reason;   // UTF-8, "" where there is none; lives as long as the call
};

// Must not throw.
using TPdfReportCallback = void (*)(void* context, const TPdfReportEntry* entry);

// Prepares the engine; repeated calls are harmless.
void PdfInitialize();

// Error code (ErrorCodes.h) of the last failed call on this thread; 0 when none failed.
std::int32_t PdfGetLastError();

// The code point that this thread's last PdfTextGeneratorShowW to fail for want of a character
// could not show; 0 when none did.
std::uint32_t PdfGetLastErrorCharacter();

// Opens a document for reading. password is UTF-8, "" for none. Null on failure, with 17 for a
// missing or wrong password. The stream descriptor is copied; the stream is read on demand until
// the document is closed.
TPdfDocument* PdfDocumentOpenA(const TPdfStream* stream, const char* password);

// 1 when nothing is left of a user password once it is prepared (RFC 4013), so that a document
// created with it would open without one; 0 otherwise, and on failure, which PdfDocumentCreateW then
// meets, too.
int PdfIsPasswordEmptyW(const std::wstring& password);

// Makes a new, empty document that is written to the stream from its start, forward only, and
// completed by PdfClose. conformance 0 is the engine's default (PDF 1.7; 2.0 when encrypted);
// encryption may be null.
TPdfDocument* PdfDocumentCreateW(const TPdfStream* stream, std::int32_t conformance,
                                 const TPdfEncryption* encryption);

// Releases a handle. Closing a created document finishes writing it: a zero result means that the
// file is not complete, whatever failed since it was created. Closing a source document first
// writes what unfinished targets still need of it. The stream's release is called in every case.
int PdfClose(TPdfDocument* document);
int PdfClose(TPdfPageList* page_list);
int PdfClose(TPdfPage* page);
int PdfClose(TPdfMetadata* metadata);

// Releases a created document without finishing it; what was written so far is not a PDF file.
int PdfDocumentDiscard(TPdfDocument* document);

// Has what the copies into a created document kept, renamed and dropped told to the callback: entry
// by entry, while PdfClose completes the document, and not at all when that fails.
int PdfDocumentSetReport(TPdfDocument* target, TPdfReportCallback callback, void* context);

// 1 when the opened document is encrypted, whatever its passwords are; 0 otherwise.
int PdfDocumentIsEncrypted(TPdfDocument* document);

TPdfPageList* PdfDocumentGetPages(TPdfDocument* document);

// Number of pages; 0 for a null list.
std::int32_t PdfPageListGetCount(TPdfPageList* page_list);

// index is zero-based.
TPdfPage* PdfPageListGet(TPdfPageList* page_list, std::int32_t index);

// Appends a page made by PdfDocumentCopyPage for this list's document. The handle stays the
// caller's to close.
int PdfPageListAppend(TPdfPageList* page_list, TPdfPage* page);

// A copy of a page of another document, owned by the target and not yet in its page list. options:
// PdfCopyOption bits.
TPdfPage* PdfDocumentCopyPage(TPdfDocument* target, TPdfPage* page, std::int32_t options);

// Turns the page clockwise by a multiple of 90 degrees. Only for pages made by PdfDocumentCopyPage,
// before they are appended.
int PdfPageRotate(TPdfPage* page, std::int32_t angle);

// The visible size: crop box within media box, rotation and user unit taken into account.
int PdfPageGetSize(TPdfPage* page, TPdfSize* size);

// What a source is, in short.
struct TPdfSummary {
  std::int32_t version = 0;  // 17 for 1.7; 0 for none
  std::int32_t is_encrypted = 0;
  std::int32_t is_owner = 0;      // opened with the owner's password
  std::uint32_t permissions = 0;  // as the encryption says; of no meaning without it
  std::int32_t compliance =
      0;  // the level of PDF/A that it claims: 0x1401 for 1b, ...; else its version
  std::int32_t is_tagged = 0;
  std::int64_t signature_count = 0;   // of fields with a signature
  std::int64_t field_count = 0;       // without those that only hold others
  std::int64_t attachment_count = 0;  // of the document's own list
};

int PdfDocumentGetSummary(TPdfDocument* source, TPdfSummary* summary);

// Degrees clockwise: 0, 90, 180 or 270.
int PdfPageGetRotation(TPdfPage* page, std::int32_t* degrees);

// Document information: of a source what it has, of a created document what was set so far. The
// getters fill buffer with the NUL-terminated UTF-8 value, cut at a character to fit size bytes.
TPdfMetadata* PdfDocumentGetMetadata(TPdfDocument* document);
int PdfMetadataGetAuthorA(TPdfMetadata* metadata, char* buffer, std::int32_t size);
int PdfMetadataGetKeywordsA(TPdfMetadata* metadata, char* buffer, std::int32_t size);
int PdfMetadataGetCreatorA(TPdfMetadata* metadata, char* buffer, std::int32_t size);
int PdfMetadataGetProducerA(TPdfMetadata* metadata, char* buffer, std::int32_t size);
int PdfMetadataGetTitleA(TPdfMetadata* metadata, char* buffer, std::int32_t size);
int PdfMetadataGetSubjectA(TPdfMetadata* metadata, char* buffer, std::int32_t size);

// Change a value; `size` bytes of UTF-8, in which what is malformed becomes U+FFFD. A value that
// was set is written also when it is empty.
int PdfMetadataSetAuthorA(TPdfMetadata* metadata, const char* value, std::int64_t size);
int PdfMetadataSetKeywordsA(TPdfMetadata* metadata, const char* value, std::int64_t size);
int PdfMetadataSetCreatorA(TPdfMetadata* metadata, const char* value, std::int64_t size);
int PdfMetadataSetProducerA(TPdfMetadata* metadata, const char* value, std::int64_t size);
int PdfMetadataSetTitleA(TPdfMetadata* metadata, const char* value, std::int64_t size);
int PdfMetadataSetSubjectA(TPdfMetadata* metadata, const char* value, std::int64_t size);

// A copy of another document's information, for PdfDocumentSetMetadata of the target.
TPdfMetadata* PdfDocumentCopyMetadata(TPdfDocument* target, TPdfMetadata* metadata);

// Gives a created document this information as it is now. Without it the document is written
// without any.
int PdfDocumentSetMetadata(TPdfDocument* target, TPdfMetadata* metadata);

// Has a created document keep what an opened one says of itself, also where only some of its pages
// are copied: all of its document information and its XMP packet, without its claim of PDF/A. The
// target's metadata is then the source's. What
// PdfDocumentSetMetadata changes in it is changed in the packet, too. The last call for a target
// counts.
int PdfDocumentKeepMetadata(TPdfDocument* target, TPdfDocument* source);

// Puts the outline items that pages copied from the source bring along below an item of their own, which
// is closed and leads to the first of the pages.
//   title - UTF-8, in which what is malformed becomes U+FFFD
int PdfDocumentSetOutlineHeading(TPdfDocument* target, TPdfDocument* source, const char* title);

// Who proves what a created document claims, by PdfDocumentKeepClaim, once it is complete: PdfClose
// asks, and fails where that could not be done. Without a proof nothing is claimed.
//   file - what the target's stream writes to
int PdfDocumentSetClaimProof(TPdfDocument* target, TPdfClaimProof proof, std::FILE* file);

// Has a created document claim the level of PDF/A that an opened one claims: to be called once for
// each source, before anything is copied from it. Of several levels of one part the lowest is claimed;
// where one source claims none or another part, and where the target is encrypted, nothing is. The
// target has a packet then that says so, whether metadata is kept or not.
int PdfDocumentKeepClaim(TPdfDocument* target, TPdfDocument* source);

// What is painted onto pages. The handles below belong to one created document, except the
// transformation, which belongs to none; they may be closed as soon as what they were used for is
// painted. Coordinates are in points, from the lower-left corner of the page as a viewer shows it:
// crop box, rotation and user unit are taken into account.

// A face installed on this system, found by family name and style words such as "Bold Italic".
// options: 1, embed. Null when no such face is installed, or when it may not be embedded. The parts
// of it that are used are embedded once per document.
TPdfFont* PdfDocumentCreateSystemFontA(TPdfDocument* target, const char* name, const char* style,
                                       std::int32_t options);

// 1 when the face has the style; 0 when it is only the closest to it that the family has.
int PdfFontHasStyleA(TPdfFont* font, const char* style);

// Ascent and descent of the face for a font size of 1 (points). The descent is negative. 0 for a
// null font.
double PdfFontGetAscent(TPdfFont* font);
double PdfFontGetDescent(TPdfFont* font);

// kind: 2, the device's red, green and blue. Null for any other.
TPdfColorSpace* PdfDocumentCreateDeviceColorSpace(TPdfDocument* target, std::int32_t kind);

// A colour with an opacity. alpha and values are from 0 to 1; count is the space's number of
// components.
TPdfPaint* PdfDocumentCreateAlphaPaint(TPdfDocument* target, TPdfColorSpace* space, double alpha,
                                       const double* values, std::int32_t count);

// An empty text object, filled by text generators.
TPdfText* PdfDocumentCreateText(TPdfDocument* target);

// Writes into a text object. size is in points; options: 0.
TPdfTextGenerator* PdfNewTextGenerator(TPdfText* text, TPdfFont* font, double size,
                                       std::int32_t options);

// Glyphs shown from here on are filled. stroke: null; options: 1.
int PdfTextGeneratorSetRendering(TPdfTextGenerator* generator, TPdfPaint* fill, TPdfPaint* stroke,
                                 std::int32_t options);

// Advance width of a line in points, as it would be shown. What cannot be shown counts as nothing.
double PdfTextGeneratorGetWidthW(TPdfTextGenerator* generator, const std::wstring& text);
double PdfTextGeneratorGetWidthA(TPdfTextGenerator* generator, const char* text);  // UTF-8

// The left end of the baseline of the next shown line.
int PdfTextGeneratorMoveTo(TPdfTextGenerator* generator, const TPdfPoint* point);

// Adds a line's glyphs: shaped, in reading order from left to right, with glyphs of another
// installed face where the font has none. Fails with 15, and adds nothing, when no installed face
// has a character; PdfGetLastErrorCharacter tells which.
int PdfTextGeneratorShowW(TPdfTextGenerator* generator, const std::wstring& text);

// Content of a page made by PdfDocumentCopyPage that is not appended yet.
TPdfContent* PdfPageGetContent(TPdfPage* page);

// Adds to the end of the content, or to its start with `prepend`. What was added comes into the
// page when the generator is closed.
TPdfContentGenerator* PdfNewContentGenerator(TPdfContent* content, bool prepend);
int PdfContentGeneratorPaintText(TPdfContentGenerator* generator, TPdfText* text);
int PdfContentGeneratorPaintImage(TPdfContentGenerator* generator, TPdfImage* image,
                                  const TPdfRectangle* rectangle);
// alpha: 0 to 1, on top of what is transparent in the image itself.
int PdfContentGeneratorPaintAlphaImage(TPdfContentGenerator* generator, TPdfImage* image,
                                       const TPdfRectangle* rectangle, double alpha);
int PdfContentGeneratorSave(TPdfContentGenerator* generator);
int PdfContentGeneratorRestore(TPdfContentGenerator* generator);
// Applies to what follows until the matching restore.
int PdfContentGeneratorTransform(TPdfContentGenerator* generator,
                                 TPdfTransformation* transformation);

// A matrix; each operation is applied before those already in it, as operators in a content stream
// are (8.3.4). angle is in degrees, counter-clockwise.
TPdfTransformation* PdfNewTransformationIdentity();
int PdfTransformationTranslate(TPdfTransformation* transformation, double dx, double dy);
int PdfTransformationRotate(TPdfTransformation* transformation, double angle);

// A picture from the bytes of an image file, found by content: JPEG, JPEG 2000, PNG, TIFF, GIF,
// BMP, WebP; of several pictures the first. The stream is read until the image is closed, which
// calls its release; after a failure it is still the caller's. The same bytes are stored once per
// document.
TPdfImage* PdfDocumentCreateImage(TPdfDocument* target, const TPdfStream* stream);
std::int32_t PdfImageGetWidth(TPdfImage* image);  // pixels, as the picture is seen upright
std::int32_t PdfImageGetHeight(TPdfImage* image);

int PdfClose(TPdfFont* font);
int PdfClose(TPdfColorSpace* space);
int PdfClose(TPdfPaint* paint);
int PdfClose(TPdfText* text);
int PdfClose(TPdfTextGenerator* generator);
int PdfClose(TPdfContent* content);
int PdfClose(TPdfContentGenerator* generator);
int PdfClose(TPdfImage* image);
int PdfClose(TPdfTransformation* transformation);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_TOOLBOX_H_
