// Page numbers and text stamps; ImageStamps.cpp has the images.
#include "document/PageDecorator.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

#include "PdfException.h"
#include "PdfText.h"
#include "engines/toolbox/ErrorCodes.h"
#include "foundation/Utf8.h"

namespace TarnixTools {
namespace {

constexpr std::int32_t kFill = 1;

[[noreturn]] void ThrowEngineError(const char* message) {
  throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(), "%s", message);
}

bool IsStamp(const PdfTransformation& transformation) {
  return transformation.GetType() == PdfTransformType::StampText;
}

[[noreturn]] void ThrowNoTextGenerator(const PdfTransformation& transformation) {
  throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(),
                     IsStamp(transformation)
                         ? "Unable to create text generator for font <%s> size <%f> at text stamp"
                         : "Unable to create text generator for font <%s> size <%f>",
                     transformation.GetFontName().c_str(), transformation.GetFontSize());
}

// How far a line starts from the left end of the block.
double LineOffset(PdfTransformTextAlignment alignment, double block_width, double line_width) {
  switch (alignment) {
    case PdfTransformTextAlignment::Left:
      break;
    case PdfTransformTextAlignment::Center:
      return block_width * 0.5 - line_width * 0.5;
    case PdfTransformTextAlignment::Right:
      return block_width - line_width;
  }
  return 0;
}

[[noreturn]] void ThrowCannotShow(const DecoratedPage& page,
                                  const PdfTransformation& transformation) {
  const std::int32_t error = engines::PdfGetLastError();
  const std::uint32_t character = engines::PdfGetLastErrorCharacter();
  if (error == engines::kToolboxCharacterError && character != 0) {
    throw PdfException(PdfExceptionCode::EngineError, error,
                       "Unable to show text on page [%d]: no installed font has the character "
                       "[U+%04X]",
                       page.number, static_cast<unsigned>(character));
  }
  throw PdfException(PdfExceptionCode::EngineError, error,
                     "Unable to show text in font <%s> on page [%d]. ERROR [%d]",
                     transformation.GetFontName().c_str(), page.number, error);
}

void ShowLine(engines::TPdfTextGenerator* generator, const std::string& line,
              const engines::TPdfPoint& point, const DecoratedPage& page,
              const PdfTransformation& transformation) {
  if (engines::PdfTextGeneratorMoveTo(generator, &point) == 0 ||
      engines::PdfTextGeneratorShowW(generator, Utf8ToWide(line)) == 0) {
    ThrowCannotShow(page, transformation);
  }
}

// What the page is numbered with.
int PrintedNumber(const DecoratedPage& page, const PdfTransformation& transformation) {
  using Limits = std::numeric_limits<int>;
  const std::int64_t number = std::int64_t{page.number} - 1 + transformation.GetStartingPageNum();
  return static_cast<int>(std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}

// The rotation of a stamp, about the left end of its first line.
TransformationPtr RotationOf(const PdfTransformation& transformation,
                             const engines::TPdfPoint& base) {
  TransformationPtr rotation(engines::PdfNewTransformationIdentity());
  if (rotation == nullptr) {
    ThrowEngineError("Unable to create PDF transformation to rotate text stamp");
  }
  engines::PdfTransformationTranslate(rotation.get(), base.x, base.y);
  if (engines::PdfTransformationRotate(rotation.get(), transformation.GetRotation()) == 0) {
    ThrowEngineError("Rotation definition failed for text stamp");
  }
  engines::PdfTransformationTranslate(rotation.get(), -base.x, -base.y);
  return rotation;
}

}  // namespace

engines::TPdfSize PageSizeOf(const DecoratedPage& page) {
  engines::TPdfSize size;
  if (engines::PdfPageGetSize(page.page, &size) == 0) {
    throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(),
                       "Unable not get page [%d] dimensions", page.number);
  }
  return size;
}

bool IsPrepended(const PdfTransformation& transformation) {
  return transformation.GetLayerPosition() != PdfTransformLayerPos::Over;
}

bool IsOnPage(const engines::TPdfRectangle& box, const engines::TPdfPoint& center, double degrees,
              const engines::TPdfSize& page_size) {
  const double angle = degrees * std::numbers::pi / 180;
  engines::TPdfRectangle seen = {center.x, center.y, center.x, center.y};
  bool is_first = true;
  for (const double x : {box.left - center.x, box.right - center.x}) {
    for (const double y : {box.bottom - center.y, box.top - center.y}) {
      const double seen_x = center.x + x * std::cos(angle) - y * std::sin(angle);
      const double seen_y = center.y + x * std::sin(angle) + y * std::cos(angle);
      seen.left = is_first ? seen_x : std::min(seen.left, seen_x);
      seen.right = is_first ? seen_x : std::max(seen.right, seen_x);
      seen.bottom = is_first ? seen_y : std::min(seen.bottom, seen_y);
      seen.top = is_first ? seen_y : std::max(seen.top, seen_y);
      is_first = false;
    }
  }
  return seen.right >= 0 && seen.left <= page_size.width && seen.top >= 0 &&
         seen.bottom <= page_size.height;
}

