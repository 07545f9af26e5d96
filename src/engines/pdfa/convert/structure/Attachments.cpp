#include "engines/pdfa/convert/structure/Attachments.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engines/pdfa/convert/structure/EntryRules.h"
#include "engines/pdfa/vocabulary/OneOf.h"
#include "pdf/syntax/Chars.h"
#include "pdf/tree/NameTree.h"
#include "pdf/write/EntryText.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::DictionaryEntry;
using pdf::Object;

namespace {

// Names of the document that are written anew, or not at all.
constexpr std::array<std::string_view, 3> kOtherNames = {"EmbeddedFiles", "JavaScript",
                                                         "AlternatePresentations"};
constexpr const char* kUnknownType = "/application#2Foctet-stream";

bool IsTypePart(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
    return pdf::IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           std::string_view("-_+.").find(c) != std::string_view::npos;
  });
}

// "text/xml".
bool IsMimeType(std::string_view text) {
  const std::size_t slash = text.find('/');
  return slash != std::string_view::npos && IsTypePart(text.substr(0, slash)) &&
         IsTypePart(text.substr(slash + 1));
}

class AttachmentMender {
 public:
  explicit AttachmentMender(Conversion& conversion) : conversion_(&conversion) {}

  void Mend() {
    KeepNames();
    for (std::uint32_t number = 1; number < document().object_limit(); ++number) {
      Arena arena;
      const Object value = document().Exists(number) ? rewriter().Load(number, arena) : Object();
      TakeOut(number, value.Get("FS"));
      if (value.Get("EF").IsNull() || !document().Resolve(value.Get("EF"), arena).IsDictionary()) {
        continue;
      }
      MendSpecification(number, value);
      files_.push_back(number);
    }
    if (!files_.empty() && PartOf(conversion_->level) == 3) {
      Associate();
    }
  }

 private:
  pdf::Document& document() { return conversion_->document; }

  pdf::DocumentRewriter& rewriter() { return conversion_->rewriter; }

  // Only of files that are still there, each an object of its own.
  void KeepNames() {
    Arena arena;
    const Object given = document().Catalog(arena).Get("Names");
    const Object names =
        given.IsReference() ? rewriter().Load(given.AsReference().number, arena) : given;
    const Object tree = names.Get("EmbeddedFiles");
    if (tree.IsNull()) {
      return;
    }
    std::string kept;
    pdf::ReadNameTree(document(), tree, [&](std::string_view name, const Object& value) {
      Arena own;
      const std::uint32_t number =
          value.IsReference() ? value.AsReference().number : AddSpecification(value);
      if (number != 0 && rewriter().Load(number, own).Has("EF")) {
        pdf::AppendString(kept, name, false);
        pdf::AppendReference(kept, number);
      }
    });
    std::string text = "<<";
    pdf::AppendEntries(text, names, kOtherNames);
    text += kept.empty() ? ">>" : "/EmbeddedFiles<</Names[" + kept + "]>>>>";
    rewriter().SetEntry(rewriter().catalog(), "Names", text);
  }

  // The specification of an annotation that is written in place: only an object can be associated with
  // anything.
  void TakeOut(std::uint32_t number, const Object& specification) {
    if (specification.IsDictionary()) {
      if (const std::uint32_t own = AddSpecification(specification); own != 0) {
        std::string reference;
        pdf::AppendReference(reference, own);
        rewriter().SetEntry(number, "FS", reference);
      }
    }
  }

  // As an object of its own; 0 for what stands for no file that may stay.
  std::uint32_t AddSpecification(const Object& specification) {
    Arena arena;
    const Object files = document().Resolve(specification.Get("EF"), arena);
    const EntryLook look{.document = &document(),
                         .arena = &arena,
                         .owner = specification,
                         .value = files,
                         .level = conversion_->level,
                         .files = &known_files_};
    if (!files.IsDictionary() || RuleAgainst("EF", look) != nullptr) {
      return 0;
    }
    std::string text;
    pdf::AppendObject(text, specification);
    const std::uint32_t number = rewriter().Add(pdf::ObjectChange::Value(std::move(text)));
    MendSpecification(number, specification);
    files_.push_back(number);
    return number;
  }

  void MendSpecification(std::uint32_t number, const Object& specification) {
    Arena arena;
    if (!document().Resolve(specification.Get("AFRelationship"), arena).IsName()) {
      rewriter().SetEntry(number, "AFRelationship", "/Unspecified");
    }
    CopyName(number, specification, "F", "UF");
    CopyName(number, specification, "UF", "F");
    const Object files = document().Resolve(specification.Get("EF"), arena);
    for (const DictionaryEntry& entry : files.Entries()) {
      MendType(entry.value.AsReference().number);
    }
  }

  void CopyName(std::uint32_t number, const Object& specification, std::string_view missing,
                std::string_view other) {
    if (specification.Get(missing).IsNull()) {
      std::string text;
      const Object name = specification.Get(other);
      pdf::AppendObject(text, name.IsNull() ? Object::String("attachment") : name);
      rewriter().SetEntry(number, missing, text);
    }
  }

  void MendType(std::uint32_t number) {
    Arena arena;
    const Object stream = number != 0 ? document().Load({number, 0}, arena) : Object();
    if (stream.IsDictionary() &&
        !IsMimeType(document().Resolve(stream.Get("Subtype"), arena).Text())) {
      rewriter().SetEntry(number, "Subtype", kUnknownType);
    }
  }

  // With the document as a whole, where nothing in it is said to belong to the file.
  void Associate() {
    Arena arena;
    const Object known = document().Resolve(document().Catalog(arena).Get("AF"), arena);
    std::vector<std::uint32_t> associated;
    pdf::CollectReferences(known, associated);
    std::string text = "[";
    for (const Object& item : known.Items()) {
      pdf::AppendObject(text, item);
    }
    for (const std::uint32_t file : files_) {
      if (std::find(associated.begin(), associated.end(), file) == associated.end()) {
        pdf::AppendReference(text, file);
      }
    }
    rewriter().SetEntry(rewriter().catalog(), "AF", text + "]");
  }

  Conversion* conversion_;
  KnownFiles known_files_;
  std::vector<std::uint32_t> files_;  // numbers of their specifications
};

}  // namespace

void MendAttachments(Conversion& conversion) {
  if (!conversion.is_part1()) {
    AttachmentMender(conversion).Mend();
  }
}

}  // namespace TarnixTools::engines::pdfa
