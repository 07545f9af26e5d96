#include "engines/pdfa/checks/ColorCheck.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/checks/OutputProfiles.h"
#include "engines/pdfa/checks/ReadableNames.h"

namespace TarnixTools::engines::pdfa {

using pdf::Object;

namespace {

struct DeviceRow {
  std::string_view name;
  std::string_view short_name;  // of an inline image
  std::string_view default_name;
  DeviceKind kind;
};

constexpr std::array<DeviceRow, 3> kDevices = {{
    {"DeviceGray", "G", "DefaultGray", DeviceKind::kGray},
    {"DeviceRGB", "RGB", "DefaultRGB", DeviceKind::kRgb},
    {"DeviceCMYK", "CMYK", "DefaultCMYK", DeviceKind::kCmyk},
}};

// Colorants that are no spot colours.
bool IsProcessColorant(std::string_view name) {
  constexpr std::array<std::string_view, 5> kNames = {"Cyan", "Magenta", "Yellow", "Black", "None"};
  return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

}  // namespace

void ColorCheck::Check(const Object& space, const Object& spaces, const ColorUse& use) {
  arena_.Reset();
  spaces_ = checked_->document().Resolve(spaces, arena_);
  use_ = use;
  waiting_.assign(1, {space, false});
  for (std::size_t looked_at = 0; !waiting_.empty() && looked_at < limits::kMaxNestedSpaces;
       ++looked_at) {
    const Item item = waiting_.back();
    waiting_.pop_back();
    CheckOne(item);
  }
}

void ColorCheck::CheckOne(const Item& item) {
  const Object space = checked_->document().Resolve(item.space, arena_);
  if (space.IsName()) {
    CheckName(space.Text(), item.is_default);
    return;
  }
  const Object family = ItemOf(space, 0);
  if (family.IsName("ICCBased")) {
    CheckIcc(space.Items().size() > 1 ? space.Items()[1] : Object());
  } else if (family.IsName("Indexed") || family.IsName("I") || family.IsName("Pattern")) {
    waiting_.push_back({ItemOf(space, 1), item.is_default});
  } else if (family.IsName("Separation")) {
    CheckSeparation(space, item.is_default);
  } else if (family.IsName("DeviceN")) {
    CheckDeviceN(space, item.is_default);
  } else if (family.IsName() && space.Items().size() == 1) {
    CheckName(family.Text(), item.is_default);
  }
}

void ColorCheck::CheckName(std::string_view name, bool is_default) {
  for (const DeviceRow& device : kDevices) {
    if (name == device.name || name == device.short_name) {
      return CheckDevice(device.kind, is_default);
    }
  }
  const Object named = spaces_.Get(name);
  if (!named.IsNull() && name != "Pattern") {
    waiting_.push_back({named, is_default});
  }
}

// ISO 32000-1, 8.6.5.6: a default colour space stands in for one of a device.
void ColorCheck::CheckDevice(DeviceKind kind, bool is_default) {
  const DeviceRow& device = kDevices[static_cast<std::size_t>(kind)];
  const Object substitute = spaces_.Get(device.default_name);
  if (!is_default && !substitute.IsNull()) {
    waiting_.push_back({substitute, true});
    return;
  }
  Place place = use_.place;
  place.subject = device.name;
  checked_->findings().Check(
      DeviceColorFacts{.kind = kind, .output_space = checked_->output_space()}, place);
}

void ColorCheck::CheckIcc(const Object& stream) {
  const pdf::Followed found = checked_->document().Follow(stream, arena_);
  const std::int64_t components = checked_->Get(found.value, "N", arena_).IntegerOr(0);
  constexpr std::int64_t kCmykComponents = 4;
  if (components == kCmykComponents) {
    checked_->findings().Check(
        IccCmykFacts{.overprints = use_.overprints, .overprint_mode = use_.overprint_mode},
        use_.place);
  }
  if (!known_profiles_.insert(found.number).second) {
    return;
  }
  const ProfileFacts profile = FactsOfProfile(checked_->document(), found.number);
  Place place = use_.place;
  place.object = found.number;
  checked_->findings().Check(InputProfileFacts{profile}, place);
  checked_->findings().Check(
      ProfileComponentsFacts{.color_space = profile.Space(), .components = components}, place);
}

void ColorCheck::CheckSeparation(const Object& array, bool is_default) {
  const std::string_view name = ItemOf(array, 1).Text();
  const Object alternate = ItemOf(array, 2);
  const Object tint = array.Items().size() > 3 ? array.Items()[3] : Object();
  CheckColorantName(name);
  Place place = use_.place;
  place.subject = name;
  checked_->findings().Check(SeparationFacts{spot_definitions_.Note(name, alternate, tint)}, place);
  waiting_.push_back({alternate, is_default});
}

void ColorCheck::CheckDeviceN(const Object& array, bool is_default) {
  const Object names = ItemOf(array, 1);
  const Object attributes = ItemOf(array, 4);
  const Object colorants = checked_->Get(attributes, "Colorants", arena_);
  const Object process = checked_->Get(attributes, "Process", arena_);
  const auto components = checked_->Get(process, "Components", arena_).Items();
  DeviceNFacts facts{.components = names.Items().size()};
  for (const Object& item : names.Items()) {
    const Object name = checked_->document().Resolve(item, arena_);
    const bool is_of_process =
        IsProcessColorant(name.Text()) ||
        std::any_of(components.begin(), components.end(), [&](const Object& component) {
          return checked_->document().Resolve(component, arena_).IsName(name.Text());
        });
    facts.has_all_colorants &= is_of_process || colorants.Has(name.Text());
    CheckColorantName(name.Text());
  }
  checked_->findings().Check(facts, use_.place);
  waiting_.push_back({ItemOf(array, 2), is_default});
  for (const pdf::DictionaryEntry& colorant : colorants.Entries()) {
    waiting_.push_back({colorant.value, is_default});
  }
  if (process.Has("ColorSpace")) {
    waiting_.push_back({process.Get("ColorSpace"), is_default});
  }
}

void ColorCheck::CheckColorantName(std::string_view name) {
  Place place = use_.place;
  place.subject = "colorant";
  CheckReadableName(checked_->findings(), name, place);
}

Object ColorCheck::ItemOf(const Object& array, std::size_t index) {
  const auto items = array.Items();
  return index < items.size() ? checked_->document().Resolve(items[index], arena_) : Object();
}

}  // namespace TarnixTools::engines::pdfa
