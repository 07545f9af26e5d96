// Copies an object's text token by token, changing only its references: no values are built,
// nothing is parsed twice.
#ifndef TARNIX_PDF_WRITE_TOKENCOPIER_H_
#define TARNIX_PDF_WRITE_TOKENCOPIER_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pdf/syntax/Lexer.h"
#include "pdf/syntax/Object.h"
#include "pdf/syntax/Parser.h"

namespace TarnixTools::pdf {

// Whether a key's value is a key of the document's parent tree.
constexpr bool IsStructureKey(std::string_view key) {
  return key == "StructParent" || key == "StructParents";
}

struct StructureKey {
  std::int64_t key = 0;
  bool is_plural = false;  // /StructParents: of the marked content in a stream
};

// Whether a /Type is that of a node or a leaf of a page tree.
constexpr bool IsPageType(std::string_view type) {
  return type == "Page" || type == "Pages";
}

// Says what a reference becomes in the copy.
class ReferenceMap {
 public:
  virtual ~ReferenceMap() = default;
  // What Map answers for a reference that vanishes with the entry of a dictionary or the item of an
  // array that it is.
  static constexpr std::uint32_t kLeftOut = ~std::uint32_t{0};

  // The number in the target, or 0 for a reference that becomes null.
  virtual std::uint32_t Map(std::uint32_t number) = 0;
};

class TokenCopier {
 public:
  enum class Status {
    kDone,
    kMore,       // the lexer's window ended first; start again with a larger one
    kIrregular,  // not regular syntax, or no array or dictionary: read it with the Parser instead
  };

  explicit TokenCopier(ReferenceMap& references) : references_(&references) {}

  // Appends the array or dictionary that comes next to `out`. strings may be null. The last /Length
  // of an outermost dictionary is left out; length() tells it.
  Status Copy(Lexer& lexer, StringTransform* strings, std::string& out);

  // What becomes of an outermost dictionary's /StructParent and /StructParents, whose numbers are
  // keys of the document's parent tree: those from 0 to `count` - 1 are raised by the shift, others
  // are left out, as all are at first.
  void set_structure_keys(std::int64_t shift, std::int64_t count) {
    structure_key_shift_ = shift;
    structure_key_count_ = count;
  }

  // From now on /StructParent and /StructParents are entries like others.
  void set_keeps_structure_keys(bool keeps) { keeps_structure_keys_ = keeps; }

  // Whether the key is one that AppendStructureKey deals with.
  bool ChangesKey(std::string_view key) const {
    return !keeps_structure_keys_ && IsStructureKey(key);
  }

  // Appends the entry as it becomes, if it stays.
  void AppendStructureKey(std::string& out, std::string_view name, std::int64_t key);

  // From now on dictionaries that only the parser can do justice to are irregular: those with
  // /Resources of their own, and page tree nodes.
  void set_leaves_resources(bool leaves) { leaves_resources_ = leaves; }

  // What the last value copied says, where it is a dictionary:
  const Object& length() const {
    return length_;
  }  // /Length as it stands: an integer or a reference

  bool has_filter() const { return has_filter_; }  // /Filter is there

  bool has_type(std::string_view type) const { return type_ == type; }

  std::string_view type() const { return type_; }

  bool is_dictionary() const { return is_dictionary_; }

  // The structure key that AppendStructureKey or Copy has put out last, as the source has it. It
  // stays until it is taken.
  std::optional<StructureKey> TakeStructureKey() { return std::exchange(structure_key_, {}); }

 private:
  struct Frame {
    bool is_dictionary;
    bool wants_key;
    std::size_t entry_start = 0;  // in the output, of the last entry
  };

  Token Fetch(Lexer& lexer);
  Status CopyInteger(Lexer& lexer, const Token& token, std::string& out);
  bool TakeKey(const Token& token, std::string& out);
  Status CopyLength(Lexer& lexer);
  Status CopyStructureKey(Lexer& lexer, std::string_view key, std::string& out);
  void CopyString(const Token& token, StringTransform* strings, std::string& out);

  ReferenceMap* references_;
  std::vector<Frame> frames_;
  std::array<Token, 2> ahead_;  // tokens looked at but not used
  std::size_t ahead_count_ = 0;
  std::int64_t structure_key_shift_ = 0;
  std::int64_t structure_key_count_ = 0;
  std::optional<StructureKey> structure_key_;
  Object length_;
  bool keeps_structure_keys_ = false;
  bool leaves_resources_ = false;
  bool has_filter_ = false;
  bool is_dictionary_ = false;
  bool next_is_type_ = false;
  std::string type_;
  std::string text_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_WRITE_TOKENCOPIER_H_
