#include "engines/support/drawing/RepairedCopy.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "engines/support/drawing/DrawingCost.h"
#include "engines/support/drawing/UndrawnObjects.h"
#include "engines/support/images/DocumentImage.h"
#include "engines/support/images/Jbig2Image.h"
#include "engines/support/images/Picture.h"
#include "pdf/filters/Filters.h"
#include "pdf/write/FileWriter.h"
#include "pdf/write/ObjectCopier.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines {
namespace {

using pdf::Object;

constexpr std::array<std::string_view, 2> kCatalogKeys = {"AcroForm", "OCProperties"};

constexpr int kFastDeflate = 1;

class Copy {
 public:
  Copy(pdf::Document& document, const pdf::PageTree& pages, pdf::ByteSink& sink)
      : document_(&document),
        pages_(&pages),
        cost_(document),
        writer_(sink, nullptr),
        objects_(document, writer_, numbers_, [&pages](std::uint32_t number) {
          return pages.IsPage(number) || pages.IsNode(number);
        }) {}

  void Write() {
    const std::uint32_t catalog = writer_.Reserve();
    const std::uint32_t root = writer_.Reserve();
    const std::string kids = ReservePages();
    ReplaceUndrawn();
    WriteCatalog(catalog, root);
    writer_.WriteObject(root, "<</Type/Pages/Count " + std::to_string(page_numbers_.size()) +
                                  "/Kids[" + kids + "]>>");
    for (std::size_t i = 0; i < page_numbers_.size(); ++i) {
      WritePage(i, root);
      objects_.CopyPending();
    }
    writer_.Finish(catalog, 0);
  }

 private:
  // All of them first: annotations refer to pages that come later.
  std::string ReservePages() {
    std::string kids;
    for (const pdf::PageTree::Page& page : pages_->pages()) {
      const std::uint32_t number = writer_.Reserve();
      page_numbers_.push_back(number);
      if (page.number != 0 && !objects_.IsMapped(page.number)) {
        objects_.Assign(page.number, number);
      }
      pdf::AppendReference(kids, number);
    }
    return kids;
  }

  void ReplaceUndrawn() {
    UndrawnObjects undrawn(*document_);
    for (std::size_t i = 0; i < pages_->pages().size(); ++i) {
      undrawn.FindOnPage(*pages_, i);
    }
    for (const std::uint32_t profile : undrawn.profiles()) {
      ReplaceProfile(profile);
    }
    for (const std::uint32_t image : undrawn.images()) {
      ReplaceImage(image);
    }
  }

  // Puts an empty profile in the place of one, so that the alternate colour space is used.
  void ReplaceProfile(std::uint32_t original) {
    if (objects_.IsMapped(original)) {
      return;
    }
    const std::uint32_t number = writer_.Reserve();
    objects_.Assign(original, number);
    pdf::Arena arena;
    const Object dictionary = document_->Load({.number = original, .generation = 0}, arena);
    std::string text = "<<";
    for (const std::string_view key : {"N", "Alternate", "Range"}) {
      AppendEntry(text, key, dictionary.Get(key));
    }
    writer_.BeginStream(number, text, 0);
    writer_.EndStream();
  }

