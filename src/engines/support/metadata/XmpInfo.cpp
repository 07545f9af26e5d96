#include "engines/support/metadata/XmpInfo.h"

#include "engines/support/metadata/XmpDate.h"
#include "pdf/tree/TextString.h"

namespace TarnixTools::engines {

const std::array<XmpMirror, kXmpInfoFieldCount> kXmpMirrors = {{
    {XmpInfoField::kTitle, "Title", kDcNamespace, "dc", "title", "lang alt"},
    {XmpInfoField::kAuthor, "Author", kDcNamespace, "dc", "creator", "seq propername"},
    {XmpInfoField::kSubject, "Subject", kDcNamespace, "dc", "description", "lang alt"},
    {XmpInfoField::kKeywords, "Keywords", kPdfNamespace, "pdf", "Keywords", "text"},
    {XmpInfoField::kCreator, "Creator", kXmpNamespace, "xmp", "CreatorTool", "agentname"},
    {XmpInfoField::kProducer, "Producer", kPdfNamespace, "pdf", "Producer", "agentname"},
    {XmpInfoField::kCreationDate, "CreationDate", kXmpNamespace, "xmp", "CreateDate", "date"},
    {XmpInfoField::kModDate, "ModDate", kXmpNamespace, "xmp", "ModifyDate", "date"},
}};

XmpInfoValues ReadXmpInfoValues(pdf::Document& document) {
  XmpInfoValues values;
  pdf::Arena arena;
  const pdf::Object info = document.Resolve(document.trailer().Get("Info"), arena);
  for (const XmpMirror& mirror : kXmpMirrors) {
    const pdf::Object value = document.Resolve(info.Get(mirror.key), arena);
    if (!value.IsString()) {
      continue;
    }
    std::string text = pdf::TextStringToUtf8(value.Text());
    text.erase(text.find_last_not_of('\0') + 1);
    values[static_cast<std::size_t>(mirror.field)] = std::move(text);
  }
  return values;
}

namespace {

bool IsArray(const XmpMirror& mirror) {
  return mirror.type.starts_with("lang alt") || mirror.type.starts_with("seq");
}

}  // namespace

std::optional<std::string> XmpFieldText(const XmpTree& tree, const XmpMirror& mirror) {
  const XmpNode* node = tree.Find(mirror.name_space, mirror.name);
  if (node == nullptr || node->kind == XmpKind::kStruct) {
    return std::nullopt;
  }
  if (node->kind == XmpKind::kSimple) {
    return IsArray(mirror) ? std::nullopt : std::optional(node->value);
  }
  const bool is_for_all = node->kind == XmpKind::kAlt;
  for (const XmpNode& item : node->children) {
    if (item.kind == XmpKind::kSimple &&
        (is_for_all ? item.Language() == "x-default" : node->children.size() == 1)) {
      return item.value;
    }
  }
  return std::nullopt;
}

bool XmpAgrees(const XmpTree& tree, const XmpMirror& mirror, std::string_view info_value) {
  const std::optional<std::string> text = XmpFieldText(tree, mirror);
  if (!text || mirror.type != "date") {
    return text == info_value;
  }
  const std::optional<XmpDate> own = ReadXmpDate(*text);
  const std::optional<XmpDate> other = ReadInfoDate(info_value);
  return own && other && own->IsSameMoment(*other);
}

}  // namespace TarnixTools::engines
