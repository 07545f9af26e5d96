#include "engines/toolbox/copy/annotations/Annotations.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "engines/toolbox/Limits.h"
#include "engines/toolbox/copy/CopyContext.h"
#include "engines/toolbox/copy/CopyParts.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

namespace {

constexpr std::array<std::string_view, 10> kKeysOfOtherMeans = {
    "P", "Parent", "StructParent", "Popup", "IRT", "RT", "Dest", "A", "AA", "PA"};

// Whether what a page lists is one at all, rather than its contents, a font, ...
bool IsAnnotation(pdf::Document& document, std::uint32_t number, const Object& dictionary) {
  const Object type = dictionary.Get("Type");
  return dictionary.IsDictionary() && (!type.IsName() || type.IsName("Annot")) &&
         (dictionary.Has("Subtype") || dictionary.Has("Rect")) &&
         !(dictionary.Has("Length") && document.IsStream(number));
}

bool IsWrittenByOtherMeans(std::string_view key) {
  return std::find(kKeysOfOtherMeans.begin(), kKeysOfOtherMeans.end(), key) !=
         kKeysOfOtherMeans.end();
}

}  // namespace

SourceAnnotations::SourceAnnotations(SourceDocument& source) : document_(&source.document()) {
  const pdf::PageTree& tree = source.pages();
  pdf::Document& document = source.document();
  pdf::Arena arena;
  for (std::size_t index = 0; index < tree.pages().size(); ++index) {
    const pdf::PageTree::Page& page = tree.pages()[index];
    if (!page.has_annotations) {
      continue;
    }
    arena.Reset();
    const Object annotations = document.Resolve(tree.Load(page, arena).Get("Annots"), arena);
    starts_.resize(index + 1, static_cast<std::uint32_t>(numbers_.size()));
    for (const Object& item : annotations.Items()) {
      const std::uint32_t number = item.AsReference().number;
      if (number != 0 && numbers_.size() < limits::kMaxListedAnnotations && !tree.IsPage(number) &&
          !tree.IsNode(number)) {
        numbers_.push_back(number);
      }
    }
  }
  if (!numbers_.empty()) {
    starts_.resize(tree.pages().size() + 1, static_cast<std::uint32_t>(numbers_.size()));
  }
  sorted_ = numbers_;
  std::sort(sorted_.begin(), sorted_.end());
}

bool SourceAnnotations::Contains(std::uint32_t number) {
  if (!std::binary_search(sorted_.begin(), sorted_.end(), number)) {
    return false;
  }
  const auto [known, is_new] = are_annotations_.try_emplace(number, false);
  if (is_new) {
    pdf::Arena arena;
    known->second = IsAnnotation(*document_, number, document_->Load({number, 0}, arena));
  }
  return known->second;
}

std::span<const std::uint32_t> SourceAnnotations::OfPage(std::uint32_t page_index) const {
  if (numbers_.empty()) {
    return {};
  }
  return std::span(numbers_).subspan(starts_[page_index],
                                     starts_[page_index + 1] - starts_[page_index]);
}

AnnotationCopier::AnnotationCopier(CopyContext& context, CopyParts& parts)
    : context_(&context),
      parts_(&parts),
      budget_(limits::kRepeatAllowance +
              limits::kRepeatRatio * context.document().reader().size()) {}

void AnnotationCopier::Prepare() {
  const SourceAnnotations& annotations = context_->source().parts().annotations();
  pdf::ObjectCopier& objects = context_->objects();
  for (const PageRequest& request : context_->requests()) {
    for (const std::uint32_t number : annotations.OfPage(request.page_index)) {
      if (!objects.IsMapped(number) && promised_.insert(number).second) {
        objects.Assign(number, context_->writer().Reserve());
      }
    }
  }
}

void AnnotationCopier::Copy(std::string& page, const Object& annotations,
                            const PageRequest& request) {
  if (annotations.Items().empty()) {
    return;
  }
  page_ = Page();
  page_.request = &request;
  NumberAnnotations(annotations);
  for (Annotation& annotation : page_.annotations) {
    CopyAnnotation(annotation);
  }
  for (Annotation& annotation : page_.annotations) {
    if (annotation.is_popup) {
      CopyListedPopup(annotation);
    }
  }
  AppendList(page);
  for (const auto& [number, target_number] : page_.earlier) {
    context_->objects().Assign(number, target_number);
  }
  Report();
}

