// Names and properties that the parts of a Word document share.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_WORDNAMES_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_WORDNAMES_H_

#include <string_view>

#include "engines/office/writers/package/XmlWriter.h"
#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines::office {

inline constexpr std::string_view kWordNamespace =
    "http://schemas.openxmlformats.org/wordprocessingml/2006/main";

// What a run has beside its look.
struct RunSetting {
  double spacing = 0;  // points
  double scale = 1;
  bool is_right_to_left = false;
  bool is_link = false;  // it has the style of links
  double rise = 0;       // points above the baseline
};

// The properties within w:rPr, all of them written out: none comes from a style.
void WriteLook(XmlWriter& xml, const TextLook& look, const RunSetting& setting = {});

// Opens the root element of a part with text, with the namespaces of all that text may have.
void OpenStory(XmlWriter& xml, std::string_view element);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_WORDNAMES_H_
