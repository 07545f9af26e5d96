// The rasteriser's contract: pages of a PDF document as image files.
//
// Every operation returns a handle, a count, or a non-zero value on success. A null handle or a
// zero result means failure; Pdf2ImgGetErrorCode tells the reason, one of ErrorCodes.h. No
// exception crosses this header. Wide strings are text in UTF-16, one unit in each wchar_t.
//
// An object is used by one thread at a time; different ones may be used on different threads.
//
//   Pdf2ImgInitialize();
//   TPdf2Img* object = Pdf2ImgCreateObject();
//   Pdf2ImgOpenW(object, WidePath("report.pdf"), L"");
//   Pdf2ImgSetDPI(object, 100);
//   Pdf2ImgCreateImageW(object, WidePath("page-1.jpg"));
//   Pdf2ImgRenderPage(object, 1);
//   Pdf2ImgCloseImage(object);
//   int written = Pdf2ImgClose(object);
//   Pdf2ImgDestroyObject(object);
//   Pdf2ImgUnInitialize();
#ifndef TARNIX_ENGINES_RASTERISER_RASTERISER_H_
#define TARNIX_ENGINES_RASTERISER_RASTERISER_H_

#include <cstdint>
#include <string>

#include "foundation/Platform.h"

namespace TarnixTools::engines {

struct TPdf2Img;

// What images are: JPEG, or PNG, which loses nothing.
inline constexpr std::int32_t kPdf2ImgJpeg = 3;
inline constexpr std::int32_t kPdf2ImgPng = 5;

// Tells that no image came out for a page, and why; or, with kPdf2ImgPartialPageError, that the
// image shows a part of the page only.
//   page_number - one-based
using TPdf2ImgReport = void (*)(void* handle, std::int32_t page_number, std::uint32_t error_code);

// A session, on one thread; sessions may nest. An object that is not destroyed when the outermost
// one ends is left behind: it can still be asked for its error, closed and destroyed, until the
// thread starts another session or ends.
void Pdf2ImgInitialize();
void Pdf2ImgUnInitialize();

// An object without a document. Null when there is no memory.
TPdf2Img* Pdf2ImgCreateObject();

// Closes what is open. Null is allowed.
void Pdf2ImgDestroyObject(TPdf2Img* object);

// The code of the last call that failed on the object, or on this thread for the null object.
std::uint32_t Pdf2ImgGetErrorCode(const TPdf2Img* object);

// Opens a document; one that was open is closed.
//   password - empty for none
int Pdf2ImgOpenW(TPdf2Img* object, const platform::WidePath& path, const std::wstring& password);

// Waits until all images are under their names. Zero when one of them could not be written; the
// document is closed in any case.
int Pdf2ImgClose(TPdf2Img* object);

// -1 when no document is open.
std::int32_t Pdf2ImgGetPageCount(const TPdf2Img* object);

// Pixels per inch, 1 to 65535 after rounding: of the page, unless a size is given, and for the
// image's header. 100 at first. A value out of range is an argument error, and remains one for
// every image that is created until another value is set.
int Pdf2ImgSetDPI(TPdf2Img* object, float dpi);

// 1 (smallest file) to 100 (best image); 100 at first. From 90 on colour has full resolution.
int Pdf2ImgSetImageQuality(TPdf2Img* object, std::int32_t quality);

// kPdf2ImgJpeg, as at first, or kPdf2ImgPng.
int Pdf2ImgSetCompression(TPdf2Img* object, std::int32_t compression);

// 1: images in shades of gray; 0, at first: in colour.
int Pdf2ImgSetGray(TPdf2Img* object, int is_gray);

// The image's size: in pixels, or in points (1/72 inch) at the resolution. The one that was called
// last holds; without either, the image has the page's size.
int Pdf2ImgSetBitmapDimensions(TPdf2Img* object, std::int32_t width, std::int32_t height);
int Pdf2ImgSetPageSize(TPdf2Img* object, float width_points, float height_points);

// How a page comes into an image of a given size: 1 it is scaled to fit, its proportions kept; 0 it
// has the size that follows from the resolution. In the middle, on white; 0 at first.
int Pdf2ImgSetFitPage(TPdf2Img* object, int fit);

// Names a callback, called on the caller's thread. Null for none.
int Pdf2ImgSetReport(TPdf2Img* object, TPdf2ImgReport report, void* handle);

// Starts an image file, which has its name only when it is complete: at the latest when the
// document is closed. An image that was not closed is dropped.
int Pdf2ImgCreateImageW(TPdf2Img* object, const platform::WidePath& path);

// Draws a page, as a viewer prints it, into the image that was created; once for each image.
//   page_number - one-based
int Pdf2ImgRenderPage(TPdf2Img* object, std::int32_t page_number);

// Completes the image, which may still be on its way to its file when this returns. Zero when no
// page was drawn; there is no file then.
int Pdf2ImgCloseImage(TPdf2Img* object);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_RASTERISER_RASTERISER_H_
