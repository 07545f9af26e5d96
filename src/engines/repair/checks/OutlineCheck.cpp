#include "engines/repair/checks/OutlineCheck.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "engines/repair/checks/CatalogEntries.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::repair {

namespace {

using pdf::Object;

class Checker {
 public:
  explicit Checker(CheckContext& context) : context_(&context), document_(&context.document) {}

  void Run() {
    pdf::Arena arena;
    const pdf::Followed root = document_->Follow(document_->Catalog(arena).Get("Outlines"), arena);
    if (!root.value.IsDictionary()) {
      return;
    }
    seen_.insert(root.number);
    waiting_.push_back({root.number, root.value.Get("First").AsReference().number});
    while (!waiting_.empty()) {
      const List list = waiting_.back();
      waiting_.pop_back();
      CheckList(list);
    }
  }

 private:
  struct List {
    std::uint32_t parent = 0;
    std::uint32_t first = 0;
  };

  // Goes from item to item. What is wrong is said of the item that leads on.
  void CheckList(const List& list) {
    std::uint32_t before = 0;
    std::uint32_t number = list.first;
    pdf::Arena arena;
    while (number != 0) {
      arena.Reset();
      const Object item = document_->Load({.number = number, .generation = 0}, arena);
      if (!item.IsDictionary() || !seen_.insert(number).second) {
        Cut(list, before,
            item.IsDictionary() ? ProblemCode::kOutlineLoop : ProblemCode::kOutlineDamaged);
        return;
      }
      if (item.Has("First")) {
        waiting_.push_back({number, item.Get("First").AsReference().number});
      }
      before = number;
      number = item.Get("Next").AsReference().number;
    }
  }

  void Cut(const List& list, std::uint32_t before, ProblemCode code) {
    const std::uint32_t place = before != 0 ? before : list.parent;
    const std::string_view key = before != 0 ? "Next" : "First";
    Add(code, code == ProblemCode::kOutlineLoop ? Outcome::kFixed : Outcome::kLost, place,
        std::string(key));
    SetEntry(place, key, {});
    if (before == 0) {
      SetEntry(list.parent, "Last", {});
      SetEntry(list.parent, "Count", {});
    } else {
      std::string last;
      pdf::AppendReference(last, before);
      SetEntry(list.parent, "Last", last);
    }
  }

  // Of an item, or of the outline where it is written in place; removes it when there is no text.
  void SetEntry(std::uint32_t number, std::string_view key, const std::string& text) {
    if (number == 0) {
      SetCatalogEntry(*context_, "Outlines", key, text);
    } else if (text.empty()) {
      context_->rewriter.RemoveEntry(number, key);
    } else {
      context_->rewriter.SetEntry(number, key, text);
    }
  }

  void Add(ProblemCode code, Outcome outcome, std::uint32_t object, std::string detail) {
    context_->problems.Add(
        {.code = code, .outcome = outcome, .object = object, .detail = std::move(detail)});
  }

  CheckContext* context_;
  pdf::Document* document_;
  std::vector<List> waiting_;
  std::unordered_set<std::uint32_t> seen_;
};

}  // namespace

void CheckOutline(CheckContext& context) {
  Checker(context).Run();
}

}  // namespace TarnixTools::engines::repair
