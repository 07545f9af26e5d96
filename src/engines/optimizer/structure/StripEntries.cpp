#include "engines/optimizer/structure/StripEntries.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engines/optimizer/OptimizerSettings.h"
#include "pdf/write/NumberMap.h"
#include "pdf/write/ReachedObjects.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::optimizer {

namespace {

using pdf::Arena;
using pdf::DictionaryEntry;
using pdf::Object;

// What an object is, as far as rules ask for it.
enum class Owner : std::uint8_t { kCatalog, kPage, kForm, kImage, kOther };

// Sets of owners.
constexpr unsigned Bit(Owner owner) {
  return 1U << static_cast<unsigned>(owner);
}

constexpr unsigned kCatalog = Bit(Owner::kCatalog);
constexpr unsigned kPage = Bit(Owner::kPage);
constexpr unsigned kForm = Bit(Owner::kForm);
constexpr unsigned kImage = Bit(Owner::kImage);
constexpr unsigned kComponent = kPage | kForm | kImage | Bit(Owner::kOther);

// What the value of an entry has to be. Names in resources and the like can be anything, so that
// where the owner says little the value has to be what it should.
enum class Form : std::uint8_t { kAny, kInteger, kString, kDictionary, kMetadata };

struct StripRule {
  std::uint32_t bit;
  unsigned owners;
  std::string_view key;
  Form form = Form::kAny;
};

// With ISO 32000-2: 12.4.3, 14.3.2, 14.5, 14.7.5.4, 12.3.4, 14.10, 8.9.5.4, 14.11.2.2.
constexpr std::array kRules = {
    StripRule{kStripThreads, kCatalog, "Threads"},
    StripRule{kStripThreads, kPage, "B"},
    StripRule{kStripMetadata, kComponent, "Metadata", Form::kMetadata},
    // Required where there is private data, to tell whether that is up to date, and else of no use.
    StripRule{kStripPrivateData, kPage | kForm, "LastModified", Form::kString},
    StripRule{kStripPrivateData, kCatalog | kPage | kForm, "PieceInfo", Form::kDictionary},
    StripRule{kStripStructure, kCatalog, "StructTreeRoot"},
    StripRule{kStripStructure, kCatalog, "MarkInfo"},
    StripRule{kStripStructure, kComponent, "StructParent", Form::kInteger},
    StripRule{kStripStructure, kComponent, "StructParents", Form::kInteger},
    StripRule{kStripThumbnails, kPage, "Thumb"},
    StripRule{kStripWebCapture, kCatalog, "SpiderInfo"},
    StripRule{kStripWebCapture, kPage | kImage, "ID", Form::kString},
    StripRule{kStripAlternates, kImage, "Alternates"},
    StripRule{kStripAuthoringOutput, kPage, "BoxColorInfo"},
};

// Web capture's part of the names (14.10.3 and 14.10.4).
constexpr std::array<std::string_view, 2> kCaptureNames = {"IDS", "URLS"};
// What a print dialogue is set to (table 147); /Enforce names such settings.
constexpr std::array<std::string_view, 8> kPrintSettings = {
    "PrintArea",         "PrintClip",      "PrintScaling", "Duplex",
    "PickTrayByPDFSize", "PrintPageRange", "NumCopies",    "Enforce"};

class Stripper {
 public:
  Stripper(pdf::Document& document, const pdf::PageTree& pages, std::uint32_t strip,
           pdf::DocumentRewriter& rewriter)
      : document_(&document), pages_(&pages), strip_(strip), rewriter_(&rewriter) {}

  StrippedCounts Strip() {
    if ((strip_ & kStripThreads) != 0) {
      DropThreads();
    }
    if ((strip_ & kStripStructure) != 0) {
      DropStructure();
    }
    if ((strip_ & kStripWebCapture) != 0) {
      RemoveWithin("Names", kCaptureNames);
    }
    if ((strip_ & kStripAuthoringOutput) != 0) {
      RemoveWithin("ViewerPreferences", kPrintSettings);
    }
    pdf::ForEachReached(*document_, *rewriter_, [this](std::uint32_t number, const Object& value) {
      ApplyRules(number, value);
    });
    return counts_;
  }

 private:
  Owner OwnerOf(std::uint32_t number, const Object& value, Arena& arena) {
    if (number == rewriter_->catalog()) {
      return Owner::kCatalog;
    }
    if (pages_->IsPage(number)) {
      return Owner::kPage;
    }
    const Object subtype = Resolve(value.Get("Subtype"), arena);
    if (subtype.IsName("Form")) {
      return Owner::kForm;
    }
    return subtype.IsName("Image") ? Owner::kImage : Owner::kOther;
  }

  void ApplyRules(std::uint32_t number, const Object& value) {
    if (!value.IsDictionary()) {
      return;
    }
    Arena arena;
    const unsigned owner = Bit(OwnerOf(number, value, arena));
    const bool has_private_data = value.Has("PieceInfo");
    for (const StripRule& rule : kRules) {
      const bool applies = (rule.bit & strip_) != 0 && (rule.owners & owner) != 0 &&
                           value.Has(rule.key) && (rule.key != "LastModified" || has_private_data);
      if (applies && Has(rule.form, Resolve(value.Get(rule.key), arena), arena)) {
        rewriter_->RemoveEntry(number, rule.key);
        counts_.thumbnails += rule.bit == kStripThumbnails ? 1 : 0;
      }
    }
  }

