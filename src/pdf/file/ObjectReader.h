// Reads tokens, objects and stream data at places in the file, whatever says where they are.
#ifndef TARNIX_PDF_FILE_OBJECTREADER_H_
#define TARNIX_PDF_FILE_OBJECTREADER_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "pdf/file/BlockReader.h"
#include "pdf/syntax/Lexer.h"
#include "pdf/syntax/Parser.h"

namespace TarnixTools::pdf {

// "12 0 obj" in front of an object.
struct ObjectHeader {
  std::uint32_t number = 0;
  std::uint16_t generation = 0;
  std::uint64_t body = 0;  // offset after the keyword
};

struct ValueAt {
  Object value;
  std::uint64_t end = 0;  // offset after the value
  bool has_value = false;
  bool is_regular = true;
};

// Where a stream's data lies in the file.
struct StreamExtent {
  std::uint64_t offset = 0;
  std::uint64_t length = 0;
  bool length_was_wrong = false;  // /Length was missing or did not lead to endstream
  bool end_was_missing = false;
};

class ObjectReader {
 public:
  explicit ObjectReader(BlockReader& blocks);

  BlockReader& blocks() { return *blocks_; }

  std::uint64_t size() const { return blocks_->size(); }

  std::optional<ObjectHeader> ReadHeader(std::uint64_t offset);

  // One value at `offset`, in the arena. transform may be null.
  ValueAt ReadValue(std::uint64_t offset, Arena& arena, StringTransform* transform);

  // One value at the start of a text that is no part of the file, such as an object stream's; `end`
  // is the place in the text after it.
  ValueAt ReadHeldValue(std::string_view text, Arena& arena);

  // Offset of the data when the keyword "stream" stands at `offset`, white space before it allowed.
  std::optional<std::uint64_t> StreamDataAt(std::uint64_t offset);

  // The extent of data that starts at `data`; `claimed` is the length that the dictionary gives, if
  // it gives one. A length that does not lead to "endstream" is replaced by what the data shows.
  StreamExtent MeasureStream(std::uint64_t data, std::optional<std::int64_t> claimed);

  // Offset of the first `needle` in [from, to), or nullopt.
  std::optional<std::uint64_t> Find(std::string_view needle, std::uint64_t from, std::uint64_t to);

  // The extent's bytes. Throws Error(kLimitExceeded) for more than limits::kMaxHeldStream.
  std::string ReadBytes(std::uint64_t offset, std::uint64_t length);

  // The next window to try for an object at `offset` whose window of `size` bytes ended too early;
  // 0: give up, the object is damaged or too large. Keeps the sum of all such work in proportion to
  // the file.
  std::size_t LargerWindow(std::size_t size);

 private:
  bool EndsAt(std::uint64_t offset);

  BlockReader* blocks_;
  Arena no_arena_;  // what the parser has between two values
  Parser parser_{no_arena_};
  std::uint64_t window_budget_;  // bytes that may still be looked at in enlarged windows
};

// Tokens from a place in the file onward, whatever the windows are. A token's text is valid until
// the next call.
class TokenStream {
 public:
  TokenStream(ObjectReader& reader, std::uint64_t offset) : reader_(&reader), offset_(offset) {}

  Token Next();
  // The bytes that follow, when `count` of them are at hand; else fewer, at the end of the file.
  std::string_view Peek(std::size_t count);

  void Skip(std::size_t count) { offset_ += count; }

  std::uint64_t offset() const { return offset_; }

 private:
  ObjectReader* reader_;
  std::uint64_t offset_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILE_OBJECTREADER_H_
