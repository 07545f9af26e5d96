#include "engines/pdfa/convert/colors/SpotColors.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "pdf/write/EntryText.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::Object;

namespace {

constexpr std::array<std::string_view, 6> kNoSpotColors = {"Cyan",  "Magenta", "Yellow",
                                                           "Black", "None",    "All"};
constexpr std::size_t kSeparationItems = 4;
constexpr std::size_t kDeviceNItems = 4;  // and attributes
constexpr std::size_t kAlternateItem = 2;

std::string ReferenceText(std::uint32_t number) {
  std::string text;
  pdf::AppendReference(text, number);
  return text;
}

}  // namespace

void SpotColors::Note(const pdf::ResourceNode& node) {
  const auto items = node.value.Items();
  if (node.number != 0 && items.size() == kSeparationItems && items[0].IsName("Separation")) {
    separations_.emplace(items[1].Text(), ReferenceText(node.number));
  }
}

void SpotColors::Mend(const pdf::ResourceNode& node, const std::string& cmyk) {
  const auto items = node.value.Items();
  if (node.number == 0 || items.size() < kDeviceNItems || !items[0].IsName("DeviceN")) {
    return;
  }
  std::string text = "[";
  for (std::size_t i = 0; i < kDeviceNItems; ++i) {
    if (i == kAlternateItem && items[i].IsName("DeviceCMYK") && !cmyk.empty()) {
      text += " " + cmyk + " ";
    } else {
      pdf::AppendObject(text, items[i]);
    }
  }
  text += Attributes(node.value, cmyk) + "]";
  conversion_->rewriter.Change(node.number, pdf::ObjectChange::Value(text));
}

std::string SpotColors::Attributes(const Object& space, const std::string& cmyk) {
  Arena arena;
  pdf::Document& document = conversion_->document;
  const auto items = space.Items();
  const Object attributes =
      items.size() > kDeviceNItems ? document.Resolve(items[kDeviceNItems], arena) : Object();
  const Object process = document.Resolve(attributes.Get("Process"), arena);
  std::string text = "<<";
  pdf::AppendEntries(text, attributes, {"Colorants", "Process"});
  if (process.IsDictionary()) {
    text += "/Process<</Components";
    pdf::AppendObject(text, process.Get("Components"));
    text += "/ColorSpace";
    const Object process_space = process.Get("ColorSpace");
    if (process_space.IsName("DeviceCMYK") && !cmyk.empty()) {
      text += " " + cmyk;
    } else {
      pdf::AppendObject(text, process_space);
    }
    text += ">>";
  }
  const Object names = document.Resolve(items[1], arena);
  const Object known = document.Resolve(attributes.Get("Colorants"), arena);
  return text + "/Colorants<<" +
         Colorants(names, known, document.Resolve(process.Get("Components"), arena)) + ">>>>";
}

std::string SpotColors::Colorants(const Object& names, const Object& known, const Object& process) {
  std::string text;
  pdf::AppendEntries(text, known);
  for (const Object& item : names.Items()) {
    Arena arena;
    const std::string_view name = conversion_->document.Resolve(item, arena).Text();
    const bool is_process =
        std::find(kNoSpotColors.begin(), kNoSpotColors.end(), name) != kNoSpotColors.end() ||
        std::any_of(process.Items().begin(), process.Items().end(),
                    [name](const Object& component) { return component.IsName(name); });
    if (!is_process && !known.Has(name) && text.find(SeparationOf(name)) == std::string::npos) {
      pdf::AppendName(text, name);
      text += " " + SeparationOf(name);
    }
  }
  return text;
}

// Where the document does not describe the colour by itself, it is a gray: readers go by the space
// with all colours.
std::string SpotColors::SeparationOf(std::string_view name) {
  const auto found = separations_.find(name);
  if (found != separations_.end()) {
    return found->second;
  }
  std::string text = "[/Separation";
  pdf::AppendName(text, name);
  text += "/DeviceGray<</FunctionType 2/Domain[0 1]/C0[1]/C1[0]/N 1>>]";
  conversion_->report.Changed("spot colours that were not described by themselves");
  const std::uint32_t number = conversion_->rewriter.Add(pdf::ObjectChange::Value(text));
  return separations_.emplace(name, ReferenceText(number)).first->second;
}

}  // namespace TarnixTools::engines::pdfa
