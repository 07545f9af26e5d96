#include "pdf/content/InlineImage.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "pdf/Limits.h"
#include "pdf/content/Operators.h"
#include "pdf/filters/Filters.h"
#include "pdf/syntax/Chars.h"
#include "pdf/syntax/Lexer.h"
#include "pdf/syntax/Parser.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::size_t kPlausibleWindow = 256;
constexpr int kPlausibleTokens = 12;

Object Either(const Object& entries, std::string_view short_key, std::string_view key) {
  return entries.Has(short_key) ? entries.Get(short_key) : entries.Get(key);
}

// 0 where only the resources could tell.
std::int64_t ComponentsOf(const Object& color_space) {
  if (color_space.IsArray()) {
    const auto items = color_space.Items();
    return !items.empty() && (items[0].IsName("I") || items[0].IsName("Indexed")) ? 1 : 0;
  }
  const std::string_view name = color_space.Text();
  if (name == "G" || name == "DeviceGray" || name == "CalGray" || name == "I" ||
      name == "Indexed") {
    return 1;
  }
  if (name == "RGB" || name == "DeviceRGB" || name == "CalRGB") {
    return 3;
  }
  return name == "CMYK" || name == "DeviceCMYK" ? 4 : 0;
}

// Bytes of data that no filter has been applied to; nullopt where they cannot be told.
std::optional<std::size_t> PlainLength(const Object& entries, std::size_t available) {
  const bool is_mask = Either(entries, "IM", "ImageMask").BooleanOr(false);
  const std::int64_t width = Either(entries, "W", "Width").IntegerOr(-1);
  const std::int64_t height = Either(entries, "H", "Height").IntegerOr(-1);
  const std::int64_t bits = is_mask ? 1 : Either(entries, "BPC", "BitsPerComponent").IntegerOr(-1);
  const std::int64_t components = is_mask ? 1 : ComponentsOf(Either(entries, "CS", "ColorSpace"));
  if (width < 1 || width > limits::kMaxInlineImageSide || height < 1 ||
      height > limits::kMaxInlineImageSide || bits < 1 || bits > 16 || components == 0) {
    return std::nullopt;
  }
  const auto row = static_cast<std::size_t>((width * components * bits + 7) / 8);
  const auto rows = static_cast<std::size_t>(height);
  return row <= available / rows ? std::optional(row * rows) : std::nullopt;
}

// Whether a line end is no beginning of the data.
bool HasMagicNumber(const Object& entries) {
  const Object filter = Either(entries, "F", "Filter");
  const Object first = filter.IsArray() && !filter.Items().empty() ? filter.Items()[0] : filter;
  return first.IsName("DCT") || first.IsName("DCTDecode") || first.IsName("Fl") ||
         first.IsName("FlateDecode");
}

}  // namespace

Object ParseInlineEntries(std::string_view text, Arena& arena) {
  Lexer lexer(text, true);
  Parser parser(arena);
  std::vector<DictionaryEntry> entries;
  Object key;
  Object value;
  while (parser.Parse(lexer, nullptr, key) == Parser::Status::kDone) {
    if (!key.IsName()) {
      continue;
    }
    if (parser.Parse(lexer, nullptr, value) != Parser::Status::kDone) {
      break;
    }
    entries.push_back({key, value});
  }
  return Object::Dictionary(arena.CopyItems(std::span<const DictionaryEntry>(entries)));
}

std::optional<InlineImageMeasure::Extent> InlineImageMeasure::Measure(const Object& entries,
                                                                      std::size_t after_id) {
  const auto is_space = [&](std::size_t at) {
    return at < content_.size() && IsSpace(content_[at]);
  };
  const std::size_t begin = after_id + (is_space(after_id) ? 1 : 0);
  std::optional<Extent> extent = ByLength(entries, begin);
  // The one white space after ID may have been written as two bytes.
  if (!extent && content_.substr(after_id, 2) == "\r\n") {
    extent = ByLength(entries, begin + 1);
  }
  if (!extent) {
    extent = ByEndMark(entries, begin);
  }
  const bool starts_later = content_.substr(after_id, 2) == "\r\n" && HasMagicNumber(entries);
  return extent ? extent : BySearch(begin + (starts_later ? 1 : 0));
}

