#include "pdf/file/SyntaxTeller.h"

#include <algorithm>
#include <string>

#include "pdf/Limits.h"
#include "pdf/syntax/Chars.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::size_t kMost = limits::kMaxSpacing;

std::string_view LineAt(std::string_view text) {
  return text.substr(0, text.find_first_of("\r\n"));
}

std::string_view LineEndAt(std::string_view text) {
  if (text.starts_with("\r\n")) {
    return text.substr(0, 2);
  }
  return StartsWithLineEnd(text) ? text.substr(0, 1) : text.substr(0, 0);
}

std::string_view First(std::string_view text) {
  return text.substr(0, kMost);
}

std::string_view Last(std::string_view text) {
  return text.substr(text.size() - std::min(text.size(), kMost));
}

// How many bytes of white space the text starts with.
std::size_t SpaceAtStart(std::string_view text) {
  return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsSpace) -
                                  text.begin());
}

std::size_t SpaceAtEnd(std::string_view text) {
  return static_cast<std::size_t>(std::find_if_not(text.rbegin(), text.rend(), IsSpace) -
                                  text.rbegin());
}

// Goes through a window token by token and gives what stands between them.
class Spacing {
 public:
  explicit Spacing(std::string_view window, std::size_t at = 0)
      : window_(window), lexer_(window, true) {
    lexer_.set_position(at);
  }

  // White space and comments before the next token.
  std::string_view Skip() {
    const std::size_t start = lexer_.position();
    lexer_.SkipSpace();
    return window_.substr(start, lexer_.position() - start);
  }

  // White space alone.
  std::string_view Blank() const {
    const std::string_view rest = lexer_.rest();
    return rest.substr(0, SpaceAtStart(rest));
  }

  void PassToken() { lexer_.Next(); }

  void PassBytes(std::size_t count) {
    lexer_.set_position(std::min(window_.size(), lexer_.position() + count));
  }

  bool IsAt(std::string_view keyword) const { return lexer_.rest().starts_with(keyword); }

  std::size_t position() const { return lexer_.position(); }

 private:
  std::string_view window_;
  Lexer lexer_;
};

}  // namespace

// Exactly the bytes asked for, or fewer at the end of the file.
std::string_view SyntaxTeller::WindowAt(std::uint64_t offset, std::size_t size) {
  return reader_->blocks().Window(offset, size).substr(0, size);
}

void SyntaxTeller::TellHeader(std::uint64_t offset) {
  const std::string_view text = WindowAt(offset, limits::kMaxHeaderLines);
  if (!text.starts_with("%PDF-")) {
    return;
  }
  const std::string_view line = LineAt(text);
  const std::string_view line_end = LineEndAt(text.substr(line.size()));
  const std::string_view next = LineAt(text.substr(line.size() + line_end.size()));
  observer_->OnHeader({offset, line, line_end, next});
}

void SyntaxTeller::TellFileEnd() {
  constexpr std::string_view kMarker = "%%EOF";
  const std::uint64_t size = reader_->size();
  const std::uint64_t start = size - std::min<std::uint64_t>(size, limits::kTrailerSearch);
  const std::string_view tail = WindowAt(start, limits::kTrailerSearch);
  const std::size_t at = tail.rfind(kMarker);
  if (at == std::string_view::npos) {
    observer_->OnFileEnd({size, false, {}, size});
    return;
  }
  observer_->OnFileEnd({start + at, true, First(tail.substr(at + kMarker.size())), size});
}

void SyntaxTeller::TellXrefTable(std::uint64_t offset) {
  Spacing spacing(WindowAt(offset, 2 * kMost));
  spacing.PassToken();
  observer_->OnXrefTable({offset, First(spacing.Skip())});
}

void SyntaxTeller::TellXrefSubsection(std::uint64_t offset, std::int64_t first,
                                      std::int64_t count) {
  Spacing spacing(WindowAt(offset, 4 * kMost));
  spacing.PassToken();
  const std::string_view between = First(spacing.Skip());
  spacing.PassToken();
  observer_->OnXrefSubsection({offset, first, count, between, First(spacing.Blank())});
}

