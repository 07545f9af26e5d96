#include "pdf/file/ObjectReader.h"

#include <algorithm>

#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/syntax/Chars.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::size_t kFirstWindow = 512;
constexpr std::size_t kHeaderWindow = 64;
constexpr std::size_t kSearchChunk = std::size_t{64} << 10;

}  // namespace

ObjectReader::ObjectReader(BlockReader& blocks)
    : blocks_(&blocks),
      window_budget_(limits::kWindowAllowance + limits::kWindowRatio * blocks.size()) {}

std::size_t ObjectReader::LargerWindow(std::size_t size) {
  const std::size_t larger = std::max(size, kFirstWindow) * 4;
  if (larger > limits::kMaxObjectBytes * 4 || larger > window_budget_) {
    return 0;
  }
  if (larger > (std::size_t{256} << 10)) {
    window_budget_ -= larger;
  }
  return larger;
}

std::optional<ObjectHeader> ObjectReader::ReadHeader(std::uint64_t offset) {
  const std::string_view window = blocks_->Window(offset, kHeaderWindow);
  Lexer lexer(window, true);
  const Token number = lexer.Next();
  if (number.kind != Token::Kind::kInteger || number.integer < 0 ||
      number.integer > limits::kMaxObjectNumber) {
    return std::nullopt;
  }
  const Token generation = lexer.Next();
  if (generation.kind != Token::Kind::kInteger || generation.integer < 0 ||
      generation.integer > 65535) {
    return std::nullopt;
  }
  const Token keyword = lexer.Next();
  if (keyword.kind != Token::Kind::kKeyword || !keyword.text.starts_with("obj")) {
    return std::nullopt;
  }
  const std::size_t after =
      lexer.position() - keyword.text.size() + 3;  // "obj" may run into what follows
  return ObjectHeader{static_cast<std::uint32_t>(number.integer),
                      static_cast<std::uint16_t>(generation.integer), offset + after};
}

ValueAt ObjectReader::ReadValue(std::uint64_t offset, Arena& arena, StringTransform* transform) {
  parser_.set_arena(arena);
  ValueAt result;
  for (std::size_t wanted = kFirstWindow; wanted != 0; wanted = LargerWindow(wanted)) {
    const std::string_view window = blocks_->Window(offset, wanted);
    wanted = std::max(wanted, window.size());
    Lexer lexer(window, offset + window.size() >= size());
    const Parser::Status status = parser_.Parse(lexer, transform, result.value);
    if (status != Parser::Status::kMore) {
      result.end = offset + lexer.position();
      result.has_value = status == Parser::Status::kDone;
      result.is_regular = parser_.is_regular();
      return result;
    }
  }
  return {Object(), offset, false, false};
}

ValueAt ObjectReader::ReadHeldValue(std::string_view text, Arena& arena) {
  parser_.set_arena(arena);
  ValueAt result;
  Lexer lexer(text, true);
  result.has_value = parser_.Parse(lexer, nullptr, result.value) == Parser::Status::kDone;
  result.end = lexer.position();
  result.is_regular = parser_.is_regular();
  return result;
}

std::optional<std::uint64_t> ObjectReader::StreamDataAt(std::uint64_t offset) {
  std::string_view window = blocks_->Window(offset, kHeaderWindow);
  std::size_t at = 0;
  while (at < window.size() && IsSpace(window[at])) {
    ++at;
  }
  if (at == window.size() || window[at] == '%') {  // comments, or more white space than usual
    TokenStream tokens(*this, offset + at);
    const Token token = tokens.Next();
    if (token.kind != Token::Kind::kKeyword || !token.text.starts_with("stream")) {
      return std::nullopt;
    }
    offset = tokens.offset() - token.text.size();
    at = 0;
    window = blocks_->Window(offset, kHeaderWindow);
  }
  if (!window.substr(at).starts_with("stream")) {
    return std::nullopt;
  }
  at += 6;
  std::size_t eol = at;
  while (eol < window.size() && (window[eol] == ' ' || window[eol] == '\t')) {
    ++eol;
  }
  if (eol < window.size() && (window[eol] == '\r' || window[eol] == '\n')) {
    at = eol;
  }
  if (at < window.size() && window[at] == '\r') {
    ++at;
  }
  if (at < window.size() && window[at] == '\n') {
    ++at;
  }
  return offset + at;
}

