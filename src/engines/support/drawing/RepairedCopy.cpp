#include "engines/support/drawing/RepairedCopy.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "engines/support/drawing/DrawingCost.h"
#include "engines/support/drawing/UndrawnObjects.h"
#include "engines/support/images/DocumentImage.h"
#include "engines/support/images/Jbig2Image.h"
#include "engines/support/images/Picture.h"
#include "pdf/filters/Filters.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/write/DocumentRewriter.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines {
namespace {

using pdf::Object;
using pdf::ObjectChange;

constexpr std::array<std::string_view, 2> kCatalogKeys = {"AcroForm", "OCProperties"};

constexpr int kFastDeflate = 1;
constexpr int kUnitDecimals = 6;

void AppendEntry(std::string& text, std::string_view key, const Object& value) {
  if (!value.IsNull()) {
    pdf::AppendName(text, key);
    pdf::AppendObject(text, value);
  }
}

void AppendGeometry(std::string& text, const pdf::PageGeometry& geometry) {
  text += "/MediaBox";
  pdf::AppendBox(text, geometry.media_box);
  if (geometry.crop_box != geometry.media_box) {
    text += "/CropBox";
    pdf::AppendBox(text, geometry.crop_box);
  }
  if (geometry.rotation != 0) {
    text += "/Rotate";
    pdf::AppendInteger(text, geometry.rotation);
  }
  if (geometry.user_unit != 1) {
    text += "/UserUnit";
    pdf::AppendNumber(text, geometry.user_unit, kUnitDecimals);
  }
}

std::string Deflated(RowSource& picture) {
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

class Copy {
 public:
  Copy(pdf::Document& document, const pdf::PageTree& pages)
      : document_(&document), pages_(&pages), cost_(document), rewriter_(document) {}

  void Write(pdf::ByteSink& sink) {
    TakeOverSettings();
    ReplaceUndrawn();
    ReplacePages();
    rewriter_.Write(sink);
  }

 private:
  void TakeOverSettings() {
    pdf::Arena arena;
    const Object catalog = document_->Catalog(arena);
    std::string text = "<</Type/Catalog";
    for (const std::string_view key : kCatalogKeys) {
      AppendEntry(text, key, catalog.Get(key));
    }
    rewriter_.Change(rewriter_.catalog(), ObjectChange::Value(text + ">>"));
    for (const pdf::DictionaryEntry& entry : document_->trailer().Entries()) {
      rewriter_.RemoveTrailerEntry(entry.Key());
    }
  }

  void ReplaceUndrawn() {
    UndrawnObjects undrawn(*document_);
    for (std::size_t i = 0; i < pages_->pages().size(); ++i) {
      undrawn.FindOnPage(*pages_, i);
    }
    for (const std::uint32_t profile : undrawn.profiles()) {
      rewriter_.ChangeLater(profile, [this, profile] { return EmptyProfile(profile); });
    }
    for (const std::uint32_t image : undrawn.images()) {
      rewriter_.ChangeLater(image, [this, image] { return DecodedImage(image); });
    }
    for (const std::uint32_t function : undrawn.functions()) {
      rewriter_.Drop(function);
    }
  }

  // What stands in the place of a profile, so that the alternate colour space is used.
  ObjectChange EmptyProfile(std::uint32_t number) {
    pdf::Arena arena;
    const Object dictionary = document_->Load({.number = number, .generation = 0}, arena);
    std::string text = "<<";
    for (const std::string_view key : {"N", "Alternate", "Range"}) {
      AppendEntry(text, key, dictionary.Get(key));
    }
    return ObjectChange::Stream(text + ">>", "");
  }

  // What is decoded here stands in the place of an image; its masks stay.
  ObjectChange DecodedImage(std::uint32_t number) {
    pdf::Arena arena;
    const DocumentImage image = ImageObjectOf(*document_, number, arena);
    ImageFacts facts = FactsOf(image, arena);
    if (facts.filter == ImageFilter::kJbig2) {
      return DecodedJbig2(image, facts);
    }
    facts.soft_mask = 0;
    facts.stencil_mask = 0;
    const RowSourcePtr picture = OpenPicture(image, facts);
    if (picture == nullptr) {
      return ObjectChange::Keep();
    }
    std::string text = "<</Subtype/Image/BitsPerComponent 8/Filter/FlateDecode/Width " +
                       std::to_string(picture->width()) + "/Height " +
                       std::to_string(picture->height()) + "/ColorSpace/" +
                       (picture->layout() == PixelLayout::kGray ? "DeviceGray" : "DeviceRGB");
    for (const std::string_view key : {"SMask", "Interpolate", "OC"}) {
      AppendEntry(text, key, image.dictionary.Get(key));
    }
    if (document_->IsStream(image.dictionary.Get("Mask").AsReference().number)) {
      AppendEntry(text, "Mask", image.dictionary.Get("Mask"));
    }
    return ObjectChange::Stream(text + ">>", Deflated(*picture));
  }

  // All but the coding stays.
  static ObjectChange DecodedJbig2(const DocumentImage& image, const ImageFacts& facts) {
    const std::optional<Jbig2Rows> decoded = DecodeJbig2Image(image, facts);
    if (!decoded) {
      return ObjectChange::Keep();
    }
    std::string text = "<</Filter/FlateDecode";
    for (const pdf::DictionaryEntry& entry : image.dictionary.Entries()) {
      if (entry.Key() != "Filter" && entry.Key() != "DecodeParms") {
        AppendEntry(text, entry.Key(), entry.value);
      }
    }
    std::string deflated;
    pdf::DeflateTo(deflated, decoded->rows, kFastDeflate);
    return ObjectChange::Stream(text + ">>", std::move(deflated));
  }

  // What refers to a page that stands twice means the first of the two.
  void ReplacePages() {
    std::vector<pdf::RewrittenPage> pages;
    std::unordered_set<std::uint32_t> seen;
    for (std::size_t i = 0; i < pages_->pages().size(); ++i) {
      const std::uint32_t added =
          rewriter_.AddLater([this, i] { return ObjectChange::Value(PageText(i)); });
      pages.push_back({.index = i, .added = added});
      const std::uint32_t number = pages_->pages()[i].number;
      if (number != 0 && seen.insert(number).second) {
        rewriter_.Merge(number, added);
      }
    }
    rewriter_.SetPages(*pages_, std::move(pages));
  }

  std::string PageText(std::size_t index) {
    const pdf::PageTree::Page& page = pages_->pages()[index];
    pdf::Arena arena;
    const Object dictionary = pages_->Load(page, arena);
    std::string text = "<<";
    AppendGeometry(text, pdf::ReadPageGeometry(*document_, *pages_, page, dictionary));
    AppendDrawn(text, index, dictionary);
    AppendEntry(text, "Group", dictionary.Get("Group"));
    return text + ">>";
  }

  // What the page draws, without what is too much.
  void AppendDrawn(std::string& text, std::size_t index, const Object& dictionary) {
    const Object resources =
        pages_->FindAttribute(pages_->pages()[index], dictionary, pdf::InheritableKey::kResources)
            .value;
    const DrawingCost::Excess excess = cost_.ExcessOf(*pages_, index);
    if (!excess.contents) {
      AppendEntry(text, "Contents", dictionary.Get("Contents"));
    }
    if (excess.resources.empty()) {
      AppendEntry(text, "Resources", resources);
    } else {
      AppendResources(text, resources, excess.resources);
    }
    if (excess.annotations.empty()) {
      AppendEntry(text, "Annots", dictionary.Get("Annots"));
    } else {
      AppendAnnotations(text, dictionary.Get("Annots"), excess.annotations);
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
        pdf::AppendObject(text, items[i]);
      }
    }
    text += "]";
  }

  pdf::Document* document_;
  const pdf::PageTree* pages_;
  DrawingCost cost_;
  pdf::DocumentRewriter rewriter_;
};

}  // namespace

void WriteRepairedCopy(pdf::Document& document, const pdf::PageTree& pages, pdf::ByteSink& sink) {
  Copy(document, pages).Write(sink);
}

}  // namespace TarnixTools::engines
