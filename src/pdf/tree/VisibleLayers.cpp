#include "pdf/tree/VisibleLayers.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "pdf/Limits.h"

namespace TarnixTools::pdf {

namespace {

enum class Operator { kAnd, kOr, kNot };

std::optional<Operator> OperatorOf(const Object& name) {
  if (name.IsName("And")) {
    return Operator::kAnd;
  }
  if (name.IsName("Or")) {
    return Operator::kOr;
  }
  return name.IsName("Not") ? std::optional(Operator::kNot) : std::nullopt;
}

// A visibility expression that is being worked out.
struct Level {
  Operator kind = Operator::kAnd;
  std::span<const Object> items;  // the operator first
  std::size_t next = 1;
  bool value = true;

  // A Not has one operand; the value of the others is settled by one that is unlike all before.
  bool IsDone() const {
    return next >= items.size() || (kind == Operator::kAnd && !value) ||
           (kind == Operator::kOr && value) || (kind == Operator::kNot && next > 1);
  }

  void Take(bool operand) { value = kind == Operator::kNot ? !operand : operand; }
};

}  // namespace

VisibleLayers::VisibleLayers(Document& document) : document_(&document) {
  Arena arena;
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

bool VisibleLayers::IsSeen(const Object& membership) const {
  if (!has_layers_ || membership.IsNull()) {
    return true;
  }
  Arena arena;
  const Object dictionary = document_->Resolve(membership, arena);
  if (document_->Resolve(dictionary.Get("Type"), arena).IsName("OCMD")) {
    return IsMembershipSeen(dictionary, arena);
  }
  return IsGroupSeen(membership);
}

bool VisibleLayers::IsGroupSeen(const Object& group) const {
  const bool is_exception = group.IsReference() && exceptions_.contains(group.AsReference().number);
  return is_exception != is_seen_by_default_;
}

// A visibility expression goes before the policy (8.11.2.3).
bool VisibleLayers::IsMembershipSeen(const Object& membership, Arena& arena) const {
  const std::optional<bool> is_seen = Evaluate(membership.Get("VE"), arena);
  return is_seen ? *is_seen : IsSeenByPolicy(membership, arena);
}

bool VisibleLayers::IsSeenByPolicy(const Object& membership, Arena& arena) const {
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

// nullopt for none, and for one that is not regular or too large.
std::optional<bool> VisibleLayers::Evaluate(const Object& expression, Arena& arena) const {
  std::vector<Level> levels;
  const auto open = [&](const Object& value) {
    const auto items = document_->Resolve(value, arena).Items();
    const auto kind = items.empty() ? std::nullopt : OperatorOf(items[0]);
    if (!kind || items.size() == 1 || levels.size() == limits::kMaxLayerNesting) {
      return false;
    }
    levels.push_back({*kind, items, 1, *kind != Operator::kOr});
    return true;
  };
  if (!open(expression)) {
    return std::nullopt;
  }
  for (std::size_t looked_at = 0; looked_at < limits::kMaxLayerTerms; ++looked_at) {
    Level& level = levels.back();
    if (level.IsDone()) {
      const bool value = level.value;
      levels.pop_back();
      if (levels.empty()) {
        return value;
      }
      levels.back().Take(value);
      continue;
    }
    const Object& operand = level.items[level.next++];
    if (document_->Resolve(operand, arena).IsDictionary()) {
      level.Take(IsGroupSeen(operand));
    } else if (!open(operand)) {
      return std::nullopt;
    }
  }
  return std::nullopt;
}

}  // namespace TarnixTools::pdf
