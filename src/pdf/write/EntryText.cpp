#include "pdf/write/EntryText.h"

#include <algorithm>

#include "pdf/write/Serialize.h"

namespace TarnixTools::pdf {

void AppendEntries(std::string& out, const Object& dictionary,
                   std::span<const std::string_view> without) {
  for (const DictionaryEntry& entry : dictionary.Entries()) {
    if (std::find(without.begin(), without.end(), entry.Key()) == without.end()) {
      AppendName(out, entry.Key());
      AppendObject(out, entry.value);
    }
  }
}

}  // namespace TarnixTools::pdf
