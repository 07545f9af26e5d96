// Draws decorations onto page copies.
#ifndef TARNIX_DOCUMENT_PAGE_DECORATOR_H_
#define TARNIX_DOCUMENT_PAGE_DECORATOR_H_

#include <string>

#include "PdfReport.h"
#include "PdfTransformation.h"
#include "document/DecorationHandles.h"
#include "document/ToolboxHandles.h"
#include "engines/toolbox/Toolbox.h"

namespace TarnixTools {

// One page, not yet in the page list of its document.
struct DecoratedPage {
  engines::TPdfPage* page;
  int number;  // one-based, in the document
};

// A transformation is changed by drawing, as PdfTransformation.h says.
class PageDecorator {
 public:
  // pages_num: what page numbers give as the total.
  PageDecorator(engines::TPdfDocument* target, int pages_num, PdfReport& report)
      : target_(target), pages_num_(pages_num), report_(report) {}

  // handles: those of the transformation. Throws EngineError when the engine fails, and what is
  // wrong with the settings of the text (PdfText).
  void TransformPage(const DecoratedPage& page, PdfTransformation& transformation,
                     const DecorationHandles& handles);

 private:
  // A text object with what is to be painted, where its first line starts, and the room it takes.
  struct PlacedText {
    TextPtr text;
    engines::TPdfPoint base;
    engines::TPdfRectangle box;
  };

  void AddPageNumberToPage(const DecoratedPage& page, PdfTransformation& transformation,
                           const DecorationHandles& handles);
  // False when nothing of it falls onto the page.
  bool StampTextIntoPage(const DecoratedPage& page, PdfTransformation& transformation,
                         const DecorationHandles& handles);
  void StampTextMosaicIntoPage(const DecoratedPage& page, PdfTransformation& transformation,
                               const DecorationHandles& handles);
  PlacedText PlaceText(const DecoratedPage& page, const std::string& string,
                       PdfTransformation& transformation, const DecorationHandles& handles) const;

  // False when nothing of it falls onto the page, that of a mosaic aside.
  bool StampImageIntoPage(const DecoratedPage& page, PdfTransformation& transformation,
                          const DecorationHandles& handles) const;
  void PaintImgMosaicOnPage(const DecoratedPage& page, const engines::TPdfSize& page_size,
                            PdfTransformation& transformation,
                            const DecorationHandles& handles) const;
  bool PaintImageOnPage(const DecoratedPage& page, const engines::TPdfSize& page_size,
                        const PdfTransformation& transformation,
                        const DecorationHandles& handles) const;

  // Adds the mark to the report; as one that is lost where it falls outside the page.
  void CountMark(PdfReportKind kind, const DecoratedPage& page, bool is_on_page);

  engines::TPdfDocument* target_;
  int pages_num_;
  PdfReport& report_;
};

// What text and image stamps share.
engines::TPdfSize PageSizeOf(const DecoratedPage& page);
bool IsPrepended(const PdfTransformation& transformation);

// Whether a box that is turned about a point, counter-clockwise, reaches onto the page.
bool IsOnPage(const engines::TPdfRectangle& box, const engines::TPdfPoint& center, double degrees,
              const engines::TPdfSize& page_size);

// Calls draw for each tile of a mosaic, with the transformation set to the tile's place.
template <typename Draw>
void ForEachTile(PdfTransformation& transformation, Draw&& draw) {
  transformation.SetVerticalAdjustment(0);
  transformation.SetHorizontalAdjustment(0);
  for (const auto vertical : {PdfTransformVerticalPos::Top, PdfTransformVerticalPos::Bottom,
                              PdfTransformVerticalPos::Middle}) {
    for (const auto horizontal :
         {PdfTransformHorizontalPos::Left, PdfTransformHorizontalPos::Center,
          PdfTransformHorizontalPos::Right}) {
      transformation.SetVerticalPosition(vertical);
      transformation.SetHorizontalPosition(horizontal);
      draw();
    }
  }
}

}  // namespace TarnixTools

#endif  // TARNIX_DOCUMENT_PAGE_DECORATOR_H_
