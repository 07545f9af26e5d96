// PDF objects as compact values (ISO 32000-2, 7.3): 16 bytes each, trivially copyable, their text
// and items in an Arena that must outlive them. A stream is a dictionary here; its data is reached
// through the document (file/Document.h).
//
//   Arena arena;
//   Object page = document.Load(reference, arena);
//   if (page.Get("Type").IsName("Page")) { ... page.Get("Rotate").IntegerOr(0) ... }
#ifndef TARNIX_PDF_SYNTAX_OBJECT_H_
#define TARNIX_PDF_SYNTAX_OBJECT_H_

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace TarnixTools::pdf {

struct Reference {
  std::uint32_t number = 0;  // 0: no object
  std::uint16_t generation = 0;

  explicit operator bool() const { return number != 0; }

  friend bool operator==(const Reference&, const Reference&) = default;
};

struct DictionaryEntry;

class Object {
 public:
  enum class Kind : std::uint8_t {
    kNull,
    kBoolean,
    kInteger,
    kReal,
    kString,
    kName,
    kArray,
    kDictionary,
    kReference
  };

  Object() = default;
  static Object Boolean(bool value);
  static Object Integer(std::int64_t value);
  // `text` is the number as it is to be written, in PDF syntax ("-0.5").
  static Object Real(std::string_view text);
  // `bytes` without delimiters and escapes; `is_hex` remembers how it was written.
  static Object String(std::string_view bytes, bool is_hex = false);
  // `name` without the slash, escapes resolved.
  static Object Name(std::string_view name);
  static Object Array(std::span<const Object> items);
  static Object Dictionary(std::span<const DictionaryEntry> entries);
  static Object Ref(Reference reference);

  Kind kind() const { return kind_; }

  bool IsNull() const { return kind_ == Kind::kNull; }

  bool IsBoolean() const { return kind_ == Kind::kBoolean; }

  bool IsInteger() const { return kind_ == Kind::kInteger; }

  bool IsNumber() const { return kind_ == Kind::kInteger || kind_ == Kind::kReal; }

  bool IsString() const { return kind_ == Kind::kString; }

  bool IsName() const { return kind_ == Kind::kName; }

  bool IsName(std::string_view name) const { return IsName() && Text() == name; }

  bool IsArray() const { return kind_ == Kind::kArray; }

  bool IsDictionary() const { return kind_ == Kind::kDictionary; }

  bool IsReference() const { return kind_ == Kind::kReference; }

  bool is_hex() const { return flag_ != 0; }

  // The value when it has the kind asked for, else the fallback (or an empty one).
  bool BooleanOr(bool fallback) const { return IsBoolean() ? value_.integer != 0 : fallback; }

  // A real number counts when it is within the range of 64 bits; its fraction is cut off.
  std::int64_t IntegerOr(std::int64_t fallback) const;
  double NumberOr(double fallback) const;
  // Bytes of a string, a name or a real number's text; empty for other kinds.
  std::string_view Text() const;
  std::span<const Object> Items() const;
  std::span<const DictionaryEntry> Entries() const;
  Reference AsReference() const;

  // Value of a dictionary's key, the last one where the key stands twice; null for none and for
  // other kinds.
  Object Get(std::string_view key) const;
  bool Has(std::string_view key) const;

 private:
  Kind kind_ = Kind::kNull;
  std::uint8_t flag_ = 0;
  std::uint16_t generation_ = 0;
  std::uint32_t size_ = 0;

  union {
    std::int64_t integer = 0;
    const char* text;
    const Object* items;
    const DictionaryEntry* entries;
  } value_;
};

static_assert(sizeof(Object) == 16);

struct DictionaryEntry {
  Object key;  // a name
  Object value;

  std::string_view Key() const { return key.Text(); }
};

// Adds the numbers of the objects that the value refers to, however deep in it.
void CollectReferences(const Object& value, std::vector<std::uint32_t>& numbers);

// Here, and not in a source file, because parsing is made of these.
inline Object Object::Boolean(bool value) {
  Object object;
  object.kind_ = Kind::kBoolean;
  object.value_.integer = value ? 1 : 0;
  return object;
}

inline Object Object::Integer(std::int64_t value) {
  Object object;
  object.kind_ = Kind::kInteger;
  object.value_.integer = value;
  return object;
}

inline Object Object::Real(std::string_view text) {
  Object object;
  object.kind_ = Kind::kReal;
  object.size_ = static_cast<std::uint32_t>(text.size());
  object.value_.text = text.data();
  return object;
}

inline Object Object::String(std::string_view bytes, bool is_hex) {
  Object object = Real(bytes);
  object.kind_ = Kind::kString;
  object.flag_ = is_hex ? 1 : 0;
  return object;
}

inline Object Object::Name(std::string_view name) {
  Object object = Real(name);
  object.kind_ = Kind::kName;
  return object;
}

inline Object Object::Array(std::span<const Object> items) {
  Object object;
  object.kind_ = Kind::kArray;
  object.size_ = static_cast<std::uint32_t>(items.size());
  object.value_.items = items.data();
  return object;
}

inline Object Object::Dictionary(std::span<const DictionaryEntry> entries) {
  Object object;
  object.kind_ = Kind::kDictionary;
  object.size_ = static_cast<std::uint32_t>(entries.size());
  object.value_.entries = entries.data();
  return object;
}

inline Object Object::Ref(Reference reference) {
  Object object;
  object.kind_ = Kind::kReference;
  object.generation_ = reference.generation;
  object.value_.integer = reference.number;
  return object;
}

inline std::string_view Object::Text() const {
  if (kind_ == Kind::kString || kind_ == Kind::kName || kind_ == Kind::kReal) {
    return {value_.text, size_};
  }
  return {};
}

inline std::span<const Object> Object::Items() const {
  return IsArray() ? std::span<const Object>(value_.items, size_) : std::span<const Object>();
}

inline std::span<const DictionaryEntry> Object::Entries() const {
  return IsDictionary() ? std::span<const DictionaryEntry>(value_.entries, size_)
                        : std::span<const DictionaryEntry>();
}

inline Reference Object::AsReference() const {
  return IsReference() ? Reference{static_cast<std::uint32_t>(value_.integer), generation_}
                       : Reference{};
}

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_SYNTAX_OBJECT_H_
