// The parts that all slides of a presentation rest on: the master with what is repeated on every
// page, one layout, and the theme.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_SLIDEMASTER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_SLIDEMASTER_H_

#include <set>
#include <string>

#include "engines/office/writers/slides/SlideContext.h"

namespace TarnixTools::engines::office {

class SlideMaster {
 public:
  explicit SlideMaster(SlideContext& context);

  // Whether the block is on the master, and not to be written with the page.
  bool Has(const OfficePage& page, const Block& block) const;

  bool HasBackground() const { return background_.has_value(); }

  // All parts, with their relationships.
  void Write();

 private:
  static std::string KeyOf(const OfficePage& page, const Block& block);

  SlideContext& context_;
  std::set<std::string> repeated_;
  std::optional<Rgb> background_;
};

// The blocks of a page that are no text, in the order in which they are painted.
std::vector<const Block*> ImagesOf(const PageLayout& page);

// p:bg with one colour.
void WriteSlideBackground(XmlWriter& xml, const Rgb& color);

// p:spTree up to its first shape.
void OpenShapes(XmlWriter& xml);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_SLIDEMASTER_H_
