// How wide text becomes in the faces that this system shows it in, which need not be those of the
// document. For one thread at a time.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_TEXT_TEXTMEASURE_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_TEXT_TEXTMEASURE_H_

#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>

#include "engines/support/fonts/TextShaper.h"
#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines::office {

class TextMeasure {
 public:
  // Without spacing, in ems.
  double WidthOf(const Typeface& face, std::string_view text);

 private:
  struct Face {
    const fonts::InstalledFace* installed = nullptr;
    fonts::FontFace* loaded = nullptr;
    std::unordered_map<char32_t, double> advances;
  };

  Face& FaceOf(const Typeface& face);
  double AdvanceOf(Face& face, char32_t character);
  double AdvanceElsewhere(const Face& face, char32_t character);

  fonts::FaceStore store_;
  std::map<std::tuple<std::string, bool, bool>, Face> faces_;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_TEXT_TEXTMEASURE_H_