void SyntaxTeller::TellXrefEntry(std::uint64_t offset, std::int64_t number, bool is_fixed) {
  constexpr std::size_t kEntrySize = 20;
  const std::string_view text = WindowAt(offset, kEntrySize);
  const bool has_line_end =
      text.ends_with(" \r") || text.ends_with(" \n") || text.ends_with("\r\n");
  observer_->OnXrefEntry({offset, number, text, is_fixed && has_line_end});
}

void SyntaxTeller::TellTrailer(std::uint64_t begin, const ValueAt& trailer) {
  constexpr std::string_view kKeyword = "trailer";
  if (trailer.value.IsDictionary()) {
    observer_->OnTrailer({begin - kKeyword.size(), false, trailer.value});
    TellTokens(begin, trailer.end);
  }
}

void SyntaxTeller::TellXrefStream(std::uint64_t offset, const Object& dictionary) {
  Spacing spacing(WindowAt(offset, 2 * kMost));
  spacing.Skip();
  observer_->OnTrailer({offset + spacing.position(), true, dictionary});
}

void SyntaxTeller::TellObject(Reference reference, std::uint64_t offset) {
  constexpr std::string_view kKeyword = "obj";
  const auto before = static_cast<std::size_t>(std::min<std::uint64_t>(offset, kMost));
  const std::uint64_t start = offset - before;
  const std::string_view window = WindowAt(start, 4 * kMost);
  Spacing spacing(window, before);
  spacing.Skip();
  ObjectSyntax object;
  object.reference = reference;
  object.offset = start + spacing.position();
  const std::string_view lead = window.substr(0, spacing.position());
  object.before = Last(lead.substr(lead.size() - SpaceAtEnd(lead)));
  spacing.PassToken();
  object.after_number = First(spacing.Skip());
  spacing.PassToken();
  object.after_generation = First(spacing.Skip());
  spacing.PassBytes(kKeyword.size());  // it may run into what follows
  object.after_keyword = First(spacing.Blank());
  observer_->OnObject(object);
}

void SyntaxTeller::TellTokens(std::uint64_t begin, std::uint64_t end) {
  ObserveTokens(WindowAt(begin, static_cast<std::size_t>(end - begin)), begin, *observer_);
}

std::uint64_t SyntaxTeller::TellStream(Reference reference, std::uint64_t dictionary_end,
                                       const StreamExtent& extent,
                                       std::optional<std::int64_t> claimed) {
  constexpr std::string_view kKeyword = "stream";
  constexpr std::string_view kEnd = "endstream";
  StreamSyntax stream;
  stream.reference = reference;
  stream.data = extent.offset;
  stream.length = extent.length;
  stream.claimed = claimed;
  Spacing lead(WindowAt(dictionary_end, static_cast<std::size_t>(extent.offset - dictionary_end)));
  lead.Skip();
  stream.offset = dictionary_end + lead.position();
  lead.PassBytes(kKeyword.size());
  const std::string after_keyword(First(lead.Blank()));  // before the window moves
  stream.after_keyword = after_keyword;

  const std::uint64_t data_end = extent.offset + extent.length;
  stream.end = data_end + SpaceAtStart(WindowAt(data_end, limits::kObjectEndSearch));
  stream.has_end = WindowAt(stream.end, kEnd.size()) == kEnd;
  const std::uint64_t tail = std::min<std::uint64_t>(2, stream.end - extent.offset);
  stream.before_end = WindowAt(stream.end - tail, static_cast<std::size_t>(tail));
  observer_->OnStream(stream);
  return stream.has_end ? stream.end + kEnd.size() : data_end;
}

void SyntaxTeller::TellObjectEnd(Reference reference, std::uint64_t end, const Object& value,
                                 bool is_regular) {
  constexpr std::string_view kKeyword = "endobj";
  Spacing spacing(WindowAt(end, limits::kObjectEndSearch));
  ObjectEndSyntax syntax;
  syntax.reference = reference;
  syntax.before = Last(spacing.Skip());
  syntax.offset = end + spacing.position();
  syntax.has_keyword = spacing.IsAt(kKeyword);
  syntax.is_regular = is_regular;
  syntax.value = value;
  if (syntax.has_keyword) {
    spacing.PassBytes(kKeyword.size());
    syntax.after = First(spacing.Blank());
  }
  observer_->OnObjectEnd(syntax);
}

}  // namespace TarnixTools::pdf
