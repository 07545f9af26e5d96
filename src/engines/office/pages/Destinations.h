// Where destinations and actions of a document lead to (ISO 32000-2, 12.3.2): pages by their index,
// and places on them.
#ifndef TARNIX_ENGINES_OFFICE_PAGES_DESTINATIONS_H_
#define TARNIX_ENGINES_OFFICE_PAGES_DESTINATIONS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

#include "pdf/file/Document.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines::office {

struct PagePlace {
  std::uint32_t page = 0;  // zero-based
  double y = 0;  // from the top of the page as it is seen, in points; 0 where it says none
};

class Destinations {
 public:
  // Both outlive this.
  Destinations(pdf::Document& document, const pdf::PageTree& pages);

  // Places are those on pages that are no larger.
  void set_room(const pdf::SeenSize& room) { room_ = room; }

  // Nothing for one that leads to no page of the document: an explicit destination, a name, or a
  // dictionary that holds one. Throws pdf::Error for a document that cannot be read any more.
  std::optional<PagePlace> PlaceOf(const pdf::Object& destination);

  // The place that an outline item or an annotation leads to, by its /Dest or by its action.
  std::optional<PagePlace> PlaceOfEntry(const pdf::Object& entry);

  // The index of a page by the number of its object.
  std::optional<std::uint32_t> IndexOf(std::uint32_t number) const;

 private:
  struct Target {
    std::uint32_t page = 0;
    std::optional<double> top;  // in the page's own units
  };

  void ReadNames();
  void AddName(std::string_view name, const pdf::Object& value);
  std::optional<Target> TargetOf(const pdf::Object& value);
  std::optional<std::uint32_t> PageOf(const pdf::Object& item);
  PagePlace PlaceOf(const Target& target);

  pdf::Document* document_;
  const pdf::PageTree* pages_;
  std::unordered_map<std::uint32_t, std::uint32_t> indexes_;  // by number of the page's object
  pdf::SeenSize room_;
  bool has_names_ = false;
  std::unordered_map<std::string, Target> names_;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_PAGES_DESTINATIONS_H_
