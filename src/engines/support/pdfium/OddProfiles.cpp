#include "engines/support/pdfium/OddProfiles.h"

#include <array>
#include <string>
#include <utility>

#include "pdf/Error.h"

namespace TarnixTools::engines {
namespace {

using pdf::Object;

constexpr int kMaxDepth = 32;
constexpr std::size_t kMaxProfileBytes = std::size_t{16} << 20;
constexpr std::size_t kHeaderBytes = 128;
constexpr std::size_t kSpaceAt = 16;  // in the header (ICC.1:2001-04, 6.1)

// 0 for a colour space that images do not have.
std::int64_t ComponentsOf(std::string_view signature) {
  constexpr std::array kSpaces = {
      std::pair{std::string_view("GRAY"), 1}, std::pair{std::string_view("RGB "), 3},
      std::pair{std::string_view("Lab "), 3}, std::pair{std::string_view("CMYK"), 4}};
  for (const auto& [name, components] : kSpaces) {
    if (name == signature) {
      return components;
    }
  }
  return 0;
}

}  // namespace

void OddProfiles::FindInResources(const Object& resources, int depth) {
  if (depth > kMaxDepth) {
    return;
  }
  pdf::Arena arena;
  for (const std::string_view category : {"XObject", "Pattern", "Shading"}) {
    for (const pdf::DictionaryEntry& entry :
         document_->Resolve(resources.Get(category), arena).Entries()) {
      FindInObject(entry.value, depth);
    }
  }
  for (const pdf::DictionaryEntry& entry :
       document_->Resolve(resources.Get("ColorSpace"), arena).Entries()) {
    FindInSpace(entry.value, depth);
  }
}

// An image, a form, a pattern or a shading.
void OddProfiles::FindInObject(const Object& entry, int depth) {
  if (!IsNew(entry)) {
    return;
  }
  pdf::Arena arena;
  const Object object = document_->Resolve(entry, arena);
  FindInSpace(object.Get("ColorSpace"), depth + 1);
  FindInSpace(document_->Resolve(object.Get("Shading"), arena).Get("ColorSpace"), depth + 1);
  FindInResources(document_->Resolve(object.Get("Resources"), arena), depth + 1);
}

void OddProfiles::FindInSpace(const Object& space, int depth) {
  if (depth > kMaxDepth || !IsNew(space)) {
    return;
  }
  pdf::Arena arena;
  const auto items = document_->Resolve(space, arena).Items();
  if (items.size() < 2) {
    return;
  }
  const Object family = document_->Resolve(items[0], arena);
  if (family.IsName("ICCBased")) {
    Check(items[1].AsReference().number);
  } else if (family.IsName("Indexed") || family.IsName("Pattern")) {
    FindInSpace(items[1], depth + 1);
  } else if ((family.IsName("Separation") || family.IsName("DeviceN")) && items.size() > 2) {
    FindInSpace(items[2], depth + 1);
  }
}

void OddProfiles::Check(std::uint32_t number) {
  if (number != 0 && seen_.insert(number).second && IsOdd(number)) {
    numbers_.push_back(number);
  }
}

bool OddProfiles::IsOdd(std::uint32_t number) {
  pdf::Arena arena;
  const Object dictionary = document_->Load({.number = number, .generation = 0}, arena);
  const std::int64_t components = document_->Resolve(dictionary.Get("N"), arena).IntegerOr(0);
  std::string profile;
  try {
    if (auto decoded = document_->DecodeStream(number, kMaxProfileBytes)) {
      profile = std::move(decoded->data);
    }
  } catch (const pdf::Error& error) {
    if (error.code() == pdf::ErrorCode::kReadFailed) {
      throw;
    }
  }
  if (profile.size() < kHeaderBytes) {
    return false;
  }
  const std::int64_t found = ComponentsOf(std::string_view(profile).substr(kSpaceAt, 4));
  return found != 0 && found != components;
}

// What is written in place belongs to one object and is looked at with that.
bool OddProfiles::IsNew(const Object& entry) {
  const std::uint32_t number = entry.AsReference().number;
  return number == 0 || seen_.insert(number).second;
}

}  // namespace TarnixTools::engines
