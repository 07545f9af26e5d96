#include "engines/pdfa/checks/InformationCheck.h"

#include <optional>
#include <string>

#include "engines/pdfa/rules/MetadataFacts.h"
#include "engines/support/metadata/XmpDate.h"
#include "pdf/tree/TextString.h"

namespace TarnixTools::engines::pdfa {

namespace {

using Text = std::optional<std::string>;

// The value of a simple property, or of an array's first item. Of a choice of languages the one by
// default comes first.
Text ValueOf(const XmpNode* node) {
  if (node == nullptr) {
    return std::nullopt;
  }
  if (!node->IsArray()) {
    return node->value;
  }
  for (const XmpNode& item : node->children) {
    if (node->kind != XmpKind::kAlt || item.Language() == "x-default") {
      return item.value;
    }
  }
  return std::nullopt;
}

class Comparison {
 public:
  Comparison(CheckedDocument& checked, const pdf::Object& information, const XmpTree* packet)
      : checked_(&checked), information_(information), packet_(packet) {}

  bool TextAgrees(std::string_view key, std::string_view name_space, std::string_view name) {
    const Text text = Read(key);
    return !text || text == ValueOf(Find(name_space, name));
  }

  bool AuthorAgrees() {
    const Text author = Read("Author");
    const XmpNode* creator = Find(kDcNamespace, "creator");
    return !author ||
           (creator != nullptr && creator->children.size() == 1 && author == ValueOf(creator));
  }

  // A document without a packet has nothing to compare with.
  bool DateAgrees(std::string_view key, std::string_view name) {
    const Text text = Read(key);
    if (!text || packet_ == nullptr) {
      return true;
    }
    const Text other = ValueOf(Find(kXmpNamespace, name));
    const std::optional<XmpDate> date = ReadInfoDate(*text);
    const std::optional<XmpDate> other_date = other ? ReadXmpDate(*other) : std::nullopt;
    return date && other_date && date->IsSameMoment(*other_date);
  }

 private:
  Text Read(std::string_view key) {
    const pdf::Object value = checked_->Get(information_, key, arena_);
    return value.IsString() ? Text(pdf::TextStringToUtf8(value.Text())) : std::nullopt;
  }

  const XmpNode* Find(std::string_view name_space, std::string_view name) const {
    return packet_ != nullptr ? packet_->Find(name_space, name) : nullptr;
  }

  CheckedDocument* checked_;
  pdf::Object information_;
  const XmpTree* packet_;
  pdf::Arena arena_;
};

}  // namespace

void CheckInformation(CheckedDocument& checked, const XmpTree* packet) {
  pdf::Arena arena;
  const pdf::Followed information =
      checked.document().Follow(checked.document().trailer().Get("Info"), arena);
  Comparison comparison(checked, information.value, packet);
  InformationFacts facts;
  facts.creation_date_agrees = comparison.DateAgrees("CreationDate", "CreateDate");
  facts.title_agrees = comparison.TextAgrees("Title", kDcNamespace, "title");
  facts.author_agrees = comparison.AuthorAgrees();
  facts.subject_agrees = comparison.TextAgrees("Subject", kDcNamespace, "description");
  facts.keywords_agree = comparison.TextAgrees("Keywords", kPdfNamespace, "Keywords");
  facts.creator_agrees = comparison.TextAgrees("Creator", kXmpNamespace, "CreatorTool");
  facts.producer_agrees = comparison.TextAgrees("Producer", kPdfNamespace, "Producer");
  facts.modification_date_agrees = comparison.DateAgrees("ModDate", "ModifyDate");
  checked.findings().Check(facts, {.object = information.number});
}

}  // namespace TarnixTools::engines::pdfa
