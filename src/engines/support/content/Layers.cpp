#include "engines/support/content/Layers.h"

#include <algorithm>
#include <string_view>

namespace TarnixTools::engines {

using pdf::Object;

Layers::Layers(pdf::Document& document) : document_(&document) {
  pdf::Arena arena;
  const auto resolve = [&](const Object& value) { return document_->Resolve(value, arena); };
  const Object properties = resolve(document_->Catalog(arena).Get("OCProperties"));
  if (!properties.IsDictionary()) {
    return;
  }
  has_layers_ = true;
  const Object configuration = resolve(properties.Get("D"));
  is_seen_by_default_ = !resolve(configuration.Get("BaseState")).IsName("OFF");
  const std::string_view key = is_seen_by_default_ ? "OFF" : "ON";
  for (const Object& group : resolve(configuration.Get(key)).Items()) {
    exceptions_.insert(group.AsReference().number);
  }
}

bool Layers::IsSeen(const Object& membership) const {
  if (!has_layers_ || membership.IsNull()) {
    return true;
  }
  pdf::Arena arena;
  const Object dictionary = document_->Resolve(membership, arena);
  if (document_->Resolve(dictionary.Get("Type"), arena).IsName("OCMD")) {
    return IsMembershipSeen(dictionary, arena);
  }
  return IsGroupSeen(membership);
}

bool Layers::IsGroupSeen(const Object& group) const {
  const bool is_exception = group.IsReference() && exceptions_.contains(group.AsReference().number);
  return is_exception != is_seen_by_default_;
}

// By its policy; a visibility expression, which goes before it, counts as the policy too.
bool Layers::IsMembershipSeen(const Object& membership, pdf::Arena& arena) const {
  const Object groups = membership.Get("OCGs");
  const Object resolved = document_->Resolve(groups, arena);
  if (resolved.IsDictionary()) {
    return IsGroupSeen(groups);
  }
  const auto items = resolved.Items();
  if (items.empty()) {
    return true;
  }
  const auto is_seen = [this](const Object& group) { return IsGroupSeen(group); };
  const std::string_view policy = document_->Resolve(membership.Get("P"), arena).Text();
  if (policy == "AllOn") {
    return std::all_of(items.begin(), items.end(), is_seen);
  }
  if (policy == "AllOff") {
    return std::none_of(items.begin(), items.end(), is_seen);
  }
  if (policy == "AnyOff") {
    return !std::all_of(items.begin(), items.end(), is_seen);
  }
  return std::any_of(items.begin(), items.end(), is_seen);
}

}  // namespace TarnixTools::engines
