#include "pdf/syntax/Object.h"

#include <charconv>
#include <cmath>

namespace TarnixTools::pdf {

Object Object::Boolean(bool value) {
  Object object;
  object.kind_ = Kind::kBoolean;
  object.value_.integer = value ? 1 : 0;
  return object;
}

Object Object::Integer(std::int64_t value) {
  Object object;
  object.kind_ = Kind::kInteger;
  object.value_.integer = value;
  return object;
}

Object Object::Real(std::string_view text) {
  Object object;
  object.kind_ = Kind::kReal;
  object.size_ = static_cast<std::uint32_t>(text.size());
  object.value_.text = text.data();
  return object;
}

Object Object::String(std::string_view bytes, bool is_hex) {
  Object object = Real(bytes);
  object.kind_ = Kind::kString;
  object.flag_ = is_hex ? 1 : 0;
  return object;
}

Object Object::Name(std::string_view name) {
  Object object = Real(name);
  object.kind_ = Kind::kName;
  return object;
}

Object Object::Array(std::span<const Object> items) {
  Object object;
  object.kind_ = Kind::kArray;
  object.size_ = static_cast<std::uint32_t>(items.size());
  object.value_.items = items.data();
  return object;
}

Object Object::Dictionary(std::span<const DictionaryEntry> entries) {
  Object object;
  object.kind_ = Kind::kDictionary;
  object.size_ = static_cast<std::uint32_t>(entries.size());
  object.value_.entries = entries.data();
  return object;
}

Object Object::Ref(Reference reference) {
  Object object;
  object.kind_ = Kind::kReference;
  object.generation_ = reference.generation;
  object.value_.integer = reference.number;
  return object;
}

std::int64_t Object::IntegerOr(std::int64_t fallback) const {
  if (kind_ == Kind::kInteger) {
    return value_.integer;
  }
  if (kind_ == Kind::kReal) {
    const double number = NumberOr(0);
    if (std::abs(number) < 9e18) {
      return static_cast<std::int64_t>(number);
    }
  }
  return fallback;
}

double Object::NumberOr(double fallback) const {
  if (kind_ == Kind::kInteger) {
    return static_cast<double>(value_.integer);
  }
  if (kind_ == Kind::kReal) {
    std::string_view text = Text();
    if (!text.empty() && text.front() == '+') {
      text.remove_prefix(1);
    }
    double number = fallback;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
  }
  return fallback;
}

std::string_view Object::Text() const {
  if (kind_ == Kind::kString || kind_ == Kind::kName || kind_ == Kind::kReal) {
    return {value_.text, size_};
  }
  return {};
}

std::span<const Object> Object::Items() const {
  return IsArray() ? std::span<const Object>(value_.items, size_) : std::span<const Object>();
}

std::span<const DictionaryEntry> Object::Entries() const {
  return IsDictionary() ? std::span<const DictionaryEntry>(value_.entries, size_)
                        : std::span<const DictionaryEntry>();
}

Reference Object::AsReference() const {
  return IsReference() ? Reference{static_cast<std::uint32_t>(value_.integer), generation_}
                       : Reference{};
}

Object Object::Get(std::string_view key) const {
  const auto entries = Entries();
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
    if (entry->Key() == key) {
      return entry->value;
    }
  }
  return {};
}

bool Object::Has(std::string_view key) const {
  return !Get(key).IsNull();
}

}  // namespace TarnixTools::pdf
