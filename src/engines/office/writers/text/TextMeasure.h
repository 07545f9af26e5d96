// How wide text becomes in the faces that this system shows it in, which need not be those of the
// document. For one thread at a time.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_TEXT_TEXTMEASURE_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_TEXT_TEXTMEASURE_H_

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>

#include "engines/support/fonts/TextShaper.h"
#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines::office {

// How a program sets text.
struct MeasureSettings {
  bool has_kerning = false;
  // Dots to the inch, of which sizes, in hundredths of a millimetre before, and advances are whole
  // numbers; 0: lengths are what they are.
  double grid = 0;
};

class TextMeasure {
 public:
  TextMeasure() = default;

  explicit TextMeasure(const MeasureSettings& settings) : settings_(settings) {}

  // Without spacing, in points. size: points of the em.
  double WidthOf(const Typeface& face, std::string_view text, double size);

 private:
  struct Face {
    const fonts::InstalledFace* installed = nullptr;
    fonts::FontFace* loaded = nullptr;
    std::unordered_map<char32_t, double> advances;    // in ems, as all of these
    std::unordered_map<std::uint64_t, double> kerns;  // of two characters
  };

  Face& FaceOf(const Typeface& face);
  double AdvanceOf(Face& face, char32_t character);
  double DotsOf(double size) const;
  double KernOf(Face& face, char32_t first, char32_t second);
  double AdvanceElsewhere(const Face& face, char32_t character);

  MeasureSettings settings_;
  fonts::FaceStore store_;
  std::map<std::tuple<std::string, bool, bool>, Face> faces_;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_TEXT_TEXTMEASURE_H_
