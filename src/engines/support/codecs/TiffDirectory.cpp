#include "engines/support/codecs/TiffDirectory.h"

#include <algorithm>
#include <unordered_set>

#include "engines/support/codecs/CodecLimits.h"

namespace TarnixTools::engines {

namespace {

enum FieldType : std::uint16_t {
  kByte = 1,
  kShort = 3,
  kLong = 4,
  kRational = 5,
  kUndefined = 7,
  kFloat = 11,
  kDouble = 12,
  kIfd = 13,
  kLong8 = 16,
  kIfd8 = 18,
};

// Bytes of a value; 0 for a type that is not known.
std::uint64_t SizeOf(std::uint16_t type) {
  switch (type) {
    case kByte:
    case 2:  // ASCII
    case 6:  // signed byte
    case kUndefined:
      return 1;
    case kShort:
    case 8:  // signed short
      return 2;
    case kLong:
    case 9:  // signed long
    case kFloat:
    case kIfd:
      return 4;
    case kRational:
    case 10:  // signed rational
    case kDouble:
    case kLong8:
    case 17:  // signed long of 8 bytes
    case kIfd8:
      return 8;
    default:
      return 0;
  }
}

// How classic and big files differ.
struct Layout {
  ByteOrder order;
  bool is_big;

  std::uint64_t OffsetSize() const { return is_big ? 8 : 4; }

  std::uint64_t CountSize() const { return is_big ? 8 : 2; }

  std::uint64_t FieldSize() const { return is_big ? 20 : 12; }

  std::uint64_t Offset(ByteReader& reader, std::uint64_t place) const {
    return is_big ? reader.Number64(place, order) : reader.Number32(place, order);
  }

  std::uint64_t Count(ByteReader& reader, std::uint64_t place) const {
    return is_big ? reader.Number64(place, order) : reader.Number16(place, order);
  }
};

Layout LayoutOf(ByteReader& reader) {
  Layout layout{};
  layout.order = reader.Byte(0) == 'M' ? ByteOrder::kBig : ByteOrder::kLittle;
  layout.is_big = reader.Number16(2, layout.order) == 43;
  return layout;
}

}  // namespace

const TiffDirectory::Field* TiffDirectory::Find(TiffTag tag) const {
  const auto found = std::find_if(fields_.begin(), fields_.end(), [&](const Field& field) {
    return field.tag == static_cast<std::uint16_t>(tag);
  });
  return found != fields_.end() ? &*found : nullptr;
}

std::vector<std::uint64_t> TiffDirectory::Numbers(ByteReader& reader, TiffTag tag,
                                                  std::size_t limit) const {
  std::vector<std::uint64_t> numbers;
  const Field* field = Find(tag);
  if (field == nullptr) {
    return numbers;
  }
  const std::uint64_t size = SizeOf(field->type);
  for (std::uint64_t i = 0; i < std::min<std::uint64_t>(field->count, limit); ++i) {
    const std::uint64_t place = field->place + i * size;
    if (!reader.Has(place, size)) {
      break;
    }
    switch (field->type) {
      case kByte:
        numbers.push_back(reader.Byte(place));
        break;
      case kShort:
        numbers.push_back(reader.Number16(place, order_));
        break;
      case kLong:
      case kIfd:
        numbers.push_back(reader.Number32(place, order_));
        break;
      case kLong8:
      case kIfd8:
        numbers.push_back(reader.Number64(place, order_));
        break;
      default:
        return numbers;
    }
  }
  return numbers;
}

std::uint64_t TiffDirectory::Number(ByteReader& reader, TiffTag tag,
                                    std::uint64_t otherwise) const {
  const std::vector<std::uint64_t> numbers = Numbers(reader, tag, 1);
  return numbers.empty() ? otherwise : numbers.front();
}

double TiffDirectory::Ratio(ByteReader& reader, TiffTag tag) const {
  const Field* field = Find(tag);
  if (field == nullptr || field->type != kRational) {
    return static_cast<double>(Number(reader, tag, 0));
  }
  const std::uint32_t denominator = reader.Number32(field->place + 4, order_);
  return denominator == 0
             ? 0
             : static_cast<double>(reader.Number32(field->place, order_)) / denominator;
}

std::string TiffDirectory::Bytes(ByteReader& reader, TiffTag tag, std::size_t limit) const {
  const Field* field = Find(tag);
  if (field == nullptr || SizeOf(field->type) != 1 || field->count > limit) {
    return {};
  }
  return reader.Read(field->place, static_cast<std::size_t>(field->count));
}

bool TiffStructure::Recognises(ByteReader& reader) {
  const std::string_view head = reader.View(0, 4);
  return head == std::string_view("II*\0", 4) || head == std::string_view("MM\0*", 4) ||
         head == std::string_view("II+\0", 4) || head == std::string_view("MM\0+", 4);
}

std::vector<TiffDirectory> TiffStructure::Read(ByteReader& reader, std::size_t most) {
  std::vector<TiffDirectory> directories;
  const Layout layout = LayoutOf(reader);
  std::unordered_set<std::uint64_t> seen;
  // Directories that do not share bytes have no more than this.
  std::uint64_t fields_left = reader.size() / layout.FieldSize();
  std::uint64_t place = layout.Offset(reader, layout.is_big ? 8 : 4);
  while (place != 0 && seen.insert(place).second && reader.Has(place, layout.CountSize()) &&
         directories.size() < most) {
    TiffDirectory directory;
    directory.offset_ = place;
    directory.order_ = layout.order;
    const std::uint64_t count = layout.Count(reader, place);
    place += layout.CountSize();
    if (count == 0 || count > limits::kMaxTiffFields || fields_left == 0) {
      break;
    }
    directory.is_cut_ = !reader.Has(place, count * layout.FieldSize());
    fields_left -= std::min(count, fields_left);
    for (std::uint64_t i = 0; i < count && reader.Has(place, layout.FieldSize());
         ++i, place += layout.FieldSize()) {
      TiffDirectory::Field field{};
      field.tag = reader.Number16(place, layout.order);
      field.type = reader.Number16(place + 2, layout.order);
      field.count = layout.Offset(reader, place + 4);
      field.place = place + 4 + layout.OffsetSize();
      const std::uint64_t size = SizeOf(field.type);
      if (size == 0 || field.count > reader.size()) {
        continue;
      }
      if (field.count * size > layout.OffsetSize()) {
        field.place = layout.Offset(reader, field.place);
      }
      directory.fields_.push_back(field);
    }
    directories.push_back(std::move(directory));
    place = layout.Offset(reader, place);
  }
  return directories;
}

}  // namespace TarnixTools::engines
