#include "engines/repair/checks/ResourceCheck.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "engines/repair/checks/FontCheck.h"
#include "engines/repair/checks/ImageCheck.h"
#include "pdf/Error.h"
#include "pdf/content/ResourceGraph.h"
#include "pdf/write/EntryText.h"

namespace TarnixTools::engines::repair {

namespace {

using pdf::Object;
using pdf::ResourceKind;

class Checker {
 public:
  explicit Checker(CheckContext& context) : context_(&context), graph_(context.document) {}

  void CheckPage(std::size_t index) {
    page_ = static_cast<std::uint32_t>(index + 1);
    CheckOwnResources(context_->pages.pages()[index]);
    graph_.AddPage(context_->pages, index);
    while (const pdf::ResourceNode* node = graph_.Next()) {
      CheckNode(*node);
    }
  }

 private:
  void CheckNode(const pdf::ResourceNode& node) {
    switch (node.kind) {
      case ResourceKind::kFont:
      case ResourceKind::kType3Font:
        CheckFont(*context_, node, page_, font_streams_);
        break;
      case ResourceKind::kImage:
      case ResourceKind::kImageMask:
      case ResourceKind::kAlternate:
        CheckImage(*context_, node, page_);
        break;
      default:
        break;
    }
  }

  // Of the page itself, or of the node of the page tree that has them.
  void CheckOwnResources(const pdf::PageTree::Page& page) {
    pdf::Arena arena;
    const Object dictionary = context_->pages.Load(page, arena);
    const Object value =
        context_->pages.FindAttribute(page, dictionary, pdf::InheritableKey::kResources).value;
    const pdf::Followed found = context_->document.Follow(value, arena);
    if (found.value.IsNull() || (found.number != 0 && !seen_.insert(found.number).second)) {
      return;
    }
    if (!found.value.IsDictionary()) {
      Add(page.number, {});
      RemoveEntry(page.number, "Resources");
      return;
    }
    std::vector<std::string_view> invalid;
    for (const std::string_view key : pdf::kResourceCategoryKeys) {
      const Object names = context_->document.Resolve(found.value.Get(key), arena);
      if (!names.IsNull() && !names.IsDictionary()) {
        Add(found.number != 0 ? found.number : page.number, std::string(key));
        RemoveEntry(found.number, key);
        invalid.push_back(key);
      }
    }
    if (found.number == 0 && page.number != 0 && !invalid.empty()) {
      std::string text = "<<";
      pdf::AppendEntries(text, found.value, invalid);
      context_->rewriter.SetEntry(page.number, "Resources", text + ">>");
    }
  }

  void Add(std::uint32_t number, std::string detail) {
    context_->problems.Add({.code = ProblemCode::kResourcesInvalid,
                            .outcome = Outcome::kLost,
                            .page = page_,
                            .object = number,
                            .detail = std::move(detail)});
  }

  void RemoveEntry(std::uint32_t number, std::string_view key) {
    if (number != 0) {
      context_->rewriter.RemoveEntry(number, key);
    }
  }

  CheckContext* context_;
  pdf::ResourceGraph graph_;
  std::uint32_t page_ = 0;                  // from 1
  std::unordered_set<std::uint32_t> seen_;  // resources that are objects of their own
  FontStreams font_streams_;
};

}  // namespace

// What cannot be read in a page has been listed where it was met first.
void CheckResources(CheckContext& context) {
  Checker checker(context);
  for (std::size_t i = 0; i < context.pages.pages().size(); ++i) {
    pdf::UnlessDamaged(0, [&] {
      checker.CheckPage(i);
      return 0;
    });
  }
}

}  // namespace TarnixTools::engines::repair
