// Hears how a file is written while it is read: spacing, line ends, order, strings and numbers as
// they stand. Values do not tell such things, because they are the same however they are written.
// For a validator, whose rules are about bytes (ISO 19005-1, -2 and -3, clause 6.1), and for repair.
//
//   class OddHexStrings : public SyntaxObserver {
//    public:
//     void OnToken(const TokenSyntax& token) override {
//       count += token.token.kind == Token::Kind::kHexString && HexSyntaxOf(token.token).digits % 2;
//     }
//     int count = 0;
//   };
//   OddHexStrings observer;
//   document->Observe(observer);   // the whole file; or document->Load(reference, arena, observer)
//
// Offsets count from the start of the file. Texts are the file's bytes, valid during the call: an
// observer reads nothing of the document meanwhile. Spacing is given as it stands, white space and
// comments, at most limits::kMaxSpacing bytes of it: those nearest to what it belongs to.
#ifndef TARNIX_PDF_SYNTAX_SYNTAXOBSERVER_H_
#define TARNIX_PDF_SYNTAX_SYNTAXOBSERVER_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "pdf/syntax/Lexer.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {

// The file's first lines. ISO 19005-1 to -3, 6.1.2: the header stands at the very start, and a
// comment with at least four bytes above 127 follows it.
struct HeaderSyntax {
  std::uint64_t offset = 0;    // of "%PDF-"
  std::string_view line;       // "%PDF-1.7" and what else is on the line
  std::string_view line_end;   // CR LF, LF or CR; empty where the line does not end in time
  std::string_view next_line;  // without its line end
};

// "12 0 obj". ISO 19005-1, 6.1.8; -2 and -3, 6.1.9: one white-space character between the numbers
// and before the keyword, a line end before the number and after the keyword.
struct ObjectSyntax {
  Reference reference;
  std::uint64_t offset = 0;  // of the number; of a member in the decoded data of its object stream
  std::uint32_t holder = 0;  // the object stream, where there is no spacing to tell of; 0: none
  std::string_view before;   // white space only
  std::string_view after_number;
  std::string_view after_generation;
  std::string_view after_keyword;  // white space only
};

// "endobj". ISO 19005-1, 6.1.8; -2 and -3, 6.1.9: a line end before and after it.
struct ObjectEndSyntax {
  Reference reference;
  std::uint64_t offset = 0;  // of the keyword, or where it should be
  bool has_keyword = false;  // within a kilobyte; never of a member of an object stream
  bool is_regular = true;    // there is a value, in regular syntax
  std::string_view before;
  std::string_view after;  // white space only
  Object value;            // a stream gives its dictionary
};

// "stream" and "endstream". ISO 19005-1, 6.1.7; -2 and -3, 6.1.7.1: CR LF or LF after "stream", a
// line end before "endstream", and /Length tells the bytes between the two.
struct StreamSyntax {
  Reference reference;
  std::uint64_t offset = 0;             // of "stream"
  std::string_view after_keyword;       // white space only, up to the data
  std::uint64_t data = 0;               // offset of the data
  std::uint64_t length = 0;             // of the data, by /Length where that leads to its end
  std::optional<std::int64_t> claimed;  // what /Length says, resolved; none where it is no integer
  std::uint64_t end = 0;                // offset of "endstream", or where it should be
  bool has_end = false;
  std::string_view before_end;  // the last two bytes before it, whosever they are
};

// A string, name, number or any other token of an object, or of a trailer. ISO 19005-1, 6.1.6 and
// 6.1.12; -2 and -3, 6.1.6, 6.1.8 and 6.1.13: hexadecimal digits come in pairs, strings, names and
// numbers are no larger than an implementation must bear. DecodeString and DecodeName give the bytes
// that count.
struct TokenSyntax {
  std::uint64_t offset = 0;  // of a member in the decoded data of its object stream
  Token token;               // as it stands: encrypted, with its escapes
  bool is_key = false;       // a name that is a key of a dictionary
};

// A key that its dictionary has twice; ISO 32000-2, 7.3.7, forbids it.
struct RepeatedKeySyntax {
  std::uint64_t offset = 0;  // where it stands again; of a member in its object stream
  std::string_view name;     // escapes resolved
};