  // Puts what is decoded here in the place of an image; its masks stay.
  void ReplaceImage(std::uint32_t original) {
    if (objects_.IsMapped(original)) {
      return;
    }
    pdf::Arena arena;
    const Object dictionary = document_->Load({.number = original, .generation = 0}, arena);
    const DocumentImage image{.document = document_,
                              .number = original,
                              .dictionary = dictionary,
                              .data = {},
                              .color_spaces = {}};
    ImageFacts facts = FactsOf(image, arena);
    if (facts.filter == ImageFilter::kJbig2) {
      return ReplaceJbig2(image, facts);
    }
    facts.soft_mask = 0;
    facts.stencil_mask = 0;
    const RowSourcePtr picture = OpenPicture(image, facts);
    if (picture == nullptr) {
      return;
    }
    const std::string deflated = Deflated(*picture);
    const std::uint32_t number = writer_.Reserve();
    objects_.Assign(original, number);
    std::string text = "<</Subtype/Image/BitsPerComponent 8/Filter/FlateDecode/Width " +
                       std::to_string(picture->width()) + "/Height " +
                       std::to_string(picture->height()) + "/ColorSpace/" +
                       (picture->layout() == PixelLayout::kGray ? "DeviceGray" : "DeviceRGB");
    for (const std::string_view key : {"SMask", "Interpolate", "OC"}) {
      AppendEntry(text, key, dictionary.Get(key));
    }
    if (document_->IsStream(dictionary.Get("Mask").AsReference().number)) {
      AppendEntry(text, "Mask", dictionary.Get("Mask"));
    }
    writer_.BeginStream(number, text, deflated.size());
    writer_.AppendStream(deflated);
    writer_.EndStream();
  }

  // All but the coding stays.
  void ReplaceJbig2(const DocumentImage& image, const ImageFacts& facts) {
    const std::optional<std::string> samples = DecodeOwnJbig2(image, facts);
    if (!samples) {
      return;
    }
    const std::uint32_t number = writer_.Reserve();
    objects_.Assign(image.number, number);
    std::string text = "<</Filter/FlateDecode";
    for (const pdf::DictionaryEntry& entry : image.dictionary.Entries()) {
      if (entry.Key() != "Length" && entry.Key() != "Filter" && entry.Key() != "DecodeParms") {
        AppendEntry(text, entry.Key(), entry.value);
      }
    }
    std::string deflated;
    pdf::DeflateTo(deflated, *samples, kFastDeflate);
    writer_.BeginStream(number, text, deflated.size());
    writer_.AppendStream(deflated);
    writer_.EndStream();
  }

  static std::string Deflated(RowSource& picture) {
    const std::size_t row_bytes = picture.row_bytes();
    std::string samples(row_bytes * picture.height(), '\0');
    auto* const rows = reinterpret_cast<std::uint8_t*>(samples.data());
    for (std::size_t y = 0; y < picture.height(); ++y) {
      picture.ReadRow(rows + y * row_bytes);
    }
    std::string deflated;
    pdf::DeflateTo(deflated, samples, kFastDeflate);
    return deflated;
  }

  void WriteCatalog(std::uint32_t number, std::uint32_t root) {
    pdf::Arena arena;
    const Object catalog = document_->Catalog(arena);
    std::string text = "<</Type/Catalog/Pages";
    pdf::AppendReference(text, root);
    for (const std::string_view key : kCatalogKeys) {
      AppendEntry(text, key, catalog.Get(key));
    }
    writer_.WriteObject(number, text + ">>");
    objects_.CopyPending();
  }

  void WritePage(std::size_t index, std::uint32_t root) {
    const pdf::PageTree::Page& page = pages_->pages()[index];
    pdf::Arena arena;
    const Object dictionary = pages_->Load(page, arena);
    std::string text = "<</Type/Page/Parent";
    pdf::AppendReference(text, root);
    const auto attribute = [&](pdf::InheritableKey key) {
      return pages_->FindAttribute(page, dictionary, key).value;
    };
    const bool shows_nothing = !Overlap(BoxOf(attribute(pdf::InheritableKey::kMediaBox)),
                                        BoxOf(attribute(pdf::InheritableKey::kCropBox)));
    for (const pdf::InheritableKey key :
         {pdf::InheritableKey::kMediaBox, pdf::InheritableKey::kCropBox,
          pdf::InheritableKey::kRotate}) {
      if (key != pdf::InheritableKey::kCropBox || !shows_nothing) {
        AppendEntry(text, pdf::kInheritablePageKeys[static_cast<std::size_t>(key)], attribute(key));
      }
    }
    AppendDrawn(text, dictionary, attribute(pdf::InheritableKey::kResources),
                cost_.ExcessOf(*pages_, index));
    for (const std::string_view key : {"Group", "UserUnit"}) {
      AppendEntry(text, key, dictionary.Get(key));
    }
    writer_.WriteObject(page_numbers_[index], text + ">>");
  }

