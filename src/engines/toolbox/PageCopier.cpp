#include "engines/toolbox/PageCopier.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "engines/toolbox/SourceDocument.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines {

using pdf::InheritableKey;
using pdf::Object;

namespace {

// Keys of a page that are written by other means or lead out of the page.
constexpr std::array<std::string_view, 12> kPageKeysLeft = {
    "Type",          "Parent", "Kids",  "Count", "Annots", "Rotate",
    "StructParents", "B",      "Thumb", "AA",    "DPart",  "TemplateInstantiated"};

bool IsLeftOut(std::string_view key) {
  return std::find(kPageKeysLeft.begin(), kPageKeysLeft.end(), key) != kPageKeysLeft.end();
}

constexpr std::string_view kDefaultMediaBox = "[0 0 612 792]";

}  // namespace

PageCopier::PageCopier(SourceDocument& source, pdf::FileWriter& target)
    : source_(&source),
      target_(&target),
      objects_(source.document(), target, source.numbers(),
               [&source](std::uint32_t number) { return source.IsBarred(number); }) {}

PageCopier::~PageCopier() {
  source_->numbers().Clear();
}

void PageCopier::Write(const std::vector<PageRequest>& requests) {
  const auto& pages = source_->pages().pages();
  for (const PageRequest& request : requests) {
    const std::uint32_t number = pages[request.page_index].number;
    if (number != 0 && !objects_.IsMapped(number)) {
      objects_.Assign(number, request.target_number);
    }
  }
  for (const PageRequest& request : requests) {
    WritePage(request);
    objects_.CopyPending();
  }
}

void PageCopier::WritePage(const PageRequest& request) {
  arena_.Reset();
  const pdf::PageTree::Page& page = source_->pages().pages()[request.page_index];
  const Object dictionary = source_->pages().Load(page, arena_);
  std::string text = "<</Type/Page/Parent";
  pdf::AppendReference(text, request.parent_number);
  for (const pdf::DictionaryEntry& entry : dictionary.Entries()) {
    if (!IsLeftOut(entry.Key())) {
      pdf::AppendName(text, entry.Key());
      objects_.Append(text, entry.value);
    }
  }
  AppendInherited(text, page, dictionary);
  AppendRotation(text, page, dictionary, request.rotation);
  const bool is_repeated = !written_pages_.insert(request.page_index).second;
  AppendAnnotations(text, source_->document().Resolve(dictionary.Get("Annots"), arena_), request,
                    is_repeated);
  target_->WriteObject(request.target_number, text + ">>");
}

void PageCopier::AppendInherited(std::string& out, const pdf::PageTree::Page& page,
                                 const Object& dictionary) {
  const pdf::PageTree& tree = source_->pages();
  if (!dictionary.Has("Resources")) {
    AppendResources(out, tree.InheritedBy(page, InheritableKey::kResources));
  }
  if (!dictionary.Has("MediaBox")) {
    const Object box = tree.InheritedBy(page, InheritableKey::kMediaBox).value;
    out += "/MediaBox";
    if (box.IsNull()) {
      out += kDefaultMediaBox;
    } else {
      objects_.Append(out, box);
    }
  }
  const Object crop =
      dictionary.Has("CropBox") ? Object() : tree.InheritedBy(page, InheritableKey::kCropBox).value;
  if (!crop.IsNull()) {
    out += "/CropBox";
    objects_.Append(out, crop);
  }
}

// Resources that stand in a node of the page tree become one object that all its pages refer to.
void PageCopier::AppendResources(std::string& out, const pdf::PageTree::Inherited& resources) {
  out += "/Resources";
  if (resources.value.IsNull()) {
    out += "<<>>";
    return;
  }
  if (resources.value.IsReference()) {
    objects_.Append(out, resources.value);
    return;
  }
  std::uint32_t& number = shared_resources_[resources.node];
  if (number == 0) {
    number = target_->Reserve();
    std::string text;
    objects_.Append(text, resources.value);
    target_->WriteObject(number, text);
  }
  pdf::AppendReference(out, number);
}

void PageCopier::AppendRotation(std::string& out, const pdf::PageTree::Page& page,
                                const Object& dictionary, int rotation) {
  const Object own = source_->document().Resolve(dictionary.Get("Rotate"), arena_);
  const Object inherited = source_->document().Resolve(
      source_->pages().InheritedBy(page, InheritableKey::kRotate).value, arena_);
  const std::int64_t angle = (own.IsNull() ? inherited : own).IntegerOr(0) % 360;
  // An angle that is no multiple of 90 is not allowed and is drawn as 0.
  const std::int64_t total = ((angle % 90 == 0 ? angle : 0) + rotation + 720) % 360;
  if (total != 0) {
    out += "/Rotate";
    pdf::AppendInteger(out, total);
  }
}

void PageCopier::AppendAnnotations(std::string& out, const Object& annotations,
                                   const PageRequest& request, bool is_repeated) {
  if (annotations.Items().empty()) {
    return;
  }

  struct Copy {
    Object dictionary;
    std::uint32_t target_number;
  };

  std::vector<Copy> copies;
  out += "/Annots[";
  // All of them get their numbers first, so that references among them hold in either direction.
  for (const Object& item : annotations.Items()) {
    const Object dictionary = source_->document().Resolve(item, arena_);
    if (!dictionary.IsDictionary()) {
      continue;
    }
    const std::uint32_t number = item.AsReference().number;
    if (number != 0 && objects_.IsMapped(number) && !is_repeated) {
      pdf::AppendReference(out, objects_.Map(number));
      continue;
    }
    const std::uint32_t target_number = target_->Reserve();
    if (number != 0) {
      objects_.Assign(number, target_number);
    }
    copies.push_back({dictionary, target_number});
    pdf::AppendReference(out, target_number);
  }
  out += ']';
  for (const Copy& copy : copies) {
    std::string text;
    AppendAnnotation(text, copy.dictionary, request);
    target_->WriteObject(copy.target_number, text);
  }
}

void PageCopier::AppendAnnotation(std::string& out, const Object& dictionary,
                                  const PageRequest& request) {
  const bool is_widget = dictionary.Get("Subtype").IsName("Widget");
  out += "<<";
  for (const pdf::DictionaryEntry& entry : dictionary.Entries()) {
    const std::string_view key = entry.Key();
    // A widget's field reaches the widgets of other pages; its place in the structure tree is not
    // there any more.
    if (key == "P" || key == "StructParent" || (is_widget && key == "Parent")) {
      continue;
    }
    pdf::AppendName(out, key);
    objects_.Append(out, entry.value);
  }
  out += "/P";
  pdf::AppendReference(out, request.target_number);
  out += ">>";
}

}  // namespace TarnixTools::engines
