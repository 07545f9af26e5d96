#include "engines/pdfa/convert/colors/Colors.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

#include "engines/pdfa/convert/colors/SpotColors.h"
#include "engines/support/images/ColorSpace.h"
#include "engines/support/pictures/StandardProfiles.h"
#include "pdf/content/ResourceGraph.h"
#include "pdf/write/EntryText.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::DictionaryEntry;
using pdf::Object;
using pdf::ResourceKind;

namespace {

std::string ReferenceText(std::uint32_t number) {
  std::string text;
  pdf::AppendReference(text, number);
  return text;
}

class ColorMender {
 public:
  ColorMender(Conversion& conversion, const ContentSurvey& survey)
      : conversion_(&conversion), survey_(&survey) {}

  void Mend() {
    SetOutputIntent();
    if (UsesCmyk()) {
      SetDefaultCmyk();
    }
    MendSpotColors();
  }

 private:
  pdf::DocumentRewriter& rewriter() { return conversion_->rewriter; }

  // One for all devices: what was there, for a press, says less of how the document is to look on
  // a screen.
  void SetOutputIntent() {
    const std::uint32_t profile =
        rewriter().Add(pdf::ObjectChange::Stream("<</N 3>>", SrgbProfileOfVersion2()));
    const std::uint32_t intent = rewriter().Add(pdf::ObjectChange::Value(
        "<</Type/OutputIntent/S/GTS_PDFA1/OutputConditionIdentifier(sRGB)/Info(sRGB)"
        "/DestOutputProfile " +
        ReferenceText(profile) + ">>"));
    rewriter().SetEntry(rewriter().catalog(), "OutputIntents", "[" + ReferenceText(intent) + "]");
  }

  template <typename Take>
  void ForEachResource(Take take) {
    pdf::ResourceGraph graph(conversion_->document);
    for (std::size_t i = 0; i < conversion_->pages.pages().size(); ++i) {
      graph.AddPage(conversion_->pages, i);
      while (const pdf::ResourceNode* node = graph.Next()) {
        take(*node);
      }
    }
  }

  bool UsesCmyk() {
    if (survey_->uses_cmyk()) {
      return true;
    }
    bool uses_cmyk = false;
    ForEachResource([&](const pdf::ResourceNode& node) {
      uses_cmyk = uses_cmyk || NamesCmyk(node) || CallsCmyk(node);
    });
    return uses_cmyk;
  }

  // Whether content has another name for it.
  bool CallsCmyk(const pdf::ResourceNode& node) {
    if (!pdf::HasContent(node.kind)) {
      return false;
    }
    Arena arena;
    pdf::Document& document = conversion_->document;
    const Object spaces = document.Resolve(node.scope.resources.Get("ColorSpace"), arena);
    return std::any_of(spaces.Entries().begin(), spaces.Entries().end(),
                       [&](const DictionaryEntry& entry) {
                         return document.Resolve(entry.value, arena).IsName("DeviceCMYK");
                       });
  }

  static bool NamesCmyk(const pdf::ResourceNode& node) {
    std::string text;
    if (node.kind == ResourceKind::kColorSpace) {
      pdf::AppendObject(text, node.value);
    } else {
      pdf::AppendObject(text, node.value.Get("ColorSpace"));
      pdf::AppendObject(text, node.value.Get("Group"));
    }
    return text.find("/DeviceCMYK") != std::string::npos;
  }

  // In all resources, so that content need not change; what is painted with a pattern does not look
  // there.
  void SetDefaultCmyk() {
    const std::uint32_t profile = rewriter().Add(
        pdf::ObjectChange::Stream("<</N 4>>", CmykProfileOfVersion2([](const Cmyk& inks) {
                                    Srgb color{};
                                    ToRgb(DeviceSpace(4), inks.data(), color.data(), 1);
                                    return color;
                                  })));
    const std::uint32_t space =
        rewriter().Add(pdf::ObjectChange::Value("[/ICCBased " + ReferenceText(profile) + "]"));
    default_cmyk_ = ReferenceText(space);
    for (const pdf::PageTree::Page& page : conversion_->pages.pages()) {
      SetInPage(page);
    }
    ForEachResource([this](const pdf::ResourceNode& node) {
      const bool has_resources = (pdf::HasContent(node.kind) && node.kind != ResourceKind::kPage) ||
                                 node.kind == ResourceKind::kType3Font;
      if (has_resources && node.number != 0) {
        SetInObject(node.number);
      } else if (node.kind == ResourceKind::kShading && node.number != 0 &&
                 node.value.Get("ColorSpace").IsName("DeviceCMYK")) {
        rewriter().SetEntry(node.number, "ColorSpace", default_cmyk_);
      }
    });
    conversion_->report.Changed("CMYK of the device into CMYK with a profile");
  }

