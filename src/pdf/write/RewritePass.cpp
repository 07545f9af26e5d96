#include "pdf/write/RewritePass.h"

#include <algorithm>
#include <array>
#include <utility>

#include "pdf/Error.h"
#include "pdf/tree/DocumentVersion.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::pdf {

namespace {

// Data of a stream up to which it gets its length into its dictionary.
constexpr std::size_t kMaxGathered = std::size_t{1} << 20;

// An inherited array that is longer is written once for all pages that have it.
constexpr std::size_t kMaxCopiedItems = 6;

// What the trailer, or the dictionary of a cross-reference stream, says about the file itself
// (7.5.5 and 7.5.8), and the document information, which is looked at by itself.
constexpr std::array<std::string_view, 18> kFileKeys = {
    "Size", "Prev",    "Root",         "Encrypt", "Info",  "ID",     "XRefStm",
    "Type", "W",       "Length",       "F",       "Index", "Filter", "DecodeParms",
    "DL",   "FFilter", "FDecodeParms", "AuthCode"};

FileFormat FormatOf(Document& document, const RewriteOptions& options) {
  const std::string version = DocumentVersion(document) >= 20 ? "2.0" : "1.7";
  return {.layout = options.layout,
          .version = options.version.empty() ? version : options.version,
          .packing = options.packing};
}

std::string ReferenceText(std::uint32_t number) {
  std::string text;
  AppendReference(text, number);
  return text;
}

std::string TextOf(const Object& value) {
  std::string text;
  AppendObject(text, value);
  return text;
}

// Data for a stream: kept while it is short, so that the dictionary can say how long it is.
class GatheringSink : public ByteSink {
 public:
  GatheringSink(FileWriter& writer, std::uint32_t number, std::string open_dictionary)
      : writer_(&writer), number_(number), open_dictionary_(std::move(open_dictionary)) {}

  void Write(std::string_view bytes) override {
    if (!has_begun_ && gathered_.size() + bytes.size() <= kMaxGathered) {
      gathered_ += bytes;
      return;
    }
    if (!has_begun_) {
      has_begun_ = true;
      writer_->BeginStream(number_, open_dictionary_);
      writer_->AppendStream(gathered_);
      gathered_ = {};
    }
    writer_->AppendStream(bytes);
  }

  // Whether the data was too long to be kept.
  bool has_begun() const { return has_begun_; }

  std::string Take() { return std::move(gathered_); }

 private:
  FileWriter* writer_;
  std::uint32_t number_;
  std::string open_dictionary_;
  std::string gathered_;
  bool has_begun_ = false;
};

}  // namespace

RewritePass::RewritePass(Document& document, RewritePlan& plan, ByteSink& sink,
                         const RewriteOptions& options)
    : document_(&document),
      plan_(&plan),
      keeps_id_(options.keeps_id),
      added_before_(plan.added.size()),
      writer_(sink, options.security, FormatOf(document, options)),
      objects_(document, writer_, numbers_, [](std::uint32_t) { return false; }) {
  objects_.set_changes(*this);
  objects_.KeepStructureKeys();
}

// What was added in the course of the pass has been written.
RewritePass::~RewritePass() {
  plan_->added.resize(added_before_);
}

void RewritePass::Write() {
  const std::uint32_t catalog = writer_.Reserve();
  objects_.Assign(plan_->catalog, catalog);
  if (plan_->tree != nullptr) {
    WritePages();
  }
  objects_.CopyAs(plan_->catalog, catalog);
  objects_.CopyPending();
  FileTrailer trailer = Trailer();
  trailer.catalog = catalog;
  objects_.CopyPending();
  writer_.Finish(trailer);
}

std::uint32_t RewritePass::StandIn(std::uint32_t number) {
  number = plan_->Representative(number);
  if (document_->IsCatalogObject(number)) {
    return plan_->catalog;
  }
  if (const auto found = plan_->dropped.find(number); found != plan_->dropped.end()) {
    return found->second == Gap::kClosed ? ReferenceMap::kLeftOut : 0;
  }
  const PageTree* tree = plan_->tree;
  const bool is_lost = tree != nullptr && (tree->IsNode(number) || tree->IsPage(number)) &&
                       !page_numbers_.contains(number);
  return is_lost ? 0 : number;
}

