// Writes smaller copies of documents.
//
//   PdfCompressTask task(documents, PdfCompressLevel::Extreme);
//   task.SetOutputPath("/data/out");
//   task.Execute();                              // compressed_report.pdf, ...
//   std::cout << task.GetCompressRatio();        // 34.5: of their size, in percent
//
// What was done to the images of the documents:
//
//   for (const PdfCompressedImages& images : task.GetImages()) {
//     std::cout << PdfCompressTask::GetImageClassName(images.image_class) << ": "
//               << images.bytes_before << " -> " << images.bytes_after << '\n';
//   }
#ifndef TARNIX_PDF_COMPRESS_TASK_H_
#define TARNIX_PDF_COMPRESS_TASK_H_

#include <cstdint>
#include <list>
#include <string>
#include <vector>

#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

namespace engines {
struct TPdfOptimizer;
}  // namespace engines

// How much of the look of images may be given for size. At every level text and drawings stay what
// they are.
enum class PdfCompressLevel : std::int32_t {
  // Images above 400 pixels per inch, as they are placed, are brought to 200; the quality of JPEG
  // is 75.
  Low = 0,
  // Images above 150 pixels per inch are brought to that, for reading on a screen; the quality is
  // 60. What viewers do not show is taken out, but for tags.
  Recommended = 1,
  // Images above 110 pixels per inch are brought to 72, and what no page shows of them is cut off;
  // CMYK becomes RGB. Tags are taken out, too.
  Extreme = 2,
};

// What an image is, by its look.
enum class PdfImageClass : std::int32_t {
  Photograph = 0,
  FlatArt = 1,   // screenshots, drawings, few colours
  TextScan = 2,  // a page of text in gray or colour
  Bitonal = 3,   // one bit a pixel, stencils included
  SoftMask = 4,  // the transparency of another image
};

// What became of the images of one class.
struct PdfCompressedImages {
  // Whether all figures are alike.
  bool operator==(const PdfCompressedImages&) const = default;

  PdfImageClass image_class{};
  std::int64_t count = 0;
  // Bytes of their encoded data.
  std::int64_t bytes_before = 0;
  std::int64_t bytes_after = 0;
  // How many of them stay as they were, and why:
  std::int64_t left_smallest = 0;    // nothing that looks as good is smaller
  std::int64_t left_unreadable = 0;  // the data cannot be decoded surely
  std::int64_t left_unhandled = 0;   // a colour space or a mask that is not computed here
};

// What became of the font programs that text is shown in.
struct PdfCompressedFonts {
  // Whether all figures are alike.
  bool operator==(const PdfCompressedFonts&) const = default;

  std::int64_t count = 0;
  std::int64_t merged = 0;   // into another that is the same
  std::int64_t removed = 0;  // of standard fonts, which viewers have
  // Bytes of their encoded data.
  std::int64_t bytes_before = 0;
  std::int64_t bytes_after = 0;
  // How many of them stay as they were, and why:
  std::int64_t left_smallest = 0;     // the glyphs that are used take as much
  std::int64_t left_any_code = 0;     // any glyph may be used, as in a form's field
  std::int64_t left_unreadable = 0;   // they cannot be read
  std::int64_t left_unsure = 0;       // they would not surely look and work as before
  std::int64_t left_conformance = 0;  // the document's standard wants lists of their glyphs
  std::int64_t left_no_library = 0;   // the libraries that read fonts are not installed
};

// What a document says of itself is kept at every level: its information and its XMP packet. So
// PdfTask::SetKeepMetadata has no effect here. A claim of PDF/A stays where a validation of the new
// file confirms it. Signatures do not hold for the new file; they are left out, and their fields
// stay. GetReport() tells of both.
//
// No document grows: one that would not become smaller is copied byte for byte, and what was to be
// left out of it then stays. That does not hold for encrypted documents, for an output password,
// and for damaged documents, which are put right.
class TARNIX_EXPORT PdfCompressTask : public PdfTask {
 public:
  // The task owns copies of the documents; none is opened before Execute, each then with its own
  // password.
  //   level - throws InvalidParameter for a value that is no level.
  PdfCompressTask();
  explicit PdfCompressTask(const PdfDoc& document);
  explicit PdfCompressTask(const std::list<PdfDoc>& documents);
  PdfCompressTask(const std::list<PdfDoc>& documents, PdfCompressLevel level);

