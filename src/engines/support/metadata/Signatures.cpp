#include "engines/support/metadata/Signatures.h"

#include <string>
#include <unordered_set>
#include <vector>

#include "pdf/write/EntryText.h"

namespace TarnixTools::engines {

namespace {

using pdf::Object;

// Bits of /SigFlags (12.7.3, table 225).
constexpr std::int64_t kAppendOnly = 2;

// The fields of a form, each once.
class SignedFields {
 public:
  SignedFields(pdf::Document& document, pdf::DocumentRewriter& rewriter)
      : document_(&document), rewriter_(&rewriter) {}

  // Takes the signatures out of the fields and of those below them.
  std::uint64_t Drop(const Object& fields) {
    AddKids(fields, false);
    while (!waiting_.empty()) {
      const Field field = waiting_.back();
      waiting_.pop_back();
      DropOf(field);
    }
    return count_;
  }

 private:
  struct Field {
    std::uint32_t number = 0;
    bool is_signature = false;  // by what is above it
  };

  void AddKids(const Object& kids, bool is_signature) {
    pdf::Arena arena;
    for (const Object& kid : document_->Resolve(kids, arena).Items()) {
      const std::uint32_t number = kid.AsReference().number;
      if (number != 0 && seen_.insert(number).second) {
        waiting_.push_back({number, is_signature});
      }
    }
  }

  void DropOf(const Field& field) {
    pdf::Arena arena;
    const Object dictionary = document_->Load({field.number, 0}, arena);
    const Object type = document_->Resolve(dictionary.Get("FT"), arena);
    const bool is_signature = type.IsNull() ? field.is_signature : type.IsName("Sig");
    if (is_signature && document_->Resolve(dictionary.Get("V"), arena).IsDictionary()) {
      rewriter_->RemoveEntry(field.number, "V");
      ++count_;
    }
    AddKids(dictionary.Get("Kids"), is_signature);
  }

  pdf::Document* document_;
  pdf::DocumentRewriter* rewriter_;
  std::vector<Field> waiting_;
  std::unordered_set<std::uint32_t> seen_;
  std::uint64_t count_ = 0;
};

// The form may be changed in other ways than by adding to its file from now on.
void AllowRewriting(pdf::Document& document, pdf::DocumentRewriter& rewriter, const Object& form) {
  pdf::Arena arena;
  const pdf::Followed found = document.Follow(form, arena);
  const std::int64_t flags =
      document.Resolve(found.value.Get("SigFlags"), arena).IntegerOr(0) & ~kAppendOnly;
  if (found.number != 0) {
    rewriter.SetEntry(found.number, "SigFlags", std::to_string(flags));
    return;
  }
  std::string text = "<<";
  pdf::AppendEntries(text, found.value, {"SigFlags"});
  rewriter.SetEntry(rewriter.catalog(), "AcroForm",
                    text + "/SigFlags " + std::to_string(flags) + ">>");
}

// Signatures that grant rights in certain viewers stand in no field (12.8.2.3).
bool GrantsRights(pdf::Document& document, const Object& catalog, pdf::Arena& arena) {
  const Object permissions = document.Resolve(catalog.Get("Perms"), arena);
  return permissions.Has("UR3") || permissions.Has("UR");
}

}  // namespace

std::uint64_t DropSignatures(pdf::Document& document, pdf::DocumentRewriter& rewriter) {
  pdf::Arena arena;
  const Object catalog = document.Catalog(arena);
  const Object form = catalog.Get("AcroForm");
  const Object fields = document.Resolve(form, arena).Get("Fields");
  const std::uint64_t in_fields = SignedFields(document, rewriter).Drop(fields);
  const std::uint64_t count = in_fields + (GrantsRights(document, catalog, arena) ? 1 : 0);
  if (in_fields > 0) {
    AllowRewriting(document, rewriter, form);
  }
  if (count > 0) {
    rewriter.RemoveEntry(rewriter.catalog(), "Perms");
    rewriter.RemoveEntry(rewriter.catalog(), "DSS");
  }
  return count;
}

}  // namespace TarnixTools::engines
