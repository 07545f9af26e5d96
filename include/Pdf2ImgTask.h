// Makes images of a document's pages, or takes out the images that they hold.
//
//   Pdf2ImgTask task(report);                    // of report.pdf
//   task.SetOutputPath("/data/out");
//   task.SetDpi(150);
//   task.SetPagesToExport({1, 2});
//   task.Execute();                              // report-page-0001.jpg, report-page-0002.jpg
//
//   Pdf2ImgTask extraction(documents, Pdf2ImgExtractImages);
//   extraction.Execute();                        // img0001.jpg, img0002.jpg, ... beside the first
//                                                // document
#ifndef TARNIX_PDF_2_IMG_TASK_H_
#define TARNIX_PDF_2_IMG_TASK_H_

#include <cstdint>
#include <list>
#include <string>

#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

// What the images are made of.
enum Pdf2ImgMode : std::uint32_t {
  Pdf2ImgRenderPages = 0,    // one image of each page
  Pdf2ImgExtractImages = 1,  // every image that is drawn on the pages
};

// The unit of the size of rendered images.
enum Pdf2ImgSizeUnits : std::uint32_t {
  Pdf2ImgPixels = 0,     // whatever the resolution is
  Pdf2ImgPageUnits = 1,  // points, 1/72 inch: the resolution makes pixels of them
};

// What rendered images are stored as.
//
//   Pdf2ImgTask task(document);
//   task.SetImgFormat(Pdf2ImgPng);   // drawings and text stay sharp
//   task.SetGray(true);              // shades of gray, one channel
//   task.SetDpi(150);
//   task.Execute();
enum Pdf2ImgFormat : std::uint32_t {
  Pdf2ImgJpeg = 0,
  Pdf2ImgPng = 1,  // loses nothing
};

// Rendered images are JPEG files of the best quality, the page on white as it is printed, unless
// something else is set. Extracted ones are JPEG files, too: one that is stored as such is taken out
// byte for byte where nothing has to be changed, others are encoded anew. Rendering needs PDFium, which is loaded on first use.
class TARNIX_EXPORT Pdf2ImgTask : public PdfTask {
 public:
  // The task owns copies of the documents; none is opened before Execute, each then with its own
  // password.
  Pdf2ImgTask();
  explicit Pdf2ImgTask(const PdfDoc& document);
  explicit Pdf2ImgTask(const std::list<PdfDoc>& documents);

  //   mode - throws InvalidParameter for a value that is no mode.
  Pdf2ImgTask(const std::list<PdfDoc>& documents, Pdf2ImgMode mode);

  Pdf2ImgTask(const Pdf2ImgTask& other);
  Pdf2ImgTask(Pdf2ImgTask&& other) noexcept;
  Pdf2ImgTask& operator=(const Pdf2ImgTask& other);
  Pdf2ImgTask& operator=(Pdf2ImgTask&& other) noexcept;
  ~Pdf2ImgTask();

  // Rendering at first. Throws InvalidParameter for a value that is no mode; the old one stays.
  void SetMode(Pdf2ImgMode mode);

  Pdf2ImgMode GetMode() const { return mode_; }

  // Resolution of rendered images in pixels per inch; 100 at first. Looked at by Execute, which
  // throws InvalidParameter for one that is not from 0.5 to 65535, before it makes an image. It
  // also decides how large an image is, unless a size in pixels was set: at 72 a point is a pixel.
  // Of no effect on extracted images.
  void SetDpi(float dpi) { dpi_ = dpi; }

  float GetDpi() const { return dpi_; }

  // Rendered images: JPEG at first. Throws InvalidParameter for a value that is no format; the old one
  // stays.
  void SetImgFormat(Pdf2ImgFormat format);

  Pdf2ImgFormat GetImgFormat() const { return img_format_; }

  // Whether rendered images are in shades of gray; false at first.
  void SetGray(bool gray) { gray_ = gray; }

  bool GetGray() const { return gray_; }

  // The quality of rendered JPEG images, from 1 (smallest file) to 100 (best image), as at first; from 90
  // on colour has full resolution. Throws InvalidParameter for others; the old one stays. Of no effect on
  // PNG.
  void SetQuality(int quality);

  int GetQuality() const { return quality_; }

