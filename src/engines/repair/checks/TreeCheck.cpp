#include "engines/repair/checks/TreeCheck.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "engines/repair/checks/CatalogEntries.h"
#include "pdf/tree/KeyedTree.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::repair {

namespace {

using pdf::Object;

// Entries of the catalog that are dictionaries (table 29). A stream has a dictionary, too.
constexpr std::array<std::string_view, 12> kDictionaries = {
    "Names",        "Dests",    "Outlines", "PageLabels",        "AcroForm", "StructTreeRoot",
    "OCProperties", "Metadata", "MarkInfo", "ViewerPreferences", "Perms",    "Extensions"};

// Name trees that /Names leads to (table 32).
constexpr std::array<std::string_view, 9> kNameTrees = {
    "Dests", "AP",   "JavaScript",    "Pages",     "Templates",
    "IDS",   "URLS", "EmbeddedFiles", "Renditions"};

// Where a tree is said to be.
struct Place {
  std::string_view owner;  // the catalog's entry that has it; empty for the catalog itself
  std::string_view key;
};

class Checker {
 public:
  explicit Checker(CheckContext& context)
      : context_(&context),
        document_(&context.document),
        catalog_(context.document.Catalog(arena_)) {}

  void CheckEntries() {
    for (const std::string_view key : kDictionaries) {
      const Object value = document_->Resolve(catalog_.Get(key), arena_);
      if (!value.IsNull() && !value.IsDictionary()) {
        Add(ProblemCode::kCatalogEntryInvalid, Outcome::kLost, 0, std::string(key));
        context_->rewriter.RemoveEntry(context_->rewriter.catalog(), key);
      }
    }
  }

  void CheckTrees() {
    const Object names = document_->Resolve(catalog_.Get("Names"), arena_);
    for (const std::string_view key : kNameTrees) {
      CheckTree(names.Get(key), "Names", {"Names", key});
    }
    CheckTree(catalog_.Get("PageLabels"), "Nums", {"", "PageLabels"});
    const Object structure = document_->Resolve(catalog_.Get("StructTreeRoot"), arena_);
    CheckTree(structure.Get("ParentTree"), "Nums", {"StructTreeRoot", "ParentTree"});
  }

 private:
  void Add(ProblemCode code, Outcome outcome, std::uint32_t object, std::string detail) {
    context_->problems.Add(
        {.code = code, .outcome = outcome, .object = object, .detail = std::move(detail)});
  }

  void CheckTree(const Object& root, std::string_view leaf_key, const Place& place) {
    const pdf::TreeDamage damage =
        pdf::ForEachInTree(*document_, root, leaf_key, [](const Object&, const Object&) {});
    const bool is_name_tree = leaf_key == "Names";
    // A number without a value names nothing; a name without one is lost.
    if (damage.nodes + damage.loops + (is_name_tree ? damage.entries : 0) == 0) {
      return;
    }
    Add(is_name_tree ? ProblemCode::kNameTreeDamaged : ProblemCode::kNumberTreeDamaged,
        damage.nodes > 0 ? Outcome::kLost : Outcome::kFixed, root.AsReference().number,
        std::string(place.key));
    std::string text = "<</" + std::string(leaf_key) + "[";
    pdf::ForEachInTree(*document_, root, leaf_key, [&](const Object& key, const Object& value) {
      pdf::AppendObject(text, key);
      pdf::AppendObject(text, value);
    });
    text += "]>>";
    if (root.IsReference()) {
      context_->rewriter.Change(root.AsReference().number, pdf::ObjectChange::Value(text));
    } else if (place.owner.empty()) {
      context_->rewriter.SetEntry(context_->rewriter.catalog(), place.key, text);
    } else {
      SetCatalogEntry(*context_, place.owner, place.key, text);
    }
  }

  CheckContext* context_;
  pdf::Document* document_;
  pdf::Arena arena_;
  Object catalog_;
};

}  // namespace

void CheckCatalog(CheckContext& context) {
  Checker(context).CheckEntries();
}

void CheckKeyedTrees(CheckContext& context) {
  Checker(context).CheckTrees();
}

}  // namespace TarnixTools::engines::repair
