#include "pdf/file/FileScan.h"

#include <algorithm>

#include "pdf/Limits.h"
#include "pdf/syntax/Chars.h"

namespace TarnixTools::pdf {

FoundKind FoundKindOf(const Object& dictionary) {
  const Object type = dictionary.Get("Type");
  if (type.IsName("Page")) {
    return FoundKind::kPage;
  }
  if (type.IsName("Pages") ||
      (type.IsNull() && dictionary.Has("Kids") && dictionary.Has("Count") && !dictionary.Has("T") &&
       !dictionary.Has("FT") && !dictionary.Has("First"))) {
    return FoundKind::kPages;
  }
  if (type.IsName("Catalog")) {
    return FoundKind::kCatalog;
  }
  if (type.IsName("ObjStm")) {
    return FoundKind::kObjectStream;
  }
  if (type.IsName("XRef")) {
    return FoundKind::kXrefStream;
  }
  if (type.IsNull() && dictionary.Has("Pages") && !dictionary.Has("Root")) {
    return FoundKind::kCatalog;
  }
  return FoundKind::kOther;
}

namespace {

class Scanner {
 public:
  Scanner(ObjectReader& reader, Arena& arena) : reader_(&reader), arena_(&arena) {}

  FileScan Run() {
    std::uint64_t from = 0;
    while (from < reader_->size()) {
      const std::uint64_t hit = NextKeyword(from);
      if (hit == kNone) {
        break;
      }
      from = is_trailer_ ? ReadTrailer(hit) : ReadObject(hit);
    }
    return std::move(scan_);
  }

 private:
  static constexpr std::uint64_t kNone = ~std::uint64_t{0};

  // Offset of the next "obj" that ends "N G obj", or of the next "trailer".
  std::uint64_t NextKeyword(std::uint64_t from) {
    while (from < reader_->size()) {
      const std::string_view window = reader_->blocks().Window(from, 8);
      std::size_t at = 0;
      while ((at = window.find_first_of("ot", at)) != std::string_view::npos) {
        const std::string_view rest = window.substr(at);
        if (rest.size() < 8 && from + window.size() < reader_->size()) {
          break;  // look again with the next window, from here
        }
        if (rest.starts_with("trailer")) {
          is_trailer_ = true;
          return from + at;
        }
        if (rest.starts_with("obj")) {
          window_moved_ = false;
          if (HeaderBefore(from + at, window.substr(0, at))) {
            is_trailer_ = false;
            return from + at;
          }
          if (window_moved_) {
            ++at;
            break;
          }
        }
        ++at;
      }
      from += at == std::string_view::npos ? window.size() : at;
    }
    return kNone;
  }

  // Whether two integers stand in front of the "obj" at `keyword`; sets header_. `before` is what
  // the window holds of it.
  bool HeaderBefore(std::uint64_t keyword, std::string_view before) {
    constexpr std::size_t kLongestHeader = 40;
    if (!before.empty() && !IsSpace(before.back()) && !IsDigit(before.back())) {
      return false;  // most often "endobj"
    }
    const std::size_t size =
        static_cast<std::size_t>(std::min<std::uint64_t>(keyword, kLongestHeader));
    std::string text;
    if (before.size() >= size) {
      text = before.substr(before.size() - size);
    } else {
      text = reader_->blocks().Window(keyword - size, size).substr(0, size);
      window_moved_ = true;
    }
    std::size_t at = text.size();
    const auto skip = [&](auto is_wanted) {
      const std::size_t end = at;
      while (at > 0 && is_wanted(text[at - 1])) {
        --at;
      }
      return end - at;
    };
    skip(IsSpace);
    const std::size_t generation_end = at;
    const std::size_t generation_size = skip(IsDigit);
    const std::size_t generation_start = at;
    if (generation_size == 0 || generation_size > 5 || skip(IsSpace) == 0) {
      return false;
    }
    const std::size_t number_end = at;
    const std::size_t number_size = skip(IsDigit);
    if (number_size == 0 || number_size > 10) {
      return false;
    }
    const std::int64_t generation =
        std::stoll(text.substr(generation_start, generation_end - generation_start));
    const std::int64_t number = std::stoll(text.substr(at, number_end - at));
    if (number < 1 || number > limits::kMaxObjectNumber || generation > 65535) {
      return false;
    }
    header_ = {static_cast<std::uint32_t>(number), static_cast<std::uint16_t>(generation),
               keyword + 3};
    header_offset_ = keyword - (text.size() - at);
    return true;
  }

  // Both return where the search goes on.
  std::uint64_t ReadTrailer(std::uint64_t offset) {
    const ValueAt value = reader_->ReadValue(offset + 7, *arena_, nullptr);
    if (value.value.IsDictionary()) {
      scan_.trailers.push_back(value.value);
    }
    return offset + 7;
  }

  std::uint64_t ReadObject(std::uint64_t) {
    const ObjectHeader header = header_;
    FoundObject found{header.number, header.generation, FoundKind::kOther, header_offset_};
    scratch_.Reset();
    const ValueAt value = reader_->ReadValue(header.body, scratch_, nullptr);
    std::uint64_t next = header.body;
    if (value.value.IsDictionary()) {
      found.kind = FoundKindOf(value.value);
      // An object that was never closed swallows what follows: only what is regular is passed over.
      next = value.is_regular ? value.end : header.body;
      if (const auto data = reader_->StreamDataAt(value.end)) {
        const Object length = value.value.Get("Length");
        const StreamExtent extent = reader_->MeasureStream(
            *data, length.IsInteger() ? std::optional(length.IntegerOr(0)) : std::nullopt);
        next = extent.end_was_missing ? *data : extent.offset + extent.length;
      }
      if (found.kind == FoundKind::kXrefStream) {
        scan_.trailers.push_back(reader_->ReadValue(header.body, *arena_, nullptr).value);
      }
    }
    scan_.objects.push_back(found);
    return std::max(next, header.body);
  }

  ObjectReader* reader_;
  Arena* arena_;
  Arena scratch_;
  FileScan scan_;
  ObjectHeader header_;
  std::uint64_t header_offset_ = 0;
  bool is_trailer_ = false;
  bool window_moved_ = false;  // a look backwards has made the search's own window invalid
};

}  // namespace

FileScan ScanFile(ObjectReader& reader, Arena& arena) {
  return Scanner(reader, arena).Run();
}

}  // namespace TarnixTools::pdf