// "xref". ISO 19005-1 to -3, 6.1.4: one line end between it and the first subsection.
struct XrefTableSyntax {
  std::uint64_t offset = 0;
  std::string_view after_keyword;
};

// "0 12". ISO 19005-1 to -3, 6.1.4: one space between the two numbers.
struct XrefSubsectionSyntax {
  std::uint64_t offset = 0;
  std::int64_t first = 0;
  std::int64_t count = 0;
  std::string_view between;
  std::string_view after;
};

// "0000000016 00000 n" and its line end. ISO 32000-2, 7.5.4: twenty bytes.
struct XrefEntrySyntax {
  std::uint64_t offset = 0;
  std::int64_t number = 0;  // that it is about
  std::string_view text;    // twenty bytes, fewer at the end of the file
  bool is_fixed = false;    // they have the form that the standard gives them
};

// A trailer's dictionary, or that of a cross-reference stream. ISO 19005-1 to -3, 6.1.3: it has an
// /ID, and no /Encrypt.
struct TrailerSyntax {
  std::uint64_t offset = 0;  // of "trailer", or of the cross-reference stream's number
  bool is_stream = false;
  Object dictionary;
};

// The last "startxref".
struct StartXrefSyntax {
  std::uint64_t offset = 0;
  std::string_view after_keyword;
  std::int64_t value = -1;       // -1: none that can be read
  std::string_view after_value;  // white space only
};

// ISO 19005-1 to -3, 6.1.3: nothing follows the last end-of-file marker but one line end.
struct FileEndSyntax {
  std::uint64_t offset = 0;  // of the last "%%EOF"; the file's size where there is none
  bool has_marker = false;
  std::string_view after;  // its first bytes
  std::uint64_t size = 0;  // of the file
};

// The linearization dictionary (ISO 32000-2, annex F), the file's first object. ISO 19005-1, 6.1.3,
// 6.1.9 and -2, 6.1.11 speak of such files; it counts where its /L is the file's size.
struct LinearizationSyntax {
  Reference reference;
  std::uint64_t offset = 0;
  Object dictionary;
};

class SyntaxObserver {
 public:
  virtual ~SyntaxObserver() = default;

  // Of a file, in this order; the cross-reference from its newest section on.
  virtual void OnHeader(const HeaderSyntax& /*header*/) {}

  virtual void OnStartXref(const StartXrefSyntax& /*start*/) {}

  virtual void OnFileEnd(const FileEndSyntax& /*end*/) {}

  virtual void OnXrefTable(const XrefTableSyntax& /*table*/) {}

  virtual void OnXrefSubsection(const XrefSubsectionSyntax& /*subsection*/) {}

  virtual void OnXrefEntry(const XrefEntrySyntax& /*entry*/) {}

  virtual void OnTrailer(const TrailerSyntax& /*trailer*/) {}  // then the tokens of a table's

  virtual void OnLinearization(const LinearizationSyntax& /*linearization*/) {}

  // Of an object, in this order.
  virtual void OnObject(const ObjectSyntax& /*object*/) {}

  virtual void OnToken(const TokenSyntax& /*token*/) {}

  virtual void OnRepeatedKey(const RepeatedKeySyntax& /*key*/) {}  // right after its token

  virtual void OnStream(const StreamSyntax& /*stream*/) {}

  virtual void OnObjectEnd(const ObjectEndSyntax& /*end*/) {}
};

// Tells of each token of a value's text, whose first byte has this offset, and of its dictionaries'
// repeated keys.
void ObserveTokens(std::string_view text, std::uint64_t offset, SyntaxObserver& observer);

// How a kHexString token is written.
struct HexSyntax {
  std::size_t digits = 0;
  std::size_t others = 0;  // bytes that are neither a digit nor white space
};

HexSyntax HexSyntaxOf(const Token& token);

// CR LF, LF or CR and nothing else.
bool IsLineEnd(std::string_view spacing);
bool StartsWithLineEnd(std::string_view spacing);
bool EndsWithLineEnd(std::string_view spacing);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_SYNTAX_SYNTAXOBSERVER_H_