  // What the page draws, without what is too much.
  void AppendDrawn(std::string& text, const Object& page, const Object& resources,
                   const DrawingCost::Excess& excess) {
    if (!excess.contents) {
      AppendEntry(text, "Contents", page.Get("Contents"));
    }
    if (excess.resources.empty()) {
      AppendEntry(text, "Resources", resources);
    } else {
      AppendResources(text, resources, excess.resources);
    }
    if (excess.annotations.empty()) {
      AppendEntry(text, "Annots", page.Get("Annots"));
    } else {
      AppendAnnotations(text, page.Get("Annots"), excess.annotations);
    }
  }

  void AppendResources(std::string& text, const Object& resources,
                       const std::vector<DrawingCost::ResourceName>& left_out) {
    pdf::Arena arena;
    text += "/Resources<<";
    for (const pdf::DictionaryEntry& category : document_->Resolve(resources, arena).Entries()) {
      const Object named = document_->Resolve(category.value, arena);
      if (!named.IsDictionary()) {
        AppendEntry(text, category.Key(), category.value);
        continue;
      }
      pdf::AppendName(text, category.Key());
      text += "<<";
      for (const pdf::DictionaryEntry& entry : named.Entries()) {
        const bool is_left_out =
            std::any_of(left_out.begin(), left_out.end(), [&](const auto& name) {
              return name.category == category.Key() && name.name == entry.Key();
            });
        if (!is_left_out) {
          AppendEntry(text, entry.Key(), entry.value);
        }
      }
      text += ">>";
    }
    text += ">>";
  }

  void AppendAnnotations(std::string& text, const Object& annotations,
                         const std::vector<std::size_t>& left_out) {
    pdf::Arena arena;
    const auto items = document_->Resolve(annotations, arena).Items();
    text += "/Annots[";
    for (std::size_t i = 0; i < items.size(); ++i) {
      if (!std::binary_search(left_out.begin(), left_out.end(), i)) {
        objects_.Append(text, items[i]);
      }
    }
    text += "]";
  }

  struct Box {
    std::array<double, 2> least{};
    std::array<double, 2> most{};
  };

  std::optional<Box> BoxOf(const Object& value) {
    pdf::Arena arena;
    const auto items = document_->Resolve(value, arena).Items();
    if (items.size() < 4) {
      return std::nullopt;
    }
    Box box;
    for (std::size_t i = 0; i < 2; ++i) {
      const double first = document_->Resolve(items[i], arena).NumberOr(0);
      const double second = document_->Resolve(items[i + 2], arena).NumberOr(0);
      box.least[i] = std::min(first, second);
      box.most[i] = std::max(first, second);
    }
    return box;
  }

  // Whether the boxes overlap, or may: one that is not known may be anywhere.
  static bool Overlap(const std::optional<Box>& first, const std::optional<Box>& second) {
    if (!first || !second) {
      return true;
    }
    for (std::size_t i = 0; i < 2; ++i) {
      if (std::max(first->least[i], second->least[i]) >=
          std::min(first->most[i], second->most[i])) {
        return false;
      }
    }
    return true;
  }

  void AppendEntry(std::string& text, std::string_view key, const Object& value) {
    if (!value.IsNull()) {
      pdf::AppendName(text, key);
      objects_.Append(text, value);
    }
  }

  pdf::Document* document_;
  const pdf::PageTree* pages_;
  DrawingCost cost_;
  pdf::FileWriter writer_;
  pdf::NumberMap numbers_;
  pdf::ObjectCopier objects_;
  std::vector<std::uint32_t> page_numbers_;
};

}  // namespace

void WriteRepairedCopy(pdf::Document& document, const pdf::PageTree& pages, pdf::ByteSink& sink) {
  Copy(document, pages, sink).Write();
}

}  // namespace TarnixTools::engines
