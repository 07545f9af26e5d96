// What the steps of a conversion share: the document, what is to become of it, and what is told.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_CONVERSION_H_
#define TARNIX_ENGINES_PDFA_CONVERT_CONVERSION_H_

#include <cstdint>
#include <map>
#include <set>

#include "engines/pdfa/Level.h"
#include "engines/pdfa/convert/ConversionReport.h"
#include "engines/pdfa/convert/contents/ContentEdits.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::pdfa {

struct Conversion {
  bool is_part1() const { return PartOf(level) == 1; }

  pdf::Document& document;
  const pdf::PageTree& pages;
  pdf::DocumentRewriter& rewriter;
  Level level;
  ConversionReport& report;
  // Numbers of those whose appearance is to be a picture of what is seen in their place.
  std::set<std::uint32_t> pictured_annotations{};
  // By number of the page, which may stand in the document more than once; see EditedContents.h.
  std::map<std::uint32_t, ContentEdits> page_edits{};
  // By number of the stream: those of all other content.
  std::map<std::uint32_t, ContentEdits> stream_edits{};
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_CONVERSION_H_
