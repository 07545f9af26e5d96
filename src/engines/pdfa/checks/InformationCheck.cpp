#include "engines/pdfa/checks/InformationCheck.h"

#include "engines/pdfa/rules/MetadataFacts.h"
#include "engines/support/metadata/XmpInfo.h"

namespace TarnixTools::engines::pdfa {

namespace {

// By XmpInfoField.
constexpr std::array<bool InformationFacts::*, kXmpInfoFieldCount> kFacts = {
    &InformationFacts::title_agrees,         &InformationFacts::author_agrees,
    &InformationFacts::subject_agrees,       &InformationFacts::keywords_agree,
    &InformationFacts::creator_agrees,       &InformationFacts::producer_agrees,
    &InformationFacts::creation_date_agrees, &InformationFacts::modification_date_agrees};

bool IsDate(const XmpMirror& mirror) {
  return mirror.type == "date";
}

}  // namespace

void CheckInformation(CheckedDocument& checked, const XmpTree* packet) {
  const XmpInfoValues values = ReadXmpInfoValues(checked.document());
  InformationFacts facts;
  pdf::Arena arena;
  const pdf::Followed information =
      checked.document().Follow(checked.document().trailer().Get("Info"), arena);
  for (std::size_t i = 0; i < kXmpInfoFieldCount; ++i) {
    const XmpMirror& mirror = kXmpMirrors[i];
    if (values[i]) {
      facts.*kFacts[i] =
          packet != nullptr ? XmpAgrees(*packet, mirror, *values[i]) : IsDate(mirror);
    } else {  // what is no string agrees with nothing
      facts.*kFacts[i] =
          IsDate(mirror) || checked.Get(information.value, mirror.key, arena).IsNull();
    }
  }
  checked.findings().Check(facts, {.object = information.number});
}

}  // namespace TarnixTools::engines::pdfa
