// The functions of PDFium's C interface that this project calls, declared here: the interface is
// stable, and no header of it is needed to build. Functions have PDFium's own names.
#ifndef TARNIX_ENGINES_SUPPORT_PDFIUM_PDFIUMAPI_H_
#define TARNIX_ENGINES_SUPPORT_PDFIUM_PDFIUMAPI_H_

namespace TarnixTools::engines::pdfium {

struct Document;
struct Page;
struct Bitmap;
struct Form;
struct PageObject;
struct Mark;
struct ClipPath;
struct PathSegment;

// Reads `size` bytes at `position`, and answers with a value other than 0 when it has them all.
struct FileAccess {
  unsigned long length;
  int (*get_block)(void* handle, unsigned long position, unsigned char* buffer, unsigned long size);
  void* handle;
};

struct LibraryConfig {
  int version;
  const char** user_font_paths;
  void* isolate;
  unsigned int v8_embedder_slot;
};

// What a form wants of its host: nothing here. The callbacks, none of which is given, follow the
// version.
struct FormHost {
  int version;
  void* callbacks[40];
};

// Asked by PDFium while it draws whether it is to stop for now: 0 for no.
struct Pause {
  int version;
  int (*needs_to_pause_now)(Pause* self);
  void* handle;
};

// What drawing that may pause answers.
enum RenderStatus : int {
  kRenderReady = 0,
  kRenderToBeContinued = 1,
  kRenderDone = 2,
  kRenderFailed = 3
};

enum BitmapFormat : int { kGray = 1, kBgr = 2, kBgrx = 3, kBgra = 4 };

// Flags of RenderPageBitmap.
inline constexpr int kDrawAnnotations = 0x01;
inline constexpr int kLimitImageCache = 0x200;
inline constexpr int kForPrinting = 0x800;

// What GetLastError answers when the password is missing or wrong.
inline constexpr unsigned long kPasswordError = 4;

// Functions of the interface: result, name, parameters.
#define TARNIX_PDFIUM_FUNCTIONS(X)                                                                 \
  X(void, FPDF_InitLibraryWithConfig, (const LibraryConfig* config))                               \
  X(unsigned long, FPDF_GetLastError, ())                                                          \
  X(Document*, FPDF_LoadCustomDocument, (FileAccess * file, const char* password))                 \
  X(void, FPDF_CloseDocument, (Document * document))                                               \
  X(int, FPDF_GetPageCount, (Document * document))                                                 \
  X(Page*, FPDF_LoadPage, (Document * document, int page_index))                                   \
  X(void, FPDF_ClosePage, (Page * page))                                                           \
  X(double, FPDF_GetPageWidth, (Page * page))                                                      \
  X(double, FPDF_GetPageHeight, (Page * page))                                                     \
  X(Bitmap*, FPDFBitmap_CreateEx, (int width, int height, int format, void* first, int stride))    \
  X(void, FPDFBitmap_Destroy, (Bitmap * bitmap))                                                   \
  X(void, FPDF_RenderPageBitmap,                                                                   \
    (Bitmap * bitmap, Page * page, int left, int top, int width, int height, int turns,            \
     int flags))                                                                                   \
  X(int, FPDF_RenderPageBitmap_Start,                                                              \
    (Bitmap * bitmap, Page * page, int left, int top, int width, int height, int turns, int flags, \
     Pause* pause))                                                                                \
  X(void, FPDF_RenderPage_Close, (Page * page))                                                    \
  X(Form*, FPDFDOC_InitFormFillEnvironment, (Document * document, FormHost * host))                \
  X(void, FPDFDOC_ExitFormFillEnvironment, (Form * form))                                          \
  X(void, FPDF_SetFormFieldHighlightAlpha, (Form * form, unsigned char alpha))                     \
  X(void, FORM_OnAfterLoadPage, (Page * page, Form * form))                                        \
  X(void, FORM_OnBeforeClosePage, (Page * page, Form * form))                                      \
  X(void, FPDF_FFLDraw,                                                                            \
    (Form * form, Bitmap * bitmap, Page * page, int left, int top, int width, int height,          \
     int turns, int flags))

// Kinds of page objects and of the segments of a path.
inline constexpr int kTextObject = 1;
inline constexpr int kImageObject = 3;
inline constexpr int kFormObject = 5;
inline constexpr int kLineSegment = 0;
inline constexpr int kMoveSegment = 2;

// The text rendering mode that shows nothing.
inline constexpr int kInvisibleText = 3;

struct ImageMetadata {
  unsigned width;  // pixels
  unsigned height;
  float horizontal_dpi;
  float vertical_dpi;
  unsigned bits_per_pixel;
  int color_space;
  int marked_content_id;
};

// From the unit square to the page.
struct Matrix {
  float a, b, c, d, e, f;
};

// Functions about what is on a page. Not every PDFium has them.
#define TARNIX_PDFIUM_OBJECT_FUNCTIONS(X)                                                 \
  X(int, FPDF_DeviceToPage,                                                               \
    (Page * page, int left, int top, int width, int height, int turns, int x, int y,      \
     double* page_x, double* page_y))                                                     \
  X(int, FPDFPage_CountObjects, (Page * page))                                            \
  X(PageObject*, FPDFPage_GetObject, (Page * page, int index))                            \
  X(int, FPDFPage_RemoveObject, (Page * page, PageObject * object))                       \
  X(void, FPDFPageObj_Destroy, (PageObject * object))                                     \
  X(int, FPDFPageObj_GetType, (PageObject * object))                                      \
  X(int, FPDFPageObj_GetBounds,                                                           \
    (PageObject * object, float* left, float* bottom, float* right, float* top))          \
  X(int, FPDFPageObj_GetMatrix, (PageObject * object, Matrix * matrix))                   \
  X(int, FPDFPageObj_HasTransparency, (PageObject * object))                              \
  X(int, FPDFPageObj_CountMarks, (PageObject * object))                                   \
  X(Mark*, FPDFPageObj_GetMark, (PageObject * object, unsigned long index))               \
  X(int, FPDFPageObjMark_GetName,                                                         \
    (Mark * mark, void* utf16, unsigned long size, unsigned long* needed_size))           \
  X(ClipPath*, FPDFPageObj_GetClipPath, (PageObject * object))                            \
  X(int, FPDFClipPath_CountPaths, (ClipPath * path))                                      \
  X(int, FPDFClipPath_CountPathSegments, (ClipPath * path, int index))                    \
  X(PathSegment*, FPDFClipPath_GetPathSegment, (ClipPath * path, int index, int segment)) \
  X(int, FPDFPathSegment_GetPoint, (PathSegment * segment, float* x, float* y))           \
  X(int, FPDFPathSegment_GetType, (PathSegment * segment))                                \
  X(int, FPDFTextObj_GetTextRenderMode, (PageObject * text))                              \
  X(int, FPDFTextObj_SetTextRenderMode, (PageObject * text, int mode))                    \
  X(int, FPDFFormObj_CountObjects, (PageObject * form))                                   \
  X(PageObject*, FPDFFormObj_GetObject, (PageObject * form, unsigned long index))         \
  X(int, FPDFImageObj_GetImageMetadata, (PageObject * image, Page * page, ImageMetadata * metadata))

// A pointer for each function.
struct Api {
// NOLINTNEXTLINE(bugprone-macro-parentheses): it declares the name
#define TARNIX_PDFIUM_POINTER(result, name, parameters) result(*name) parameters = nullptr;
  TARNIX_PDFIUM_FUNCTIONS(TARNIX_PDFIUM_POINTER)
  TARNIX_PDFIUM_OBJECT_FUNCTIONS(TARNIX_PDFIUM_POINTER)
#undef TARNIX_PDFIUM_POINTER

  bool has_object_functions = false;
};

}  // namespace TarnixTools::engines::pdfium

#endif  // TARNIX_ENGINES_SUPPORT_PDFIUM_PDFIUMAPI_H_
