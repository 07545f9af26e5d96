// Contract of the image-to-PDF engine: pages made of image files. A null handle or a zero result is
// a failure, whose reason (ErrorCodes.h) Img2PdfGetErrorCode tells; no exception leaves the engine.
//
//   Img2PdfInitialize();
//   TImg2Pdf* object = Img2PdfCreateObject();
//   Img2PdfCreateW(object, WidePath("photo.pdf"), L"", L"", 0xFFFFFFFF);
//   Img2PdfSetAdjustPage(object, 1);
//   Img2PdfCreatePageFromImageW(object, WidePath("photo.jpg"));
//   Img2PdfClose(object);
//   Img2PdfDestroyObject(object);
//   Img2PdfUnInitialize();
//
// Different objects may be used on different threads at once, one of them by one thread at a time.
#ifndef TARNIX_ENGINES_IMG2PDF_IMG2PDF_H_
#define TARNIX_ENGINES_IMG2PDF_IMG2PDF_H_

#include <cstdint>
#include <string>

#include "foundation/Platform.h"

namespace TarnixTools::engines {

struct TImg2Pdf;

// Tells that a part of an image file's pictures could not be read and is empty.
using TImg2PdfReport = void (*)(void* handle, const platform::WidePath& path);

// A session, on one thread; sessions may nest. An object that is not destroyed when the outermost
// one ends is left behind: it can still be asked for its error, closed and destroyed, until the
// thread starts another session or ends.
void Img2PdfInitialize();
void Img2PdfUnInitialize();

// The caller destroys it. Null: no memory.
TImg2Pdf* Img2PdfCreateObject();
// A document that was not closed is given up: nothing is left of it.
int Img2PdfDestroyObject(TImg2Pdf* object);

// The code of the last call that failed on the object, or on this thread for the null object.
std::int32_t Img2PdfGetErrorCode(TImg2Pdf* object);

// Starts a document, which appears under its name when it is closed. It is encrypted when one of
// the passwords is not empty; an empty owner password means the user's. permissions: /P (ISO
// 32000-2, table 22). One document at a time.
int Img2PdfCreateW(TImg2Pdf* object, const platform::WidePath& path,
                   const std::wstring& user_password, const std::wstring& owner_password,
                   std::uint32_t permissions);

// How pages are made that are created from here on. Sizes are in points (1/72 inch).
//
// Of the size of the picture (1) rather than of a fixed size (0, at first). A picture has the size
// that its resolution gives, 96 pixels per inch where the file tells none.
int Img2PdfSetAdjustPage(TImg2Pdf* object, int adjust);
// The fixed size, A4 (595 x 842) at first; positive. Ends "of the size of the picture".
int Img2PdfSetPageSize(TImg2Pdf* object, double width, double height);
// On a fixed page: in the middle (1) or at the upper left of the space within the border (0, at
// first).
int Img2PdfSetCenterImage(TImg2Pdf* object, int center);
// On a fixed page: enlarged or reduced to fill the space within the border (1) or in its own size
// (0, at first). Width and height keep their ratio.
int Img2PdfSetFitImage(TImg2Pdf* object, int fit);
// How pictures are turned: a value of the Orientation tag, 1 (as stored) at first, 3, 6 (90 degrees
// clockwise), 8, or one of the mirrored ones.
int Img2PdfSetOrientation(TImg2Pdf* object, std::int32_t orientation);
// Whether pictures are first turned as their files say is needed to see them upright (1) or taken
// as they are stored (0, at first).
int Img2PdfSetUpright(TImg2Pdf* object, int upright);
// Points on all four sides, 0 at first. A fitted page grows by them. A negative border lets the
// picture go beyond the page. More than a million points, or no number, is refused.
int Img2PdfSetBorderSize(TImg2Pdf* object, float border);

// Adds a page for each picture of an image file: JPEG, JPEG 2000, PNG, TIFF, GIF, BMP, PNM, WebP,
// known by their content. Of an animation it is the first picture.
int Img2PdfCreatePageFromImageW(TImg2Pdf* object, const platform::WidePath& path);

// Names a callback, called on the caller's thread while pages are created. Null for none.
int Img2PdfSetReport(TImg2Pdf* object, TImg2PdfReport report, void* handle);

// Completes the document. After a failure nothing is left of it.
int Img2PdfClose(TImg2Pdf* object);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_IMG2PDF_IMG2PDF_H_
