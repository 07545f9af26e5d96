// Spot colours as PDF/A-2 wants them (ISO 19005-2, 6.2.4.4): every one of a DeviceN space is
// described by itself, too.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_COLORS_SPOTCOLORS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_COLORS_SPOTCOLORS_H_

#include <cstdint>
#include <map>
#include <string>

#include "engines/pdfa/convert/Conversion.h"
#include "pdf/content/ResourceGraph.h"

namespace TarnixTools::engines::pdfa {

class SpotColors {
 public:
  explicit SpotColors(Conversion& conversion) : conversion_(&conversion) {}

  // The colour space of a Separation, to be used again under its name.
  void Note(const pdf::ResourceNode& node);

  // Mends a DeviceN space that is an object of its own.
  //   cmyk - what stands for CMYK of the device; empty for nothing
  void Mend(const pdf::ResourceNode& node, const std::string& cmyk);

 private:
  std::string Attributes(const pdf::Object& space, const std::string& cmyk);
  std::string Colorants(const pdf::Object& names, const pdf::Object& known,
                        const pdf::Object& process);
  std::string SeparationOf(std::string_view name);

  Conversion* conversion_;
  std::map<std::string, std::string, std::less<>> separations_;  // references by name
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_COLORS_SPOTCOLORS_H_