// "endstream", or failing that "endobj", stands at `offset` behind white space.
bool ObjectReader::EndsAt(std::uint64_t offset) {
  if (offset > size()) {
    return false;
  }
  std::string_view window = blocks_->Window(offset, 24);
  while (!window.empty() && IsSpace(window.front())) {
    window.remove_prefix(1);
  }
  return window.starts_with("endstream") || window.starts_with("endobj");
}

StreamExtent ObjectReader::MeasureStream(std::uint64_t data, std::optional<std::int64_t> claimed) {
  if (claimed && *claimed >= 0 &&
      static_cast<std::uint64_t>(*claimed) <= size() - std::min(size(), data) &&
      EndsAt(data + static_cast<std::uint64_t>(*claimed))) {
    return {data, static_cast<std::uint64_t>(*claimed), false, false};
  }
  StreamExtent extent{data, 0, true, false};
  std::optional<std::uint64_t> end = Find("endstream", data, size());
  // Where the keyword is missing, the object's end or the next object's start bounds the data.
  const std::uint64_t limit = end.value_or(size());
  for (std::uint64_t from = data; const auto other = Find("endobj", from, limit);) {
    const auto header = ReadHeader(*other + 6);
    if (header) {
      end = other;
      extent.end_was_missing = true;
      break;
    }
    from = *other + 6;
  }
  if (!end) {
    extent.end_was_missing = true;
    end = size();
  }
  std::uint64_t length = *end - std::min(*end, data);
  const std::size_t tail_size = static_cast<std::size_t>(std::min<std::uint64_t>(2, length));
  const std::string_view tail =
      blocks_->Window(data + length - tail_size, tail_size).substr(0, tail_size);
  if (tail.ends_with("\r\n")) {
    length -= 2;
  } else if (tail.ends_with("\n") || tail.ends_with("\r")) {
    length -= 1;
  }
  extent.length = length;
  return extent;
}

std::optional<std::uint64_t> ObjectReader::Find(std::string_view needle, std::uint64_t from,
                                                std::uint64_t to) {
  while (from + needle.size() <= to) {
    std::string_view window = blocks_->Window(from, needle.size());
    if (window.size() < needle.size()) {
      return std::nullopt;
    }
    window = window.substr(
        0, static_cast<std::size_t>(std::min<std::uint64_t>(window.size(), to - from)));
    const std::size_t found = window.find(needle);
    if (found != std::string_view::npos) {
      return from + found;
    }
    from += window.size() - needle.size() + 1;
  }
  return std::nullopt;
}

std::string ObjectReader::ReadBytes(std::uint64_t offset, std::uint64_t length) {
  if (length > limits::kMaxHeldStream) {
    throw Error(ErrorCode::kLimitExceeded, "a stream is too large to be held");
  }
  std::string bytes(static_cast<std::size_t>(length), '\0');
  if (length <= kSearchChunk) {
    const std::string_view window = blocks_->Window(offset, bytes.size());
    bytes.assign(window.substr(0, bytes.size()));
  } else {
    bytes.resize(blocks_->Read(offset, bytes.data(), bytes.size()));
  }
  return bytes;
}

Token TokenStream::Next() {
  std::size_t wanted = kFirstWindow;
  while (wanted != 0) {
    const std::string_view window = reader_->blocks().Window(offset_, wanted);
    Lexer lexer(window, offset_ + window.size() >= reader_->size());
    const Token token = lexer.Next();
    if (token.kind != Token::Kind::kMore) {
      offset_ += lexer.position();
      return token;
    }
    wanted = reader_->LargerWindow(std::max(wanted, window.size()));
  }
  return {};
}

std::string_view TokenStream::Peek(std::size_t count) {
  return reader_->blocks().Window(offset_, count);
}

}  // namespace TarnixTools::pdf