bool RewritePass::Write(std::uint32_t number, std::uint32_t target_number) {
  ObjectChange made;
  const ObjectChange& change = ChangeOf(number, made);
  const RewritePlan::Entries entries = EntriesOf(number);
  if (change.kind == ObjectChange::Kind::kKept && !IsAddedObject(number)) {
    return !entries.empty() && WriteEdited(number, target_number, entries);
  }
  if (change.kind != ObjectChange::Kind::kLeftOut) {
    Arena arena;
    const Object value =
        RewritePlan::Edited(RewritePlan::Parse(change.text, arena), entries, arena);
    if (change.kind == ObjectChange::Kind::kStream) {
      WriteStream(change, value, target_number);
    } else {
      objects_.WriteValue(target_number, value);
    }
  }
  return true;
}

// made: holds a change that has to be asked for.
const ObjectChange& RewritePass::ChangeOf(std::uint32_t number, ObjectChange& made) {
  const RewritePlan::Planned* planned = plan_->Find(number);
  if (planned != nullptr && !planned->later) {
    return planned->change;
  }
  if (planned != nullptr) {
    const RewritePlan::Later later = planned->later;  // it may make changes itself
    made = later();
  } else if (plan_->each) {
    made = plan_->each(number);
  }
  return made;
}

RewritePlan::Entries RewritePass::EntriesOf(std::uint32_t number) const {
  const auto found = plan_->entries.find(number);
  RewritePlan::Entries entries =
      found != plan_->entries.end() ? found->second : RewritePlan::Entries();
  if (number == plan_->catalog && page_root_ != 0) {
    RewritePlan::Put(entries, "Type", "/Catalog");
    RewritePlan::Put(entries, "Pages", ReferenceText(page_root_));
  }
  return entries;
}

bool RewritePass::WriteEdited(std::uint32_t number, std::uint32_t target_number,
                              const RewritePlan::Entries& entries) {
  Arena arena;
  const Object value = document_->Load({number, 0}, arena);
  if (!value.IsDictionary()) {
    return false;
  }
  objects_.CopyWithDictionary(number, target_number, RewritePlan::Edited(value, entries, arena));
  return true;
}

void RewritePass::WriteStream(const ObjectChange& change, const Object& dictionary,
                              std::uint32_t target_number) {
  if (!change.writer) {
    objects_.WriteStream(target_number, dictionary, change.data);
    return;
  }
  GatheringSink sink(writer_, target_number, objects_.StreamDictionary(dictionary));
  change.writer(sink);
  if (sink.has_begun()) {
    writer_.EndStream();
  } else {
    objects_.WriteStream(target_number, dictionary, sink.Take());
  }
}

// An object that this pass needs and the plan does not have.
std::uint32_t RewritePass::AddText(std::string text) {
  plan_->added.push_back({ObjectChange::Value(std::move(text)), {}});
  return kFirstAddedObject + static_cast<std::uint32_t>(plan_->added.size()) - 1;
}

// In their order, each with what it needs. All have their numbers first: annotations refer to pages
// that come later.
void RewritePass::WritePages() {
  PageTreeWriter tree(writer_);
  std::vector<PageTreeWriter::Leaf> leaves;
  for (const RewrittenPage& page : plan_->pages) {
    leaves.push_back(tree.AddPage());
    const std::uint32_t number = NumberOf(page);
    if (number != 0 && page_numbers_.insert(number).second) {
      objects_.Assign(number, leaves.back().page);
    }
  }
  parent_ = AddText("null");
  for (std::size_t i = 0; i < leaves.size(); ++i) {
    objects_.Assign(parent_, leaves[i].parent);
    WritePage(plan_->pages[i], leaves[i].page);
    objects_.CopyPending();
  }
  page_root_ = AddText("null");
  objects_.Assign(page_root_, tree.Finish());
}

// 0 for a page that is no object of its own.
std::uint32_t RewritePass::NumberOf(const RewrittenPage& page) {
  if (page.added != 0) {
    return plan_->Representative(page.added);
  }
  if (page.index >= plan_->tree->pages().size()) {
    throw Error(ErrorCode::kInternal, "there is no such page to be written");
  }
  return plan_->tree->pages()[page.index].number;
}

