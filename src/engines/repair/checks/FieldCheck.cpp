#include "engines/repair/checks/FieldCheck.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "engines/repair/checks/CatalogEntries.h"
#include "pdf/Limits.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::repair {

namespace {

using pdf::Object;

class FieldChecker {
 public:
  explicit FieldChecker(CheckContext& context) : context_(&context), document_(&context.document) {}

  void Run() {
    pdf::Arena arena;
    const pdf::Followed form = document_->Follow(document_->Catalog(arena).Get("AcroForm"), arena);
    if (!form.value.IsDictionary()) {
      return;
    }
    const Object fields = document_->Resolve(form.value.Get("Fields"), arena);
    if (!fields.IsNull() && !fields.IsArray()) {
      Add(ProblemCode::kFieldTreeDamaged, Outcome::kWorkedAround, form.number, "Fields");
      SetEntry(form.number, "Fields", "[]");
      return;
    }
    CheckKids({form.number, 0}, form.value.Get("Fields"), "Fields");
    while (!waiting_.empty()) {
      const Place place = waiting_.back();
      waiting_.pop_back();
      arena.Reset();
      const Object field = document_->Load({.number = place.number, .generation = 0}, arena);
      CheckKids(place, field.Get("Kids"), "Kids");
    }
  }

 private:
  struct Place {
    std::uint32_t number = 0;
    std::uint32_t depth = 0;
  };

  // Each list is written again without what cannot stand in it.
  void CheckKids(const Place& place, const Object& value, std::string_view key) {
    pdf::Arena arena;
    const pdf::Followed kids = document_->Follow(value, arena);
    if (kids.number != 0 && !lists_.insert(kids.number).second) {
      Add(ProblemCode::kFieldLoop, Outcome::kFixed, place.number);
      SetEntry(place.number, key, "[]");
      return;
    }
    std::string kept = "[";
    bool is_whole = true;
    for (const Object& kid : kids.value.Items()) {
      const bool stays = CheckKid(place, kid);
      is_whole = is_whole && stays;
      if (stays) {
        pdf::AppendObject(kept, kid);
      }
    }
    if (!is_whole) {
      SetEntry(place.number, key, kept + "]");
    }
  }

  bool CheckKid(const Place& place, const Object& kid) {
    pdf::Arena arena;
    const Object value = document_->Resolve(kid, arena);
    const std::uint32_t number = kid.AsReference().number;
    if (!value.IsDictionary() && !value.IsNull()) {
      Add(ProblemCode::kFieldDamaged, Outcome::kLost, number != 0 ? number : place.number);
      return false;
    }
    if (number == 0 || value.IsNull()) {
      return true;
    }
    if (!seen_.insert(number).second || place.depth >= pdf::limits::kMaxFieldNesting) {
      Add(ProblemCode::kFieldLoop, Outcome::kFixed, number);
      return false;
    }
    if (value.Has("Kids")) {
      waiting_.push_back({number, place.depth + 1});
    }
    return true;
  }

  // Of a field, or of the form where it is written in place.
  void SetEntry(std::uint32_t number, std::string_view key, std::string text) {
    if (number != 0) {
      context_->rewriter.SetEntry(number, key, std::move(text));
    } else {
      SetCatalogEntry(*context_, "AcroForm", key, text);
    }
  }

  void Add(ProblemCode code, Outcome outcome, std::uint32_t object, std::string detail = {}) {
    context_->problems.Add(
        {.code = code, .outcome = outcome, .object = object, .detail = std::move(detail)});
  }

  CheckContext* context_;
  pdf::Document* document_;
  std::vector<Place> waiting_;
  std::unordered_set<std::uint32_t> seen_;
  std::unordered_set<std::uint32_t> lists_;  // of kids, each of which is one field's
};

class AnnotationChecker {
 public:
  explicit AnnotationChecker(CheckContext& context)
      : context_(&context), document_(&context.document) {}

  // A list that several pages have is looked at once.
  void CheckPage(std::size_t index) {
    index_ = index;
    pdf::Arena arena;
    const pdf::PageTree::Page& page = context_->pages.pages()[index_];
    const pdf::Followed found =
        document_->Follow(context_->pages.Load(page, arena).Get("Annots"), arena);
    const Object& list = found.value;
    if (found.number != 0 && !lists_.insert(found.number).second) {
      return;
    }
    if (!list.IsNull() && !list.IsArray()) {
      Add(page.number, "Annots");
      RemoveList(page.number);
      return;
    }
    std::string kept = "[";
    bool is_whole = true;
    for (const Object& item : list.Items()) {
      const bool stays = IsUsable(item);
      is_whole = is_whole && stays;
      if (stays) {
        pdf::AppendObject(kept, item);
      } else {
        Add(item.IsReference() ? item.AsReference().number : page.number, {});
      }
    }
    if (!is_whole && page.number != 0) {
      context_->rewriter.SetEntry(page.number, "Annots", kept + "]");
    }
  }

 private:
  // What is null counts as not there (7.3.9).
  bool IsUsable(const Object& item) {
    pdf::Arena arena;
    const Object annotation = document_->Resolve(item, arena);
    if (annotation.IsNull()) {
      return true;
    }
    return annotation.IsDictionary() &&
           document_->Resolve(annotation.Get("Subtype"), arena).IsName() &&
           document_->Resolve(annotation.Get("Rect"), arena).Items().size() == 4;
  }

  void RemoveList(std::uint32_t number) {
    if (number != 0) {
      context_->rewriter.RemoveEntry(number, "Annots");
    }
  }

  void Add(std::uint32_t object, std::string detail) {
    context_->problems.Add({.code = ProblemCode::kAnnotationDamaged,
                            .outcome = Outcome::kLost,
                            .page = static_cast<std::uint32_t>(index_ + 1),
                            .object = object,
                            .detail = std::move(detail)});
  }

  CheckContext* context_;
  pdf::Document* document_;
  std::size_t index_ = 0;                    // of the page
  std::unordered_set<std::uint32_t> lists_;  // that are objects of their own
};

}  // namespace

void CheckFields(CheckContext& context) {
  FieldChecker(context).Run();
}

void CheckAnnotations(CheckContext& context) {
  AnnotationChecker checker(context);
  for (std::size_t i = 0; i < context.pages.pages().size(); ++i) {
    if (context.pages.pages()[i].has_annotations) {
      checker.CheckPage(i);
    }
  }
}

}  // namespace TarnixTools::engines::repair
