#include "engines/pdfa/convert/contents/EditedPages.h"

#include <string>

#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

pdf::PageContents ContentOfPage(Conversion& conversion, std::size_t page_index) {
  pdf::Arena arena;
  const pdf::PageTree::Page& page = conversion.pages.pages()[page_index];
  return pdf::ReadPageContents(conversion.document,
                               conversion.pages.Load(page, arena).Get("Contents"));
}

void WriteEditedPages(Conversion& conversion) {
  for (const auto& [index, edits] : conversion.page_edits) {
    const std::uint32_t number = conversion.pages.pages()[index].number;
    if (number == 0 || edits.empty()) {
      continue;
    }
    std::string reference;
    pdf::AppendReference(reference,
                         conversion.rewriter.AddLater([&conversion, index = index, &edits = edits] {
                           return pdf::ObjectChange::Stream(
                               "<<>>", edits.AppliedTo(ContentOfPage(conversion, index).bytes));
                         }));
    conversion.rewriter.SetEntry(number, "Contents", reference);
  }
}

}  // namespace TarnixTools::engines::pdfa
