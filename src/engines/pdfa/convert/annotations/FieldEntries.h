// What an annotation says, or the field that it belongs to, or the form (ISO 32000-2, 12.7.4).
//
//   FieldEntries entries(document, annotation);
//   if (entries.Type() == "Tx") Draw(entries.Text("V"));
#ifndef TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_FIELDENTRIES_H_
#define TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_FIELDENTRIES_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "pdf/Box.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

class FieldEntries {
 public:
  // Bits of /Ff (12.7.5).
  static constexpr std::int64_t kMultiline = 1 << 12;
  static constexpr std::int64_t kPassword = 1 << 13;
  static constexpr std::int64_t kRadio = 1 << 15;
  static constexpr std::int64_t kPushButton = 1 << 16;
  static constexpr std::int64_t kCombo = 1 << 17;
  static constexpr std::int64_t kComb = 1 << 24;

  // The document and the annotation outlive this.
  FieldEntries(pdf::Document& document, const pdf::Object& annotation)
      : document_(&document), annotation_(annotation) {}

  // Resolved; of the annotation itself.
  pdf::Object Own(std::string_view key) { return document_->Resolve(annotation_.Get(key), arena_); }

  // Resolved; of the annotation or of the nearest field above that has it.
  pdf::Object Inherited(std::string_view key);
  // As Inherited; else what the form says.
  pdf::Object OfForm(std::string_view key);

  pdf::Object Resolved(const pdf::Object& value) { return document_->Resolve(value, arena_); }

  // Of a dictionary, resolved.
  pdf::Object Get(const pdf::Object& dictionary, std::string_view key) {
    return document_->Resolve(dictionary.Get(key), arena_);
  }

  // "Tx", "Ch", "Btn", "Sig"; empty for what is no field.
  std::string_view Type() { return Inherited("FT").Text(); }

  bool HasFlag(std::int64_t flag) { return (Inherited("Ff").IntegerOr(0) & flag) != 0; }

  // A text string as UTF-8; empty for other values.
  std::string Text(const pdf::Object& value);

  // The name of a font that a default appearance calls by the name of a resource.
  std::string FontName(std::string_view resource);

  pdf::Box Rectangle();

  // As /BS says it, else /Border; `usual` where neither does (12.5.4).
  double BorderWidth(double usual);

 private:
  pdf::Object Form();

  pdf::Document* document_;
  pdf::Object annotation_;
  pdf::Arena arena_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_FIELDENTRIES_H_
