// What the engine needs to draw decorations: fonts and paints, or images.
#ifndef TARNIX_DOCUMENT_DECORATION_HANDLES_H_
#define TARNIX_DOCUMENT_DECORATION_HANDLES_H_

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "PdfReport.h"
#include "PdfTransformation.h"
#include "document/FileStream.h"
#include "document/ToolboxHandles.h"
#include "engines/toolbox/Toolbox.h"

namespace TarnixTools {

// The handles of one decoration: font and paint of a text, or the image.
struct DecorationHandles {
  FontPtr font;
  ColorSpacePtr color_space;
  PaintPtr paint;
  std::unique_ptr<FileStream> image_stream;  // outlives the image, which reads it
  ImagePtr image;
};

// Words for what a decoration has failed at.
struct DecorationMessages {
  const char* no_color_space;
  const char* no_paint;
};

extern const DecorationMessages kPageNumberMessages;
extern const DecorationMessages kTextStampMessages;

// Makes the handles of a decoration, nothing at all for PDF/A. A font that is not installed is
// replaced by Arial, which the report is told. Throws FileNotFound for an image that cannot be
// opened, and EngineError for everything else.
DecorationHandles MakeDecorationHandles(engines::TPdfDocument* target,
                                        const PdfTransformation& transformation,
                                        const DecorationMessages& messages, PdfReport& report);

// The handles of several decorations, each made when it is first asked for. Decorations whose
// handles would be equal share them, and they are kept from page to page: made afresh for each page
// they would draw no better, and every image would be read as often as there are pages.
class DecorationHandleStore {
 public:
  DecorationHandleStore(engines::TPdfDocument* target, const DecorationMessages& messages,
                        PdfReport& report)
      : target_(target), messages_(messages), report_(report) {}

  // index: of the transformation among those that are applied. The handles are there until the next
  // call.
  const DecorationHandles& Get(std::size_t index, const PdfTransformation& transformation);

 private:
  // Every image keeps its file open. When there are more of them, they are dropped, so that a job
  // of many images does not run out of files.
  static constexpr std::size_t kMaxImages = 64;

  void DropImages();

  engines::TPdfDocument* target_;
  const DecorationMessages& messages_;
  PdfReport& report_;
  std::map<std::string, DecorationHandles> handles_;     // by what they are made from
  std::vector<const DecorationHandles*> of_decoration_;  // null where not looked up yet
  std::size_t image_count_ = 0;
};

}  // namespace TarnixTools

#endif  // TARNIX_DOCUMENT_DECORATION_HANDLES_H_