// The extent when EI stands at `end`, white space before it allowed.
std::optional<InlineImageMeasure::Extent> InlineImageMeasure::EndsAt(std::size_t begin,
                                                                     std::size_t end) const {
  constexpr std::size_t kMaxSpace = 8;
  std::size_t at = end;
  while (at < content_.size() && at < end + kMaxSpace && IsSpace(content_[at])) {
    ++at;
  }
  const std::size_t after = at + 2;
  if (content_.substr(std::min(at, content_.size()), 2) != "EI" ||
      (after < content_.size() && IsRegular(content_[after]))) {
    return std::nullopt;
  }
  return Extent{begin, end, after};
}

std::optional<InlineImageMeasure::Extent> InlineImageMeasure::ByLength(const Object& entries,
                                                                       std::size_t begin) const {
  const std::size_t available = content_.size() - std::min(begin, content_.size());
  const std::int64_t claimed = Either(entries, "L", "Length").IntegerOr(-1);
  if (claimed >= 0 && static_cast<std::uint64_t>(claimed) <= available) {
    if (const auto extent = EndsAt(begin, begin + static_cast<std::size_t>(claimed))) {
      return extent;
    }
  }
  if (!Either(entries, "F", "Filter").IsNull()) {
    return std::nullopt;
  }
  const auto length = PlainLength(entries, available);
  return length ? EndsAt(begin, begin + *length) : std::nullopt;
}

// Data in ASCII has an end mark of its own.
std::optional<InlineImageMeasure::Extent> InlineImageMeasure::ByEndMark(const Object& entries,
                                                                        std::size_t begin) {
  const Object filter = Either(entries, "F", "Filter");
  const Object first = filter.IsArray() && !filter.Items().empty() ? filter.Items()[0] : filter;
  const FilterKind kind = first.IsName() ? FilterKindOf(first.Text()) : FilterKind::kUnknown;
  const bool is_hex = kind == FilterKind::kAsciiHex;
  if (!is_hex && kind != FilterKind::kAscii85) {
    return std::nullopt;
  }
  std::size_t& mark_at = is_hex ? hex_mark_at_ : ascii85_mark_at_;
  const std::string_view mark = is_hex ? ">" : "~>";
  if (mark_at < begin) {
    mark_at = content_.find(mark, begin);
  }
  return mark_at == std::string_view::npos ? std::nullopt : EndsAt(begin, mark_at + mark.size());
}

std::optional<InlineImageMeasure::Extent> InlineImageMeasure::BySearch(std::size_t begin) {
  if (!lacks_spaced_end_) {
    if (const auto extent = Search(begin, true)) {
      return extent;
    }
    lacks_spaced_end_ = true;
  }
  return Search(begin, false);
}

// wants_space: only where white space stands before EI, as it should.
std::optional<InlineImageMeasure::Extent> InlineImageMeasure::Search(std::size_t begin,
                                                                     bool wants_space) const {
  for (std::size_t at = content_.find("EI", begin); at != std::string_view::npos;
       at = content_.find("EI", at + 1)) {
    const bool has_space = at > 0 && IsSpace(content_[at - 1]);
    const std::size_t after = at + 2;
    const bool ends_token = after == content_.size() || !IsRegular(content_[after]);
    if ((has_space || !wants_space) && ends_token && IsPlausibleAfter(after)) {
      return Extent{begin, has_space && at > begin ? at - 1 : at, after};
    }
  }
  return std::nullopt;
}

// Whether what follows reads like content up to the next operator.
bool InlineImageMeasure::IsPlausibleAfter(std::size_t position) const {
  const std::string_view window = content_.substr(position, kPlausibleWindow);
  Lexer lexer(window, position + window.size() == content_.size());
  for (int i = 0; i < kPlausibleTokens; ++i) {
    const Token token = lexer.Next();
    switch (token.kind) {
      case Token::Kind::kMore:
      case Token::Kind::kEnd:
        return true;
      case Token::Kind::kOddNumber:
        return false;
      case Token::Kind::kKeyword:
        if (IsOperator(OperatorCode(token.text))) {
          return true;
        }
        if (token.text != "true" && token.text != "false" && token.text != "null") {
          return false;
        }
        break;
      default:
        break;
    }
  }
  return true;
}

}  // namespace TarnixTools::pdf
