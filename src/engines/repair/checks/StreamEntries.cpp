#include "engines/repair/checks/StreamEntries.h"

#include <array>
#include <string_view>

#include "pdf/write/EntryText.h"

namespace TarnixTools::engines::repair {

namespace {

constexpr std::array<std::string_view, 6> kDataKeys = {"Length", "Filter", "DecodeParms",
                                                       "F",      "DP",     "DL"};

}  // namespace

void AppendEntriesWithoutData(std::string& text, const pdf::Object& dictionary) {
  pdf::AppendEntries(text, dictionary, kDataKeys);
}

}  // namespace TarnixTools::engines::repair
