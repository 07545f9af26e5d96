// Colours that content paints with, as they are seen.
#ifndef TARNIX_ENGINES_OFFICE_PAGES_PAINTEDCOLOR_H_
#define TARNIX_ENGINES_OFFICE_PAGES_PAINTEDCOLOR_H_

#include <map>
#include <optional>

#include "engines/office/pages/PageModel.h"
#include "engines/support/images/ColorSpace.h"
#include "pdf/content/GraphicsState.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::office {

class PaintedColors {
 public:
  explicit PaintedColors(pdf::Document& document) : document_(&document) {}

  // Nothing for a pattern. A colour of inks is as dark as they are.
  std::optional<Rgb> Of(const pdf::Color& color);

 private:
  const std::optional<ColorSpace>& SpaceOf(const pdf::Object& space);

  pdf::Document* document_;
  std::map<std::uint32_t, std::optional<ColorSpace>> spaces_;  // by number
  std::optional<ColorSpace> in_place_;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_PAGES_PAINTEDCOLOR_H_