// All of them get their numbers first, so that references among them hold in either direction.
void AnnotationCopier::NumberAnnotations(const Object& annotations) {
  const pdf::PageTree& tree = context_->source().pages();
  for (const Object& item : annotations.Items()) {
    const std::uint32_t number = item.AsReference().number;
    if (number != 0 &&
        (tree.IsPage(number) || tree.IsNode(number) || !page_.numbers.insert(number).second)) {
      continue;
    }
    Annotation annotation;
    annotation.item = item;
    if (GiveNumber(annotation)) {
      page_.annotations.push_back(annotation);
    } else {
      ++page_.too_many;
    }
  }
}

// The number that was promised for an annotation or, for one that was copied before, a new one, by
// which it is known while this page is written. False when it was copied often enough.
bool AnnotationCopier::GiveNumber(Annotation& annotation) {
  pdf::ObjectCopier& objects = context_->objects();
  const std::uint32_t number = annotation.item.AsReference().number;
  if (promised_.erase(number) != 0) {
    annotation.is_promised = true;
    annotation.target_number = objects.Map(number);
    return true;
  }
  if (budget_ == 0) {
    return false;
  }
  annotation.target_number = context_->writer().Reserve();
  if (number != 0) {
    annotation.earlier_number = objects.Map(number);
    page_.earlier.emplace_back(number, annotation.earlier_number);
    objects.Assign(number, annotation.target_number);
  }
  return true;
}

void AnnotationCopier::Drop(Annotation& annotation) {
  if (const std::uint32_t number = annotation.item.AsReference().number) {
    context_->objects().Assign(number, 0);
  }
  annotation.target_number = 0;
}

// What is no annotation stays what it is where others refer to it.
void AnnotationCopier::LeaveOut(Annotation& annotation) {
  const std::uint32_t number = annotation.item.AsReference().number;
  if (number == 0 || context_->source().IsBarred(number)) {
    Drop(annotation);
    return;
  }
  if (annotation.is_promised) {
    context_->objects().CopyAs(number, annotation.target_number);
  } else {
    context_->objects().Assign(number, annotation.earlier_number);
  }
  annotation.target_number = 0;
}

void AnnotationCopier::CopyAnnotation(Annotation& annotation) {
  arena_.Reset();
  const Object dictionary = context_->document().Resolve(annotation.item, arena_);
  if (!IsAnnotation(context_->document(), annotation.item.AsReference().number, dictionary)) {
    LeaveOut(annotation);
    return;
  }
  const Object subtype = dictionary.Get("Subtype");
  const bool is_widget = subtype.IsName("Widget");
  const bool is_link = subtype.IsName("Link");
  const int wanted = is_widget ? kCopyFormFields : is_link ? kCopyLinks : kCopyAnnotations;
  if ((page_.request->options & wanted) == 0) {
    Drop(annotation);
    return;
  }
  if (subtype.IsName("Popup")) {
    annotation.is_popup = true;  // its turn comes when it is known what becomes of its parent
    return;
  }
  std::string text = "<<";
  if (is_widget) {
    parts_->resources.NoteWidget(dictionary);
    parts_->form_fields.CopyWidget(text, dictionary, annotation.item.AsReference().number,
                                   annotation.target_number);
  } else {
    if (!AppendTarget(text, dictionary) && is_link) {
      ++(LeadsToPage(dictionary) ? page_.links_to_others : page_.dead_links);
      Drop(annotation);
      return;
    }
    AppendRelations(text, dictionary, annotation.target_number);
    AppendOtherEntries(text, dictionary);
    ++(is_link ? page_.kept_links : page_.kept_annotations);
  }
  Write(annotation.item.AsReference().number, annotation.target_number, text, dictionary);
}

// Where the annotation leads. False when there was something and nothing is left of it.
bool AnnotationCopier::AppendTarget(std::string& out, const Object& dictionary) {
  DestinationCopier& destinations = context_->destinations();
  const Object destination = dictionary.Get("Dest");
  bool is_left = destination.IsNull() && !dictionary.Has("A");
  if (!destination.IsNull()) {
    if (const auto copied = destinations.Copy(destination)) {
      out += "/Dest" + *copied;
      is_left = true;
    }
  }
  for (const char* key : {"A", "AA"}) {
    if (dictionary.Has(key) && destinations.AppendActionEntry(out, key, dictionary.Get(key))) {
      is_left = true;
    }
  }
  if (dictionary.Has("PA")) {
    destinations.AppendActionEntry(out, "PA", dictionary.Get("PA"));
  }
  return is_left;
}

// Whether a link leads to any page of the source.
bool AnnotationCopier::LeadsToPage(const Object& dictionary) {
  SourceDestinations& destinations = context_->source().parts().destinations();
  const Object action = context_->document().Resolve(dictionary.Get("A"), arena_);
  return destinations.PageOf(dictionary.Get("Dest")) || destinations.PageOf(action.Get("D"));
}

