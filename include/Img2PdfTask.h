// Makes PDF documents of image files: one for each image, and by default one of all of them.
//
//   Img2PdfTask task(std::list<std::string>{"front.jpg", "back.jpg"});
//   task.SetPageSize(Img2PdfPageSize::Img2PdfPageA4);
//   task.SetOutputPath("/data/out");
//   task.SetOutPrefix("card");
//   task.Execute();                              // card.pdf, of two pages
//
//   Img2PdfTask single(std::string("/data/scan.tif"));
//   single.SetMergeAfter(false);
//   single.Execute();                            // /data/scan.tif.pdf, a page for each picture
//   single.GetWrittenDocuments().front();
#ifndef TARNIX_IMG2PDF_TASK_H_
#define TARNIX_IMG2PDF_TASK_H_

#include <cstdint>
#include <list>
#include <string>

#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

// Which way up pages of a fixed size are.
enum class Img2PdfOrientation : std::int32_t {
  Img2PdfPortrait = 0,
  Img2PdfLandscape = 1,  // A4 landscape, whichever size is set
};

// How large the pages are.
enum class Img2PdfPageSize : std::int32_t {
  Img2PdfPageFit = 0,     // each page as large as its image
  Img2PdfPageA4 = 1,      // 595 x 842 points
  Img2PdfPageLetter = 2,  // 612 x 792 points
};

// Clockwise, besides what the image file itself says is needed to see it upright.
enum class Img2PdfImgRotation : std::int32_t {
  Img2PdfRotNone = 0,
  Img2PdfRot180 = 1,  // upside down
  Img2PdfRot90 = 2,   // to the right
  Img2PdfRot270 = 3,  // to the left
};

// Nothing of the images is lost: what a PDF document can hold as it is goes into it undecoded, and
// everything else is stored so that every pixel keeps its value. Every picture of a TIFF file
// becomes a page; of other files of several pictures it is the first.
class TARNIX_EXPORT Img2PdfTask : public PdfTask {
 public:
  // Without images: those of Execute are added first.
  Img2PdfTask();

  // With the images that SetInputImage and SetInputImages would give the task; throw what
  // AddInputImage throws.
  explicit Img2PdfTask(const std::string& image_path);
  explicit Img2PdfTask(const std::list<std::string>& image_paths);

  // A copy has images and options of its own, and knows the documents of earlier runs, too.
  Img2PdfTask(const Img2PdfTask& other);
  Img2PdfTask(Img2PdfTask&& other) noexcept;
  Img2PdfTask& operator=(const Img2PdfTask& other);
  Img2PdfTask& operator=(Img2PdfTask&& other) noexcept;
  ~Img2PdfTask();

  // Adds an image file: JPEG, JPEG 2000, PNG, TIFF, GIF, BMP, PNM or WebP, which is found out by
  // its content when it is converted. Throws FileNotFound when it cannot be opened,
  // InvalidParameter when it is in the task already. Slashes are stored as backslashes, and the
  // path is compared as it is given, letter by letter, with those stored.
  void AddInputImage(const std::string& path);

  // The task then holds this image only. Throws what AddInputImage throws, and the task then holds
  // none.
  void SetInputImage(const std::string& path);

  // The task then holds these images; the first that cannot be added ends it, with those before it
  // in the task.
  void SetInputImages(const std::list<std::string>& paths);

  // The task's own list, which the host may change; nothing that is put into it is looked at before
  // Execute.
  std::list<std::string>& GetInputImages() { return input_images_; }

  // How many images the task holds.
  int GetImagesNum() const;

  // Img2PdfPageFit at first: a page is as large as its image is at the resolution that the file
  // names, or at 96 pixels per inch where it names none. On a fixed size, images are centred and
  // enlarged or reduced to fit, their proportions kept.
  void SetPageSize(Img2PdfPageSize page_size) { page_size_ = page_size; }

  Img2PdfPageSize GetPageSize() const { return page_size_; }

  // Img2PdfPortrait at first; of no effect with Img2PdfPageFit, where a page is as wide and as high
  // as its image.
  void SetOrientation(Img2PdfOrientation orientation) { orientation_ = orientation; }

  Img2PdfOrientation GetOrientation() const { return orientation_; }

  // Img2PdfRotNone at first. Img2PdfRotNone after another value does not take that one back: images
  // are still turned by it.
  void SetImgRotation(Img2PdfImgRotation rotation);

  Img2PdfImgRotation GetImgRotation() const { return image_rotation_; }

