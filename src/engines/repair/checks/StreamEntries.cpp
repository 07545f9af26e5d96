#include "engines/repair/checks/StreamEntries.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::repair {

namespace {

constexpr std::array<std::string_view, 6> kDataKeys = {"Length", "Filter", "DecodeParms",
                                                       "F",      "DP",     "DL"};

}  // namespace

void AppendEntriesWithoutData(std::string& text, const pdf::Object& dictionary) {
  for (const pdf::DictionaryEntry& entry : dictionary.Entries()) {
    if (std::ranges::find(kDataKeys, entry.Key()) == kDataKeys.end()) {
      pdf::AppendName(text, entry.Key());
      pdf::AppendObject(text, entry.value);
    }
  }
}

}  // namespace TarnixTools::engines::repair
