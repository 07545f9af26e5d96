// Checks the colour spaces that something is painted in, and those within them (ISO 19005-1, 6.2.3;
// -2 and -3, 6.2.4).
//
//   ColorCheck colors(checked);
//   colors.Check(space, resources.Get("ColorSpace"), {.place = {...}});
#ifndef TARNIX_ENGINES_PDFA_CHECKS_COLORCHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_COLORCHECK_H_

#include <cstdint>
#include <unordered_set>
#include <vector>

#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/pdfa/checks/SpotDefinitions.h"
#include "engines/pdfa/rules/ColorFacts.h"

namespace TarnixTools::engines::pdfa {

// How a colour space is used.
struct ColorUse {
  Place place;
  bool overprints = false;
  int overprint_mode = 0;
};

class ColorCheck {
 public:
  // What is checked outlives this.
  explicit ColorCheck(CheckedDocument& checked)
      : checked_(&checked), spot_definitions_(checked.document()) {}

  //   space  - a name, or as resources or a dictionary have it
  //   spaces - /ColorSpace of the resources where names are looked up, and default colour spaces
  // Throws pdf::Error for a document that cannot be read any more.
  void Check(const pdf::Object& space, const pdf::Object& spaces, const ColorUse& use);

 private:
  // A colour space that is still to be looked at.
  struct Item {
    pdf::Object space;
    bool is_default = false;  // it stands in for one of a device, or is within one that does
  };

  void CheckOne(const Item& item);
  void CheckName(std::string_view name, bool is_default);
  void CheckDevice(DeviceKind kind, bool is_default);
  void CheckIcc(const pdf::Object& stream);
  void CheckSeparation(const pdf::Object& array, bool is_default);
  void CheckDeviceN(const pdf::Object& array, bool is_default);
  void CheckColorantName(std::string_view name);
  pdf::Object ItemOf(const pdf::Object& array, std::size_t index);

  CheckedDocument* checked_;
  SpotDefinitions spot_definitions_;
  std::unordered_set<std::uint32_t> known_profiles_;  // numbers of their streams
  // Of one call:
  pdf::Arena arena_;
  pdf::Object spaces_;
  ColorUse use_;
  std::vector<Item> waiting_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_COLORCHECK_H_