  // Whether each image is first turned and mirrored as its file says is needed to see it upright
  // (the Orientation tag of Exif and TIFF); false at first: images are taken as they are stored,
  // and only SetImgRotation turns them.
  void SetMakeUpright(bool make_upright) { make_upright_ = make_upright; }

  bool GetMakeUpright() const { return make_upright_; }

  // Points (1/72 inch) on all four sides of each image, 0 at first. With Img2PdfPageFit pages
  // become larger by it, on a fixed size images become smaller. Looked at by Execute.
  void SetMargin(float margin) { margin_ = margin; }

  float GetMargin() const { return margin_; }

  // Whether the documents of the single images are joined into one and deleted; true at first. When
  // false, one document for each image stays.
  void SetMergeAfter(bool merge_after) { merge_after_ = merge_after; }

  // The joined file's name is the prefix + ".pdf", "_merged_images.pdf" at first, unless it has a
  // name of its own. An empty prefix is ignored. Of no effect when nothing is joined.
  void SetOutPrefix(const std::string& prefix);

  // As it was set; empty at first, which stands for "_merged_images".
  std::string& GetOutPrefix() { return out_prefix_; }

  // The joined file's name, put behind the output directory as it stands: no extension is added. An
  // empty one goes back to the name made of the prefix.
  void SetOutPdfName(const std::string& name);

  // As it was set; empty, as at first, for the name made of the prefix.
  std::string& GetOutPdfName() { return out_pdf_name_; }

  // How the documents of the single images are called instead, with their extension: "{stem}" stands for
  // the image's name without its own and "{n}" for the image's number in the task, from 1, of four
  // digits or more, as in "{n}-{stem}.pdf". Empty, as at first, for the names described below. They go
  // to the output directory, or beside each image where none was set.
  void SetNamePattern(const std::string& pattern) { name_pattern_ = pattern; }

  const std::string& GetNamePattern() const { return name_pattern_; }

  // Converts each image to a document: the image's path + ".pdf" when no output directory was set,
  // else the image's name with ".pdf" in place of its extension, in that directory; with a number
  // ("a-2.pdf") where another image of the run has that name, or, when the documents are joined
  // and deleted, a file that is not the task's. Then joins them, in the output directory or the
  // first document's, and deletes them. With an output password all of them are encrypted. Where
  // nothing can tell the difference, pages go straight into the joined document; the single ones
  // are then made only when that fails.
  //
  // GetReport() tells of PNG, BMP and PNM files of which a part cannot be read, with their paths; it
  // stands empty on the page.
  //
  // Throws
  //   InvalidParameter  without images
  //   FileNotFound      for an empty path among the images, when the joined document cannot be
  //                     created, or one of the single ones not be deleted
  //   EngineError       for an image that cannot be converted, and for a document that cannot be
  //                     created or not be written to its end
  // Documents that were complete by then stay, unless the host has the job stop before they are
  // joined. A task keeps its documents: executed once more, it joins those of the earlier run too.
  void Execute();

  // What the last Execute has written and left there, as full paths: the joined document, or one
  // for each image. After a failure, the documents that were complete by then. Valid until the next
  // Execute.
  const std::list<std::string>& GetWrittenDocuments() const { return written_documents_; }

 private:
  void Run();
  void SetDefaults();
  // Writes the joined document without those of the single images; false when that is no way, or
  // failed.
  bool WriteJoined();
  void JoinDocuments();
  void NoteJoined(const std::string& path);
  void DropUnjoined();
  // Writes a document for each image; those that were complete before a failure are noted.
  void ConvertImages();
  void ConvertImg2Pdf(const std::string& image_path, const std::string& document_path);
  // Writes a document of the pages of these images, of which there is one at least.
  void Convert(const std::list<std::string>& image_paths, const std::string& document_path);

  // Where an image's document goes, unless another image of the run has that path already.
  //   number - of the image, from 1
  std::string DocumentPath(const std::string& image_path, int number) const;
  std::string MergedPath() const;

  Img2PdfOrientation orientation_;
  Img2PdfPageSize page_size_;
  Img2PdfImgRotation image_rotation_;
  std::int32_t engine_orientation_;  // value of the Orientation tag
  std::list<std::string> input_images_;

  // The documents of single images, of earlier runs too, and what the last run has left.
  std::list<PdfDoc> converted_docs_;
  std::list<std::string> written_documents_;
  std::string out_prefix_;
  std::string out_pdf_name_;
  std::string name_pattern_;
  float margin_;
  bool merge_after_;
  bool make_upright_;
};

}  // namespace TarnixTools

#endif  // TARNIX_IMG2PDF_TASK_H_
