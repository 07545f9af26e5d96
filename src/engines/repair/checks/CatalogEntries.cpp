#include "engines/repair/checks/CatalogEntries.h"

#include <string>

#include "pdf/write/EntryText.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::repair {

void SetCatalogEntry(CheckContext& context, std::string_view name, std::string_view key,
                     std::string_view text) {
  pdf::Arena arena;
  pdf::DocumentRewriter& rewriter = context.rewriter;
  const pdf::Object value = rewriter.Load(rewriter.catalog(), arena).Get(name);
  const pdf::Followed followed = context.document.Follow(value, arena);
  if (followed.number != 0 && text.empty()) {
    rewriter.RemoveEntry(followed.number, key);
  } else if (followed.number != 0) {
    rewriter.SetEntry(followed.number, key, std::string(text));
  } else if (followed.value.IsDictionary()) {
    std::string edited = "<<";
    pdf::AppendEntries(edited, followed.value, {key});
    if (!text.empty()) {
      pdf::AppendName(edited, key);
      pdf::AppendToken(edited, text);
    }
    rewriter.SetEntry(rewriter.catalog(), name, edited + ">>");
  }
}

}  // namespace TarnixTools::engines::repair
