#include "engines/toolbox/copy/pages/PageCopier.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <vector>

#include "engines/toolbox/copy/pages/PageBoxes.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

namespace {

// Keys of a page that are written by other means or lead out of the page.
constexpr std::array<std::string_view, 13> kPageKeysLeft = {"Type",
                                                            "Parent",
                                                            "Kids",
                                                            "Count",
                                                            "Annots",
                                                            "Rotate",
                                                            "Resources",
                                                            "StructParents",
                                                            "B",
                                                            "Thumb",
                                                            "AA",
                                                            "DPart",
                                                            "TemplateInstantiated"};

bool IsLeftOut(std::string_view key) {
  return std::find(kPageKeysLeft.begin(), kPageKeysLeft.end(), key) != kPageKeysLeft.end();
}

}  // namespace

void PageCopier::Write() {
  context_.parts().language.AddSource(context_.source().parts().settings().language());
  parts_.annotations.Prepare();
  parts_.resources.Prepare();
  parts_.form_fields.Prepare();
  parts_.structure.Prepare();
  for (const PageRequest& request : context_.requests()) {
    WritePage(request);
    context_.objects().CopyPending();
  }
  parts_.form_fields.Copy();
  context_.destinations().CopyNames();
  parts_.outline.Copy();
  parts_.page_labels.Copy();
  parts_.structure.Copy();
  parts_.settings.Copy();
  context_.objects().CopyPending();
  parts_.layers.Copy();  // last: only now is it known which layers came along
  context_.objects().CopyPending();
}

void PageCopier::WritePage(const PageRequest& request) {
  arena_.Reset();
  const pdf::PageTree& tree = context_.source().pages();
  const pdf::PageTree::Page& page = tree.pages()[request.page_index];
  const Object dictionary = tree.Load(page, arena_);
  const bool is_repeated = !written_pages_.insert(request.page_index).second;
  std::string text = "<</Type/Page/Parent";
  pdf::AppendReference(text, request.parent_number);
  for (const pdf::DictionaryEntry& entry : dictionary.Entries()) {
    if (entry.Key() == "Contents") {
      if (request.painted == nullptr) {
        AppendContents(text, entry.value);
      }
    } else if (!IsLeftOut(entry.Key()) && !IsPageBox(entry.Key())) {
      pdf::AppendName(text, entry.Key());
      context_.objects().Append(text, entry.value);
    }
  }
  AppendPageBoxes(text, context_, page, dictionary, arena_);
  AppendRotation(text, page, dictionary, request.rotation);
  std::string key;
  parts_.structure.CopyPageKey(key, dictionary, request, is_repeated);
  if (request.painted != nullptr) {
    AppendPainted(text, request, page, dictionary, key);
  } else {
    text += key;
    parts_.resources.Copy(text, page, dictionary);
  }
  parts_.annotations.Copy(text, context_.document().Resolve(dictionary.Get("Annots"), arena_),
                          request);
  ReportLeftOut(dictionary);
  context_.writer().WriteObject(request.target_number, text + ">>");
}

// Streams that are not there must not leave nulls in the array (table 31): some readers stop at
// one.
void PageCopier::AppendContents(std::string& out, const Object& contents) {
  const bool is_damaged = context_.document().findings().count() > 0;
  const Object resolved = is_damaged ? context_.document().Resolve(contents, arena_) : contents;
  if (!resolved.IsArray()) {
    if (!IsLostStream(contents)) {
      out += "/Contents";
      context_.objects().Append(out, contents);
    }
    return;
  }
  std::vector<Object> streams;
  std::copy_if(resolved.Items().begin(), resolved.Items().end(), std::back_inserter(streams),
               [this](const Object& item) { return !IsLostStream(item); });
  out += "/Contents";
  context_.objects().Append(out, Object::Array(streams));
}

void PageCopier::AppendPainted(std::string& out, const PageRequest& request,
                               const pdf::PageTree::Page& page, const Object& dictionary,
                               const std::string& key) {
  const std::uint32_t form =
      painted_.Append(out, {page, dictionary, request.target_position + 1, *request.painted, key});
  if (form != 0 && !key.empty()) {
    parts_.structure.MoveToForm(page.number, form);
  }
}

// A sound document's streams are taken on trust, so that they need not be read twice.
bool PageCopier::IsLostStream(const Object& item) {
  pdf::Document& document = context_.document();
  const std::uint32_t number = item.AsReference().number;
  return !document.Exists(number) ||
         (document.findings().count() > 0 && !document.IsStream(number));
}

void PageCopier::AppendRotation(std::string& out, const pdf::PageTree::Page& page,
                                const Object& dictionary, int rotation) {
  const pdf::PageTree& tree = context_.source().pages();
  const int own =
      pdf::RotationOf(tree.Attribute(page, dictionary, pdf::InheritableKey::kRotate, arena_));
  const int total = ((own + rotation) % 360 + 360) % 360;
  if (total != 0) {
    out += "/Rotate";
    pdf::AppendInteger(out, total);
  }
}

void PageCopier::ReportLeftOut(const Object& dictionary) {
  CopyReport& report = context_.report();
  if (dictionary.Has("Thumb")) {
    report.Add(CopiedKind::kThumbnail, CopyOutcome::kDropped, "not carried over");
  }
  if (dictionary.Has("B")) {
    report.Add(CopiedKind::kArticleThread, CopyOutcome::kDropped, "not carried over");
  }
  if (dictionary.Has("AA")) {
    report.Add(CopiedKind::kScript, CopyOutcome::kDropped, "runs when a page is opened");
  }
}

}  // namespace TarnixTools::engines::toolbox
