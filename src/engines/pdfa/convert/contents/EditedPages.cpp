#include "engines/pdfa/convert/contents/EditedPages.h"

#include <string>

#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

pdf::PageContents ContentOfPage(Conversion& conversion, std::uint32_t number) {
  pdf::Arena arena;
  const pdf::Object page = conversion.document.Resolve(pdf::Object::Ref({number, 0}), arena);
  return pdf::ReadPageContents(conversion.document, page.Get("Contents"));
}

void WriteEditedPages(Conversion& conversion) {
  for (const auto& [number, edits] : conversion.page_edits) {
    if (number == 0 || edits.empty()) {
      continue;
    }
    std::string reference;
    pdf::AppendReference(
        reference, conversion.rewriter.AddLater([&conversion, number = number, &edits = edits] {
          return pdf::ObjectChange::Stream(
              "<<>>", edits.AppliedTo(ContentOfPage(conversion, number).bytes));
        }));
    conversion.rewriter.SetEntry(number, "Contents", reference);
  }
}

}  // namespace TarnixTools::engines::pdfa
