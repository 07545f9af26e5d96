// Goes through the content of a page and what it draws by way of forms, patterns and annotations,
// and stops at every image. No recursion: contents within contents are a stack of a bounded depth.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_IMAGEWALKER_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_IMAGEWALKER_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engines/support/images/DocumentImage.h"
#include "engines/support/pictures/DrawnOrientation.h"
#include "pdf/content/ContentReader.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/tree/VisibleLayers.h"

namespace TarnixTools::engines {

struct DrawnImage {
  DocumentImage image;
  pdf::Matrix matrix;  // of the unit square that the image fills, to the page as it is seen
  bool is_clipped_by_text = false;
};

class ImageWalker {
 public:
  // All outlive the walker.
  //   with_forms - also what forms, patterns and annotations draw
  ImageWalker(pdf::Document& document, const pdf::PageTree& pages, const pdf::VisibleLayers& layers,
              std::size_t page_index, bool with_forms);
  ~ImageWalker();

  // The next image, valid until the next call; null at the end. Throws pdf::Error for a document
  // that cannot be read any more.
  const DrawnImage* Next();

 private:
  struct Frame;

  bool PushPage();
  bool PushNextAnnotation();
  bool PushContent(std::string content, const pdf::Object& resources, const pdf::Matrix& matrix,
                   std::uint32_t number);
  bool PushForm(std::uint32_t number, const pdf::Object& dictionary, const pdf::Matrix& matrix);
  const DrawnImage* Run(Frame& frame, const pdf::Operation& operation);
  const DrawnImage* DrawObject(Frame& frame, const pdf::Operation& operation);
  const DrawnImage* DrawInline(Frame& frame, const pdf::Operation& operation);
  const DrawnImage* Draw(Frame& frame, const DocumentImage& image);
  void PaintPattern(Frame& frame, const std::string& name);
  void BeginMarked(Frame& frame, const pdf::Operation& operation);
  std::string PageContent(const pdf::Object& contents);
  std::optional<std::string> ContentOf(std::uint32_t number);
  pdf::Matrix AnnotationMatrix(const pdf::Object& annotation, const pdf::Object& form);

  pdf::Document* document_;
  const pdf::PageTree* pages_;
  const pdf::VisibleLayers* layers_;
  std::size_t page_index_;
  bool with_forms_;
  pdf::Arena page_arena_;
  pdf::Object page_;
  pdf::Matrix page_matrix_;
  std::vector<pdf::Object> annotations_;
  std::size_t next_annotation_ = 0;
  std::vector<std::unique_ptr<Frame>> frames_;
  std::size_t contents_run_ = 0;
  std::uint64_t bytes_run_ = 0;
  std::size_t images_found_ = 0;
  pdf::Arena image_arena_;
  DrawnImage drawn_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_IMAGEWALKER_H_
