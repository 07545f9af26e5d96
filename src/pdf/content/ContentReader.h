// Reads a content stream (ISO 32000-2, 7.8.2) operator by operator. Nothing is built that is not
// asked for: operands are given as text, and parsed on demand.
//
//   ContentReader reader(content);
//   Operation operation;
//   while (reader.Next(operation)) {
//     if (operation.code == OperatorCode("cm")) {
//       const std::vector<Object> matrix = ParseOperands(operation.operands, arena);
//       ...
//
// Tolerant: what cannot be read is passed over, and is_damaged() says so. No recursion.
#ifndef TARNIX_PDF_CONTENT_CONTENTREADER_H_
#define TARNIX_PDF_CONTENT_CONTENTREADER_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "pdf/content/InlineImage.h"
#include "pdf/content/Operators.h"
#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Lexer.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {

// One operator with its operands. All text is within the content.
struct Operation {
  std::string_view name;
  std::uint32_t code = 0;         // OperatorCode(name)
  std::string_view operands;      // as they stand before the operator
  std::size_t operand_count = 0;  // an array or a dictionary is one
  // Of an inline image, which is one operation named BI:
  std::string_view image_entries;  // what is between BI and ID, for ParseInlineEntries
  std::string_view image_data;     // as it stands, encoded
};

// The operands as values, in the arena.
std::vector<Object> ParseOperands(std::string_view operands, Arena& arena);

class ContentReader {
 public:
  // The content, decoded, outlives the reader.
  explicit ContentReader(std::string_view content)
      : content_(content), lexer_(content, true), images_(content) {}

  // The next operation; false at the end.
  bool Next(Operation& operation);

  // Whether something so far was no regular content, so that what was read may not be what was
  // meant. Operators that the standard does not know are no damage.
  bool is_damaged() const { return is_damaged_; }

  // At the end: whether operands are left that no operator follows.
  bool has_operands_left() const { return has_operands_left_; }

 private:
  bool TakeOperator(Operation& operation);
  void SkipNumbers(Operation& operation);
  std::string_view ShortWord();
  bool TakeToken(const Token& token, Operation& operation);
  void Open(char kind, Operation& operation);
  void Close(char kind);
  void CountOperand(Operation& operation) const;
  void ReadInlineImage(Operation& operation);

  std::string_view content_;
  Lexer lexer_;
  InlineImageMeasure images_;
  Arena arena_;       // the entries of one inline image
  std::string open_;  // arrays and dictionaries that the present token is in: '[' and '<'
  bool is_damaged_ = false;
  bool has_operands_left_ = false;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_CONTENTREADER_H_
