#include "engines/support/fonts/CffCharset.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace TarnixTools::engines::fonts {

namespace {

constexpr int kOperatorCharset = 15;
constexpr int kOperatorCharStrings = 17;
constexpr int kOperatorRos = 0x0C1E;  // 12 30

class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  bool has_failed() const { return has_failed_; }

  bool is_at_end() const { return position_ >= bytes_.size(); }

  void Seek(std::size_t position) { position_ = position; }

  std::size_t position() const { return position_; }

  // Big-endian.
  std::uint32_t Take(int size) {
    std::uint32_t value = 0;
    for (int i = 0; i < size; ++i) {
      if (position_ >= bytes_.size()) {
        has_failed_ = true;
        return 0;
      }
      value = value << 8 | static_cast<unsigned char>(bytes_[position_++]);
    }
    return value;
  }

  // Passes over an INDEX; returns its first item.
  std::string_view TakeIndex() {
    const std::uint32_t count = Take(2);
    if (count == 0) {
      return {};
    }
    const auto offset_size = static_cast<int>(Take(1));
    if (offset_size < 1 || offset_size > 4) {
      has_failed_ = true;
      return {};
    }
    const std::size_t offsets = position_;
    const std::size_t data =
        offsets + (std::size_t{count} + 1) * static_cast<std::size_t>(offset_size) - 1;
    const std::uint32_t first = Take(offset_size);
    const std::uint32_t second = Take(offset_size);
    position_ = offsets + std::size_t{count} * static_cast<std::size_t>(offset_size);
    const std::uint32_t end = Take(offset_size);
    position_ = data + end;
    if (has_failed_ || first < 1 || second < first || data + end > bytes_.size() ||
        data + second > bytes_.size()) {
      has_failed_ = true;
      return {};
    }
    return bytes_.substr(data + first, second - first);
  }

 private:
  std::string_view bytes_;
  std::size_t position_ = 0;
  bool has_failed_ = false;
};

struct TopDictionary {
  bool is_cid_keyed = false;
  std::uint32_t charset = 0;
  std::uint32_t char_strings = 0;
};

void SkipReal(Reader& reader) {
  while (!reader.is_at_end()) {
    const std::uint32_t byte = reader.Take(1);
    if ((byte & 0x0F) == 0x0F || (byte >> 4) == 0x0F) {
      return;
    }
  }
}

// The operand that starts with this byte; only whole numbers matter here.
std::int64_t TakeOperand(Reader& reader, std::uint32_t byte) {
  if (byte >= 32 && byte <= 246) {
    return static_cast<std::int64_t>(byte) - 139;
  }
  if (byte >= 247 && byte <= 250) {
    return (static_cast<std::int64_t>(byte) - 247) * 256 + reader.Take(1) + 108;
  }
  if (byte >= 251 && byte <= 254) {
    return -(static_cast<std::int64_t>(byte) - 251) * 256 - reader.Take(1) - 108;
  }
  if (byte == 28) {
    return static_cast<std::int16_t>(reader.Take(2));
  }
  if (byte == 29) {
    return static_cast<std::int32_t>(reader.Take(4));
  }
  SkipReal(reader);
  return 0;
}

TopDictionary ReadTopDictionary(std::string_view bytes) {
  Reader reader(bytes);
  TopDictionary dictionary;
  std::int64_t operand = 0;
  while (!reader.is_at_end() && !reader.has_failed()) {
    const std::uint32_t byte = reader.Take(1);
    if (byte > 21) {
      operand = TakeOperand(reader, byte);
      continue;
    }
    const int code =
        byte == 12 ? 0x0C00 | static_cast<int>(reader.Take(1)) : static_cast<int>(byte);
    if (code == kOperatorRos) {
      dictionary.is_cid_keyed = true;
    } else if (code == kOperatorCharset && operand > 0) {
      dictionary.charset = static_cast<std::uint32_t>(operand);
    } else if (code == kOperatorCharStrings && operand > 0) {
      dictionary.char_strings = static_cast<std::uint32_t>(operand);
    }
  }
  return dictionary;
}

TopDictionary FindTopDictionary(Reader& reader) {
  reader.Take(2);  // version
  reader.Seek(reader.Take(1));
  reader.TakeIndex();  // names
  return ReadTopDictionary(reader.TakeIndex());
}

// Format 0 lists identifiers, formats 1 and 2 ranges of them; glyph 0 is not in the list.
std::vector<std::uint16_t> ReadCids(Reader& reader, std::uint32_t glyph_count) {
  std::vector<std::uint16_t> cids = {0};
  const std::uint32_t format = reader.Take(1);
  if (format > 2) {
    return {};
  }
  while (cids.size() < glyph_count) {
    const std::uint32_t first = reader.Take(2);
    const std::uint32_t more = format == 0 ? 0 : reader.Take(format == 1 ? 1 : 2);
    if (reader.has_failed()) {
      return {};
    }
    for (std::uint32_t i = 0; i <= more && cids.size() < glyph_count; ++i) {
      cids.push_back(static_cast<std::uint16_t>(first + i));
    }
  }
  return cids;
}

}  // namespace

CffCharset ReadCffCharset(std::string_view cff, std::uint32_t glyph_count) {
  CffCharset charset;
  Reader reader(cff);
  const TopDictionary top = FindTopDictionary(reader);
  charset.is_cid_keyed = top.is_cid_keyed && !reader.has_failed();
  // 0 to 2 are predefined charsets, which a CID-keyed font does not have.
  if (charset.is_cid_keyed && top.charset > 2) {
    reader.Seek(top.charset);
    charset.cids = ReadCids(reader, glyph_count);
  }
  return charset;
}

std::uint32_t CffGlyphCount(std::string_view cff) {
  Reader reader(cff);
  const TopDictionary top = FindTopDictionary(reader);
  reader.Seek(top.char_strings);
  const std::uint32_t count = top.char_strings > 0 ? reader.Take(2) : 0;
  return reader.has_failed() ? 0 : count;
}

}  // namespace TarnixTools::engines::fonts
