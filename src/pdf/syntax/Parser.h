// Builds objects from tokens, tolerantly: what is not regular is read as a reader that means well
// would read it, and is_regular says that something was not. No recursion: nesting costs heap, up
// to limits::kMaxNesting, not stack.
#ifndef TARNIX_PDF_SYNTAX_PARSER_H_
#define TARNIX_PDF_SYNTAX_PARSER_H_

#include <cstdint>
#include <string>
#include <vector>

#include "pdf/Limits.h"
#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Lexer.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {

// Changes a string's bytes in place while an object is read: the security handler's work.
class StringTransform {
 public:
  virtual ~StringTransform() = default;
  virtual void Apply(std::string& bytes) = 0;
};

class Parser {
 public:
  enum class Status {
    kDone,
    kMore,     // the lexer's window ended first; come back with a larger one
    kNothing,  // no value here: the input ended, or a keyword stands where a value should
  };

  explicit Parser(Arena& arena) : arena_(&arena) {}

  // Where the values read from now on live. A parser that is kept saves its working storage.
  void set_arena(Arena& arena) { arena_ = &arena; }

  // The highest number of an object that a reference may have; others are null. At first that of an
  // object in a file.
  void set_max_reference(std::uint32_t number) { max_reference_ = number; }

  // Reads one value. The object and all it holds live in the arena. transform may be null; it is
  // not applied to the /Contents of a signature, which are never encrypted (7.6.2).
  Status Parse(Lexer& lexer, StringTransform* transform, Object& value);

  // False when the last value read was not in regular syntax.
  bool is_regular() const { return is_regular_; }

 private:
  struct Frame {
    bool is_dictionary;
    std::size_t first;  // index of its first value in values_
  };

  bool HandleToken(const Token& token, StringTransform* transform);
  void Add(const Object& value);
  void AddString(const Token& token, StringTransform* transform);
  bool IsContentsOfDictionary() const;
  void TransformContents(std::size_t first);
  void AddName(std::string_view text);
  void AddKeyword(const Token& token);
  void MakeReference();
  void Open(bool is_dictionary);
  void Close(bool is_dictionary);
  void CloseTop();
  Object BuildDictionary(std::size_t first);

  Arena* arena_;
  std::vector<Frame> frames_;
  std::vector<Object> values_;
  std::vector<DictionaryEntry> entries_;
  std::vector<std::size_t> untransformed_;  // strings in values_ that may be a signature's contents
  StringTransform* transform_ = nullptr;
  std::string text_;
  std::uint32_t max_reference_ = limits::kMaxObjectNumber;
  int skipped_depth_ = 0;  // containers opened beyond the nesting limit
  bool is_regular_ = true;
};

// Keywords that end an object wherever they stand.
bool EndsObject(std::string_view keyword);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_SYNTAX_PARSER_H_
