// What is known while a presentation is written.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_SLIDECONTEXT_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_SLIDECONTEXT_H_

#include <atomic>
#include <cstdint>
#include <map>
#include <string>

#include "engines/office/layout/OfficeDocument.h"
#include "engines/office/pages/PictureSource.h"
#include "engines/office/writers/package/PackageWriter.h"
#include "engines/office/writers/text/TextMeasure.h"

namespace TarnixTools::engines::office {

struct SlideContext {
  const OfficeDocument& document;
  PictureSource& pictures;
  const std::atomic<bool>& is_cancelled;
  PackageWriter& package;
  TextMeasure measure;
  std::map<std::uint32_t, std::size_t> slide_of_page;  // from 1, by the page's number
};

// A slide, or the master, while it is written.
struct SlidePart {
  SlideContext& context;
  const OfficePage& page;
  XmlWriter& xml;
  Relationships& relationships;
  std::uint32_t shape_count = 1;  // the group of all shapes is the first
};

// The name that parts of a presentation give to their root, with all namespaces.
void OpenSlidePart(XmlWriter& xml, std::string_view element);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_SLIDECONTEXT_H_
