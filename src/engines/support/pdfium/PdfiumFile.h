// A document that PDFium has open, read through a byte source of ours.
#ifndef TARNIX_ENGINES_SUPPORT_PDFIUM_PDFIUMFILE_H_
#define TARNIX_ENGINES_SUPPORT_PDFIUM_PDFIUMFILE_H_

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "engines/support/pdfium/PdfiumSession.h"
#include "pdf/file/ByteSource.h"

namespace TarnixTools::engines {

// Everything here is called while the lock is held, the destructor too.
class PdfiumFile {
 public:
  // Null when PDFium cannot read it; needs_password says whether the password is at fault.
  //   password - UTF-8
  static std::unique_ptr<PdfiumFile> Open(PdfiumLock& pdfium,
                                          std::unique_ptr<pdf::ByteSource> source,
                                          const std::string& password, bool& needs_password);

  PdfiumFile(const PdfiumFile&) = delete;
  PdfiumFile& operator=(const PdfiumFile&) = delete;
  ~PdfiumFile();

  int page_count() const { return page_count_; }

  // Draws the fields of the document's form, too, from now on. Before any page is loaded.
  void OpenForm();

  // Null when the page cannot be loaded. It is closed before the file is.
  pdfium::Page* LoadPage(int page_index);
  void ClosePage(pdfium::Page* page);

  // Draws the page, and the form fields on it, where its upper left corner is at `left` and `top`.
  // False when it was stopped before it was done: the bitmap has what was drawn by then.
  //   stops - asked again and again: every few milliseconds on ordinary pages, but only between the
  //           objects that the page's own content and its annotations paint and while an image is
  //           drawn; a form with all in it, or one path, pattern or shading, is drawn to its end
  bool Draw(pdfium::Bitmap* bitmap, pdfium::Page* page, int left, int top, int width, int height,
            int flags, const std::function<bool()>& stops);

  // Bytes that PDFium has asked for: to open the document, and since then. It keeps what it has
  // read of streams as long as the document is open.
  std::uint64_t bytes_of_opening() const { return bytes_of_opening_; }

  std::uint64_t bytes_read() const { return bytes_read_ - bytes_of_opening_; }

 private:
  PdfiumFile(const pdfium::Api& api, std::unique_ptr<pdf::ByteSource> source);

  static int GetBlock(void* handle, unsigned long position, unsigned char* buffer,
                      unsigned long size);

  bool Read(std::uint64_t position, char* buffer, std::size_t size);

  const pdfium::Api* api_;
  std::unique_ptr<pdf::ByteSource> source_;
  std::unique_ptr<char[]> window_;  // what was read around the last small piece
  std::uint64_t window_start_ = 0;
  std::size_t window_size_ = 0;
  pdfium::FileAccess access_{};
  pdfium::Document* document_ = nullptr;
  pdfium::FormHost form_host_{};
  pdfium::Form* form_ = nullptr;  // null for none
  int page_count_ = 0;
  std::uint64_t bytes_read_ = 0;
  std::uint64_t bytes_of_opening_ = 0;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PDFIUM_PDFIUMFILE_H_
