// The advances that a CIDFont gives to its glyphs (ISO 32000-2, 9.7.4.3): /DW and /W.
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_CIDWIDTHS_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_CIDWIDTHS_H_

#include <cstdint>
#include <vector>

#include "pdf/file/Document.h"

namespace TarnixTools::engines::fonts {

class CidWidths {
 public:
  // Those of a font without any entry.
  CidWidths() = default;
  // font: the dictionary of a CIDFont. Throws Error for a document that cannot be read any more.
  CidWidths(pdf::Document& document, const pdf::Object& font);

  // In thousandths of the font's size.
  double WidthOf(std::uint32_t cid) const;

 private:
  struct Range {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    double width = 0;
  };

  void Add(std::int64_t first, std::int64_t last, double width);

  double default_ = 1000;
  std::vector<Range> ranges_;  // in order
};

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_CIDWIDTHS_H_
