// The functions of PDFium's C interface that this project calls, declared here: the interface is
// stable, and no header of it is needed to build. Functions have PDFium's own names.
#ifndef TARNIX_ENGINES_SUPPORT_PDFIUM_PDFIUMAPI_H_
#define TARNIX_ENGINES_SUPPORT_PDFIUM_PDFIUMAPI_H_

namespace TarnixTools::engines::pdfium {

struct Document;
struct Page;
struct Bitmap;
struct Form;

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

enum BitmapFormat : int { kGray = 1, kBgr = 2, kBgrx = 3, kBgra = 4 };

// Flags of RenderPageBitmap.
inline constexpr int kDrawAnnotations = 0x01;
inline constexpr int kLimitImageCache = 0x200;
inline constexpr int kForPrinting = 0x800;

// What GetLastError answers when the password is missing or wrong.
inline constexpr unsigned long kPasswordError = 4;

// Functions of the interface: result, name, parameters.
#define TARNIX_PDFIUM_FUNCTIONS(X)                                                              \
  X(void, FPDF_InitLibraryWithConfig, (const LibraryConfig* config))                            \
  X(unsigned long, FPDF_GetLastError, ())                                                       \
  X(Document*, FPDF_LoadCustomDocument, (FileAccess * file, const char* password))              \
  X(void, FPDF_CloseDocument, (Document * document))                                            \
  X(int, FPDF_GetPageCount, (Document * document))                                              \
  X(Page*, FPDF_LoadPage, (Document * document, int page_index))                                \
  X(void, FPDF_ClosePage, (Page * page))                                                        \
  X(double, FPDF_GetPageWidth, (Page * page))                                                   \
  X(double, FPDF_GetPageHeight, (Page * page))                                                  \
  X(Bitmap*, FPDFBitmap_CreateEx, (int width, int height, int format, void* first, int stride)) \
  X(void, FPDFBitmap_Destroy, (Bitmap * bitmap))                                                \
  X(void, FPDF_RenderPageBitmap,                                                                \
    (Bitmap * bitmap, Page * page, int left, int top, int width, int height, int turns,         \
     int flags))                                                                                \
  X(Form*, FPDFDOC_InitFormFillEnvironment, (Document * document, FormHost * host))             \
  X(void, FPDFDOC_ExitFormFillEnvironment, (Form * form))                                       \
  X(void, FPDF_SetFormFieldHighlightAlpha, (Form * form, unsigned char alpha))                  \
  X(void, FORM_OnAfterLoadPage, (Page * page, Form * form))                                     \
  X(void, FORM_OnBeforeClosePage, (Page * page, Form * form))                                   \
  X(void, FPDF_FFLDraw,                                                                         \
    (Form * form, Bitmap * bitmap, Page * page, int left, int top, int width, int height,       \
     int turns, int flags))

// A pointer for each function.
struct Api {
// NOLINTNEXTLINE(bugprone-macro-parentheses): it declares the name
#define TARNIX_PDFIUM_POINTER(result, name, parameters) result(*name) parameters = nullptr;
  TARNIX_PDFIUM_FUNCTIONS(TARNIX_PDFIUM_POINTER)
#undef TARNIX_PDFIUM_POINTER
};

}  // namespace TarnixTools::engines::pdfium

#endif  // TARNIX_ENGINES_SUPPORT_PDFIUM_PDFIUMAPI_H_
