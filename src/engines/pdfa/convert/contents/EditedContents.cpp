#include "engines/pdfa/convert/contents/EditedContents.h"

#include <string>

#include "pdf/write/EntryText.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::Object;
using pdf::ObjectChange;

namespace {

std::string PlainDictionary(const Object& dictionary) {
  std::string text = "<<";
  pdf::AppendEntries(text, dictionary, {"Filter", "DecodeParms"});
  return text + ">>";
}

ObjectChange EditedStream(Conversion& conversion, std::uint32_t number, const ContentEdits& edits) {
  Arena arena;
  const auto stream = conversion.document.TryDecodeStream(number);
  const std::string data = stream ? edits.AppliedTo(stream->data) : std::string();
  return ObjectChange::Stream(PlainDictionary(conversion.document.Load({number, 0}, arena)), data);
}

void WritePages(Conversion& conversion) {
  for (const auto& [number, edits] : conversion.page_edits) {
    if (number == 0 || edits.empty()) {
      continue;
    }
    std::string reference;
    pdf::AppendReference(reference, conversion.rewriter.AddLater([&conversion, number = number,
                                                                  &edits = edits] {
      return ObjectChange::Stream("<<>>", edits.AppliedTo(ContentOfPage(conversion, number).bytes));
    }));
    conversion.rewriter.SetEntry(number, "Contents", reference);
  }
}

}  // namespace

pdf::PageContents ContentOfPage(Conversion& conversion, std::uint32_t number) {
  Arena arena;
  const Object page = conversion.document.Resolve(Object::Ref({number, 0}), arena);
  return pdf::ReadPageContents(conversion.document, page.Get("Contents"));
}

void WriteEditedContents(Conversion& conversion) {
  WritePages(conversion);
  for (const auto& [number, edits] : conversion.stream_edits) {
    if (!edits.empty()) {
      conversion.rewriter.ChangeLater(number, [&conversion, number = number, &edits = edits] {
        return EditedStream(conversion, number, edits);
      });
    }
  }
}

}  // namespace TarnixTools::engines::pdfa
