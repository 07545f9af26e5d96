#include "pdf/file/Xref.h"

#include "pdf/file/StreamFilters.h"
#include "pdf/file/SyntaxTeller.h"
#include "pdf/filters/Filters.h"
#include "pdf/syntax/Chars.h"

namespace TarnixTools::pdf {

void XrefTable::Set(std::uint32_t number, const XrefEntry& entry) {
  if (number == 0 || number > limits::kMaxObjectNumber) {
    return;
  }
  if (number >= entries_.size()) {
    entries_.resize(number + 1);
  }
  entries_[number] = entry;
}

void XrefTable::SetIfUnknown(std::uint32_t number, const XrefEntry& entry) {
  if (Find(number).kind == XrefEntry::Kind::kUnknown) {
    Set(number, entry);
  }
}

bool XrefReader::ReadChain(std::uint64_t offset, std::uint64_t base) {
  base_ = base;
  std::set<std::uint64_t> seen;
  while (seen.insert(offset).second) {
    if (seen.size() > static_cast<std::size_t>(limits::kMaxXrefSections)) {
      findings_->Add(FindingCode::kXrefDamaged, 0, offset);
      is_complete_ = false;
      return true;
    }
    const std::optional<Object> trailer = ReadSection(offset);
    if (!trailer) {
      is_complete_ = false;
      if (!trailers_.empty()) {
        findings_->Add(FindingCode::kXrefDamaged, 0, offset);
      }
      return !trailers_.empty();
    }
    trailers_.push_back(*trailer);
    const Object previous = trailer->Get("Prev");
    if (!previous.IsNumber()) {
      return true;
    }
    const std::int64_t next = previous.IntegerOr(-1);
    if (next < 0 || static_cast<std::uint64_t>(next) + base_ >= reader_->size()) {
      findings_->Add(FindingCode::kXrefDamaged, 0, offset);
      is_complete_ = false;
      return true;
    }
    offset = static_cast<std::uint64_t>(next) + base_;
  }
  findings_->Add(FindingCode::kXrefLoop, 0, offset);
  is_complete_ = false;
  return true;
}

std::optional<Object> XrefReader::ReadSection(std::uint64_t offset) {
  TokenStream tokens(*reader_, offset);
  const Token first = tokens.Next();
  if (first.kind == Token::Kind::kInteger) {
    return ReadStream(offset);
  }
  if (first.kind != Token::Kind::kKeyword || first.text != "xref") {
    return std::nullopt;
  }
  freed_.clear();
  if (teller_ != nullptr) {
    teller_->TellXrefTable(tokens.offset() - first.text.size());
  }
  const std::optional<Object> trailer = ReadTable(tokens);
  if (trailer) {
    // A hybrid file's stream comes before what this section declares free (7.5.8.4).
    const std::int64_t stream = trailer->Get("XRefStm").IntegerOr(-1);
    if (stream >= 0 && static_cast<std::uint64_t>(stream) + base_ < reader_->size()) {
      const auto freed = std::move(freed_);
      if (!ReadStream(static_cast<std::uint64_t>(stream) + base_)) {
        findings_->Add(FindingCode::kXrefDamaged, 0, static_cast<std::uint64_t>(stream));
        is_complete_ = false;
      }
      freed_ = freed;
    }
    for (const std::uint32_t number : freed_) {
      table_->SetIfUnknown(number, {0, 0, 0, XrefEntry::Kind::kFree});
    }
  }
  return trailer;
}

std::optional<Object> XrefReader::ReadTable(TokenStream& tokens) {
  for (;;) {
    const Token token = tokens.Next();
    if (token.kind == Token::Kind::kKeyword && token.text == "trailer") {
      const ValueAt trailer = reader_->ReadValue(tokens.offset(), *arena_, nullptr);
      if (teller_ != nullptr) {
        teller_->TellTrailer(tokens.offset(), trailer);
      }
      return trailer.value.IsDictionary() ? std::optional(trailer.value) : std::nullopt;
    }
    if (token.kind != Token::Kind::kInteger || token.integer < 0) {
      return std::nullopt;
    }
    const std::uint64_t start = tokens.offset() - token.text.size();
    const Token count = tokens.Next();
    if (count.kind != Token::Kind::kInteger || count.integer < 0) {
      return std::nullopt;
    }
    if (teller_ != nullptr) {
      teller_->TellXrefSubsection(start, token.integer, count.integer);
    }
    if (!ReadSubsection(tokens, token.integer, count.integer)) {
      return std::nullopt;
    }
  }
}

namespace {

struct TableEntry {
  std::int64_t offset = 0;
  std::int64_t generation = 0;
  char kind = 0;
};

// "0000000016 00000 n" in its fixed form.
bool ReadFixedEntry(std::string_view line, TableEntry& entry) {
  std::int64_t numbers[2] = {0, 0};
  for (std::size_t i = 0; i < 16; ++i) {
    if (i == 10) {
      if (line[i] != ' ') {
        return false;
      }
      continue;
    }
    if (!IsDigit(line[i])) {
      return false;
    }
    std::int64_t& number = numbers[i > 10 ? 1 : 0];
    number = number * 10 + (line[i] - '0');
  }
  if (line[16] != ' ' || (line[17] != 'n' && line[17] != 'f') || !IsSpace(line[18])) {
    return false;
  }
  entry = {numbers[0], numbers[1], line[17]};
  return true;
}

bool ReadLooseEntry(TokenStream& tokens, TableEntry& entry) {
  const Token offset = tokens.Next();
  const bool has_offset = offset.kind == Token::Kind::kInteger;
  entry.offset = offset.integer;
  const Token generation = has_offset ? tokens.Next() : Token();
  const bool has_generation = generation.kind == Token::Kind::kInteger;
  entry.generation = generation.integer;
  const Token kind = has_generation ? tokens.Next() : Token();
  if (kind.kind != Token::Kind::kKeyword || (kind.text != "n" && kind.text != "f")) {
    return false;
  }
  entry.kind = kind.text[0];
  return true;
}

}  // namespace

bool XrefReader::ReadSubsection(TokenStream& tokens, std::int64_t first, std::int64_t count) {
  for (std::int64_t i = 0; i < count; ++i) {
    // A claimed count may be too high: the trailer ends the section whatever it says.
    std::string_view line = tokens.Peek(24);
    std::size_t blank = 0;
    while (blank < 4 && blank < line.size() && IsSpace(line[blank])) {
      ++blank;
    }
    line.remove_prefix(blank);
    if (line.starts_with("trailer")) {
      findings_->Add(FindingCode::kXrefDamaged, 0, tokens.offset());
      return true;
    }
    TableEntry entry;
    const std::uint64_t start = tokens.offset() + blank;
    const bool is_fixed = line.size() >= 20 && ReadFixedEntry(line, entry);
    if (is_fixed) {
      tokens.Skip(blank + 19);  // the twentieth byte, if it is one, is white space
    } else if (!ReadLooseEntry(tokens, entry)) {
      return false;
    }
    if (i == 0 && first == 1 && entry.kind == 'f' && entry.generation == 65535) {
      first = 0;  // a section numbered from 1 whose first entry is that of object 0
    }
    const std::int64_t number = first + i;
    if (teller_ != nullptr) {
      teller_->TellXrefEntry(start, number, is_fixed);
    }
    if (number < 1 || number > limits::kMaxObjectNumber) {
      continue;
    }
    if (entry.kind == 'n' && entry.offset > 0 && entry.generation <= 65535) {
      table_->SetIfUnknown(
          static_cast<std::uint32_t>(number),
          {static_cast<std::uint64_t>(entry.offset) + base_, 0,
           static_cast<std::uint16_t>(entry.generation), XrefEntry::Kind::kInFile});
    } else {
      freed_.push_back(static_cast<std::uint32_t>(number));
    }
  }
  return true;
}

std::optional<Object> XrefReader::ReadStream(std::uint64_t offset) {
  const std::optional<ObjectHeader> header = reader_->ReadHeader(offset);
  if (!header) {
    return std::nullopt;
  }
  const ValueAt value = reader_->ReadValue(header->body, *arena_, nullptr);
  const Object& dictionary = value.value;
  const auto data = dictionary.IsDictionary() ? reader_->StreamDataAt(value.end) : std::nullopt;
  if (!data || !(dictionary.Get("Type").IsName("XRef") || dictionary.Get("W").IsArray())) {
    return std::nullopt;
  }
  if (teller_ != nullptr) {
    teller_->TellXrefStream(offset, dictionary);
  }
  const Object length = dictionary.Get("Length");
  const StreamExtent extent = reader_->MeasureStream(
      *data, length.IsInteger() ? std::optional(length.IntegerOr(0)) : std::nullopt);
  if (extent.length > limits::kMaxHeldStream) {
    return std::nullopt;
  }
  const Decoded decoded =
      TryDecode(FilterStepsOf(dictionary), reader_->ReadBytes(extent.offset, extent.length),
                limits::kMaxHeldStream);
  if (!decoded.complete && decoded.data.empty()) {
    return std::nullopt;
  }
  if (!decoded.complete) {
    findings_->Add(FindingCode::kXrefDamaged, header->number, offset);
    is_complete_ = false;
  }
  return ReadStreamEntries(dictionary, decoded.data) ? std::optional(dictionary) : std::nullopt;
}

namespace {

std::uint64_t ReadField(const char*& at, std::int64_t width, std::uint64_t fallback) {
  if (width == 0) {
    return fallback;
  }
  std::uint64_t value = 0;
  for (std::int64_t i = 0; i < width; ++i) {
    value = (value << 8) | static_cast<unsigned char>(*at++);
  }
  return value;
}

}  // namespace

bool XrefReader::ReadStreamEntries(const Object& dictionary, std::string_view data) {
  const auto widths = dictionary.Get("W").Items();
  if (widths.size() < 3) {
    return false;
  }
  std::int64_t width[3];
  for (int i = 0; i < 3; ++i) {
    width[i] = widths[static_cast<std::size_t>(i)].IntegerOr(-1);
    if (width[i] < 0 || width[i] > 8) {
      return false;
    }
  }
  const auto entry_size = static_cast<std::size_t>(width[0] + width[1] + width[2]);
  if (entry_size == 0) {
    return false;
  }
  const Object whole[2] = {Object::Integer(0),
                           Object::Integer(dictionary.Get("Size").IntegerOr(0))};
  const Object index = dictionary.Get("Index");
  const std::span<const Object> ranges =
      index.IsArray() ? index.Items() : std::span<const Object>(whole);
  const char* at = data.data();
  std::size_t left = data.size() / entry_size;
  for (std::size_t r = 0; r + 1 < ranges.size(); r += 2) {
    const std::int64_t first = ranges[r].IntegerOr(-1);
    const std::int64_t count = ranges[r + 1].IntegerOr(-1);
    if (first < 0 || count < 0 || first > limits::kMaxObjectNumber) {
      return false;
    }
    for (std::int64_t i = 0; i < count && left > 0; ++i, --left) {
      const std::uint64_t type = ReadField(at, width[0], 1);
      const std::uint64_t second = ReadField(at, width[1], 0);
      const std::uint64_t third = ReadField(at, width[2], 0);
      const std::int64_t number = first + i;
      if (number < 1 || number > limits::kMaxObjectNumber) {
        continue;
      }
      XrefEntry entry{0, 0, 0, XrefEntry::Kind::kFree};
      if (type == 1 && second > 0) {
        entry = {second + base_, 0,
                 static_cast<std::uint16_t>(std::min<std::uint64_t>(third, 65535)),
                 XrefEntry::Kind::kInFile};
      } else if (type == 2 && second <= limits::kMaxObjectNumber &&
                 third <= limits::kMaxObjectNumber) {
        entry = {second, static_cast<std::uint32_t>(third), 0, XrefEntry::Kind::kInStream};
      }
      table_->SetIfUnknown(static_cast<std::uint32_t>(number), entry);
    }
  }
  return true;
}

}  // namespace TarnixTools::pdf
