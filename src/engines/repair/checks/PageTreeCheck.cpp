#include "engines/repair/checks/PageTreeCheck.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "pdf/tree/PageGeometry.h"

namespace TarnixTools::engines::repair {

namespace {

// What its page tree and readers want of a page. What is changed here is of the page itself; what
// the tree says of it comes right when the tree is written anew.
class PageCheck {
 public:
  PageCheck(CheckContext& context, std::size_t index)
      : context_(&context),
        index_(index),
        page_(context.pages.pages()[index]),
        dictionary_(context.pages.Load(page_, arena_)) {}

  void Run() {
    if (dictionary_.Entries().empty()) {
      Add(ProblemCode::kPageBlank, {}, Outcome::kLost);
      return;
    }
    CheckType();
    CheckParent();
    CheckMediaBox();
    CheckOwnBox("CropBox");
    CheckRotation();
  }

 private:
  void Add(ProblemCode code, std::string detail = {}, Outcome outcome = Outcome::kFixed) {
    context_->problems.Add({.code = code,
                            .outcome = outcome,
                            .page = static_cast<std::uint32_t>(index_ + 1),
                            .object = page_.number,
                            .detail = std::move(detail)});
  }

  pdf::Object Resolved(std::string_view key) {
    return context_->document.Resolve(dictionary_.Get(key), arena_);
  }

  void CheckType() {
    if (!Resolved("Type").IsName("Page")) {
      Add(ProblemCode::kPageTypeMissing);
    }
  }

  void CheckParent() {
    const std::uint32_t parent = dictionary_.Get("Parent").AsReference().number;
    if (page_.node != 0 && parent != context_->pages.NumberOf({.value = {}, .node = page_.node})) {
      Add(ProblemCode::kPageParentWrong);
    }
  }

  void CheckMediaBox() {
    pdf::Arena arena;
    const pdf::Object box =
        context_->pages.Attribute(page_, dictionary_, pdf::InheritableKey::kMediaBox, arena);
    if (pdf::ReadPageBox(context_->document, box)) {
      return;
    }
    Add(box.IsNull() ? ProblemCode::kPageBoxMissing : ProblemCode::kPageBoxInvalid, "MediaBox");
    if (page_.number != 0) {
      context_->rewriter.SetEntry(page_.number, "MediaBox", "[0 0 612 792]");
    }
  }

  void CheckOwnBox(std::string_view key) {
    const pdf::Object box = Resolved(key);
    if (box.IsNull() || pdf::ReadPageBox(context_->document, box)) {
      return;
    }
    Add(ProblemCode::kPageBoxInvalid, std::string(key));
    if (page_.number != 0) {
      context_->rewriter.RemoveEntry(page_.number, key);
    }
  }

  void CheckRotation() {
    pdf::Arena arena;
    const pdf::Object rotate =
        context_->pages.Attribute(page_, dictionary_, pdf::InheritableKey::kRotate, arena);
    if (rotate.IsNull() || (rotate.IsNumber() && rotate.IntegerOr(1) % 90 == 0)) {
      return;
    }
    Add(ProblemCode::kPageRotationInvalid);
    if (page_.number != 0) {
      context_->rewriter.SetEntry(page_.number, "Rotate", std::to_string(pdf::RotationOf(rotate)));
    }
  }

  CheckContext* context_;
  std::size_t index_;
  const pdf::PageTree::Page& page_;
  pdf::Arena arena_;
  pdf::Object dictionary_;
};

void CheckCatalogType(CheckContext& context) {
  pdf::Arena arena;
  const pdf::Object catalog = context.document.Catalog(arena);
  if (!context.document.Resolve(catalog.Get("Type"), arena).IsName("Catalog")) {
    context.problems.Add({.code = ProblemCode::kCatalogEntryInvalid, .detail = "Type"});
    context.rewriter.SetEntry(context.rewriter.catalog(), "Type", "/Catalog");
  }
}

}  // namespace

void CheckPageTree(CheckContext& context) {
  CheckCatalogType(context);
  for (std::size_t i = 0; i < context.pages.pages().size(); ++i) {
    PageCheck(context, i).Run();
  }
}

}  // namespace TarnixTools::engines::repair
