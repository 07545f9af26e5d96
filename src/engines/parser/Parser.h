// The content parser's contract: the images that are drawn on the pages of a document, its XMP packet
// and the level of PDF/A that it claims.
//
// Every operation returns a handle, a count, or a non-zero value on success. A null handle or a
// zero result means failure; ExpaDocGetLastError tells the reason, one of ErrorCodes.h. No
// exception crosses this header. Wide strings are text in UTF-16, one unit in each wchar_t.
//
// A document is used by one thread at a time; different ones may be used on different threads. The
// document owns everything that is had from it: a page is valid until another page number is set,
// content and what is had from it as long as the page, and an image until the next image is asked
// for.
//
//   ExpaInitialize();
//   TExpaDoc* document = ExpaDocCreateObject();
//   ExpaDocOpenW(document, WidePath("report.pdf"), L"");
//   ExpaDocSetPageNo(document, 1);
//   TExpaContent* content = ExpaPageGetContent(ExpaDocGetPage(document));
//   ExpaContentResetContent(content, 1);
//   while (ExpaContentGetNextImage(content) != 0) {
//     TExpaImage* image = ExpaContentGetImage(content);
//     ExpaImageChangeOrientation(
//         image, ExpaGSGetCTM(ExpaContentGetGraphicsState(content))->orientation);
//     ExpaImageStoreW(image, WidePath("img0001.jpg"), kExpaJpeg);
//   }
//   ExpaDocClose(document);
//   ExpaDocDestroyObject(document);
//   ExpaUnInitialize();
#ifndef TARNIX_ENGINES_PARSER_PARSER_H_
#define TARNIX_ENGINES_PARSER_PARSER_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "foundation/Platform.h"

namespace TarnixTools::engines {

struct TExpaDoc;
struct TExpaPage;
struct TExpaContent;
struct TExpaGraphicsState;
struct TExpaImage;

// How a unit square becomes what is seen (ISO 32000-2, 8.3.3), in points from the lower left corner
// of the page as it is seen, its rotation taken into account.
struct TExpaMatrix {
  double a = 1;
  double b = 0;
  double c = 0;
  double d = 1;
  double e = 0;
  double f = 0;
  std::int32_t is_skewed = 0;    // 1: neither upright nor turned by a multiple of 90 degrees
  std::int32_t orientation = 1;  // of an image in the square: 1 to 8 as in EXIF, the nearest
};

static_assert(offsetof(TExpaMatrix, orientation) == 52);

// The format in which images are stored as they are seen.
inline constexpr std::int32_t kExpaJpeg = 11;

// Formats of images as the document stores them.
enum TExpaOriginal : std::int32_t {
  kExpaOriginalJpeg = 21,
  kExpaOriginalJpx = 22,   // JPEG 2000
  kExpaOriginalTiff = 23,  // of fax data
  kExpaOriginalPng = 24,   // of everything else, as it is seen
};

// What became of an image that did not come out as it should.
enum TExpaTrouble : std::int32_t {
  kExpaImagePartial = 0,  // stored; what could not be read is white
  kExpaImageLost = 1,     // passed over: nothing of it can be read
};

//   page_number - one-based
using TExpaReport = void (*)(void* handle, std::int32_t page_number, TExpaTrouble trouble);

// A session, on one thread; sessions may nest. A document that is not destroyed when the outermost
// one ends is left behind: it can still be asked for its error, closed and destroyed, until the
// thread starts another session or ends.
void ExpaInitialize();
void ExpaUnInitialize();

// An object without a document. Null when there is no memory.
TExpaDoc* ExpaDocCreateObject();

// Closes what is open. Null is allowed.
void ExpaDocDestroyObject(TExpaDoc* document);

// The code of the last call that failed on the document or what was had from it, or on this thread
// for the null document.
std::int32_t ExpaDocGetLastError(const TExpaDoc* document);

// Opens a document; one that was open is closed.
//   password - empty for none
int ExpaDocOpenW(TExpaDoc* document, const platform::WidePath& path, const std::wstring& password);
int ExpaDocClose(TExpaDoc* document);

// Names a callback for images that did not come out as they should. Null for none.
int ExpaDocSetReport(TExpaDoc* document, TExpaReport report, void* handle);

// 0 when no document is open.
std::int32_t ExpaDocGetPageCount(const TExpaDoc* document);

// Writes the XMP packet of the document to a file, byte for byte; the file appears complete or not at
// all. Fails with kExpaNoMetadataError for a document that has none.
int ExpaDocGetXMPMetadataW(TExpaDoc* document, const platform::WidePath& path);

// The level of PDF/A that the document claims: 0x1401 1b, 0x1402 1a, 0x1701 2b, 0x1702 2u, 0x1703 2a,
// 0x1711 3b, 0x1712 3u, 0x1713 3a. Of one that claims none the version of PDF in the same manner:
// 0x1400, 0x1700, 0x2000. Whether it is what it claims, is not looked at. 0 on failure, and for a
// document that names no version.
std::int32_t ExpaDocGetCompliance(TExpaDoc* document);

// Chooses the page that ExpaDocGetPage gives.
//   page_number - one-based
int ExpaDocSetPageNo(TExpaDoc* document, std::int32_t page_number);
TExpaPage* ExpaDocGetPage(TExpaDoc* document);
TExpaContent* ExpaPageGetContent(TExpaPage* page);

// Goes back to the start of the content.
//   with_forms - 1: what is drawn by way of form XObjects, patterns and annotations counts too;
//                0: only what the page's own content draws
int ExpaContentResetContent(TExpaContent* content, int with_forms);

// Goes on to the next image, in the order in which they are drawn; one that is drawn twice counts
// twice. Images that cannot be drawn at all are passed over. Zero at the end.
int ExpaContentGetNextImage(TExpaContent* content);

// The image and how it is drawn. Null before the first and after the last.
TExpaImage* ExpaContentGetImage(TExpaContent* content);
const TExpaGraphicsState* ExpaContentGetGraphicsState(TExpaContent* content);
const TExpaMatrix* ExpaGSGetCTM(const TExpaGraphicsState* state);

// Turns and mirrors the image before it is stored, so that one that is drawn with this orientation
// is upright.
//   orientation - 1 to 8
int ExpaImageChangeOrientation(TExpaImage* image, std::int32_t orientation);

// The format of the image as the document stores it, a TExpaOriginal; 0 on failure.
std::int32_t ExpaImageGetOriginal(TExpaImage* image);

// Writes the image to a file, which appears complete or not at all, as the document stores it: not
// turned; JPEG and JPEG 2000 data byte for byte, with its masks left out; fax data in a TIFF file; all
// else as a PNG file of what is seen on white.
int ExpaImageStoreOriginalW(TExpaImage* image, const platform::WidePath& path);

// Writes the image to a file, which appears complete or not at all. A JPEG image in gray or RGB
// that is not turned, masked or decoded in an unusual way is written as it is, byte for byte;
// others at the best quality, with what is transparent on white. An image mask is the black picture
// that it paints. Data that is cut or damaged gives a picture that is white where there is none.
//   format - kExpaJpeg
int ExpaImageStoreW(TExpaImage* image, const platform::WidePath& path, std::int32_t format);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_PARSER_PARSER_H_
