#include "engines/pdfa/convert/tags/Tags.h"

#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/checks/NodeWalk.h"
#include "engines/pdfa/convert/tags/PageScan.h"
#include "engines/pdfa/convert/tags/TagTree.h"
#include "engines/pdfa/vocabulary/LanguageTag.h"
#include "engines/pdfa/vocabulary/StructureRoles.h"
#include "engines/support/metadata/PdfAClaim.h"
#include "pdf/tree/TextString.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::Object;

namespace {

// What ISO 639-2 calls a language that is not known.
constexpr std::string_view kUnknownLanguage = "und";
// What a type that nobody knows stands for.
constexpr std::string_view kPlainRole = "Div";

class TagMender {
 public:
  explicit TagMender(Conversion& conversion) : conversion_(&conversion) {}

  void Mend() {
    if (HasElements()) {
      AddRoles();
    } else {
      RemoveOldStructure();
      Build();
    }
    rewriter().SetEntry(rewriter().catalog(), "MarkInfo", "<</Marked true>>");
    SetLanguage();
  }

 private:
  pdf::Document& document() { return conversion_->document; }

  pdf::DocumentRewriter& rewriter() { return conversion_->rewriter; }

  Object Root() {
    return document().Resolve(document().Catalog(arena_).Get("StructTreeRoot"), arena_);
  }

  // Whether the structure has any content.
  bool HasElements() {
    NodeWalk elements(document());
    elements.Add(Root().Get("K"));
    while (const pdf::Followed* element = elements.Next()) {
      const Object kids = element->value.Get("K");
      if (kids.IsInteger() || element->value.Has("MCID") || element->value.Has("Obj")) {
        return true;
      }
      for (const Object& kid : document().Resolve(kids, arena_).Items()) {
        if (kid.IsInteger()) {
          return true;
        }
      }
      elements.Add(kids);
    }
    return false;
  }

  // Types that are no standard ones and stand for none count as plain groups.
  void AddRoles() {
    const Object map = Root().Get("RoleMap");
    const StructureRoles roles(document(), map, PartOf(conversion_->level));
    std::set<std::string> unknown;
    NodeWalk elements(document());
    elements.Add(Root().Get("K"));
    while (const pdf::Followed* element = elements.Next()) {
      Arena arena;
      const Object type = document().Resolve(element->value.Get("S"), arena);
      if (type.IsName() && !roles.RoleOf(type.Text()).is_standard &&
          unknown.size() < limits::kMaxMadeRoles) {
        unknown.insert(std::string(type.Text()));
      }
      elements.Add(element->value.Get("K"));
    }
    if (!unknown.empty()) {
      SetRoles(document().Resolve(map, arena_), unknown);
    }
  }

  void SetRoles(const Object& map, const std::set<std::string>& unknown) {
    std::string text = "<<";
    for (const pdf::DictionaryEntry& entry : map.Entries()) {
      if (!unknown.contains(std::string(entry.Key()))) {
        pdf::AppendName(text, entry.Key());
        pdf::AppendObject(text, entry.value);
      }
    }
    const StructureRoles standard(document(), Object(), PartOf(conversion_->level));
    for (const std::string& type : unknown) {
      if (standard.RoleOf(type).is_standard) {
        continue;
      }
      pdf::AppendName(text, type);
      pdf::AppendName(text, kPlainRole);
    }
    const std::uint32_t root =
        document().Follow(document().Catalog(arena_).Get("StructTreeRoot"), arena_).number;
    if (root != 0) {
      rewriter().SetEntry(root, "RoleMap", text + ">>");
    }
    conversion_->report.Changed("types of structure elements that are not known", unknown.size());
  }

  // What belonged to elements belongs to none.
  void RemoveOldStructure() {
    for (std::uint32_t number = 1; number < document().object_limit(); ++number) {
      Arena arena;
      const Object value =
          document().Exists(number) ? document().Load({number, 0}, arena) : Object();
      for (const char* key : {"StructParents", "StructParent"}) {
        if (value.Has(key)) {
          rewriter().RemoveEntry(number, key);
        }
      }
      if (value.Has("SE") && value.Has("Title")) {
        rewriter().RemoveEntry(number, "SE");
      }
    }
  }

  void Build() {
    PageScan scan(document(), conversion_->pages,
                  conversion_->is_part1() ? HiddenContent::kIsLeftOut : HiddenContent::kIsMarked);
    TagTree tree(*conversion_);
    std::set<std::uint32_t> seen;
    std::size_t parts = 0;
    for (std::size_t i = 0; i < conversion_->pages.pages().size(); ++i) {
      const std::uint32_t number = conversion_->pages.pages()[i].number;
      if (number != 0 && seen.insert(number).second) {
        PageMarks marks = scan.Scan(i);
        parts += marks.size();
        if (!marks.is_whole || parts > limits::kMaxTaggedParts) {
          conversion_->report.Blocking("there is too much content to be tagged");
          return;
        }
        tree.Add(i, std::move(marks));
      }
    }
    tree.Write();
    conversion_->report.Changed("a document without tags into one with tags made of its layout");
  }

  // Of the document as a whole, where it tells none that can be taken.
  void SetLanguage() {
    const Object own = document().Resolve(document().Catalog(arena_).Get("Lang"), arena_);
    if (own.IsString() && IsName(pdf::TextStringToUtf8(own.Text()))) {
      return;
    }
    std::string language = LanguageOfMetadata();
    if (language.empty()) {
      language = kUnknownLanguage;
      conversion_->report.Changed("the language, of which nothing was said, into an unknown one");
    }
    std::string text;
    pdf::AppendString(text, language, false);
    rewriter().SetEntry(rewriter().catalog(), "Lang", text);
  }

  bool IsName(std::string_view tag) const {
    return !tag.empty() && IsLanguageTag(tag, conversion_->is_part1() ? Subtags::kLetters
                                                                      : Subtags::kLettersAndDigits);
  }

  std::string LanguageOfMetadata() {
    const XmpTree tree = ReadDocumentXmp(document());
    const XmpNode* node = tree.Find(kDcNamespace, "language");
    if (node == nullptr) {
      return {};
    }
    const std::string& value = node->children.empty() ? node->value : node->children.front().value;
    return IsName(value) ? value : std::string();
  }

  Conversion* conversion_;
  Arena arena_;
};

}  // namespace

void MendTags(Conversion& conversion) {
  if (Contains(kTaggedLevels, conversion.level)) {
    TagMender(conversion).Mend();
  }
}

}  // namespace TarnixTools::engines::pdfa
