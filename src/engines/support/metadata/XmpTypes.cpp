#include "engines/support/metadata/XmpTypes.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include "engines/support/metadata/XmpDate.h"
#include "engines/support/metadata/XmpSchemas.h"

namespace TarnixTools::engines {

namespace {

constexpr std::string_view kDigits = "0123456789";

bool IsAny(std::string_view) {
  return true;
}

bool IsDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of(kDigits) == std::string_view::npos;
}

std::string_view WithoutSign(std::string_view text) {
  return text.substr(text.starts_with('+') || text.starts_with('-') ? 1 : 0);
}

bool IsInteger(std::string_view text) {
  return IsDigits(WithoutSign(text));
}

bool IsReal(std::string_view text) {
  text = WithoutSign(text);
  const std::size_t point = text.find('.');
  if (point == std::string_view::npos) {
    return IsDigits(text);
  }
  const std::string_view before = text.substr(0, point);
  const std::string_view after = text.substr(point + 1);
  return (before.empty() || IsDigits(before)) && (after.empty() || IsDigits(after)) &&
         text.size() > 1;
}

bool IsRational(std::string_view text) {
  const std::size_t slash = text.find('/');
  return slash != std::string_view::npos && IsInteger(text.substr(0, slash)) &&
         IsDigits(text.substr(slash + 1));
}

bool IsBoolean(std::string_view text) {
  return text == "True" || text == "False";
}

bool IsMediaType(std::string_view text) {
  const std::size_t slash = text.find('/');
  const auto is_token = [](std::string_view token) {
    return !token.empty() && std::all_of(token.begin(), token.end(), [](char c) {
      return std::isalnum(static_cast<unsigned char>(c)) != 0 ||
             std::string_view("-_+.").find(c) != std::string_view::npos;
    });
  };
  return slash != std::string_view::npos && is_token(text.substr(0, slash)) &&
         is_token(text.substr(slash + 1));
}

// Degrees, minutes and seconds or a fraction of minutes, and a direction: "67,19,26S", "43,40.5W".
bool IsCoordinate(std::string_view text) {
  if (text.empty() || std::string_view("NSEW").find(text.back()) == std::string_view::npos) {
    return false;
  }
  text.remove_suffix(1);
  const std::size_t comma = text.find(',');
  if (comma == std::string_view::npos || !IsDigits(text.substr(0, comma))) {
    return false;
  }
  const std::string_view rest = text.substr(comma + 1);
  const std::size_t mark = rest.find_first_of(",.");
  return IsDigits(rest.substr(0, mark)) && mark != std::string_view::npos &&
         IsDigits(rest.substr(mark + 1));
}

struct SimpleType {
  std::string_view name;
  bool (*holds)(std::string_view value);
};

constexpr std::array<SimpleType, 17> kSimpleTypes = {{
    {"text", &IsAny},
    {"propername", &IsAny},
    {"agentname", &IsAny},
    {"uri", &IsAny},
    {"url", &IsAny},
    {"guid", &IsAny},
    {"xpath", &IsAny},
    {"renditionclass", &IsAny},
    {"choice", &IsAny},
    {"integer", &IsInteger},
    {"real", &IsReal},
    {"rational", &IsRational},
    {"boolean", &IsBoolean},
    {"date", &IsXmpDate},
    {"mimetype", &IsMediaType},
    {"locale", &IsAny},
    {"gpscoordinate", &IsCoordinate},
}};

struct ArrayPrefix {
  std::string_view prefix;
  XmpKind kind;
};

constexpr std::array<ArrayPrefix, 3> kArrays = {
    {{"bag ", XmpKind::kBag}, {"seq ", XmpKind::kSeq}, {"alt ", XmpKind::kAlt}}};

const ArrayPrefix* ArrayOf(std::string_view type) {
  const auto found = std::find_if(kArrays.begin(), kArrays.end(), [&](const ArrayPrefix& array) {
    return type.starts_with(array.prefix);
  });
  return found == kArrays.end() ? nullptr : &*found;
}

const SimpleType* SimpleOf(std::string_view type) {
  const auto found = std::find_if(kSimpleTypes.begin(), kSimpleTypes.end(),
                                  [&](const SimpleType& simple) { return simple.name == type; });
  return found == kSimpleTypes.end() ? nullptr : &*found;
}

const XmpDeclaredType* DeclaredOf(std::string_view type,
                                  std::span<const XmpDeclaredType> declared) {
  const auto found = std::find_if(declared.begin(), declared.end(),
                                  [&](const XmpDeclaredType& own) { return own.name == type; });
  return found == declared.end() ? nullptr : &*found;
}

bool IsLanguageAlternative(const XmpNode& node) {
  return node.kind == XmpKind::kAlt &&
         std::all_of(node.children.begin(), node.children.end(), [](const XmpNode& item) {
           return item.kind == XmpKind::kSimple && item.Language();
         });
}

// A value with the type that it should be of.
struct Expected {
  const XmpNode* node;
  std::string_view type;
};

// Adds what the fields should be. False for one that the structure does not have.
template <typename Fields>
bool ExpectFields(const XmpNode& node, std::string_view name_space, const Fields& fields,
                  std::vector<Expected>& expected) {
  for (const XmpNode& child : node.children) {
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](const auto& field) { return field.name == child.name; });
    if (child.name_space != name_space || found == fields.end()) {
      return false;
    }
    expected.push_back({&child, found->type});
  }
  return node.kind == XmpKind::kStruct;
}