  PdfCompressTask(const PdfCompressTask& other);
  PdfCompressTask(PdfCompressTask&& other) noexcept;
  PdfCompressTask& operator=(const PdfCompressTask& other);
  PdfCompressTask& operator=(PdfCompressTask&& other) noexcept;
  ~PdfCompressTask();

  // Recommended at first. Throws InvalidParameter for a value that is no level; the old one stays.
  void SetCompressLevel(PdfCompressLevel level);

  PdfCompressLevel GetCompressLevel() const { return compress_level_; }

  // The outputs' file names are prefix + "_" + the document's name with its extension, unless there
  // is a name for them. The prefix is "compressed" at first, and an empty one is ignored.
  void SetOutPrefix(const std::string& prefix);

  // The task's own text: a host that empties it directly gives outputs the documents' own names.
  std::string& GetOutPrefix() { return out_prefix_; }

  // A file name to be put behind the output directory as it stands: no extension is added. It holds
  // for every document, so that the output of a second one takes the place of the first. An empty
  // one goes back to the names made of the prefix.
  void SetOutPdfName(const std::string& name);

  // As it was set; empty, as at first, for names made of the prefix.
  std::string& GetOutPdfName() { return out_pdf_name_; }

  // The size of the outputs in percent of that of their documents; 0 before the first. It is a
  // running value: the first document's own, then with each further document the mean of the value
  // before and the document's own; 40, 60 and 80 percent give 65. It goes on with the next Execute,
  // and only a new task starts again.
  float GetCompressRatio() const { return compress_ratio_; }

  // The engine's code of what failed last; 0 before any, and after a document that was compressed.
  std::int32_t GetLastError() const { return last_error_; }

  // Writes a copy of each document, one after the other, to the output directory, or to that of the
  // first document when none was set. (A document that was named without a directory has none, and
  // its output goes to the root: set an output path for it.) The output path keeps its separator at
  // the end, and another one is put behind it: systems take both for one. A copy takes the place of
  // a file that has its name, be it the document itself. It is encrypted when there is an output
  // password, whatever the document is; GetReport() tells of protection that is gone.
  //
  // Throws
  //   InvalidParameter  without a document; no file is touched before
  //   EngineError       when a document cannot be opened, with the engine's code: 17 for a missing
  //                     or wrong password; and when a copy cannot be written to its end
  // The first failure ends it: documents behind are not looked at, copies that were complete stay.
  void Execute();

  // The images of the documents of the last Execute: one entry for each class that there are images
  // of, in the order of PdfImageClass. Empty after a failed one. Valid until the next Execute.
  const std::vector<PdfCompressedImages>& GetImages() const { return images_; }

  // The fonts of the documents of the last Execute; zeros after a failed one.
  const PdfCompressedFonts& GetFonts() const { return fonts_; }

  // In English, singular: "photograph", "flat art", "text scan", "bitonal image", "soft mask";
  // "image" for a value that is none. The text is static.
  static const char* GetImageClassName(PdfImageClass image_class);

 private:
  void Run();
  void SetDefaults();
  void ClearResults();
  void CompressPdf(PdfDoc& document);
  void ApplyLevel(engines::TPdfOptimizer* optimizer);
  void LowCompressSettings(engines::TPdfOptimizer* optimizer);
  void RecommendedCompressSettings(engines::TPdfOptimizer* optimizer);
  void ExtremeCompressSettings(engines::TPdfOptimizer* optimizer);
  // Notes the engine's code and throws; the format takes the path and the code.
  [[noreturn]] void Fail(std::int32_t code, const char* format, const std::string& path);
  // The full path of the output for a document of this name.
  std::string GetOutPdfName(const std::string& doc_name);
  // In bytes; 0 for a file that cannot be opened.
  long long GetFileSize(const std::string& path);
  // in_size: of the document as it was; it may have been written over.
  void UpdateRatio(long long in_size, const std::string& out_path);

  PdfCompressLevel compress_level_{};
  std::string out_prefix_;
  std::int32_t last_error_ = 0;
  float compress_ratio_ = 0;
  std::string out_pdf_name_;
  std::vector<PdfCompressedImages> images_;
  PdfCompressedFonts fonts_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_COMPRESS_TASK_H_
