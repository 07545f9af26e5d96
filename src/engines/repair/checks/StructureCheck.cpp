#include "engines/repair/checks/StructureCheck.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::repair {

namespace {

using pdf::Object;

class Checker {
 public:
  explicit Checker(CheckContext& context) : context_(&context), document_(&context.document) {}

  void Run() {
    pdf::Arena arena;
    const pdf::Followed root =
        document_->Follow(document_->Catalog(arena).Get("StructTreeRoot"), arena);
    if (!root.value.IsDictionary() || root.number == 0) {
      return;
    }
    seen_.insert(root.number);
    waiting_.push_back(root.number);
    while (!waiting_.empty()) {
      const std::uint32_t number = waiting_.back();
      waiting_.pop_back();
      CheckElement(number);
    }
  }

 private:
  // The kids are an array, or one that stands by itself.
  void CheckElement(std::uint32_t number) {
    pdf::Arena arena;
    const Object element = document_->Load({.number = number, .generation = 0}, arena);
    const Object kids = element.Get("K");
    const pdf::Followed found = document_->Follow(kids, arena);
    const Object& list = found.value;
    if (found.number != 0 && list.IsArray() && !lists_.insert(found.number).second) {
      Add(ProblemCode::kStructureTreeLoop, Outcome::kFixed, number);
      context_->rewriter.RemoveEntry(number, "K");
      return;
    }
    if (!list.IsArray()) {
      if (!kids.IsNull() && !CheckKid(number, kids)) {
        context_->rewriter.RemoveEntry(number, "K");
      }
      return;
    }
    std::string kept = "[";
    bool is_whole = true;
    for (const Object& kid : list.Items()) {
      const bool stays = CheckKid(number, kid);
      is_whole = is_whole && stays;
      if (stays) {
        pdf::AppendObject(kept, kid);
      }
    }
    if (!is_whole) {
      context_->rewriter.SetEntry(number, "K", kept + "]");
    }
  }

  // A kid is an element, a marked-content identifier, or a reference to content or to an object.
  bool CheckKid(std::uint32_t parent, const Object& kid) {
    pdf::Arena arena;
    const Object value = document_->Resolve(kid, arena);
    if (!value.IsDictionary() && !value.IsNumber() && !value.IsNull()) {
      Add(ProblemCode::kStructureTreeDamaged, Outcome::kLost, parent);
      return false;
    }
    const std::uint32_t number = kid.AsReference().number;
    if (number == 0 || !value.Has("S")) {
      return true;
    }
    if (!seen_.insert(number).second) {
      Add(ProblemCode::kStructureTreeLoop, Outcome::kFixed, parent);
      return false;
    }
    if (value.Has("K")) {
      waiting_.push_back(number);
    }
    return true;
  }

  void Add(ProblemCode code, Outcome outcome, std::uint32_t object) {
    context_->problems.Add({
        .code = code,
        .outcome = outcome,
        .object = object,
    });
  }

  CheckContext* context_;
  pdf::Document* document_;
  std::vector<std::uint32_t> waiting_;
  std::unordered_set<std::uint32_t> seen_;
  std::unordered_set<std::uint32_t> lists_;  // of kids, each of which is one element's
};

}  // namespace

void CheckStructure(CheckContext& context) {
  Checker(context).Run();
}

}  // namespace TarnixTools::engines::repair