// Its popup, and the annotation that it replies to.
void AnnotationCopier::AppendRelations(std::string& out, const Object& dictionary,
                                       std::uint32_t target_number) {
  if (const std::uint32_t popup = PopupFor(dictionary.Get("Popup"), target_number)) {
    out += "/Popup";
    pdf::AppendReference(out, popup);
  }
  const std::uint32_t original = dictionary.Get("IRT").AsReference().number;
  if (original != 0 && context_->objects().IsMapped(original)) {
    out += "/IRT";
    pdf::AppendReference(out, context_->objects().Map(original));
    if (dictionary.Has("RT")) {
      out += "/RT";
      context_->objects().Append(out, dictionary.Get("RT"));
    }
  }
}

// The target's number of an annotation's popup; 0 when there is none for it.
std::uint32_t AnnotationCopier::PopupFor(const Object& popup, std::uint32_t parent_number) {
  const std::uint32_t number = popup.AsReference().number;
  if (number == 0 || !page_.popup_parents.emplace(number, parent_number).second) {
    return 0;
  }
  if (page_.numbers.contains(number)) {
    return context_->objects().Map(number);
  }
  pdf::Arena arena;
  const Object dictionary = context_->document().Resolve(popup, arena);
  if (!dictionary.Get("Subtype").IsName("Popup") || budget_ == 0) {
    return 0;
  }
  const std::uint32_t target_number = context_->writer().Reserve();
  WritePopup(number, target_number, dictionary, parent_number);
  return target_number;
}

// A popup of the page's list goes where its parent goes.
void AnnotationCopier::CopyListedPopup(Annotation& annotation) {
  arena_.Reset();
  const Object dictionary = context_->document().Resolve(annotation.item, arena_);
  const std::uint32_t parent = dictionary.Get("Parent").AsReference().number;
  const auto found = page_.popup_parents.find(annotation.item.AsReference().number);
  std::uint32_t parent_number = 0;
  if (found != page_.popup_parents.end()) {
    parent_number = found->second;
  } else if (page_.numbers.contains(parent) && context_->objects().IsMapped(parent)) {
    parent_number = context_->objects().Map(parent);
  } else if (dictionary.Has("Parent")) {
    Drop(annotation);
    return;
  }
  ++page_.kept_annotations;
  WritePopup(annotation.item.AsReference().number, annotation.target_number, dictionary,
             parent_number);
}

void AnnotationCopier::WritePopup(std::uint32_t source_number, std::uint32_t target_number,
                                  const Object& dictionary, std::uint32_t parent_number) {
  std::string text = "<<";
  if (parent_number != 0) {
    text += "/Parent";
    pdf::AppendReference(text, parent_number);
  }
  AppendOtherEntries(text, dictionary);
  Write(source_number, target_number, text, dictionary);
}

void AnnotationCopier::AppendOtherEntries(std::string& out, const Object& dictionary) {
  for (const pdf::DictionaryEntry& entry : dictionary.Entries()) {
    if (!IsWrittenByOtherMeans(entry.Key())) {
      pdf::AppendName(out, entry.Key());
      context_->objects().Append(out, entry.value);
    }
  }
}

void AnnotationCopier::Write(std::uint32_t source_number, std::uint32_t target_number,
                             std::string& text, const Object& dictionary) {
  parts_->structure.CopyAnnotationKey(text, dictionary, source_number, target_number);
  text += "/P";
  pdf::AppendReference(text, page_.request->target_number);
  context_->writer().WriteObject(target_number, text + ">>");
  if (source_number == 0 || !written_.insert(source_number).second) {
    budget_ -= std::min(budget_, text.size() + limits::kBytesPerRepeatedObject);
  }
}

void AnnotationCopier::AppendList(std::string& page) const {
  std::string list;
  for (const Annotation& annotation : page_.annotations) {
    if (annotation.target_number != 0) {
      pdf::AppendReference(list, annotation.target_number);
    }
  }
  if (!list.empty()) {
    page += "/Annots[" + list + ']';
  }
}

void AnnotationCopier::Report() {
  CopyReport& report = context_->report();
  report.Kept(CopiedKind::kLink, page_.kept_links);
  report.Kept(CopiedKind::kAnnotation, page_.kept_annotations);
  const std::uint32_t page_number = page_.request->target_position + 1;
  report.Add(CopiedKind::kLink, CopyOutcome::kDropped, "leads to a page that is not copied",
             page_.links_to_others, page_number);
  report.Add(CopiedKind::kAnnotation, CopyOutcome::kDropped, "shared by too many pages",
             page_.too_many, page_number);
  report.Add(CopiedKind::kLink, CopyOutcome::kDropped, "leads nowhere", page_.dead_links,
             page_number);
}

}  // namespace TarnixTools::engines::toolbox
