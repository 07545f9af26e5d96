// Objects as text (ISO 32000-2, 7.3), in the fewest bytes: white space only where two tokens would
// run together.
#ifndef TARNIX_PDF_WRITE_SERIALIZE_H_
#define TARNIX_PDF_WRITE_SERIALIZE_H_

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "pdf/Box.h"
#include "pdf/syntax/Object.h"
#include "pdf/syntax/Parser.h"

namespace TarnixTools::pdf {

// Each appends to `out`, with a space first where the text before it would run into it.
void AppendToken(std::string& out, std::string_view token);
void AppendInteger(std::string& out, std::int64_t value);
// With up to `decimals` digits after the point. A number beyond limits::kMaxCoordinate is cut down
// to it; what is not finite is written as 0.
void AppendNumber(std::string& out, double value, int decimals = 3);
// An array of four numbers.
void AppendBox(std::string& out, const Box& box);
void AppendReference(std::string& out, std::uint32_t number, std::uint16_t generation = 0);
void AppendName(std::string& out, std::string_view name);
// Literal or hexadecimal, whichever is shorter; hexadecimal when asked for.
void AppendString(std::string& out, std::string_view bytes, bool as_hex);

// How references, strings and other things are changed on the way.
struct SerializeHooks {
  // Writes what stands for the reference; without it the reference is written as it is.
  std::function<void(std::string& out, Reference reference)> reference;
  // Whether the entry of a dictionary or the item of an array that is this reference is left out.
  std::function<bool(Reference reference)> leaves_out;
  // What strings go through, which are all hexadecimal then.
  StringTransform* strings = nullptr;
  // Writes a real number, which is given as it is written; without it that is what is written.
  std::function<void(std::string& out, std::string_view text)> real;
  // Writes what stands for an array or a dictionary in another one; false, and nothing written, for
  // one that is written as it is.
  std::function<bool(std::string& out, const Object& value)> nested;
  // The entries of a dictionary that are written, in their order; they live until AppendObject
  // returns. Without it they are written as they are.
  std::function<std::span<const DictionaryEntry>(std::span<const DictionaryEntry>)> entries;
};

void AppendObject(std::string& out, const Object& value, const SerializeHooks& hooks = {});

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_WRITE_SERIALIZE_H_
