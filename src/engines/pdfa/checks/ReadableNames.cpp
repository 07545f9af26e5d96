#include "engines/pdfa/checks/ReadableNames.h"

#include "engines/pdfa/rules/FileFacts.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines::pdfa {

namespace {

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const DecodedCharacter character = DecodeUtf8(text);
    if (!character.is_well_formed) {
      return false;
    }
    text.remove_prefix(character.length);
  }
  return true;
}

}  // namespace

void CheckReadableName(FindingList& findings, std::string_view name, const Place& place) {
  findings.Check(ReadableNameFacts{IsUtf8(name)}, place);
}

}  // namespace TarnixTools::engines::pdfa