  // Rendered images are named [PREFIX-][NAME-]page-NNNN.jpg, or .png, with the document's name. There is no
  // prefix at first, and an empty one is ignored. Of no effect on extracted images.
  void SetImgPrefix(const std::string& prefix);

  std::string& GetImgPrefix() { return img_prefix_; }

  // Whether the document's name (without directory and extension) is part of those names, as it is
  // at first. Without it, documents overwrite each other's pages; with it, those that have one name
  // in different directories do.
  void SetDocNameInImg(bool in_name) { doc_name_in_img_ = in_name; }

  // How the images of both modes are called instead: "{stem}" stands for the document's name, "{n}"
  // for the number of the page or the image, of four digits or more. Empty, as at first, for the names
  // described above and below; with it pages beyond 9,999 have names too.
  void SetNamePattern(const std::string& pattern) { name_pattern_ = pattern; }

  const std::string& GetNamePattern() const { return name_pattern_; }

  // Whether extracted images are written as the document stores them: JPEG and JPEG 2000 data byte for
  // byte (.jpg, .jp2), without what masks it; fax data as TIFF (.tif); everything else as PNG (.png), as it
  // is seen on white. Nothing is turned, and names end as the format does. False at first; of no effect
  // on rendered images.
  void SetStoreOriginal(bool store_original) { store_original_ = store_original; }

  bool GetStoreOriginal() const { return store_original_; }

  // What the numbers of SetOutImgSize are: pixels, at first, or points. Looked at by Execute, and
  // only when a size was set.
  void SetImgSizeUnits(Pdf2ImgSizeUnits units) { img_size_units_ = units; }

  Pdf2ImgSizeUnits GetImgSizeUnits() const { return img_size_units_; }

  // The size of rendered images, into which pages are scaled to fit, their proportions kept;
  // without it an image has its page's size. Both numbers must be above 0, which Execute looks at.
  // What was set cannot be taken back.
  void SetOutImgSize(int width, int height);

  // One-based numbers of the pages to render or to look for images on; empty, as at first, means
  // all. Pages that a document lacks are passed over, and so is the order of the list: images come
  // in the order of the pages, each once.
  void SetPagesToExport(const std::list<int>& pages) { pages_to_export_ = pages; }

  // Writes the images to the output directory, or beside the first document when none was set.
  // Files appear complete or not at all; those that were written before a failure stay. Pages and
  // images that could not be read in full are told by GetReport(), with the path of their document.
  //
  // Extracted images are named img0001.jpg, img0002.jpg, ... for each document: those of a second
  // one replace those of the first. The path of each is also written to std::cout, after
  // "Generating image: " and without a line end.
  //
  // Throws
  //   InvalidParameter  without a document, or for an output size that is not positive
  //   PasswordError     for a missing or wrong password (rendering)
  //   NoPages           for a document without pages (rendering)
  //   NoImagesFound     for a document without images (extraction)
  //   InternalError     for a unit that is none
  //   EngineError       for a document that cannot be read and an image that cannot be written
  //   std::length_error for the image of page 10,000 and later: names have four digits (rendering)
  void Execute();

  // The paths of the images that the last Execute has written, also before it threw, in order; one
  // that was written twice is there twice. Valid until the next Execute.
  const std::list<std::string>& GetImages() const { return images_; }

 private:
  // What each mode does to one document.
  class Rendering;
  class Extraction;

  void Run();
  void SetDefaults();
  void ConvertPages2Img();

  // The path of a page's image. Throws std::length_error for a number of more than four digits.
  std::string GetNextImgName(const std::string& doc_name, int page_number) const;
  std::string PatternName(const std::string& doc_name, int number) const;
  bool IsPageExported(int page_number) const;
  void ExtractImages();

  Pdf2ImgMode mode_{};
  std::string img_prefix_;
  bool doc_name_in_img_ = true;
  std::list<int> pages_to_export_;
  float dpi_ = 0;  // pixels per inch
  Pdf2ImgSizeUnits img_size_units_{};
  bool out_img_size_set_ = false;
  // In img_size_units_; of no meaning unless a size was set.
  std::int32_t out_img_width_ = 0;
  std::int32_t out_img_height_ = 0;
  std::list<std::string> images_;
  std::string name_pattern_;
  Pdf2ImgFormat img_format_ = Pdf2ImgJpeg;
  bool gray_ = false;
  bool store_original_ = false;
  std::int32_t quality_ = 100;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_2_IMG_TASK_H_