  bool Has(Form form, const Object& value, Arena& arena) {
    switch (form) {
      case Form::kInteger:
        return value.IsInteger();
      case Form::kString:
        return value.IsString();
      case Form::kDictionary:
        return value.IsDictionary();
      case Form::kMetadata:
        return Resolve(value.Get("Type"), arena).IsName("Metadata") ||
               Resolve(value.Get("Subtype"), arena).IsName("XML");
      default:
        return true;
    }
  }

  // Removes entries of a dictionary that the catalog has, in place or as an object.
  void RemoveWithin(std::string_view key, std::span<const std::string_view> removed) {
    Arena arena;
    const Object entry = rewriter_->Load(rewriter_->catalog(), arena).Get(key);
    const pdf::Followed found = document_->Follow(entry, arena);
    if (found.number != 0) {
      for (const std::string_view name : removed) {
        rewriter_->RemoveEntry(found.number, name);
      }
      return;
    }
    std::vector<DictionaryEntry> kept(found.value.Entries().begin(), found.value.Entries().end());
    const auto count = std::erase_if(kept, [&](const DictionaryEntry& own) {
      return std::find(removed.begin(), removed.end(), own.Key()) != removed.end();
    });
    if (kept.empty() && count > 0) {
      rewriter_->RemoveEntry(rewriter_->catalog(), key);
    } else if (count > 0) {
      std::string text;
      pdf::AppendObject(text, Object::Dictionary(kept));
      rewriter_->SetEntry(rewriter_->catalog(), key, text);
    }
  }

  // Articles and their beads, to which actions and pages may refer.
  void DropThreads() {
    Arena arena;
    const Object catalog = rewriter_->Load(rewriter_->catalog(), arena);
    for (const Object& item : Resolve(catalog.Get("Threads"), arena).Items()) {
      Arena thread_arena;
      const pdf::Followed thread = document_->Follow(item, thread_arena);
      DropBeads(thread.value.Get("F"));
      if (thread.value.IsDictionary() && thread.value.Has("F")) {
        Drop(thread.number);
      }
    }
    for (const pdf::PageTree::Page& page : pages_->pages()) {
      Arena page_arena;
      const Object beads = Resolve(pages_->Load(page, page_arena).Get("B"), page_arena);
      for (const Object& bead : beads.Items()) {
        DropBeads(bead);
      }
    }
  }

  // A bead and those that follow it, which lead back to it in the end.
  void DropBeads(const Object& first) {
    Arena arena;
    std::uint32_t next = first.AsReference().number;
    while (next != 0) {
      arena.Reset();
      const pdf::Followed bead =
          document_->Follow(Object::Ref({.number = next, .generation = 0}), arena);
      const bool is_bead = bead.value.Has("R") && bead.value.Has("N") && bead.value.Has("V");
      if (!is_bead || !Drop(bead.number)) {
        return;
      }
      ++counts_.beads;
      next = bead.value.Get("N").AsReference().number;
    }
  }

  // The structure tree with its elements: outline items and destinations may lead to one of those,
  // and that back to all others.
  void DropStructure() {
    Arena arena;
    const Object catalog = rewriter_->Load(rewriter_->catalog(), arena);
    const pdf::Followed root = document_->Follow(catalog.Get("StructTreeRoot"), arena);
    std::vector<std::uint32_t> waiting;
    pdf::CollectReferences(root.value.Get("K"), waiting);
    if (root.value.IsDictionary()) {
      Drop(root.number);
    }
    while (!waiting.empty()) {
      arena.Reset();
      const pdf::Followed found =
          document_->Follow(Object::Ref({.number = waiting.back(), .generation = 0}), arena);
      waiting.pop_back();
      const bool is_element = found.value.IsArray() || IsElement(found.value, arena);
      if (is_element && Drop(found.number)) {
        counts_.structure_elements += found.value.IsArray() ? 0 : 1;
        pdf::CollectReferences(found.value.IsArray() ? found.value : found.value.Get("K"), waiting);
      }
    }
  }

  bool IsElement(const Object& value, Arena& arena) {
    const Object type = Resolve(value.Get("Type"), arena);
    return type.IsName("StructElem") ||
           (type.IsNull() && Resolve(value.Get("S"), arena).IsName() && value.Has("P"));
  }

  // False for what was dropped already, and for what stays whatever refers to it as what.
  bool Drop(std::uint32_t number) {
    if (number == 0 || pages_->IsPage(number) || pages_->IsNode(number) ||
        document_->IsCatalogObject(number) || dropped_.Get(number) != 0) {
      return false;
    }
    dropped_.Set(number, 1);
    rewriter_->Drop(number, pdf::Gap::kClosed);
    return true;
  }

  Object Resolve(const Object& value, Arena& arena) { return document_->Resolve(value, arena); }

  pdf::Document* document_;
  const pdf::PageTree* pages_;
  std::uint32_t strip_;
  pdf::DocumentRewriter* rewriter_;
  pdf::NumberMap dropped_;
  StrippedCounts counts_;
};

}  // namespace

StrippedCounts StripEntries(pdf::Document& document, const pdf::PageTree& pages,
                            std::uint32_t strip, pdf::DocumentRewriter& rewriter) {
  return Stripper(document, pages, strip, rewriter).Strip();
}

}  // namespace TarnixTools::engines::optimizer