// Looks at one value and adds what is in it to what is still to be looked at.
bool LooksRight(const Expected& value, std::span<const XmpDeclaredType> declared,
                std::vector<Expected>& expected) {
  const XmpNode& node = *value.node;
  if (value.type == "lang alt") {
    return IsLanguageAlternative(node);
  }
  if (const ArrayPrefix* array = ArrayOf(value.type)) {
    for (const XmpNode& item : node.children) {
      expected.push_back({&item, value.type.substr(array->prefix.size())});
    }
    return node.kind == array->kind;
  }
  if (const XmpDeclaredType* own = DeclaredOf(value.type, declared)) {
    return own->fields.empty() ? node.kind == XmpKind::kSimple
                               : ExpectFields(node, own->name_space, own->fields, expected);
  }
  if (const SimpleType* simple = SimpleOf(value.type)) {
    return node.kind == XmpKind::kSimple && simple->holds(node.value);
  }
  const XmpStructure* structure = FindXmpStructure(value.type);
  return structure != nullptr &&
         ExpectFields(node, structure->name_space, structure->fields, expected);
}

void Remove(std::string& text, std::string_view part) {
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at)) {
    text.erase(at, part.size());
  }
}

}  // namespace

std::string PlainXmpType(std::string_view type) {
  std::string plain = " ";
  for (const char c : type) {
    const bool is_space = std::isspace(static_cast<unsigned char>(c)) != 0;
    if (!is_space || plain.back() != ' ') {
      plain += is_space ? ' ' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
  }
  for (const char* part : {" open choice of", " closed choice of", " choice of", " of"}) {
    Remove(plain, part);
  }
  const std::size_t first = plain.find_first_not_of(' ');
  const std::size_t last = plain.find_last_not_of(' ');
  return first == std::string::npos ? std::string() : plain.substr(first, last + 1 - first);
}

bool IsKnownXmpType(std::string_view type, std::span<const XmpDeclaredType> declared) {
  if (type == "lang alt") {
    return true;
  }
  while (const ArrayPrefix* array = ArrayOf(type)) {
    type.remove_prefix(array->prefix.size());
  }
  return DeclaredOf(type, declared) != nullptr || SimpleOf(type) != nullptr ||
         FindXmpStructure(type) != nullptr;
}

bool IsOfXmpType(const XmpNode& node, std::string_view type,
                 std::span<const XmpDeclaredType> declared) {
  std::vector<Expected> expected = {{&node, type}};
  while (!expected.empty()) {
    const Expected next = expected.back();
    expected.pop_back();
    if (!LooksRight(next, declared, expected)) {
      return false;
    }
  }
  return true;
}

}  // namespace TarnixTools::engines