  // Part 1 asks nothing of them, but their shadings have the colours of no device either.
  void MendSpotColors() {
    if (conversion_->is_part1() && default_cmyk_.empty()) {
      return;
    }
    SpotColors spots(*conversion_);
    ForEachResource([&](const pdf::ResourceNode& node) {
      if (node.kind == ResourceKind::kColorSpace) {
        spots.Note(node);
      }
    });
    ForEachResource([&](const pdf::ResourceNode& node) {
      if (node.kind == ResourceKind::kColorSpace) {
        spots.Mend(node, default_cmyk_);
      }
    });
  }

  // What the page inherits becomes its own.
  void SetInPage(const pdf::PageTree::Page& page) {
    Arena arena;
    const Object own = page.number != 0 ? rewriter().Load(page.number, arena) : page.direct;
    Object resources = own.Get("Resources");
    if (resources.IsNull()) {
      resources = conversion_->pages.Attribute(page, pdf::InheritableKey::kResources, arena);
    }
    Set(page.number, resources);
    SetInGroup(page.number, own.Get("Group"));
  }

  void SetInObject(std::uint32_t number) {
    Arena arena;
    const Object value = rewriter().Load(number, arena);
    SetInGroup(number, value.Get("Group"));
    if (const Object resources = value.Get("Resources"); !resources.IsNull()) {
      Set(number, resources);
    }
  }

  // The colours of a transparency group are blended in a space that no resources change.
  //   group - as the object with this number refers to it
  void SetInGroup(std::uint32_t number, const Object& group) {
    Arena arena;
    if (group.IsReference()) {
      if (rewriter().Load(group.AsReference().number, arena).Get("CS").IsName("DeviceCMYK")) {
        rewriter().SetEntry(group.AsReference().number, "CS", default_cmyk_);
      }
      return;
    }
    if (!group.Get("CS").IsName("DeviceCMYK") || number == 0) {
      return;
    }
    std::string text = "<<";
    for (const DictionaryEntry& entry : group.Entries()) {
      pdf::AppendName(text, entry.Key());
      if (entry.Key() == "CS") {
        text += " " + default_cmyk_;
      } else {
        pdf::AppendObject(text, entry.value);
      }
    }
    rewriter().SetEntry(number, "Group", text + ">>");
  }

  // resources: of the object, as they are referred to
  void Set(std::uint32_t number, const Object& resources) {
    if (number == 0) {
      return;
    }
    if (!resources.IsReference()) {
      rewriter().SetEntry(number, "Resources", WithDefault(resources));
      return;
    }
    const std::uint32_t shared = resources.AsReference().number;
    if (!done_.insert(shared).second) {
      return;
    }
    Arena arena;
    const Object spaces = rewriter().Load(shared, arena).Get("ColorSpace");
    rewriter().SetEntry(shared, "ColorSpace", SpacesWithDefault(spaces));
  }

  std::string WithDefault(const Object& resources) {
    std::string text = "<<";
    pdf::AppendEntries(text, resources, {"ColorSpace"});
    return text + "/ColorSpace" + SpacesWithDefault(resources.Get("ColorSpace")) + ">>";
  }

  std::string SpacesWithDefault(const Object& value) {
    Arena arena;
    const Object spaces =
        value.IsReference() ? rewriter().Load(value.AsReference().number, arena) : value;
    std::string text = "<<";
    pdf::AppendEntries(text, spaces);
    return text + (spaces.Has("DefaultCMYK") ? ">>" : "/DefaultCMYK " + default_cmyk_ + ">>");
  }

  Conversion* conversion_;
  const ContentSurvey* survey_;
  std::string default_cmyk_;
  std::set<std::uint32_t> done_;  // numbers of resources
};

}  // namespace

void MendColors(Conversion& conversion, const ContentSurvey& survey) {
  ColorMender(conversion, survey).Mend();
}

}  // namespace TarnixTools::engines::pdfa
