#include "engines/pdfa/convert/structure/EntryRules.h"

#include <algorithm>
#include <array>

#include "engines/pdfa/checks/EmbeddedPdf.h"
#include "engines/pdfa/vocabulary/LanguageTag.h"
#include "engines/pdfa/vocabulary/Names.h"
#include "pdf/tree/TextString.h"

namespace TarnixTools::engines::pdfa {

using pdf::Object;

namespace {

constexpr std::size_t kMaxNextActions = 1'000;

bool Always(const EntryLook& /*look*/) {
  return true;
}

// An action that is not allowed (ISO 19005-2, 6.5.1; 19005-1, 6.6.1).
bool IsForbiddenAction(const Object& action, const EntryLook& look) {
  const Object type = look.document->Resolve(action.Get("S"), *look.arena);
  if (!type.IsName()) {
    return false;  // a destination, or attributes of a structure element
  }
  if (type.IsName("Named")) {
    return !IsOneOf(look.document->Resolve(action.Get("N"), *look.arena).Text(), kPageActions);
  }
  return !IsOneOf(type.Text(), kPlainActions) &&
         (PartOf(look.level) == 1 || !type.IsName(kLaterAction));
}

bool IsForbiddenActions(const EntryLook& look) {
  std::size_t left = kMaxNextActions;
  for (const Object& item : look.value.Items()) {
    if (left-- == 0 || IsForbiddenAction(look.document->Resolve(item, *look.arena), look)) {
      return true;
    }
  }
  return IsForbiddenAction(look.value, look);
}

bool IsForbiddenOwnAction(const EntryLook& look) {
  return look.OwnerIs("Widget") || IsForbiddenActions(look);
}

// Resources may have any name, this one too.
bool IsAdditionalActions(const EntryLook& look) {
  return look.value.IsDictionary() && !look.value.Has("Type") && !look.value.Has("Subtype");
}

bool IsArray(const EntryLook& look) {
  return look.value.IsArray();
}

bool IsOfImage(const EntryLook& look) {
  return look.is_stream && look.OwnerIs("Image");
}

bool IsOfForm(const EntryLook& look) {
  return look.is_stream && look.OwnerIs("Form");
}

bool IsOfStream(const EntryLook& look) {
  return look.is_stream;
}

bool IsOfXObject(const EntryLook& look) {
  return IsOfImage(look) || IsOfForm(look);
}

bool IsTrueOfImage(const EntryLook& look) {
  return IsOfImage(look) && look.value.BooleanOr(true);
}

// The intent of a layer is another thing.
bool IsUnknownIntentOfImage(const EntryLook& look) {
  return IsOfImage(look) && !IsOneOf(look.value.Text(), kIntents);
}

bool IsUnknownIntent(const EntryLook& look) {
  return look.value.IsName() && !look.owner.Has("S") && !IsOneOf(look.value.Text(), kIntents);
}

bool IsFunction(const Object& value) {
  return value.IsName() || value.IsArray() || value.Has("FunctionType");
}

// A soft mask has a function under the same key.
bool IsTransferFunction(const EntryLook& look) {
  return !look.owner.Has("G") && IsFunction(look.value);
}

bool IsOtherThanDefault(const EntryLook& look) {
  return !look.value.IsName("Default") && IsFunction(look.value);
}

bool IsHalftone(const EntryLook& look) {
  return look.value.IsName() || look.value.Has("HalftoneType");
}

bool IsUnknownBlendMode(const EntryLook& look) {
  if (look.value.IsArray()) {
    const auto items = look.value.Items();
    return items.empty() || !std::all_of(items.begin(), items.end(), [&](const Object& item) {
             return IsOneOf(look.document->Resolve(item, *look.arena).Text(), kBlendModes);
           });
  }
  return look.value.IsName() && !IsOneOf(look.value.Text(), kBlendModes);
}

bool IsOverprintMode(const EntryLook& look) {
  return look.value.IntegerOr(0) != 0 && !look.owner.Has("FT");
}

bool IsCatalogs(const EntryLook& look) {
  return look.OwnerEntry("Type").IsName("Catalog") || look.owner.Has("Pages");
}

bool IsPages(const EntryLook& look) {
  return look.OwnerEntry("Type").IsName("Page");
}

bool IsOfDocumentNames(const EntryLook& look) {
  return look.value.IsDictionary() && (look.value.Has("Names") || look.value.Has("Kids"));
}

// Part 1 does not take it even where it names no file.
bool IsTreeOfFiles(const EntryLook& look) {
  return IsOfDocumentNames(look) || (look.value.IsDictionary() && look.value.Entries().empty());
}

bool IsOfInteractiveForm(const EntryLook& look) {
  return look.owner.Has("Fields");
}

// Metadata of anything but the document has to be as strictly written as that.
bool IsComponentMetadata(const EntryLook& look) {
  return look.value.Has("Subtype") &&
         look.document->Resolve(look.value.Get("Subtype"), *look.arena).IsName("XML") &&
         !IsCatalogs(look);
}

bool IsOfFile(const EntryLook& look) {
  return look.value.IsDictionary() && (look.owner.Has("F") || look.owner.Has("UF") ||
                                       look.OwnerEntry("Type").IsName("Filespec"));
}

// A file that many refer to is read and validated once.
bool IsPdfA(const EntryLook& look, std::uint32_t number) {
  const auto [known, is_new] = look.files->try_emplace(number, false);
  if (is_new) {
    known->second = IsEmbeddedPdfA(*look.document, number, 0);
  }
  return known->second;
}

// Part 2 takes files that are PDF/A themselves (ISO 19005-2, 6.8).
bool IsOfOtherFile(const EntryLook& look) {
  const auto entries = look.value.Entries();
  return IsOfFile(look) && !std::all_of(entries.begin(), entries.end(), [&](const auto& entry) {
           return IsPdfA(look, entry.value.AsReference().number);
         });
}

// What makes painting transparent, in a graphics state (ISO 19005-1, 6.4).
bool IsOpacity(const EntryLook& look) {
  return look.value.IsNumber() && look.value.NumberOr(1) != 1;
}

bool IsBlending(const EntryLook& look) {
  return (look.value.IsName() || look.value.IsArray()) && !look.value.IsName("Normal") &&
         !look.value.IsName("Compatible");
}

bool IsSoftMask(const EntryLook& look) {
  return !look.is_stream && look.value.Has("S") && look.value.Has("G");
}

bool IsTransparencyGroup(const EntryLook& look) {
  return look.document->Resolve(look.value.Get("S"), *look.arena).IsName("Transparency");
}

bool IsBadLanguage(const EntryLook& look) {
  return look.value.IsString() &&
         !IsLanguageTag(pdf::TextStringToUtf8(look.value.Text()),
                        PartOf(look.level) == 1 ? Subtags::kLetters : Subtags::kLettersAndDigits);
}

bool IsOfAnnotation(const EntryLook& look) {
  return look.owner.Has("Rect") && look.owner.Has("Subtype");
}

constexpr const char* kAction = "actions that run something or depend on the viewer";
constexpr const char* kPrinting = "settings of a printing device";
constexpr const char* kTransparency = "settings of transparency, which this part does not have";
constexpr const char* kOutside = "references to data outside of the file";

// With ISO 19005-2 (-1): 6.5.1 (6.6.1), 6.5.2 (6.6.2), 6.2.8 (6.2.4), 6.2.9 (6.2.5), 6.2.5 (6.2.8),
// 6.2.6 (6.2.9), 6.2.10 (6.4), 6.2.4.2, 6.1.7.1 (6.1.7), 6.4 (6.9), 6.10, 6.11, 6.6.2.1 (6.7.2).
constexpr std::array kRules = {
    EntryRule{"A", &IsForbiddenOwnAction, kAllLevels, kAction},
    EntryRule{"PA", &IsForbiddenActions, kAllLevels, kAction},
    EntryRule{"OpenAction", &IsForbiddenActions, kAllLevels, kAction},
    EntryRule{"Next", &IsForbiddenActions, kAllLevels, kAction},
    EntryRule{"AA", &IsAdditionalActions, kAllLevels, kAction},
    EntryRule{"JavaScript", &IsOfDocumentNames, kAllLevels, "scripts"},
    EntryRule{"Alternates", &IsOfImage, kAllLevels, "alternate images"},
    EntryRule{"OPI", &IsOfXObject, kAllLevels, kOutside},
    EntryRule{"Interpolate", &IsTrueOfImage, kAllLevels, "interpolation of images"},
    EntryRule{"Intent", &IsUnknownIntentOfImage, kAllLevels,
              "rendering intents that are not known"},
    EntryRule{"RI", &IsUnknownIntent, kAllLevels, "rendering intents that are not known"},
    EntryRule{"PS", &IsOfForm, kAllLevels, "PostScript"},
    EntryRule{"Subtype2", &IsOfForm, kAllLevels, "PostScript"},
    EntryRule{"Ref", &IsOfForm, kAllLevels, kOutside},
    EntryRule{"TR", &IsTransferFunction, kAllLevels, kPrinting},
    EntryRule{"TR2", &IsOtherThanDefault, kAllLevels, kPrinting},
    EntryRule{"HTP", &IsArray, kAllLevels, kPrinting},
    EntryRule{"HT", &IsHalftone, kAllLevels, kPrinting},
    EntryRule{"OPM", &IsOverprintMode, kParts2And3, kPrinting},
    EntryRule{"BM", &IsUnknownBlendMode, kAllLevels, "blend modes that are not known"},
    EntryRule{"F", &IsOfStream, kAllLevels, kOutside},
    EntryRule{"FFilter", &IsOfStream, kAllLevels, kOutside},
    EntryRule{"FDecodeParms", &IsOfStream, kAllLevels, kOutside},
    EntryRule{"Metadata", &IsComponentMetadata, kAllLevels, "metadata of parts of the document"},
    EntryRule{"EF", &IsOfFile, kPart1, "embedded files"},
    EntryRule{"EF", &IsOfOtherFile, kPart2, "embedded files that are no PDF/A"},
    EntryRule{"EmbeddedFiles", &IsTreeOfFiles, kPart1, "embedded files"},
    EntryRule{"CA", &IsOfAnnotation, kPart1, "opacity of annotations"},
    EntryRule{"CA", &IsOpacity, kPart1, kTransparency},
    EntryRule{"ca", &IsOpacity, kPart1, kTransparency},
    EntryRule{"BM", &IsBlending, kPart1, kTransparency},
    EntryRule{"SMask", &IsSoftMask, kPart1, kTransparency},
    EntryRule{"Group", &IsTransparencyGroup, kPart1, "transparency groups"},
    EntryRule{"NeedAppearances", &IsOfInteractiveForm, kAllLevels,
              "the wish that viewers draw fields themselves"},
    EntryRule{"XFA", &IsOfInteractiveForm, kAllLevels, "XFA forms"},
    EntryRule{"NeedsRendering", &IsCatalogs, kAllLevels, "XFA forms"},
    EntryRule{"Requirements", &IsCatalogs, kAllLevels, "requirements on the viewer"},
    EntryRule{"Perms", &IsCatalogs, kAllLevels, "permissions granted by signatures"},
    EntryRule{"Version", &IsCatalogs, kAllLevels, "a version of the catalog's own"},
    EntryRule{"AlternatePresentations", &Always, kAllLevels, "alternate presentations"},
    EntryRule{"Lang", &IsBadLanguage, kTaggedLevels,
              "languages that are not named as they should be"},
    EntryRule{"PresSteps", &IsPages, kAllLevels, "steps of a presentation"},
};

}  // namespace

const EntryRule* RuleAgainst(std::string_view key, const EntryLook& look) {
  const auto found = std::find_if(kRules.begin(), kRules.end(), [&](const EntryRule& rule) {
    return rule.key == key && Contains(rule.levels, look.level) && rule.forbids(look);
  });
  return found == kRules.end() ? nullptr : &*found;
}

bool IsRuledKey(std::string_view key) {
  return std::any_of(kRules.begin(), kRules.end(),
                     [key](const EntryRule& rule) { return rule.key == key; });
}

}  // namespace TarnixTools::engines::pdfa