void RewritePass::WritePage(const RewrittenPage& page, std::uint32_t target_number) {
  const std::uint32_t number = NumberOf(page);
  Arena arena;
  const Object dictionary = number != 0
                                ? PageDictionary(number, arena)
                                : plan_->tree->Load(plan_->tree->pages()[page.index], arena);
  RewritePlan::Entries entries;
  RewritePlan::Put(entries, "Type", "/Page");
  RewritePlan::Put(entries, "Parent", ReferenceText(parent_));
  RewritePlan::Put(entries, "Kids", std::nullopt);  // with any, it would be a node
  if (page.added == 0) {
    PutInherited(entries, plan_->tree->pages()[page.index], dictionary);
  }
  if (number != 0) {
    for (const RewritePlan::Entry& entry : EntriesOf(number)) {
      RewritePlan::Put(entries, entry.key, entry.text);
    }
  }
  objects_.WriteValue(target_number, RewritePlan::Edited(dictionary, entries, arena));
}

Object RewritePass::PageDictionary(std::uint32_t number, Arena& arena) {
  ObjectChange made;
  const ObjectChange& change = ChangeOf(number, made);
  const Object value = change.kind == ObjectChange::Kind::kKept && !IsAddedObject(number)
                           ? document_->Load({number, 0}, arena)
                           : RewritePlan::Parse(change.text, arena);
  return value.IsDictionary() ? value : Object::Dictionary({});
}

// What the page has from above, now that nothing is above it.
void RewritePass::PutInherited(RewritePlan::Entries& entries, const PageTree::Page& page,
                               const Object& dictionary) {
  for (std::size_t i = 0; i < kInheritablePageKeys.size(); ++i) {
    const auto key = static_cast<InheritableKey>(i);
    Arena arena;
    PageTree::Given given = plan_->tree->FindAttribute(page, dictionary, key);
    given.value = Inherited(given, key, arena);
    if (given.node != 0 && !given.value.IsNull()) {
      RewritePlan::Put(entries, kInheritablePageKeys[i], SharedText(given, key));
    }
  }
}

// The value that is given, as the plan changes it where it stands.
Object RewritePass::Inherited(const PageTree::Given& given, InheritableKey key, Arena& arena) {
  const auto entries = plan_->entries.find(plan_->tree->NumberOf(given));
  if (given.node != 0 && entries != plan_->entries.end()) {
    for (const RewritePlan::Entry& entry : entries->second) {
      if (entry.key == kInheritablePageKeys[static_cast<std::size_t>(key)]) {
        return entry.text ? RewritePlan::Parse(*entry.text, arena) : Object();
      }
    }
  }
  return given.value;
}

// A value that many pages have, which is written once, unless it is short.
std::string RewritePass::SharedText(const PageTree::Given& given, InheritableKey key) {
  const bool is_short =
      !given.value.IsDictionary() && given.value.Items().size() <= kMaxCopiedItems;
  if (is_short) {
    return TextOf(given.value);
  }
  std::uint32_t& number = shared_[static_cast<std::size_t>(key)][given.node];
  if (number == 0) {
    number = AddText(TextOf(given.value));
  }
  return ReferenceText(number);
}

FileTrailer RewritePass::Trailer() {
  Arena arena;
  FileTrailer trailer;
  const Object dictionary = RewritePlan::Edited(document_->trailer(), plan_->trailer, arena);
  const Object info = dictionary.Get("Info");
  if (info.IsReference() || info.IsDictionary()) {
    const std::uint32_t number =
        info.IsReference() ? info.AsReference().number : AddText(TextOf(info));
    const std::uint32_t target = objects_.Map(number);
    trailer.info = target != ReferenceMap::kLeftOut ? target : 0;
  }
  for (const DictionaryEntry& entry : dictionary.Entries()) {
    if (std::find(kFileKeys.begin(), kFileKeys.end(), entry.Key()) == kFileKeys.end()) {
      AppendName(trailer.entries, entry.Key());
      objects_.Append(trailer.entries, entry.value);
    }
  }
  const auto ids = document_->Resolve(document_->trailer().Get("ID"), arena).Items();
  if (keeps_id_ && !ids.empty()) {
    trailer.first_id = document_->Resolve(ids[0], arena).Text();
  }
  return trailer;
}

}  // namespace TarnixTools::pdf
