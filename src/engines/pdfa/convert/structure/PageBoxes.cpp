#include "engines/pdfa/convert/structure/PageBoxes.h"

#include <array>
#include <cmath>
#include <optional>
#include <string_view>

#include "pdf/tree/PageGeometry.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr double kLeastSide = 3;
constexpr double kMostSide = 14'400;
constexpr std::array<std::string_view, 3> kOptionalBoxes = {"BleedBox", "TrimBox", "ArtBox"};

bool IsAllowed(const std::optional<pdf::Box>& box) {
  return box && box->width() >= kLeastSide && box->width() <= kMostSide &&
         box->height() >= kLeastSide && box->height() <= kMostSide;
}

}  // namespace

void MendPageBoxes(Conversion& conversion) {
  if (conversion.is_part1()) {
    return;
  }
  for (const pdf::PageTree::Page& page : conversion.pages.pages()) {
    pdf::Arena arena;
    const pdf::Object dictionary = conversion.pages.Load(page, arena);
    for (const std::string_view key : kOptionalBoxes) {
      const pdf::Object value = dictionary.Get(key);
      if (!value.IsNull() && page.number != 0 &&
          !IsAllowed(pdf::ReadPageBox(conversion.document, value))) {
        conversion.rewriter.RemoveEntry(page.number, key);
        conversion.report.Dropped("page boundaries of sizes that are not allowed");
      }
    }
    if (!IsAllowed(pdf::ReadPageGeometry(conversion.document, conversion.pages, page).media_box)) {
      conversion.report.Blocking("pages of sizes that are not allowed");
    }
  }
}

}  // namespace TarnixTools::engines::pdfa