void PageDecorator::TransformPage(const DecoratedPage& page, PdfTransformation& transformation,
                                  const DecorationHandles& handles) {
  switch (transformation.GetType()) {
    case PdfTransformType::AddPageNumber:
      AddPageNumberToPage(page, transformation, handles);
      return;
    case PdfTransformType::StampText:
      if (transformation.GetMosaic()) {
        StampTextMosaicIntoPage(page, transformation, handles);
        CountMark(PdfReportKind::TextStamp, page, true);
      } else {
        CountMark(PdfReportKind::TextStamp, page, StampTextIntoPage(page, transformation, handles));
      }
      return;
    case PdfTransformType::StampImage:
      CountMark(PdfReportKind::ImageStamp, page, StampImageIntoPage(page, transformation, handles));
      return;
    case PdfTransformType::PdfA:
      break;
  }
  throw PdfException(PdfExceptionCode::InternalError, 0, "Invalid PDF doc transformation type [%d]",
                     static_cast<int>(transformation.GetType()));
}

// A number that cannot be painted is no failure of the job, only a line in its report. The total
// stays that of the document, whatever the first number is.
void PageDecorator::AddPageNumberToPage(const DecoratedPage& page,
                                        PdfTransformation& transformation,
                                        const DecorationHandles& handles) {
  const std::string string =
      transformation.GetPageNumberText(PrintedNumber(page, transformation), pages_num_);
  const PlacedText placed = PlaceText(page, string, transformation, handles);
  const ContentPtr content(engines::PdfPageGetContent(page.page));
  ContentGeneratorPtr generator(
      engines::PdfNewContentGenerator(content.get(), IsPrepended(transformation)));
  const bool is_painted =
      engines::PdfContentGeneratorPaintText(generator.get(), placed.text.get()) != 0;
  if (engines::PdfClose(generator.release()) != 0 && is_painted) {
    CountMark(PdfReportKind::PageNumber, page,
              IsOnPage(placed.box, placed.base, 0, PageSizeOf(page)));
  } else {
    report_.Add(
        {PdfReportKind::PageNumber, PdfReportOutcome::Dropped, 1, page.number,
         "cannot be painted (engine error " + std::to_string(engines::PdfGetLastError()) + ")"});
  }
}

bool PageDecorator::StampTextIntoPage(const DecoratedPage& page, PdfTransformation& transformation,
                                      const DecorationHandles& handles) {
  const PlacedText placed = PlaceText(page, transformation.GetInputText(), transformation, handles);
  const ContentPtr content(engines::PdfPageGetContent(page.page));
  ContentGeneratorPtr generator(
      engines::PdfNewContentGenerator(content.get(), IsPrepended(transformation)));
  if (generator == nullptr) {
    ThrowEngineError("Unable to create content generator at text stamp");
  }
  engines::PdfContentGeneratorSave(generator.get());
  TransformationPtr rotation = RotationOf(transformation, placed.base);
  if (engines::PdfContentGeneratorTransform(generator.get(), rotation.get()) == 0) {
    ThrowEngineError("Transformation execution failed at text stamp rotation");
  }
  if (engines::PdfContentGeneratorPaintText(generator.get(), placed.text.get()) == 0) {
    ThrowEngineError("Could not paint text on page");
  }
  rotation.reset();
  engines::PdfContentGeneratorRestore(generator.get());
  if (engines::PdfClose(generator.release()) == 0) {
    ThrowEngineError("Could not paint text on page");
  }
  return IsOnPage(placed.box, placed.base, transformation.GetRotation(), PageSizeOf(page));
}

void PageDecorator::StampTextMosaicIntoPage(const DecoratedPage& page,
                                            PdfTransformation& transformation,
                                            const DecorationHandles& handles) {
  ForEachTile(transformation, [&] { StampTextIntoPage(page, transformation, handles); });
}

PageDecorator::PlacedText PageDecorator::PlaceText(const DecoratedPage& page,
                                                   const std::string& string,
                                                   PdfTransformation& transformation,
                                                   const DecorationHandles& handles) const {
  TextPtr text(engines::PdfDocumentCreateText(target_));
  const engines::TPdfSize page_size = PageSizeOf(page);
  const double font_size = transformation.GetFontSize();
  // Made before the generator, which the engine refuses for a size that PdfText has a message for.
  PdfText block(string, handles.font.get(), font_size);
  const TextGeneratorPtr generator(
      engines::PdfNewTextGenerator(text.get(), handles.font.get(), font_size, 0));
  if (generator == nullptr) {
    ThrowNoTextGenerator(transformation);
  }
  engines::PdfTextGeneratorSetRendering(generator.get(), handles.paint.get(), nullptr, kFill);
  const double block_width =
      engines::PdfTextGeneratorGetWidthW(generator.get(), Utf8ToWide(block.GetLongestLine()));
  const engines::TPdfPoint base = transformation.GetTextPosition(
      page.number, page_size, {block_width, block.GetTextHeight()}, block);
  double y = base.y;
  for (const std::string& line : block.GetTextLines()) {
    const double width = engines::PdfTextGeneratorGetWidthA(generator.get(), line.c_str());
    const double offset = LineOffset(transformation.GetTextAlignment(), block_width, width);
    ShowLine(generator.get(), line, {base.x + offset, y}, page, transformation);
    y -= block.GetLeading();
  }
  return {std::move(text), base, {base.x, y, base.x + block_width, base.y + font_size}};
}

void PageDecorator::CountMark(PdfReportKind kind, const DecoratedPage& page, bool is_on_page) {
  report_.Add({kind, is_on_page ? PdfReportOutcome::Added : PdfReportOutcome::Dropped, 1,
               page.number, is_on_page ? "" : "falls outside the page"});
}

}  // namespace TarnixTools
